// Descriptors of the types that need none of their own: a component or element of such a type, without a
// name, a tag or a SIZE, points here.
#ifndef MIRVANE_ASN1DATA_BUILTIN_TYPES_H
#define MIRVANE_ASN1DATA_BUILTIN_TYPES_H

#include "asn1data/descriptor.h"

namespace asn1data::builtin {

extern const TypeDescriptor Boolean;
extern const TypeDescriptor Integer;     // std::int32_t
extern const TypeDescriptor Unsigned;    // std::uint32_t
extern const TypeDescriptor Uint16;      // std::uint16_t
extern const TypeDescriptor BigInteger;  // text
extern const TypeDescriptor Null;
extern const TypeDescriptor ObjectIdentifier;
extern const TypeDescriptor OctetString;
extern const TypeDescriptor BitString;
extern const TypeDescriptor OpenType;
extern const TypeDescriptor TableOpenType;

extern const TypeDescriptor Utf8String;
extern const TypeDescriptor NumericString;
extern const TypeDescriptor PrintableString;
extern const TypeDescriptor TeletexString;
extern const TypeDescriptor Ia5String;
extern const TypeDescriptor UtcTime;
extern const TypeDescriptor GeneralizedTime;
extern const TypeDescriptor VisibleString;
extern const TypeDescriptor UniversalString;
extern const TypeDescriptor BmpString;

}  // namespace asn1data::builtin

#endif
