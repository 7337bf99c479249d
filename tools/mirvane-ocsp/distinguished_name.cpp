#include "distinguished_name.h"

#include <openssl/err.h>
#include <openssl/x509.h>

#include <memory>
#include <vector>

#include "common/input.h"

namespace tools {
namespace {

using Mirvane::CBlob;

struct NameFree {
    void operator()(X509_NAME* name) const { X509_NAME_free(name); }
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

}  // namespace

CBlob parseDistinguishedName(std::string const& text) {
    const bool isSlashed = text.starts_with('/');
    const std::unique_ptr<X509_NAME, NameFree> name(X509_NAME_new());
    if (!name) throw std::bad_alloc();
    for (Attribute const& attribute : split(isSlashed ? text.substr(1) : text, isSlashed ? '/' : ',')) {
        const std::string value = trimmed(attribute.value);
        const bool isAdded = X509_NAME_add_entry_by_txt(
            name.get(), trimmed(attribute.type).c_str(), MBSTRING_UTF8,
            reinterpret_cast<unsigned char const*>(value.data()), static_cast<int>(value.size()), -1, 0);
        ERR_clear_error();
        if (value.empty() || !isAdded) {
            throw InputError(text, "is no distinguished name: \"" + attribute.type + "\" does not do");
        }
    }
    unsigned char* encoded = nullptr;
    const int length = i2d_X509_NAME(name.get(), &encoded);
    CBlob result(encoded, length > 0 ? static_cast<unsigned long>(length) : 0);
    OPENSSL_free(encoded);
    return result;
}

}  // namespace tools
