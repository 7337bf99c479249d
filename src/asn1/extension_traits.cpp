#include "asn1/extension_traits.h"

#include "asn1/object_identifier_text.h"
#include "asn1/primitive_traits.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

void ASN1T_Extension_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CExtension const& extension) {
    ASN1BERDecodeBuffer memory;  // nothing is decoded from it: the value's decoded form lives in its context
    ASN1_T local;
    ASN1TObjId_traits::set(ctxt, local.extnID, extension.get_extnID());
    local.critical = extension.get_critical() ? 1 : 0;
    ASN1TDynOctStr_traits::set(ctxt, local.extnValue, extension.get_extnValue());
    if (asn1data::asn1DTC_Extension(memory.getCtxtPtr(), &local) != RTS_OK) failure::raise(failure::asn1);
    copy(ctxt, local, rec);
}

void ASN1T_Extension_traits::get(ASN1_T const& rec, CExtension& extension) {
    CBlob value;
    ASN1TDynOctStr_traits::get(rec.extnValue, value);
    extension = CExtension(CExtValue(toOID(rec.extnID).c_str(), value), rec.critical != 0);
}

void ASN1T_Extensions_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CExtensions const& extensions) {
    ExtensionSequence_traits::set(ctxt, rec, extensions);
}

void ASN1T_Extensions_traits::get(ASN1_T const& rec, CExtensions& extensions) {
    CExtensions read;
    ExtensionSequence_traits::get(rec, read);
    extensions.swap(read);
}

void ASN1T_Extensions_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    ExtensionSequence_traits::copy(ctxt, src, dst);
}

}  // namespace Mirvane::ASN1
