// Lambdas as one visitor of a std::variant.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_OVERLOADED_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_OVERLOADED_H

namespace tools {

template <typename... Lambdas>
struct Overloaded : Lambdas... {
    using Lambdas::operator()...;
};
template <typename... Lambdas>
Overloaded(Lambdas...) -> Overloaded<Lambdas...>;

}  // namespace tools

#endif
