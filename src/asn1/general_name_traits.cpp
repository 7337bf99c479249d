#include "asn1/general_name_traits.h"

#include <cwchar>
#include <optional>
#include <string>

#include "asn1/context_memory.h"
#include "asn1/name_traits.h"
#include "asn1/object_identifier_text.h"
#include "asn1/primitive_traits.h"
#include "base/code_page_text.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

using asn1data::ASN1T_GeneralName;

// Four octets of narrow text for each character and the terminator must fit 32 bits.
constexpr std::size_t textLengthLimit = 0x3FFFFFFF;

std::optional<std::string> narrowText(wchar_t const* text) {
    if (text == nullptr || std::wcslen(text) >= textLengthLimit) return std::nullopt;
    return narrowed(text);
}

// In the memory of the context, or null.
char const* storedText(ASN1CTXT* ctxt, wchar_t const* text) {
    const auto narrow = narrowText(text);
    return narrow ? copyText(ctxt, narrow->c_str()) : nullptr;
}

ASN1TObjId* storedIdentifier(ASN1CTXT* ctxt, wchar_t const* text) {
    auto* const identifier = newRecord<ASN1TObjId>(ctxt);
    const auto narrow = narrowText(text);
    if (str2oid(narrow ? narrow->c_str() : nullptr, identifier) != 0)
        failure::raise(failure::invalidArgument);
    return identifier;
}

// Calls one of the name's put operations, which refuses what has not become wide text.
void putText(CGeneralName& name, void (CGeneralName::*put)(wchar_t const*), CStringProxy const& text) {
    const auto wide = widened(text.c_str());
    (name.*put)(wide ? wide->c_str() : nullptr);
}

}  // namespace

void ASN1T_GeneralName_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CGeneralName const& name) {
    rec.t = name.get_type();
    switch (name.get_type()) {
        case CGeneralName::rfc822Name:
            rec.u.rfc822Name = storedText(ctxt, name.get_rfc822Name());
            return;
        case CGeneralName::dNSName:
            rec.u.dNSName = storedText(ctxt, name.get_dNSName());
            return;
        case CGeneralName::directoryName:
            rec.u.directoryName = newRecord<asn1data::ASN1T_Name>(ctxt);
            return ASN1T_Name_traits::set(ctxt, *rec.u.directoryName, *name.get_directoryName());
        case CGeneralName::uniformResourceIdentifier:
            rec.u.uniformResourceIdentifier = storedText(ctxt, name.get_uniformResourceIdentifier());
            return;
        case CGeneralName::iPAddress:
            rec.u.iPAddress = newRecord<ASN1TDynOctStr>(ctxt);
            return ASN1TDynOctStr_traits::set(ctxt, *rec.u.iPAddress, *name.get_iPAddress());
        case CGeneralName::registeredID:
            rec.u.registeredID = storedIdentifier(ctxt, name.get_registeredID());
            return;
        default:
            failure::raise(failure::invalidArgument);
    }
}

void ASN1T_GeneralName_traits::get(ASN1_T const& rec, CGeneralName& name) {
    CBlob value;
    switch (rec.t) {
        case CGeneralName::rfc822Name:
            return putText(name, &CGeneralName::put_rfc822Name, rec.u.rfc822Name);
        case CGeneralName::dNSName:
            return putText(name, &CGeneralName::put_dNSName, rec.u.dNSName);
        case CGeneralName::directoryName:
            ASN1T_Name_traits::get(*rec.u.directoryName, value);
            return name.put_directoryName(value);
        case CGeneralName::uniformResourceIdentifier:
            return putText(name, &CGeneralName::put_uniformResourceIdentifier,
                           rec.u.uniformResourceIdentifier);
        case CGeneralName::iPAddress:
            // An address is meant to come back as a directory name.
            ASN1TDynOctStr_traits::get(*rec.u.iPAddress, value);
            return name.put_directoryName(value);
        case CGeneralName::registeredID:
            return putText(name, &CGeneralName::put_registeredID, toOID(*rec.u.registeredID));
        default:
            failure::raise(failure::invalidArgument);
    }
}

void ASN1T_GeneralNames_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CGeneralNames const& names) {
    GeneralNameSequence_traits::set(ctxt, rec, names);
}

void ASN1T_GeneralNames_traits::get(ASN1_T const& rec, CGeneralNames& names) {
    GeneralNameSequence_traits::get(rec, names);
}

}  // namespace Mirvane::ASN1
