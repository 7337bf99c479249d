#include "asn1/signer_info_traits.h"

#include "asn1/algorithm_identifier_traits.h"
#include "asn1/big_integer_text.h"
#include "asn1/primitive_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

CAlgorithmIdentifier algorithmOf(asn1data::ASN1T_AlgorithmIdentifier const& rec) {
    CAlgorithmIdentifier algorithm;
    ASN1T_AlgorithmIdentifier_get(algorithm, rec);
    return algorithm;
}

CBlob blobOf(ASN1TDynOctStr const& rec) {
    CBlob value;
    ASN1TDynOctStr_traits::get(rec, value);
    return value;
}

void putCertificate(CSignerInfo& info, asn1data::ASN1T_IssuerAndSerialNumber const& rec) {
    CBigInteger serialNumber;
    ASN1StringToBigInteger(rec.serialNumber, serialNumber);
    info.put_serialNumber(serialNumber);
    CBlob issuer;
    ASN1TOpenType_traits::get(rec.issuer, issuer);
    info.put_issuer(issuer);
}

}  // namespace

void ASN1T_SignerInfo_traits::get(ASN1_T const& rec, CSignerInfo& info) {
    CSignerInfo read;
    read.put_version(rec.version);
    read.put_digestAlgorithm(algorithmOf(rec.digestAlgorithm));
    read.put_signatureAlgorithm(algorithmOf(rec.signatureAlgorithm));
    read.put_signature(blobOf(rec.signature));
    if (rec.sid.t != asn1data::T_SignerIdentifier_issuerAndSerialNumber) failure::raise(failure::asn1);
    putCertificate(read, *rec.sid.u.issuerAndSerialNumber);
    info = read;
}

void ASN1T_SignerInfo_get(CSignerInfo& info, asn1data::ASN1T_SignerInfo const& rec) {
    ASN1T_SignerInfo_traits::get(rec, info);
}

}  // namespace Mirvane::ASN1
