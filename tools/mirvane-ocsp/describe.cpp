#include "describe.h"

#include <fmt/format.h>

#include "algorithms.h"
#include "certificate.h"
#include "common/printable.h"
#include "extension_text.h"
#include "reason.h"
#include "time_text.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::CBlobList;
using Mirvane::CDateTime;
using namespace Mirvane::ASN1;
using namespace Mirvane::PKI::OCSP;
using Json = nlohmann::ordered_json;

Json timeOrNull(CDateTime const* time) {
    return time ? Json(timeText(*time)) : Json(nullptr);
}

Json timeOrNull(ASN1_TIME const* time) {
    const auto converted = toDateTime(time);
    return timeOrNull(converted ? &*converted : nullptr);
}

// As people count: 0 on the wire is v1.
std::string versionText(std::uint32_t version) {
    return fmt::format("v{}", std::uint64_t{version} + 1);
}

Json describe(CAlgorithmIdentifier const& algorithm) {
    return {{"oid", algorithm.get_algorithm()}, {"name", algorithmName(algorithm.get_algorithm())}};
}

Json describe(CCertID const& identifier) {
    return {{"form", "certID"},
            {"hashAlgorithm", describe(identifier.get_hashAlgorithm())},
            {"issuerNameHash", hexText(identifier.get_issuerNameHash())},
            {"issuerKeyHash", hexText(identifier.get_issuerKeyHash())},
            {"serialNumber", serialText(identifier.get_serialNumber())}};
}

Json describe(CCertIdWithSignature const& identifier) {
    return {{"form", "certIdWithSignature"},
            {"issuer", nameText(identifier.get_issuer())},
            {"serialNumber", serialText(identifier.get_serialNumber())},
            {"tbsCertificateHash", hexText(identifier.get_tbsCertificateHash())},
            {"signatureAlgorithm", describe(identifier.get_signatureAlgorithm())},
            {"signatureValue", hexText(identifier.get_signatureValue())}};
}

// An encoded certificate, as far as OpenSSL reads it.
Json describe(CBlob const& octets) {
    Json result = Json::object();
    if (const auto certificate = Certificate::fromOctets(octets, "")) {
        result = {{"subject", nameText(certificate->subject())},
                  {"issuer", nameText(certificate->issuer())},
                  {"serialNumber", serialText(certificate->serialNumber())},
                  {"notBefore", timeOrNull(X509_get0_notBefore(certificate->get()))},
                  {"notAfter", timeOrNull(X509_get0_notAfter(certificate->get()))}};
    }
    result["size"] = octets.cbData();
    return result;
}

Json describeWhole(CReqCert::fullCertificateType type, CBlob const& octets) {
    Json result = {{"form", "fullCertificate"},
                   {"type", type == CReqCert::certificate ? "certificate" : "attributeCertificate"}};
    result.update(describe(octets));
    return result;
}

Json describe(CReqCert const& subject) {
    if (subject.get_certID()) return describe(*subject.get_certID());
    if (subject.get_certIdWithSignature()) return describe(*subject.get_certIdWithSignature());
    return describeWhole(*subject.get_fullCertType(), *subject.get_fullCert());
}

Json describe(CSingleRequest const& entry) {
    return {{"certificate", describe(entry.get_reqCert())},
            {"extensions", tools::describe(entry.get_singleRequestExtensions())}};
}

Json describe(CSingleResponse const& entry) {
    CCertStatus const& status = entry.get_certStatus();
    Json result = {{"certificate", describe(entry.get_reqCert())}, {"status", statusName(status)}};
    result["revocationTime"] = timeOrNull(status.get_revocationTime());
    CrlReason const* const reason = status.get_revocationReason();
    result["revocationReason"] = reason ? Json(reasonName(*reason)) : Json(nullptr);
    result["thisUpdate"] = timeText(entry.get_thisUpdate());
    result["nextUpdate"] = timeOrNull(entry.get_nextUpdate());
    result["extensions"] = tools::describe(entry.get_singleExtensions());
    return result;
}

template <typename List>
Json describeAll(List const& list) {
    Json result = Json::array();
    for (auto const& element : list)
        result.push_back(describe(element));
    return result;
}

Json describeSignature(CAlgorithmIdentifier const* algorithm, CBlob const* signature) {
    if (!algorithm || !signature) return nullptr;
    return {{"algorithm", describe(*algorithm)}, {"value", hexText(*signature)}};
}

Json describe(CResponderID const& responder) {
    if (responder.get_type() == CResponderID::byName) return {{"byName", nameText(responder.get_value())}};
    return {{"byKey", hexText(responder.get_value())}};
}

bool isIdentified(Json const& value) {
    return value.is_object() && value.size() == 2 && value.contains("oid") && value.contains("name");
}

std::string scalarText(Json const& value) {
    if (value.is_null() || (value.is_structured() && value.empty())) return "none";
    if (isIdentified(value)) {
        return fmt::format("{} ({})", value["name"].get<std::string>(), value["oid"].get<std::string>());
    }
    if (value.is_string()) return printable(value.get<std::string>());
    return printable(value.dump());
}

}  // namespace

std::string_view statusName(ResponseStatus status) {
    switch (status) {
        case Mirvane::PKI::OCSP::successful:
            return "successful";
        case Mirvane::PKI::OCSP::malformedRequest:
            return "malformedRequest";
        case Mirvane::PKI::OCSP::internalError:
            return "internalError";
        case Mirvane::PKI::OCSP::tryLater:
            return "tryLater";
        case Mirvane::PKI::OCSP::sigRequired:
            return "sigRequired";
        case Mirvane::PKI::OCSP::unauthorized:
            return "unauthorized";
    }
    return "unassigned";
}

std::string_view responseTypeName(std::string_view identifier) {
    return identifier == "1.3.6.1.5.5.7.48.1.1" ? "id-pkix-ocsp-basic" : "unknown type";
}

std::string_view statusName(CCertStatus const& status) {
    return status.isGood() ? "good" : status.isRevoked() ? "revoked" : "unknown";
}

Json describe(CRequestMessage const& request, CBlobList const& certificates) {
    Json result;
    result["version"] = versionText(request.get_version());
    CBlob const* const name = request.get_requestorName();
    result["requestorName"] = name ? Json(nameText(*name)) : Json(nullptr);
    result["entries"] = describeAll(request.get_requestList());
    result["extensions"] = describe(request.get_requestExtensions());
    result["signature"] = describeSignature(request.get_signatureAlgorithm(), request.get_signature());
    result["certificates"] = describeAll(certificates);
    return result;
}

Json describe(CBasicResponse const& response, CBlobList const& certificates) {
    Json result;
    result["version"] = versionText(response.get_version());
    result["responderID"] = describe(response.get_responderID());
    result["producedAt"] = timeText(response.get_producedAt());
    result["entries"] = describeAll(response.get_responses());
    result["extensions"] = describe(response.get_responseExtensions());
    result["signature"] = describeSignature(response.get_signatureAlgorithm(), response.get_signature());
    result["certificates"] = describeAll(certificates);
    return result;
}

void printMembers(Json const& object, int indent) {
    for (auto const& [key, value] : object.items()) {
        const bool isOneLine = !value.is_structured() || value.empty() || isIdentified(value) ||
                               (value.is_array() && value.front().is_string());
        if (isOneLine) {
            fmt::print("{:{}}{}: {}\n", "", indent, key, scalarText(value));
            continue;
        }
        fmt::print("{:{}}{}:\n", "", indent, key);
        if (value.is_object()) {
            printMembers(value, indent + 2);
            continue;
        }
        std::size_t number = 0;
        for (Json const& element : value) {
            fmt::print("{:{}}{} of {}:\n", "", indent + 2, ++number, value.size());
            printMembers(element, indent + 4);
        }
    }
}

}  // namespace tools
