// How the members of value classes that may be absent are compared: null stands for absent.
#ifndef MIRVANE_ASN1_OPTIONAL_MEMBER_H
#define MIRVANE_ASN1_OPTIONAL_MEMBER_H

namespace Mirvane::ASN1 {

// Whether both are absent, or present and equal.
template <typename T>
bool sameOptional(T const* left, T const* right) {
    if (left == nullptr || right == nullptr) return left == right;
    return *left == *right;
}

}  // namespace Mirvane::ASN1

#endif
