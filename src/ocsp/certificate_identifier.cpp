#include "ocsp/certificate_identifier.h"

#include <utility>

#include "asn1/algorithm_identifier_traits.h"
#include "asn1/big_integer_text.h"
#include "asn1/bridge.h"
#include "asn1/primitive_traits.h"
#include "asn1data/ocsp.h"
#include "ocsp/parsed_certificate.h"
#include "provider/hashing.h"

namespace Mirvane::ASN1 {

CBigInteger GetSerialFromCertContext(_CERT_CONTEXT const* certificate) {
    // The platform holds the number with its lowest octet first; its encoding is how the order is turned.
    const auto encode = [number = &certificate->pCertInfo->SerialNumber](BYTE* encoded, DWORD& length) {
        checkHard(CryptEncodeObject(PKI::OCSP::kCertificateEncoding, X509_MULTI_BYTE_INTEGER, number, encoded,
                                    &length));
    };
    DWORD length = 0;
    encode(nullptr, length);
    CBlob encoded(static_cast<unsigned long>(length));
    encode(encoded.pbData(), length);
    CBigInteger serialNumber;
    serialNumber.decode(encoded);
    return serialNumber;
}

}  // namespace Mirvane::ASN1

namespace Mirvane::PKI::OCSP {
namespace {

using CertIdRecord =
    ASN1::RecordTraits<asn1data::ASN1T_CertID, asn1data::ASN1C_CertID, asn1data::asn1Copy_CertID>;
using CertIdWithSignatureRecord =
    ASN1::RecordTraits<asn1data::ASN1T_CertIdWithSignature, asn1data::ASN1C_CertIdWithSignature,
                       asn1data::asn1Copy_CertIdWithSignature>;

// Read before the other fields: it alone may turn out to be none.
ASN1::CBigInteger serialNumberOf(char const* text) {
    ASN1::CBigInteger serialNumber;
    ASN1::ASN1StringToBigInteger(text, serialNumber);
    return serialNumber;
}

// What the codec refuses is meant to throw the platform's last code, whatever that tells of.
void decodeOrRaiseLastError(asn1data::ASN1C_Certificate& control, ASN1BERDecodeBuffer& buffer) {
    bool isRefused = false;
    try {
        isRefused = control.DecodeFrom(buffer) < 0;
    } catch (ASN1RTLException const&) {  // the outermost header
        isRefused = true;
    }
    if (isRefused) failure::raiseLastError();
}

// Read with this library's codec: the platform does not show it.
CBlob signatureOf(CBlob const& certificate) {
    return ASN1::road::run([&] {
        ASN1BERDecodeBuffer buffer(certificate.pbData(), ASN1::road::messageLength(certificate));
        asn1data::ASN1T_Certificate record;
        asn1data::ASN1C_Certificate control(buffer, record);
        decodeOrRaiseLastError(control, buffer);
        CBlob signature;
        ASN1::ASN1TDynBitStr_traits::get(record.signature, signature);
        return signature;
    });
}

// With the hash of the certificate's own signature algorithm, which the platform finds.
CBlob hashOfSignedPart(CBlob const& certificate) {
    const auto hash = [&](BYTE* value, DWORD& length) {
        checkHard(CryptHashToBeSigned(0, kCertificateEncoding, certificate.pbData(),
                                      platformLength(certificate.cbData()), value, &length));
    };
    DWORD length = 0;
    hash(nullptr, length);
    CBlob value;
    value.resize_to(length);
    hash(value.pbData(), length);
    return value;
}

}  // namespace

CCertID::CCertID() = default;
CCertID::CCertID(CCertID const& other) = default;
CCertID& CCertID::operator=(CCertID const& other) = default;
CCertID::~CCertID() = default;

CCertID::CCertID(ASN1::CAlgorithmIdentifier const& hashAlgorithm, CBlob const& issuerNameHash,
                 CBlob const& issuerKeyHash, ASN1::CBigInteger const& serialNumber)
    : hashAlgorithm_(hashAlgorithm),
      issuerNameHash_(issuerNameHash),
      issuerKeyHash_(issuerKeyHash),
      serialNumber_(serialNumber) {}

CCertID::CCertID(ASN1::CAlgorithmIdentifierEx const& hashAlgorithm, CBlob const& certificate,
                 CBlob const& issuerCertificate) {
    // The issuer's comes first, so that of two faults its own is told.
    const ATL2::CCertContext issuer = parsedCertificate(issuerCertificate);
    const ATL2::CCertContext subject = parsedCertificate(certificate);
    hashAlgorithm_ = static_cast<ASN1::CAlgorithmIdentifier const&>(hashAlgorithm);
    // MakeHash throws the code that an unknown algorithm has left behind, so nothing may come in between.
    const CBlob key = copyOf(issuer.Info().SubjectPublicKeyInfo.PublicKey);
    issuerKeyHash_ = MakeHash(0, hashAlgorithm.get_algId(), key, nullptr);
    issuerNameHash_ = MakeHash(0, hashAlgorithm.get_algId(), copyOf(subject.Info().Issuer), nullptr);
    serialNumber_ = ASN1::GetSerialFromCertContext(subject.GetHandle());
}

CBlob CCertID::encode() const {
    return ASN1::asn1Encode<ASN1T_CertID_traits>(*this);
}

void CCertID::decode(CBlob const& encoded) {
    ASN1::asn1Decode<ASN1T_CertID_traits>(encoded, *this);
}

bool operator==(CCertID const& left, CCertID const& right) {
    return left.get_hashAlgorithm() == right.get_hashAlgorithm() &&
           left.get_issuerKeyHash() == right.get_issuerKeyHash() &&
           left.get_issuerNameHash() == right.get_issuerNameHash() &&
           left.get_serialNumber() == right.get_serialNumber();
}

bool operator!=(CCertID const& left, CCertID const& right) {
    return !(left == right);
}

CCertIdWithSignature::CCertIdWithSignature() = default;
CCertIdWithSignature::CCertIdWithSignature(CCertIdWithSignature const& other) = default;
CCertIdWithSignature& CCertIdWithSignature::operator=(CCertIdWithSignature const& other) = default;
CCertIdWithSignature::~CCertIdWithSignature() = default;

CCertIdWithSignature::CCertIdWithSignature(CBlob const& issuer, ASN1::CBigInteger const& serialNumber,
                                           CBlob const& tbsCertificateHash,
                                           ASN1::CAlgorithmIdentifier const& signatureAlgorithm,
                                           CBlob const& signatureValue)
    : issuer_(issuer),
      serialNumber_(serialNumber),
      tbsCertificateHash_(tbsCertificateHash),
      signatureAlgorithm_(signatureAlgorithm),
      signatureValue_(signatureValue) {}

CCertIdWithSignature::CCertIdWithSignature(CBlob const& certificate) {
    const ATL2::CCertContext context = parsedCertificate(certificate);
    CERT_INFO const& info = context.Info();
    issuer_ = copyOf(info.Issuer);
    serialNumber_ = ASN1::GetSerialFromCertContext(context.GetHandle());
    signatureAlgorithm_.put_algorithm(info.SignatureAlgorithm.pszObjId);
    signatureAlgorithm_.put_parameters(copyOf(info.SignatureAlgorithm.Parameters));
    signatureValue_ = signatureOf(certificate);
    tbsCertificateHash_ = hashOfSignedPart(certificate);
}

CBlob CCertIdWithSignature::encode() const {
    return ASN1::asn1Encode<ASN1T_CertIdWithSignature_traits>(*this);
}

void CCertIdWithSignature::decode(CBlob const& encoded) {
    ASN1::asn1Decode<ASN1T_CertIdWithSignature_traits>(encoded, *this);
}

bool operator==(CCertIdWithSignature const& left, CCertIdWithSignature const& right) {
    return left.get_issuer() == right.get_issuer() && left.get_serialNumber() == right.get_serialNumber() &&
           left.get_tbsCertificateHash() == right.get_tbsCertificateHash() &&
           left.get_signatureAlgorithm() == right.get_signatureAlgorithm() &&
           left.get_signatureValue() == right.get_signatureValue();
}

bool operator!=(CCertIdWithSignature const& left, CCertIdWithSignature const& right) {
    return !(left == right);
}

void ASN1T_CertID_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CCertID const& value) {
    ASN1::ASN1T_AlgorithmIdentifier_traits::set(ctxt, record.hashAlgorithm, value.get_hashAlgorithm());
    ASN1::ASN1TDynOctStr_traits::set(ctxt, record.issuerKeyHash, value.get_issuerKeyHash());
    ASN1::ASN1TDynOctStr_traits::set(ctxt, record.issuerNameHash, value.get_issuerNameHash());
    record.serialNumber = ASN1::BigIntegerToASN1String(ctxt, value.get_serialNumber());
}

void ASN1T_CertID_traits::get(ASN1_T const& record, CCertID& value) {
    ASN1::CBigInteger serialNumber = serialNumberOf(record.serialNumber);
    ASN1::ASN1T_AlgorithmIdentifier_get(value.hashAlgorithm_, record.hashAlgorithm);
    ASN1::ASN1TDynOctStr_traits::get(record.issuerKeyHash, value.issuerKeyHash_);
    ASN1::ASN1TDynOctStr_traits::get(record.issuerNameHash, value.issuerNameHash_);
    value.serialNumber_ = std::move(serialNumber);
}

void ASN1T_CertID_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    CertIdRecord::copy(ctxt, source, target);
}

int ASN1T_CertID_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record) {
    return CertIdRecord::encode(buffer, record);
}

int ASN1T_CertID_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record) {
    return CertIdRecord::decode(buffer, record);
}

void ASN1T_CertIdWithSignature_set(ASN1CTXT* ctxt, asn1data::ASN1T_CertIdWithSignature& record,
                                   CCertIdWithSignature const& value) {
    ASN1::ASN1T_AlgorithmIdentifier_traits::set(ctxt, record.certSignature.signatureAlgorithm,
                                                value.get_signatureAlgorithm());
    ASN1::ASN1TDynBitStr_traits::set(ctxt, record.certSignature.signature, value.get_signatureValue());
    ASN1::ASN1TOpenType_traits::set(ctxt, record.issuerAndSerialNumber.issuer, value.get_issuer());
    record.issuerAndSerialNumber.serialNumber = ASN1::BigIntegerToASN1String(ctxt, value.get_serialNumber());
    ASN1::ASN1TDynBitStr_traits::set(ctxt, record.tbsCertificateHash, value.get_tbsCertificateHash());
}

void ASN1T_CertIdWithSignature_get(asn1data::ASN1T_CertIdWithSignature const& record,
                                   CCertIdWithSignature& value) {
    ASN1::CBigInteger serialNumber = serialNumberOf(record.issuerAndSerialNumber.serialNumber);
    ASN1::ASN1TOpenType_traits::get(record.issuerAndSerialNumber.issuer, value.issuer_);
    ASN1::ASN1T_AlgorithmIdentifier_get(value.signatureAlgorithm_, record.certSignature.signatureAlgorithm);
    ASN1::ASN1TDynBitStr_traits::get(record.certSignature.signature, value.signatureValue_);
    ASN1::ASN1TDynBitStr_traits::get(record.tbsCertificateHash, value.tbsCertificateHash_);
    value.serialNumber_ = std::move(serialNumber);
}

void ASN1T_CertIdWithSignature_traits::set(ASN1CTXT* ctxt, ASN1_T& record,
                                           CCertIdWithSignature const& value) {
    ASN1T_CertIdWithSignature_set(ctxt, record, value);
}

void ASN1T_CertIdWithSignature_traits::get(ASN1_T const& record, CCertIdWithSignature& value) {
    ASN1T_CertIdWithSignature_get(record, value);
}

void ASN1T_CertIdWithSignature_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    CertIdWithSignatureRecord::copy(ctxt, source, target);
}

int ASN1T_CertIdWithSignature_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record) {
    return CertIdWithSignatureRecord::encode(buffer, record);
}

int ASN1T_CertIdWithSignature_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record) {
    return CertIdWithSignatureRecord::decode(buffer, record);
}

}  // namespace Mirvane::PKI::OCSP
