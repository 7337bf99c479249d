// Object identifiers as dotted decimal text, the form in which value classes keep them.
#ifndef MIRVANE_ASN1_OBJECT_IDENTIFIER_TEXT_H
#define MIRVANE_ASN1_OBJECT_IDENTIFIER_TEXT_H

#include "asn1rt/object_identifier.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

// Reads a text of 1 to 128 arcs. White space may stand around an arc, and an arc may have a sign, as strtoul
// reads it; an arc above 32 bits keeps its low 32. Whether the arcs make a possible identifier is left to the
// encoder. 0 on success, 1 on failure (null and the empty text too, and a last arc of 4294967295); the arcs
// before the fault are then in the record.
int str2oid(char const* text, ASN1OBJID* record);

// Writes the text with its terminator, which the blob's length counts. Always 1; a record without arcs gives
// the empty text. Arcs behind the 128th are not looked at.
int oid2str(CBlob& blob, ASN1OBJID const* record);

// The same text in an array of its own, without memory to ask for.
class ObjectIdentifierText {
  public:
    explicit ObjectIdentifierText(ASN1OBJID const& record) { rtOidToStr(&record, text_, sizeof text_ - 1); }
    char const* c_str() const { return text_; }

  private:
    // Each arc has up to ten digits, and a dot or the terminator behind it.
    char text_[ASN1_K_MAXSUBIDS * 11];
};

// As str2oid; throws 0x80070057 on failure.
ASN1OBJID toASN1OBJID(char const* text);

// As oid2str.
CStringProxy toOID(ASN1OBJID const& record);

}  // namespace Mirvane::ASN1

#endif
