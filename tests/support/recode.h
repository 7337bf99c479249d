// Decoding by descriptor and encoding again.
#ifndef MIRVANE_TESTS_SUPPORT_RECODE_H
#define MIRVANE_TESTS_SUPPORT_RECODE_H

#include <cstring>
#include <stdexcept>
#include <string_view>

#include "asn1data/engine.h"
#include "support/contexts.h"

namespace test {

inline const asn1data::TypeDescriptor& typeNamed(std::string_view name) {
    for (std::uint32_t i = 0; i < asn1data::kAllTypesCount; ++i) {
        if (name == asn1data::kAllTypes[i].name) return *asn1data::kAllTypes[i].type;
    }
    throw std::runtime_error("no type named " + std::string(name));
}

struct Recoded {
    int status;  // of the decode, or of the encode if that failed
    Octets octets;
};

// Decodes through a type and encodes what came of it, on contexts of their own.
inline Recoded recode(const asn1data::TypeDescriptor& type, const Octets& message) {
    LiveContext input;
    if (int status = xd_setp(input, message.data(), static_cast<int>(message.size()), nullptr, nullptr)) {
        return {status, {}};
    }
    void* record = asn1data::newRecord(input, type);
    if (int status = asn1data::decode(input, type, record, ASN1EXPL, 0)) return {status, {}};
    Encoder output;
    const int length = asn1data::encode(output, type, record, ASN1EXPL);
    if (length < 0) return {length, {}};
    const unsigned char* first = xe_getp(output);
    return {RTS_OK, Octets(first, first + length)};
}

}  // namespace test

#endif
