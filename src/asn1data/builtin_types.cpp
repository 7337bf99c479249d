#include "asn1data/builtin_types.h"

#include "asn1data/table_object.h"
#include "asn1rt/char_string.h"
#include "asn1rt/universal_tags.h"
#include "asn1rt/value_types.h"

namespace asn1data::builtin {
namespace {

template <typename Value>
constexpr TypeDescriptor describe(const char* name, Kind kind, ASN1TAG tag) {
    return {.name = name, .kind = kind, .tag = tag, .size = sizeof(Value), .alignment = alignof(Value)};
}

constexpr TypeDescriptor describeText(const char* name, ASN1TAG tag) {
    return describe<const char*>(name, Kind::CharString, tag);
}

}  // namespace

constinit const TypeDescriptor Boolean = describe<unsigned char>("BOOLEAN", Kind::Boolean, TAG_BOOLEAN);
constinit const TypeDescriptor Integer = describe<std::int32_t>("INTEGER", Kind::Integer, TAG_INTEGER);
constinit const TypeDescriptor Unsigned = describe<std::uint32_t>("INTEGER", Kind::Unsigned, TAG_INTEGER);
constinit const TypeDescriptor Uint16 = describe<std::uint16_t>("INTEGER", Kind::Uint16, TAG_INTEGER);
constinit const TypeDescriptor BigInteger = describe<const char*>("INTEGER", Kind::BigInteger, TAG_INTEGER);
constinit const TypeDescriptor Null = describe<char>("NULL", Kind::Null, TAG_NULL);
constinit const TypeDescriptor ObjectIdentifier =
    describe<ASN1TObjId>("OBJECT IDENTIFIER", Kind::ObjectIdentifier, TAG_OBJECT_IDENTIFIER);
constinit const TypeDescriptor OctetString =
    describe<ASN1TDynOctStr>("OCTET STRING", Kind::OctetString, TAG_OCTET_STRING);
constinit const TypeDescriptor BitString =
    describe<ASN1TDynBitStr>("BIT STRING", Kind::BitString, TAG_BIT_STRING);
constinit const TypeDescriptor OpenType = describe<ASN1TOpenType>("ANY", Kind::OpenType, kNoTag);
constinit const TypeDescriptor TableOpenType = describe<Asn1TObject>("ANY", Kind::TableOpenType, kNoTag);

constinit const TypeDescriptor Utf8String = describeText("UTF8String", TAG_UTF8_STRING);
constinit const TypeDescriptor NumericString = describeText("NumericString", TAG_NUMERIC_STRING);
constinit const TypeDescriptor PrintableString = describeText("PrintableString", TAG_PRINTABLE_STRING);
constinit const TypeDescriptor TeletexString = describeText("TeletexString", TAG_TELETEX_STRING);
constinit const TypeDescriptor Ia5String = describeText("IA5String", TAG_IA5_STRING);
constinit const TypeDescriptor UtcTime = describeText("UTCTime", TAG_UTC_TIME);
constinit const TypeDescriptor GeneralizedTime = describeText("GeneralizedTime", TAG_GENERALIZED_TIME);
constinit const TypeDescriptor VisibleString = describeText("VisibleString", TAG_VISIBLE_STRING);
constinit const TypeDescriptor UniversalString =
    describe<Asn132BitCharString>("UniversalString", Kind::UniversalString, TAG_UNIVERSAL_STRING);
constinit const TypeDescriptor BmpString =
    describe<Asn116BitCharString>("BMPString", Kind::BmpString, TAG_BMP_STRING);

}  // namespace asn1data::builtin
