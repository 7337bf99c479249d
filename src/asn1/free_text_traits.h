// PKIFreeText between its record and CPKIFreeText: steps that the traits of status take.
#ifndef MIRVANE_ASN1_FREE_TEXT_TRAITS_H
#define MIRVANE_ASN1_FREE_TEXT_TRAITS_H

#include "asn1/free_text.h"
#include "asn1data/cmp.h"
#include "asn1rt/context.h"

namespace Mirvane::ASN1 {

// Fills the record with memory of the context. A text whose language is not "*" gets the language in front.
// Throws 0x80093101 for a character that UTF-8 does not have, 0x80093106 for memory that the context does not
// have; the record is then as it was.
void CPKIFreeText_Encode(ASN1CTXT* ctxt, asn1data::ASN1T_PKIFreeText& rec, CPKIFreeText const& text);

// Appends the record's texts to `text`: with the language "*", or with the one in front, which stays in the
// value as well. Throws 0x8009310E for what is no UTF-8, 0x80070057 for a language that does not end; `text`
// is then as it was.
void CPKIFreeText_Parse(ASN1CTXT* ctxt, CPKIFreeText& text, asn1data::ASN1T_PKIFreeText const& rec);

}  // namespace Mirvane::ASN1

#endif
