#include "name_text.h"

#include <string_view>

#include "asn1/attribute_register.h"
#include "asn1/name.h"
#include "asn1/name_traits.h"
#include "base/exception.h"
#include "elements.h"

namespace tools {
namespace {

using Mirvane::CWStringProxy;
using Mirvane::ASN1::CATAVRegister;
using Mirvane::ASN1::CAttributeTypeAndValue;
using Mirvane::ASN1::CName;

// Types that certificates carry beyond those that the library registers (RFC 4519, RFC 3739, EV guidelines).
void registerFurtherTypes() {
    using Mirvane::ASN1::StringTypeUTF8;
    static const CATAVRegister entries[] = {
        {"0.9.2342.19200300.100.1.1", L"UID", StringTypeUTF8, 32768},
        {"1.3.6.1.4.1.311.60.2.1.1", L"jurisdictionL", StringTypeUTF8, 32768},
        {"1.3.6.1.4.1.311.60.2.1.2", L"jurisdictionST", StringTypeUTF8, 32768},
        {"1.3.6.1.4.1.311.60.2.1.3", L"jurisdictionC", StringTypeUTF8, 32768},
        {"2.5.4.15", L"businessCategory", StringTypeUTF8, 32768},
        {"2.5.4.41", L"name", StringTypeUTF8, 32768},
        {"2.5.4.44", L"generationQualifier", StringTypeUTF8, 32768},
        {"2.5.4.46", L"dnQualifier", StringTypeUTF8, 32768},
        {"2.5.4.97", L"organizationIdentifier", StringTypeUTF8, 32768},
    };
    static_cast<void>(entries);
}

std::optional<std::string> toUtf8(const CWStringProxy& text) {
    const std::wstring_view wide = text.c_str();
    return plainText(Characters{{wide.begin(), wide.end()}});
}

// The characters of an encoded string, as the tool's own reader sees them.
std::optional<std::string> stringIn(const Mirvane::CBlob& encoded) {
    const auto elements = readElements({encoded.pbData(), encoded.cbData()});
    if (!elements || elements->size() != 1) return std::nullopt;
    const auto* element = std::get_if<ElementValue>(&elements->front().content);
    const auto* text = element ? std::get_if<TextValue>(&element->value->content) : nullptr;
    return text ? plainText(text->characters) : std::nullopt;
}

// What stands behind a separator in the value reads like the next attribute.
bool isMistakable(std::string_view value) {
    const auto separator = value.find_first_of(",+");
    return separator != std::string_view::npos && value.find('=', separator) != std::string_view::npos;
}

bool isTold(const CAttributeTypeAndValue& attribute) {
    const auto shown = toUtf8(attribute.get_value_str());
    if (!shown) return false;
    // A value of an unregistered type is shown by its octets, which tell everything.
    if (CATAVRegister::find(attribute.get_type()) == CATAVRegister::end()) return true;
    return shown == stringIn(attribute.get_value()) && !isMistakable(*shown);
}

}  // namespace

std::optional<std::string> nameText(const asn1data::ASN1T_Name& record) {
    registerFurtherTypes();
    try {
        CName name;
        Mirvane::ASN1::ASN1T_Name_traits::get(record, name);
        for (const auto& part : name) {
            for (const CAttributeTypeAndValue& attribute : part) {
                if (!isTold(attribute)) return std::nullopt;
            }
        }
        return toUtf8(name.toString());
    } catch (const ATL::CAtlException&) {
        return std::nullopt;
    }
}

}  // namespace tools
