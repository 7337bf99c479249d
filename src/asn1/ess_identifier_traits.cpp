#include "asn1/ess_identifier_traits.h"

#include <string_view>

#include "asn1/algorithm_identifier_traits.h"
#include "asn1/big_integer_text.h"
#include "asn1/general_name_traits.h"
#include "asn1/primitive_traits.h"

namespace Mirvane::ASN1 {
namespace {

// The optional issuerSerial, which the three identifiers have in common.
template <typename Record, typename Identifier>
void setIssuerSerial(ASN1CTXT* ctxt, Record& rec, Identifier const& identifier) {
    CIssuerSerial const* const issuerSerial = identifier.get_issuerSerial();
    if (issuerSerial == nullptr) return;
    rec.m.issuerSerialPresent = 1;
    ASN1T_IssuerSerial_traits::set(ctxt, rec.issuerSerial, *issuerSerial);
}

template <typename Record, typename Identifier>
void getIssuerSerial(Record const& rec, Identifier& identifier) {
    if (!rec.m.issuerSerialPresent) return identifier.put_issuerSerial(nullptr);
    CIssuerSerial issuerSerial;
    ASN1T_IssuerSerial_traits::get(rec.issuerSerial, issuerSerial);
    identifier.put_issuerSerial(&issuerSerial);
}

}  // namespace

void ASN1T_IssuerSerial_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CIssuerSerial const& value) {
    rec.m = {};
    ASN1T_GeneralNames_traits::set(ctxt, rec.issuer, value.get_issuer());
    rec.serial = BigIntegerToASN1String(ctxt, value.get_serialNumber());
}

void ASN1T_IssuerSerial_traits::get(ASN1_T const& rec, CIssuerSerial& value) {
    CGeneralNames issuer;
    ASN1T_GeneralNames_traits::get(rec.issuer, issuer);
    CBigInteger serialNumber;
    ASN1StringToBigInteger(rec.serial, serialNumber);
    value = CIssuerSerial(issuer, serialNumber);
}

void ASN1T_OtherHashAlgAndValue_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, COtherHashAlgAndValue const& value) {
    ASN1T_AlgorithmIdentifier_traits::set(ctxt, rec.hashAlgorithm, value.get_hashAlgorithm());
    ASN1TDynOctStr_traits::set(ctxt, rec.hashValue, value.get_hashValue());
}

void ASN1T_OtherHashAlgAndValue_traits::get(ASN1_T const& rec, COtherHashAlgAndValue& value) {
    CAlgorithmIdentifier alg;
    ASN1T_AlgorithmIdentifier_get(alg, rec.hashAlgorithm);
    CBlob hash;
    ASN1TDynOctStr_traits::get(rec.hashValue, hash);
    value = COtherHashAlgAndValue(hash, alg);
}

void ASN1T_OtherHash_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, COtherHash const& value) {
    switch (value.get_type()) {
        case COtherHash::sha1Hash:
            rec.t = asn1data::T_OtherHash_sha1Hash;
            rec.u.sha1Hash = newRecord<asn1data::ASN1T_OtherHashValue>(ctxt);
            return ASN1TDynOctStr_traits::set(ctxt, *rec.u.sha1Hash, *value.get_sha1Hash());
        case COtherHash::otherHash:
            rec.t = asn1data::T_OtherHash_otherHash;
            rec.u.otherHash = newRecord<asn1data::ASN1T_OtherHashAlgAndValue>(ctxt);
            return ASN1T_OtherHashAlgAndValue_traits::set(ctxt, *rec.u.otherHash, *value.get_otherHash());
        default:  // meant to be no failure here
            return;
    }
}

void ASN1T_OtherHash_traits::get(ASN1_T const& rec, COtherHash& value) {
    if (rec.t == asn1data::T_OtherHash_otherHash) {
        COtherHashAlgAndValue hash;
        ASN1T_OtherHashAlgAndValue_traits::get(*rec.u.otherHash, hash);
        value.put_otherHash(hash);
    } else if (rec.t == asn1data::T_OtherHash_sha1Hash) {
        CBlob hash;
        ASN1TDynOctStr_traits::get(*rec.u.sha1Hash, hash);
        value.put_sha1Hash(hash);
    }
}

void ASN1T_ESSCertID_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CESSCertID const& value) {
    rec.m = {};
    ASN1TDynOctStr_traits::set(ctxt, rec.certHash, value.get_certHash());
    setIssuerSerial(ctxt, rec, value);
}

void ASN1T_ESSCertID_traits::get(ASN1_T const& rec, CESSCertID& value) {
    CBlob hash;
    ASN1TDynOctStr_traits::get(rec.certHash, hash);
    CESSCertID read(hash);
    getIssuerSerial(rec, read);
    value = read;
}

void ASN1T_ESSCertIDv2_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CESSCertIDv2 const& value) {
    rec.m = {};
    // Meant to look at the identifier only.
    if (std::string_view(value.get_hashAlgorithm().get_algorithm()) != kDefaultHashAlgorithm) {
        rec.m.hashAlgorithmPresent = 1;
        ASN1T_AlgorithmIdentifier_traits::set(ctxt, rec.hashAlgorithm, value.get_hashAlgorithm());
    }
    ASN1TDynOctStr_traits::set(ctxt, rec.certHash, value.get_certHash());
    setIssuerSerial(ctxt, rec, value);
}

void ASN1T_ESSCertIDv2_traits::get(ASN1_T const& rec, CESSCertIDv2& value) {
    CAlgorithmIdentifier alg(kDefaultHashAlgorithm);
    if (rec.m.hashAlgorithmPresent) ASN1T_AlgorithmIdentifier_get(alg, rec.hashAlgorithm);
    CBlob hash;
    ASN1TDynOctStr_traits::get(rec.certHash, hash);
    CESSCertIDv2 read(hash, alg);
    getIssuerSerial(rec, read);
    value = read;
}

void ASN1T_OtherCertID_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, COtherCertID const& value) {
    rec.m = {};
    ASN1T_OtherHash_traits::set(ctxt, rec.otherCertHash, value.get_otherCertHash());
    setIssuerSerial(ctxt, rec, value);
}

void ASN1T_OtherCertID_traits::get(ASN1_T const& rec, COtherCertID& value) {
    COtherHash hash;
    ASN1T_OtherHash_traits::get(rec.otherCertHash, hash);
    COtherCertID read;
    read.put_otherCertHash(hash);
    getIssuerSerial(rec, read);
    value = read;
}

}  // namespace Mirvane::ASN1
