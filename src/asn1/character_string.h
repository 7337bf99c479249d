// The character strings of X.520 attribute values (RFC 5280, 4.1.2.4): wide text to the complete encoding of
// a value, and back.
//
// Failures are ATL::CAtlException. The functions share no state.
#ifndef MIRVANE_ASN1_CHARACTER_STRING_H
#define MIRVANE_ASN1_CHARACTER_STRING_H

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

// The string types of ASN.1 that an attribute value may be encoded in.
enum StringType : unsigned int {
    StringTypeDefault = 0,  // the one that the register names for the attribute
    StringTypeUTF8 = 1,
    StringTypePrintable = 2,
    StringTypeT61 = 3,
    StringTypeBMP = 4,
    StringTypeIA5 = 5,
    StringTypeUniversal = 6,
};

// The DER form of the text in this string type, tag and length included. BMPString and UniversalString keep
// the low 16 bits of each character. That a character belongs to the type's set is not checked, which is
// meant: a PrintableString takes any text, as the octets of the platform's code page. Throws 0x80070057 for
// null; 0x80093101 for any other string type, StringTypeDefault too, and for a character that UTF-8 does not
// have; 0x80093106 for memory that the context does not have.
MIRVANE_API CBlob encodeCharString(wchar_t const* text, StringType syntax);

// The text of a value, whose own tag tells how to read it: UTF8String, NumericString, PrintableString,
// TeletexString, IA5String, UniversalString (characters above 0xFFFF are dropped) or BMPString (each 16-bit
// unit becomes a character). The text ends at the first zero that the value holds, so a text alone must not
// decide whom a certificate names. Throws 0x80093101 for any other tag, for an empty blob and for what does
// not decode; 0x80093106 for memory that the context does not have.
MIRVANE_API CWStringProxy decodeCharString(CBlob const& value);

}  // namespace Mirvane::ASN1

#endif
