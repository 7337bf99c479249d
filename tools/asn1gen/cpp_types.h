// How types of the model are spelled in C++.
#ifndef MIRVANE_ASN1GEN_CPP_TYPES_H
#define MIRVANE_ASN1GEN_CPP_TYPES_H

#include <cstdint>
#include <string>

#include "asn1gen/model.h"

namespace asn1gen {

// The type of a value: "ASN1T_Name", or the field type of a type without a name, "ASN1TDynOctStr".
std::string valueType(const Type& type);

// What a simple type stands for: "std::uint32_t"; of a type with a structure "ASN1T_Name".
std::string underlyingType(const Type& type);

// The member of a record, with its initialiser: "ASN1T_Version version = 0;".
std::string memberDeclaration(const Type& type, const std::string& name);

// The descriptor as an expression: "types::Name", "builtin::OctetString", "kX_field".
std::string descriptor(const Type& type);

// The control class, made from a template where the type has no name.
std::string controlClass(const Type& type);
// The template behind the control class of a type: "Control<ASN1T_X, types::X>", and its name alone.
std::string controlTemplate(const Type& type);
std::string controlTemplateName(const Type& type);

// A NULL type's functions have an underscore behind the name.
std::string functionName(const Type& type);

// "0x20000010"
std::string hexTag(std::uint32_t tag);

// "x509_certificate.h", as generated files include it
std::string headerName(const SourceFile& file);

}  // namespace asn1gen

#endif
