#include "asn1/access_description_traits.h"

#include "asn1/general_name_traits.h"
#include "asn1/primitive_traits.h"

namespace Mirvane::ASN1 {

void ASN1T_AccessDescription_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CAccessDescription const& description) {
    ASN1TObjId_traits::set(ctxt, rec.accessMethod, description.get_accessMethod());
    ASN1T_GeneralName_traits::set(ctxt, rec.accessLocation, description.get_accessLocation());
}

void ASN1T_AccessDescription_traits::get(ASN1_T const& rec, CAccessDescription& description) {
    CStringProxy method;
    CGeneralName location;
    ASN1TObjId_traits::get(rec.accessMethod, method);
    ASN1T_GeneralName_traits::get(rec.accessLocation, location);
    description = CAccessDescription(method.c_str(), location);
}

void ASN1T_AuthorityInfoAccessSyntax_traits::set(ASN1CTXT* ctxt, ASN1_T& rec,
                                                 CAuthorityInfoAccessSyntax const& access) {
    AccessDescriptionSequence_traits::set(ctxt, rec, access);
}

void ASN1T_AuthorityInfoAccessSyntax_traits::get(ASN1_T const& rec, CAuthorityInfoAccessSyntax& access) {
    CAuthorityInfoAccessSyntax read;
    AccessDescriptionSequence_traits::get(rec, read);
    access.swap(read);
}

}  // namespace Mirvane::ASN1
