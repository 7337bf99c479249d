#include "certificate_fields.h"

#include <cstdint>

namespace platform {
namespace {

__extension__ using Arc = unsigned __int128;

// Long enough for identifiers made of a UUID.
constexpr Arc mostArcBeforeShift = ~Arc{0} >> 7;

// With a dot before it if there is one in front.
void append(std::string& text, Arc arc) {
    char digits[40];
    char* first = std::end(digits);
    for (; arc > UINT64_MAX; arc /= 10)
        *--first = static_cast<char>('0' + static_cast<int>(arc % 10));
    // Nearly always all of it, and much quicker to divide.
    auto rest = static_cast<std::uint64_t>(arc);
    do {
        *--first = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (!text.empty()) *--first = '.';
    text.append(first, std::end(digits));
}

void appendFirstTwo(std::string& text, Arc joined) {
    const Arc first = joined < 80 ? joined / 40 : 2;
    append(text, first);
    append(text, joined - first * 40);
}

}  // namespace

bool readObjectIdentifier(Octets content, std::string& text) {
    text.clear();
    Arc arc = 0;
    bool isWithin = false;
    for (const BYTE octet : content) {
        if (arc > mostArcBeforeShift || (!isWithin && octet == 0x80)) return false;
        arc = arc << 7 | (octet & 0x7F);
        isWithin = (octet & 0x80) != 0;
        if (isWithin) continue;
        if (text.empty()) {
            appendFirstTwo(text, arc);
        } else {
            append(text, arc);
        }
        arc = 0;
    }
    return !text.empty() && !isWithin;
}

bool readAlgorithm(Octets content, AlgorithmFields& algorithm) {
    BerReader fields(content);
    const Element identifier = fields.take(tagObjectIdentifier);
    algorithm.parameters = fields.atEnd() ? Octets() : fields.takeAny().whole;
    return fields.finished() && readObjectIdentifier(identifier.content, algorithm.objectIdentifier);
}

DWORD readSignedObject(Octets octets, SignedObject& object) {
    if (octets.data() == nullptr || octets.empty()) return CRYPT_E_ASN1_EOD;
    BerReader outer(octets);
    const Element whole = outer.take(tagSequence);
    if (outer.failed()) return CRYPT_E_ASN1_CORRUPT;
    if (!outer.atEnd()) return CRYPT_E_ASN1_NOEOD;
    BerReader fields(whole.content);
    object.toBeSigned = fields.take(tagSequence);
    object.algorithm = fields.take(tagSequence);
    constexpr BYTE constructed = 0x20;
    fields.take(fields.isNext(tagBitString | constructed) ? tagBitString | constructed : tagBitString);
    return fields.finished() ? success : CRYPT_E_ASN1_CORRUPT;
}

}  // namespace platform
