#include "asn1/name_traits.h"

#include "asn1/bridge.h"
#include "asn1/certificate_traits.h"
#include "asn1/context_memory.h"
#include "asn1/primitive_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

void ASN1T_AttributeTypeAndValue_traits::set(ASN1CTXT* ctxt, ASN1_T& rec,
                                             CAttributeTypeAndValue const& value) {
    ASN1BERDecodeBuffer memory;  // nothing is decoded from it: the local record lives in its context
    ASN1_T local;
    ASN1TObjId_traits::set(memory.getCtxtPtr(), local.type, value.get_type());
    Asn1TObject_traits::set(memory.getCtxtPtr(), local.value, value.get_value());
    if (asn1data::asn1DTC_AttributeTypeAndValue(memory.getCtxtPtr(), &local) != RTS_OK)
        failure::raise(failure::asn1);
    copy(ctxt, local, rec);
}

void ASN1T_AttributeTypeAndValue_traits::get(ASN1_T const& rec, CAttributeTypeAndValue& value) {
    CStringProxy type;
    ASN1TObjId_traits::get(rec.type, type);
    CBlob encoded;
    Asn1TObject_traits::get(rec.value, encoded);
    value = CAttributeTypeAndValue(type.c_str(), encoded);
}

void ASN1T_RelativeDistinguishedName_traits::set(ASN1CTXT* ctxt, ASN1_T& rec,
                                                 CRelativeDistinguishedName const& name) {
    AttributeTypeAndValueSequence_traits::set(ctxt, rec, name);
}

void ASN1T_RelativeDistinguishedName_traits::get(ASN1_T const& rec, CRelativeDistinguishedName& name) {
    AttributeTypeAndValueSequence_traits::get(rec, name);
}

void ASN1T_RelativeDistinguishedName_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    AttributeTypeAndValueSequence_traits::copy(ctxt, src, dst);
}

void ASN1T_Name_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CName const& name) {
    rec.t = asn1data::T_Name_rdnSequence;
    rec.u.rdnSequence = newRecord<asn1data::ASN1T_RDNSequence>(ctxt);
    RelativeDistinguishedNameSequence_traits::set(ctxt, *rec.u.rdnSequence, name);
}

void ASN1T_Name_traits::get(ASN1_T const& rec, CName& name) {
    RelativeDistinguishedNameSequence_traits::get(*rec.u.rdnSequence, name);
}

void ASN1T_Name_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& encoded) {
    // The bridge would read the start of a blob that no record can hold.
    if (encoded.cbData() > RT_MH_MAX_SIZE) failure::raise(failure::contextMemory);
    asn1DecodeT<ASN1T_Name_traits>(encoded, ctxt, rec);
}

void ASN1T_Name_traits::get(ASN1_T const& rec, CBlob& encoded) {
    encoded = asn1EncodeT<ASN1T_Name_traits>(rec);
}

}  // namespace Mirvane::ASN1
