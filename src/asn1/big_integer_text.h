// Big integers as text: 0x and hexadecimal digits, two a byte. The records of messages hold them so.
//
// Failures are ATL::CAtlException.
#ifndef MIRVANE_ASN1_BIG_INTEGER_TEXT_H
#define MIRVANE_ASN1_BIG_INTEGER_TEXT_H

#include <cstdint>

#include "asn1/big_integer.h"
#include "asn1rt/context.h"

namespace Mirvane::ASN1 {

// Reads digits of either case. Digits of an odd number that begin with 0 get one more 0;
// otherwise the last one is dropped, which is meant: 0x123 is the byte 12. Digits end as
// CBlob::readFromHexString tells. Throws 0x80093101 for null, a text of less than three characters and one
// that does not begin with a small 0x.
MIRVANE_API void StringToBigInteger(char const* text, CBigInteger& out);

// Upper-case digits, and a terminator that the blob's length counts. An empty value gives 0x.
MIRVANE_API void BigIntegerToString(CBigInteger const& value, CBlob& out);

// As StringToBigInteger.
void ASN1StringToBigInteger(char const* text, CBigInteger& out);

// The text of BigIntegerToString in memory of the context. Throws 0x80093106 if that fails.
char const* BigIntegerToASN1String(ASN1CTXT* ctxt, CBigInteger const& value);

// 0x and eight digits, in memory of the context: 1 is 0x00000001. Throws 0x8007000E if that fails.
char const* DWORDToASN1BigInteger(ASN1CTXT* ctxt, std::uint32_t value);

// The bytes of the text as digits of base 11 and not 256, in 32 bits, which is meant: 0x0102 gives 13. A
// single byte comes out exact. Throws 0x80070057 for more than four bytes, and what StringToBigInteger
// throws.
std::uint32_t ASN1BigIntegerToDWORD(char const* text);

}  // namespace Mirvane::ASN1

#endif
