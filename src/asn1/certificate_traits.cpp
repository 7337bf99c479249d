#include "asn1/certificate_traits.h"

#include "asn1/bridge.h"
#include "asn1/primitive_traits.h"

namespace Mirvane::ASN1 {
namespace {

// The bridge would read the start of a blob that no record can hold.
void requireRecordSize(CBlob const& value) {
    if (value.cbData() > RT_MH_MAX_SIZE) failure::raise(failure::contextMemory);
}

}  // namespace

void Asn1TObject_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& value) {
    ASN1TOpenType_traits::set(ctxt, rec, value);
    rec.decoded = nullptr;
}

void Asn1TObject_traits::get(ASN1_T const& rec, CBlob& value) {
    ASN1TOpenType_traits::get(rec, value);
}

void Asn1TObject_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    ASN1TOpenType_traits::copy(ctxt, src, dst);
    dst.decoded = nullptr;
}

int Asn1TObject_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return ASN1TOpenType_traits::encode(buffer, rec);
}

int Asn1TObject_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return ASN1TOpenType_traits::decode(buffer, rec);
}

void ASN1T_Certificate_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& certificate) {
    requireRecordSize(certificate);
    asn1DecodeT<ASN1T_Certificate_traits>(certificate, ctxt, rec);
}

void ASN1T_Certificate_traits::get(ASN1_T const& rec, CBlob& certificate) {
    certificate = asn1EncodeT<ASN1T_Certificate_traits>(rec);
}

void ASN1T_CertificateList_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& list) {
    requireRecordSize(list);
    asn1DecodeT<ASN1T_CertificateList_traits>(list, ctxt, rec);
}

void ASN1T_CertificateList_traits::get(ASN1_T const& rec, CBlob& list) {
    list = asn1EncodeT<ASN1T_CertificateList_traits>(rec);
}

}  // namespace Mirvane::ASN1
