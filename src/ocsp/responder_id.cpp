#include "ocsp/responder_id.h"

#include "asn1/bridge.h"
#include "asn1/context_memory.h"
#include "asn1/name_traits.h"
#include "asn1/primitive_traits.h"
#include "asn1data/ocsp.h"
#include "ocsp/parsed_certificate.h"

namespace Mirvane::PKI::OCSP {
namespace {

using RecordTraits = ASN1::RecordTraits<asn1data::ASN1T_ResponderID, asn1data::ASN1C_ResponderID,
                                        asn1data::asn1Copy_ResponderID>;

// SHA-1 of the provider of type 75, whatever algorithms the certificate has.
CBlob hashOfKey(CRYPT_BIT_BLOB const& key) {
    ATL::CCryptProv provider;
    checkSoft(
        CryptAcquireContextA(provider.Place(), nullptr, nullptr, PROV_GOST_2001_DH, CRYPT_VERIFYCONTEXT));
    ATL::CCryptSHAHash hash;
    checkSoft(CryptCreateHash(provider.GetHandle(), CALG_SHA1, 0, 0, hash.Place()));
    checkSoft(CryptHashData(hash.GetHandle(), key.pbData, key.cbData, 0));
    DWORD length = 0;
    checkSoft(CryptGetHashParam(hash.GetHandle(), HP_HASHVAL, nullptr, &length, 0));
    CBlob value(static_cast<unsigned long>(length));
    checkSoft(CryptGetHashParam(hash.GetHandle(), HP_HASHVAL, value.pbData(), &length, 0));
    return value;
}

CERT_NAME_BLOB nameView(CBlob const& name) {
    return {platformLength(name.cbData()), name.pbData()};
}

}  // namespace

CResponderID::CResponderID() = default;
CResponderID::CResponderID(Type type, CBlob const& value) : type_(type), value_(value) {}
CResponderID::CResponderID(CResponderID const& other) = default;
CResponderID& CResponderID::operator=(CResponderID const& other) = default;
CResponderID::~CResponderID() = default;

CResponderID CResponderID::fromCert(Type type, CBlob const& certificate) {
    const ATL2::CCertContext context = parsedCertificate(certificate);
    switch (type) {
        case byKey:
            return {type, hashOfKey(context.Info().SubjectPublicKeyInfo.PublicKey)};
        case byName:
            return {type, copyOf(context.Info().Subject)};
    }
    failure::raise(failure::invalidArgument);
}

CBlob CResponderID::encode() const {
    return ASN1::asn1Encode<ASN1T_ResponderID_traits>(*this);
}

void CResponderID::decode(CBlob const& encoded) {
    ASN1::asn1Decode<ASN1T_ResponderID_traits>(encoded, *this);
}

void CResponderID::put_value(Type type, CBlob const& value) {
    value_ = value;
    type_ = type;
}

bool CResponderID::operator==(CResponderID const& other) const {
    if (type_ != other.type_) return false;
    if (type_ != byName) return value_ == other.value_;
    const CERT_NAME_BLOB one = nameView(value_);
    const CERT_NAME_BLOB two = nameView(other.value_);
    return CertCompareCertificateName(kCertificateEncoding, &one, &two) != 0;
}

void ASN1T_ResponderID_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CResponderID const& value) {
    switch (value.get_type()) {
        case CResponderID::byKey:
            record.t = asn1data::T_ResponderID_byKey;
            record.u.byKey = ASN1::newRecord<asn1data::ASN1T_KeyHash>(ctxt);
            ASN1::ASN1TDynOctStr_traits::set(ctxt, *record.u.byKey, value.get_value());
            return;
        case CResponderID::byName:
            record.t = asn1data::T_ResponderID_byName;
            record.u.byName = ASN1::newRecord<asn1data::ASN1T_Name>(ctxt);
            ASN1::ASN1T_Name_traits::set(ctxt, *record.u.byName, value.get_value());
            return;
    }
    failure::raise(failure::invalidArgument);
}

void ASN1T_ResponderID_traits::get(ASN1_T const& record, CResponderID& value) {
    CBlob held;
    CResponderID::Type type = CResponderID::byName;
    if (record.t == asn1data::T_ResponderID_byKey) {
        ASN1::ASN1TDynOctStr_traits::get(*record.u.byKey, held);
        type = CResponderID::byKey;
    } else if (record.t == asn1data::T_ResponderID_byName) {
        ASN1::ASN1T_Name_traits::get(*record.u.byName, held);
    } else {
        failure::raise(failure::invalidArgument);
    }
    value.put_value(type, held);
}

void ASN1T_ResponderID_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    RecordTraits::copy(ctxt, source, target);
}

int ASN1T_ResponderID_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record) {
    return RecordTraits::encode(buffer, record);
}

int ASN1T_ResponderID_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record) {
    return RecordTraits::decode(buffer, record);
}

}  // namespace Mirvane::PKI::OCSP
