// Types that can hold a value of their own kind, and messages that nest them as deep as wanted.
#ifndef MIRVANE_TESTS_SUPPORT_NESTS_H
#define MIRVANE_TESTS_SUPPORT_NESTS_H

#include "support/recode.h"

namespace test {

inline Octets joined(const Octets& first, const Octets& second) {
    Octets both = first;
    both.insert(both.end(), second.begin(), second.end());
    return both;
}

inline Octets wrapped(unsigned char identifier, const Octets& content) {
    Encoder encoder;
    if (!content.empty()) xe_memcpy(encoder, content.data(), static_cast<std::uint32_t>(content.size()));
    const ASN1TAG tag = static_cast<ASN1TAG>(identifier & 0xE0) << 24 | (identifier & 0x1F);
    const int length = xe_tag_len(encoder, tag, static_cast<int>(content.size()));
    const unsigned char* first = xe_getp(encoder);
    return Octets(first, first + length);
}

// Values that hold one of their own kind: one turn puts `value` into the next.
inline Octets extensionsAround(const Octets& value) {
    const Octets attribute = joined(octets("06 09 2A 86 48 86 F7 0D 01 09 0E"), wrapped(0x31, value));
    const Octets inside = wrapped(0x04, wrapped(0x30, wrapped(0x30, attribute)));
    return wrapped(0x30, wrapped(0x30, joined(octets("06 03 55 1D 09"), inside)));
}

inline Octets signedDataAround(const Octets& value) {
    const Octets content = wrapped(0xA0, wrapped(0x04, value));
    const Octets encapsulated = wrapped(0x30, joined(octets("06 09 2A 86 48 86 F7 0D 01 07 02"), content));
    return wrapped(0x30, joined(joined(octets("02 01 03 31 00"), encapsulated), octets("31 00")));
}

inline Octets messageAround(const Octets& value) {
    return wrapped(0x30, joined(octets("30 09 02 01 02 82 01 61 82 01 62"), wrapped(0xB4, value)));
}

struct Nest {
    const char* type;
    const char* innermost;
    Octets (*around)(const Octets&);
    int levelsPerTurn;
};

inline constexpr Nest kNests[] = {
    {"Extensions", "30 08 30 06 06 02 2A 03 04 00", extensionsAround, 6},
    {"SignedData", "30 14 02 01 03 31 00 30 0B 06 09 2A 86 48 86 F7 0D 01 07 01 31 00", signedDataAround, 3},
    {"PKIMessage", "30 0F 30 09 02 01 02 82 01 61 82 01 62 B3 02 05 00", messageAround, 2},
};

inline Octets nested(const Nest& nest, int turns) {
    Octets value = octets(nest.innermost);
    while (turns-- > 0)
        value = nest.around(value);
    return value;
}

// The most turns that are still decoded.
inline int deepest(const Nest& nest) {
    const auto& type = typeNamed(nest.type);
    int turns = 0;
    while (turns < 200 && recode(type, nested(nest, turns + 1)).status == RTS_OK)
        ++turns;
    return turns;
}

// Decodes, copies, encodes and frees a message. False if one of these fails.
inline bool liveThrough(const asn1data::TypeDescriptor& type, const Octets& message) {
    Decoder decoder(message);
    void* record = asn1data::newRecord(decoder, type);
    if (asn1data::decode(decoder, type, record, ASN1EXPL, 0) != RTS_OK) return false;
    Encoder encoder;
    void* copied = asn1data::newRecord(encoder, type);
    asn1data::copy(encoder, type, record, copied);
    const int length = asn1data::encode(encoder, type, copied, ASN1EXPL);
    asn1data::freeValue(encoder, type, copied);
    return length == static_cast<int>(message.size());
}

}  // namespace test

#endif
