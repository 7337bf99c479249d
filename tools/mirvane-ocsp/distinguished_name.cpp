#include "distinguished_name.h"

#include <openssl/err.h>
#include <openssl/x509.h>

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <vector>

#include "common/input.h"

namespace tools {
namespace {

using Mirvane::CBlob;

struct NameFree {
    void operator()(X509_NAME* name) const { X509_NAME_free(name); }
};

struct ObjectFree {
    void operator()(ASN1_OBJECT* object) const { ASN1_OBJECT_free(object); }
};

struct Attribute {
    std::string type;
    std::string value;
};

std::string trimmed(std::string const& text) {
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string::npos) return "";
    return text.substr(start, text.find_last_not_of(' ') - start + 1);
}

// The pieces between unescaped separators, each divided at its first "=".
std::vector<Attribute> split(std::string const& text, char separator) {
    std::vector<Attribute> result(1);
    bool isValue = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscaped = text[i] == '\\' && i + 1 < text.size();
        if (isEscaped) ++i;
        if (!isEscaped && text[i] == separator) {
            result.emplace_back();
            isValue = false;
        } else if (!isEscaped && !isValue && text[i] == '=') {
            isValue = true;
        } else {
            (isValue ? result.back().value : result.back().type) += text[i];
        }
    }
    return result;
}

std::optional<std::string> problemOfAdding(X509_NAME* name, std::string const& type,
                                           std::string const& value) {
    const std::unique_ptr<ASN1_OBJECT, ObjectFree> identifier(OBJ_txt2obj(type.c_str(), 0));
    const bool isAdded = identifier && !value.empty() &&
                         X509_NAME_add_entry_by_OBJ(name, identifier.get(), MBSTRING_UTF8,
                                                    reinterpret_cast<unsigned char const*>(value.data()),
                                                    static_cast<int>(value.size()), -1, 0) == 1;
    ERR_clear_error();
    if (isAdded) return std::nullopt;
    return identifier ? fmt::format("\"{}\" is no value for {}", value, type)
                      : fmt::format("\"{}\" is no type of attribute", type);
}

}  // namespace

CBlob parseDistinguishedName(std::string const& text) {
    const bool isSlashed = text.starts_with('/');
    const std::unique_ptr<X509_NAME, NameFree> name(X509_NAME_new());
    if (!name) throw std::bad_alloc();
    for (Attribute const& attribute : split(isSlashed ? text.substr(1) : text, isSlashed ? '/' : ',')) {
        if (auto problem = problemOfAdding(name.get(), trimmed(attribute.type), trimmed(attribute.value))) {
            throw InputError(text, "is no distinguished name: " + *problem);
        }
    }
    unsigned char* encoded = nullptr;
    const int length = i2d_X509_NAME(name.get(), &encoded);
    CBlob result(encoded, length > 0 ? static_cast<unsigned long>(length) : 0);
    OPENSSL_free(encoded);
    return result;
}

}  // namespace tools
