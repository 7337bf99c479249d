#include "asn1/object_identifier_text.h"

#include <cstdlib>
#include <cstring>

#include "base/exception.h"
#include "base/white_space.h"

namespace Mirvane::ASN1 {
namespace {

// Stores the arc at the start of `text` and returns the place behind it and the white space that follows;
// null if there is no number or the record is full.
char const* readArc(char const* text, ASN1OBJID* record) {
    char* end = nullptr;
    const unsigned long arc = std::strtoul(text, &end, 10);
    if (end == text || record->numids == ASN1_K_MAXSUBIDS) return nullptr;
    record->subid[record->numids++] = static_cast<std::uint32_t>(arc);
    return skipSpace(end);
}

}  // namespace

int str2oid(char const* text, ASN1OBJID* record) {
    record->numids = 0;
    if (text == nullptr) return 1;
    while (std::strchr(text, '.') != nullptr) {
        text = readArc(text, record);
        if (text == nullptr || *text != '.') return 1;
        ++text;
    }
    text = readArc(text, record);
    // Only the last arc is meant to be held against the largest number.
    return text != nullptr && *text == 0 && record->subid[record->numids - 1] != 0xFFFFFFFF ? 0 : 1;
}

int oid2str(CBlob& blob, ASN1OBJID const* record) {
    const int length = rtOidToStrLen(record);
    blob.resize_to(static_cast<unsigned long>(length) + 1);
    return rtOidToStr(record, reinterpret_cast<char*>(blob.pbData()), length);
}

ASN1OBJID toASN1OBJID(char const* text) {
    ASN1OBJID record{};
    if (str2oid(text, &record) != 0) failure::raise(failure::invalidArgument);
    return record;
}

CStringProxy toOID(ASN1OBJID const& record) {
    return ObjectIdentifierText(record).c_str();
}

}  // namespace Mirvane::ASN1
