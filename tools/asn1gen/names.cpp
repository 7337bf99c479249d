#include "asn1gen/names.h"

#include <algorithm>
#include <array>

namespace asn1gen {
namespace {

constexpr std::array<std::string_view, 84> kReservedWords = {
    "alignas",  "alignof",  "and",       "asm",       "auto",       "bitand",       "bitor",
    "bool",     "break",    "case",      "catch",     "char",       "class",        "compl",
    "concept",  "const",    "consteval", "constexpr", "constinit",  "continue",     "decltype",
    "default",  "delete",   "do",        "double",    "else",       "enum",         "explicit",
    "export",   "extern",   "false",     "float",     "for",        "friend",       "goto",
    "if",       "inline",   "int",       "long",      "mutable",    "namespace",    "new",
    "noexcept", "not",      "nullptr",   "operator",  "or",         "private",      "protected",
    "public",   "register", "requires",  "return",    "short",      "signed",       "sizeof",
    "static",   "struct",   "switch",    "template",  "this",       "throw",        "true",
    "try",      "typedef",  "typeid",    "typename",  "union",      "unsigned",     "using",
    "virtual",  "void",     "volatile",  "while",     "xor",        "thread_local", "static_cast",
    "wchar_t",  "co_await", "co_return", "co_yield",  "const_cast", "dynamic_cast", "reinterpret_cast"};

// Names that a record has beside its components.
constexpr std::array<std::string_view, 3> kRecordNames = {"m", "mpContext", "extElem1"};

template <class Words>
bool contains(const Words& words, std::string_view name) {
    return std::find(words.begin(), words.end(), name) != words.end();
}

std::string underscored(std::string_view notation) {
    std::string name(notation);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

}  // namespace

std::string cppName(std::string_view notation) {
    std::string name = underscored(notation);
    return contains(kReservedWords, name) ? name + "_" : name;
}

std::string memberName(std::string_view notation) {
    std::string name = cppName(notation);
    return contains(kRecordNames, name) ? name + "_" : name;
}

std::string componentTypeName(std::string_view owner, std::string_view field) {
    return std::string(owner) + "_" + underscored(field);
}

std::string elementTypeName(std::string_view list) {
    return std::string(list) + "_element";
}

std::string objectTypeName(std::string_view object, std::string_view objectClass) {
    return "_" + underscored(object) + (objectClass == "EXTENSION" ? "_ExtnType" : "_Type");
}

std::string sharedListName(std::string_view element, bool setOf) {
    return (setOf ? "_SetOf" : "_SeqOf") + std::string(element);
}

}  // namespace asn1gen
