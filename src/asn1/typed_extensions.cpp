#include "asn1/typed_extensions.h"

#include "asn1/bridge.h"
#include "asn1/general_name_traits.h"
#include "asn1/primitive_traits.h"
#include "asn1/private_key_usage_period_traits.h"
#include "asn1/revocation_reason_traits.h"
#include "asn1/time_traits.h"

namespace Mirvane::ASN1 {
namespace {

constexpr char kReasonCode[] = "2.5.29.21";
constexpr char kHoldInstructionCode[] = "2.5.29.23";
constexpr char kInvalidityDate[] = "2.5.29.24";
constexpr char kCertificateIssuer[] = "2.5.29.29";
constexpr char kPrivateKeyUsagePeriod[] = "2.5.29.16";

}  // namespace

CExtCRLReason::CExtCRLReason() : CExtValue(kReasonCode) {}

CExtCRLReason::CExtCRLReason(CrlReason reason) : CExtValue(kReasonCode), reason_(reason) {
    encode();
}

CExtCRLReason::CExtCRLReason(CBlob const& encoded) : CExtValue(kReasonCode, encoded) {
    decode();
}

void CExtCRLReason::put_reason(CrlReason reason) {
    reason_ = reason;
    encode();
}

void CExtCRLReason::encode() {
    value() = asn1Encode<ASN1T_CRLReason_traits>(reason_);
}

void CExtCRLReason::decode() {
    asn1Decode<ASN1T_CRLReason_traits>(get_value(), reason_);
}

CExtHoldInstructionCode::CExtHoldInstructionCode() : CExtValue(kHoldInstructionCode) {}

CExtHoldInstructionCode::CExtHoldInstructionCode(char const* code)
    : CExtValue(kHoldInstructionCode), code_(code) {
    encode();
}

CExtHoldInstructionCode::CExtHoldInstructionCode(CBlob const& encoded)
    : CExtValue(kHoldInstructionCode, encoded) {
    decode();
}

void CExtHoldInstructionCode::put_code(char const* code) {
    code_ = code;
    encode();
}

void CExtHoldInstructionCode::encode() {
    value() = asn1Encode<ASN1TObjId_traits>(code_.c_str());
}

void CExtHoldInstructionCode::decode() {
    asn1Decode<ASN1TObjId_traits>(get_value(), code_);
}

CExtInvalidityDate::CExtInvalidityDate() : CExtValue(kInvalidityDate), invalidityDate_(0, 0) {}

CExtInvalidityDate::CExtInvalidityDate(CDateTime const& invalidityDate)
    : CExtValue(kInvalidityDate), invalidityDate_(invalidityDate) {
    encode();
}

CExtInvalidityDate::CExtInvalidityDate(CBlob const& encoded)
    : CExtValue(kInvalidityDate, encoded), invalidityDate_(0, 0) {
    decode();
}

void CExtInvalidityDate::put_invalidityDate(CDateTime const& invalidityDate) {
    invalidityDate_ = invalidityDate;
    encode();
}

void CExtInvalidityDate::encode() {
    value() = asn1Encode<ASN1GeneralizedTime_traits>(invalidityDate_);
}

void CExtInvalidityDate::decode() {
    asn1Decode<ASN1GeneralizedTime_traits>(get_value(), invalidityDate_);
}

CExtCertificateIssuer::CExtCertificateIssuer() : CExtValue(kCertificateIssuer) {}

CExtCertificateIssuer::CExtCertificateIssuer(CGeneralNames const& issuer)
    : CExtValue(kCertificateIssuer), issuer_(issuer) {
    encode();
}

CExtCertificateIssuer::CExtCertificateIssuer(CBlob const& encoded) : CExtValue(kCertificateIssuer, encoded) {
    decode();
}

void CExtCertificateIssuer::put_issuer(CGeneralNames const& issuer) {
    issuer_ = issuer;
    encode();
}

void CExtCertificateIssuer::encode() {
    value() = asn1Encode<ASN1T_GeneralNames_traits>(issuer_);
}

void CExtCertificateIssuer::decode() {
    asn1Decode<ASN1T_GeneralNames_traits>(get_value(), issuer_);
}

CExtPrivateKeyUsagePeriod::CExtPrivateKeyUsagePeriod(CDateTime const* notBefore, CDateTime const* notAfter)
    : CExtValue(kPrivateKeyUsagePeriod) {
    copy_to_auto_ptr(notBefore_, notBefore);
    copy_to_auto_ptr(notAfter_, notAfter);
    encode();
}

CExtPrivateKeyUsagePeriod::CExtPrivateKeyUsagePeriod(CBlob const& encoded)
    : CExtValue(kPrivateKeyUsagePeriod, encoded) {
    decode();
}

CExtPrivateKeyUsagePeriod::CExtPrivateKeyUsagePeriod(CExtPrivateKeyUsagePeriod const& other)
    : CExtValue(other) {
    copy_to_auto_ptr(notBefore_, other.get_notBefore());
    copy_to_auto_ptr(notAfter_, other.get_notAfter());
}

CExtPrivateKeyUsagePeriod::CExtPrivateKeyUsagePeriod(CExtPrivateKeyUsagePeriod&& other) = default;
CExtPrivateKeyUsagePeriod::~CExtPrivateKeyUsagePeriod() = default;

CExtPrivateKeyUsagePeriod& CExtPrivateKeyUsagePeriod::operator=(CExtPrivateKeyUsagePeriod const& other) {
    return *this = CExtPrivateKeyUsagePeriod(other);
}
CExtPrivateKeyUsagePeriod& CExtPrivateKeyUsagePeriod::operator=(CExtPrivateKeyUsagePeriod&& other) = default;

void CExtPrivateKeyUsagePeriod::put_notBefore(CDateTime const* notBefore) {
    copy_to_auto_ptr(notBefore_, notBefore);
    encode();
}

void CExtPrivateKeyUsagePeriod::put_notAfter(CDateTime const* notAfter) {
    copy_to_auto_ptr(notAfter_, notAfter);
    encode();
}

void CExtPrivateKeyUsagePeriod::encode() {
    value() = asn1Encode<ASN1T_PrivateKeyUsagePeriod_traits>(*this);
}

void CExtPrivateKeyUsagePeriod::decode() {
    const CBlob encoded = get_value();  // the put_ operations replace the blob while it is read
    asn1Decode<ASN1T_PrivateKeyUsagePeriod_traits>(encoded, *this);
}

}  // namespace Mirvane::ASN1
