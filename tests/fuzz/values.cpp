// The value classes, one row each: the first octet chooses the row. What decodes is encoded, copied and
// decoded again.
#include <array>

#include "asn1/access_description.h"
#include "asn1/algorithm_identifier.h"
#include "asn1/attributes.h"
#include "asn1/big_integer.h"
#include "asn1/certificate_values.h"
#include "asn1/content_info.h"
#include "asn1/distribution_point.h"
#include "asn1/ess_identifiers.h"
#include "asn1/extensions.h"
#include "asn1/general_name.h"
#include "asn1/issuer_serial.h"
#include "asn1/name.h"
#include "asn1/other_hash.h"
#include "asn1/pki_status.h"
#include "asn1/policy_information.h"
#include "asn1/revocation_announcement.h"
#include "asn1/signing_certificate_attributes.h"
#include "asn1/time_choice.h"
#include "asn1/typed_attributes.h"
#include "asn1/typed_extensions.h"
#include "fuzz/fields.h"
#include "fuzz/target.h"
#include "fuzz/value_rows.h"
#include "fuzz/whole_value.h"
#include "ocsp/certificate_identifier.h"
#include "ocsp/ocsp_extensions.h"
#include "ocsp/responder_id.h"
#include "ocsp/service_locator.h"

namespace fuzz {
namespace {

using namespace Mirvane;
using namespace Mirvane::ASN1;
using namespace Mirvane::PKI::OCSP;

// Texts that came in are UTF-8 or refused.
constexpr ATL::HRESULT kStated[] = {failure::asn1, failure::invalidArgument, failure::general,
                                    failure::invalidTime, failure::badUtf8};

// A class with `decode(blob)` and a const `encode()`. What decodes encodes, but for a name that is an
// address: see CGeneralName::decode.
template <typename Value, bool hasNames = false>
void value(const char* type, CBlob const& received) {
    Value decoded;
    if (!passes([&] { decoded.decode(received); }, kStated)) return;
    const bool strict = !hasNames && comesBack(type, {received.pbData(), received.cbData()});
    CBlob first;
    if (!passes([&] { first = decoded.encode(); }, kStated)) {
        require(!strict, "what decodes encodes");
        return;
    }
    Value copy(decoded);
    require(copy.encode() == first, "a copy encodes as the original");
    Value again;
    if (!passes([&] { again.decode(first); }, kStated)) {
        require(!strict, "what was encoded decodes");
        return;
    }
    require(again.encode() == first, "what was encoded comes back to its own bytes");
    copy = std::move(again);
    require(copy.encode() == first, "a moved value encodes as the original");
}

// With a start value, as the row wants.
struct FailureInfo : CPKIFailureInfo {
    FailureInfo() : CPKIFailureInfo(0) {}
};
struct StatusInfo : CPKIStatusInfo {
    StatusInfo() : CPKIStatusInfo(static_cast<PKIStatusEnum>(0)) {}
};

// A name has a text as well.
void name(const char* type, CBlob const& received) {
    value<CName>(type, received);
    CName decoded;
    if (!passes([&] { decoded.decode(received); })) return;
    passes([&] { read(decoded.toString().c_str()); }, std::array{failure::fromBits(failure::asn1)});
}

// A class around an encoded value, which it takes apart: an extension or an attribute.
template <typename Holder>
void holder(const char*, CBlob const& received) {
    passes(
        [&] {
            Holder decoded(received);
            passes(
                [&] {
                    decoded.encode();
                    const CBlob first = decoded.get_value();
                    Holder again(first);
                    again.encode();
                    require(again.get_value() == first, "what was encoded comes back to its own bytes");
                    Holder copy(decoded);
                    copy = again;
                    copy.encode();
                    require(copy.get_value() == first, "a copy encodes as the original");
                },
                kStated);
        },
        kStated);
}

// The two that have no public encode(): putting what was read encodes it.
template <typename Extension>
void listPointer(const char*, CBlob const& received) {
    passes(
        [&] {
            Extension decoded(received);
            const auto putAll = [](Extension& target, Extension const& source) {
                target.put_crlUrl(source.get_crlUrl());
                target.put_crlNum(source.get_crlNum());
                target.put_crlTime(source.get_crlTime());
            };
            putAll(decoded, decoded);
            Extension again(decoded.get_value());
            putAll(again, again);
            require(again.get_value() == decoded.get_value(), "what was encoded comes back to its own bytes");
        },
        kStated);
}

}  // namespace

const ValueRow kValueRows[] = {
    {"AccessDescription", value<CAccessDescription, true>},
    {"AuthorityInfoAccessSyntax", value<CAuthorityInfoAccessSyntax, true>},
    {"AlgorithmIdentifier", value<CAlgorithmIdentifier>},
    {"AttributeTypeAndValue", value<CAttributeTypeAndValue>},
    {"Attribute", value<CAttribute>},
    {"SignedAttributes", value<CAttributes>},
    {"CertificateSerialNumber", value<CBigInteger>},
    {"Certificate", value<CCertificateValue>},
    {"CertificateValues", value<CCertificateValues>},
    {"ContentInfo", value<CContentInfo>},
    {"DistributionPointName", value<CDistributionPointName, true>},
    {"DistributionPoint", value<CDistributionPoint, true>},
    {"ESSCertID", value<CESSCertID, true>},
    {"ESSCertIDv2", value<CESSCertIDv2, true>},
    {"OtherCertID", value<COtherCertID, true>},
    {"Extension", value<CExtension>},
    {"Extensions", value<CExtensions>},
    {"GeneralName", value<CGeneralName, true>},
    {"IssuerSerial", value<CIssuerSerial, true>},
    {"RelativeDistinguishedName", value<CRelativeDistinguishedName>},
    {"Name", name},
    {"OtherHashAlgAndValue", value<COtherHashAlgAndValue>},
    {"OtherHash", value<COtherHash>},
    {"PKIFailureInfo", value<FailureInfo>},
    {"PKIStatusInfo", value<StatusInfo>},
    {"PolicyInformation", value<CPolicyInformation>},
    {"RevAnnContent", value<CRevAnnContent, true>},
    {"Time", value<CTimeChoice>},
    {"CertID", value<CCertID>},
    {"CertIdWithSignature", value<CCertIdWithSignature>},
    {"ResponderID", value<CResponderID>},
    {"CRLReason", holder<CExtCRLReason>},
    {"HoldInstruction", holder<CExtHoldInstructionCode>},
    {"InvalidityDate", holder<CExtInvalidityDate>},
    {"GeneralNames", holder<CExtCertificateIssuer>},
    {"PrivateKeyUsagePeriod", holder<CExtPrivateKeyUsagePeriod>},
    {"AcceptableResponses", holder<CExtAcceptableResponses>},
    {"ArchiveCutoff", holder<CExtArchiveCutoff>},
    {"CRLDistPointsSyntax", holder<CExtCRLLocator>},
    {"ServiceLocator", holder<CExtServiceLocator>},
    {"CrlID", listPointer<CExtCrlID>},
    {"CrlID", listPointer<CExtHistoricalRequest>},
    {"ContentType", holder<CAttrContentType>},
    {"MessageDigest", holder<CAttrMessageDigest>},
    {"SigningTime", holder<CAttrSigningTime>},
    {"SigningCertificate", holder<CAttrSigningCertificate>},
    {"SigningCertificateV2", holder<CAttrSigningCertificateV2>},
    {"OtherSigningCertificate", holder<CAttrOtherSigningCertificate>},
};
const std::size_t kValueRowCount = std::size(kValueRows);

}  // namespace fuzz

MIRVANE_FUZZ_TARGET(value_classes, 1) {
    const fuzz::ValueRow& row = fuzz::kValueRows[input.number() % fuzz::kValueRowCount];
    row.run(row.type, input.rest());
}
