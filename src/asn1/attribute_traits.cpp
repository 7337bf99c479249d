#include "asn1/attribute_traits.h"

#include "asn1/certificate_traits.h"
#include "asn1/object_identifier_text.h"
#include "asn1/primitive_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

void ASN1T_Attribute_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CAttribute const& attribute) {
    ASN1BERDecodeBuffer memory;  // nothing is decoded from it: the values' decoded forms live in its context
    ASN1_T local;
    ASN1TObjId_traits::set(ctxt, local.type, attribute.get_oid());
    CBlobList values;
    for (CAttrValue const& value : attribute)
        values.push_back(value.get_value());
    Asn1TObjectSequence_traits::set(ctxt, local.values, values);
    if (asn1data::asn1DTC_Attribute(memory.getCtxtPtr(), &local) != RTS_OK) failure::raise(failure::asn1);
    copy(ctxt, local, rec);
}

void ASN1T_Attribute_traits::get(ASN1_T const& rec, CAttribute& attribute) {
    CAttribute read(toOID(rec.type).c_str());
    CBlobList values;
    Asn1TObjectSequence_traits::get(rec.values, values);
    for (CBlob const& value : values)
        read.add(value);
    attribute = read;
}

void ASN1T_Attributes_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CAttributes const& attributes) {
    AttributeSequence_traits::set(ctxt, rec, attributes);
}

void ASN1T_Attributes_traits::get(ASN1_T const& rec, CAttributes& attributes) {
    AttributeSequence_traits::get(rec, attributes);
}

}  // namespace Mirvane::ASN1
