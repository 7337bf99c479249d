#include "extension_text.h"

#include <fmt/format.h>

#include <string>

#include "asn1/typed_extensions.h"
#include "base/code_page_text.h"
#include "base/exception.h"
#include "certificate.h"
#include "nonce.h"
#include "ocsp/ocsp_extensions.h"
#include "reason.h"
#include "time_text.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using namespace Mirvane::ASN1;
using namespace Mirvane::PKI::OCSP;
using Json = nlohmann::ordered_json;

Json hexValue(CBlob const& value) {
    return hexText(value);
}

Json nonceValue(CBlob const& value) {
    return hexText(nonceOf(value));
}

template <typename Extension>
Json crlIdValue(CBlob const& value) {
    const Extension extension(value);
    Json result = Json::object();
    if (extension.get_crlUrl()) result["crlUrl"] = extension.get_crlUrl();
    if (extension.get_crlNum()) result["crlNum"] = *extension.get_crlNum();
    if (extension.get_crlTime()) result["crlTime"] = timeText(*extension.get_crlTime());
    return result;
}

Json acceptableValue(CBlob const& value) {
    Json result = Json::array();
    const CExtAcceptableResponses extension(value);
    for (Mirvane::CStringProxy const& type : extension.get_acceptableResponses())
        result.push_back(type.c_str());
    return result;
}

Json cutoffValue(CBlob const& value) {
    return timeText(CExtArchiveCutoff(value).get_archiveCutoff());
}

Json locatorValue(CBlob const& value) {
    const CExtServiceLocator extension(value);
    Json result = {{"issuer", nameText(extension.get_issuer())}, {"locator", Json::array()}};
    if (extension.get_locator()) {
        for (CAccessDescription const& access : *extension.get_locator()) {
            wchar_t const* const uri = access.get_accessLocation().get_uniformResourceIdentifier();
            const auto text = uri ? Mirvane::narrowed(uri) : std::nullopt;
            result["locator"].push_back(
                {{"method", access.get_accessMethod()}, {"uri", text ? Json(*text) : Json(nullptr)}});
        }
    }
    return result;
}

Json reasonValue(CBlob const& value) {
    return reasonName(CExtCRLReason(value).get_reason());
}

Json dateValue(CBlob const& value) {
    return timeText(CExtInvalidityDate(value).get_invalidityDate());
}

struct Known {
    std::string_view identifier;
    std::string_view name;
    Json (*value)(CBlob const&);
};

constexpr Known kExtensions[] = {
    {kNonceIdentifier, "nonce", nonceValue},
    {"1.3.6.1.5.5.7.48.1.3", "crlID", crlIdValue<CExtCrlID>},
    {"1.3.6.1.5.5.7.48.1.4", "acceptableResponses", acceptableValue},
    {"1.3.6.1.5.5.7.48.1.6", "archiveCutoff", cutoffValue},
    {"1.3.6.1.5.5.7.48.1.7", "serviceLocator", locatorValue},
    {"1.3.6.1.5.5.7.48.1.8", "preferredSignatureAlgorithms", hexValue},
    {"1.3.6.1.5.5.7.48.1.9", "extendedRevoke", hexValue},
    {"1.3.6.1.4.1.11129.2.4.5", "signedCertificateTimestamps", hexValue},
    {"2.5.29.21", "reasonCode", reasonValue},
    {"2.5.29.23", "holdInstructionCode", hexValue},
    {"2.5.29.24", "invalidityDate", dateValue},
    {"2.5.29.29", "certificateIssuer", hexValue},
    {"1.2.643.2.2.47.2", "crlLocator", hexValue},
    {"1.2.643.2.2.47.3", "instantRevocationIndicator", hexValue},
    {"1.2.643.2.2.47.4", "revocationAnnouncementReference", hexValue},
    {"1.2.643.2.2.47.5", "historicalRequest", crlIdValue<CExtHistoricalRequest>},
};

Known const* findKnown(std::string_view identifier) {
    for (Known const& known : kExtensions) {
        if (known.identifier == identifier) return &known;
    }
    return nullptr;
}

}  // namespace

bool isKnownExtension(std::string_view identifier) {
    return findKnown(identifier) != nullptr;
}

Json describe(CExtension const& extension) {
    Known const* const known = findKnown(extension.get_extnID());
    Json result;
    result["oid"] = extension.get_extnID();
    result["name"] = known ? known->name : "unknown";
    result["critical"] = extension.get_critical();
    CBlob const& value = extension.get_extnValue();
    try {
        result["value"] = (known ? known->value : hexValue)(value);
    } catch (ATL::CAtlException const&) {
        result["value"] = hexValue(value);
        result["problem"] = fmt::format("the value is no {}", known->name);
    }
    return result;
}

Json describe(CExtensions const* extensions) {
    Json result = Json::array();
    if (!extensions) return result;
    for (CExtension const& extension : *extensions)
        result.push_back(describe(extension));
    return result;
}

}  // namespace tools
