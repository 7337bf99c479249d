// An object's value as text, to see whether it changed: its encoding, as hexadecimal digits or the code of
// the failure.
#ifndef MIRVANE_TESTS_ALLOCATION_STATE_H
#define MIRVANE_TESTS_ALLOCATION_STATE_H

#include <concepts>
#include <string>
#include <type_traits>

#include "asn1/info_type_and_value.h"
#include "asn1/revocation_announcement.h"
#include "asn1/signer_info.h"
#include "base/exception.h"
#include "base/lists.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"
#include "support/blobs.h"

namespace test {

inline std::string stateOf(bool value) {
    return value ? "true" : "false";
}
inline std::string stateOf(const Mirvane::CStringProxy& value) {
    return value.c_str();
}
inline std::string stateOf(const Mirvane::CWStringProxy& value) {
    const std::wstring wide = value.c_str();
    return {wide.begin(), wide.end()};
}

// The text of what `tell` yields, or the failure that it ends in.
template <typename Tell>
std::string stateOrFailure(Tell tell) {
    try {
        return tell();
    } catch (const ATL::CAtlException& failure) {
        return "failure " + std::to_string(static_cast<unsigned>(failure.m_hr));
    }
}

// In a message of its own, since it has no encoding of its own.
inline std::string stateOf(const Mirvane::PKI::OCSP::CSingleRequest& entry) {
    return stateOrFailure([&] {
        Mirvane::PKI::OCSP::CSingleRequestList entries;
        entries.push_back(entry);
        Mirvane::PKI::OCSP::CRequestMessage message;
        message.put_requestList(entries);
        return text(message.encode());
    });
}

inline std::string stateOf(const Mirvane::PKI::OCSP::CSingleResponse& entry) {
    return stateOrFailure([&] {
        Mirvane::PKI::OCSP::CSingleResponseList entries;
        entries.push_back(entry);
        Mirvane::PKI::OCSP::CBasicResponse response(Mirvane::CDateTime("20260101120000Z"),
                                                    {Mirvane::PKI::OCSP::CResponderID::byKey, blob("01 02")});
        response.put_responses(entries);
        return text(response.encode());
    });
}

inline std::string stateOf(const Mirvane::PKI::OCSP::CReqCert& certificate) {
    return stateOrFailure([&] { return stateOf(Mirvane::PKI::OCSP::CSingleRequest(certificate)); });
}

inline std::string stateOf(const Mirvane::PKI::OCSP::CCertStatus& status) {
    return stateOrFailure([&] {
        const Mirvane::CDateTime* const time = status.get_revocationTime();
        const Mirvane::ASN1::CrlReason* const reason = status.get_revocationReason();
        return std::to_string(status.get_type()) +
               (time != nullptr ? time->getGeneralizedTime().c_str() : "") +
               (reason != nullptr ? " " + std::to_string(*reason) : "");
    });
}

inline std::string describe(const Mirvane::ASN1::CPKIFreeTextString& value) {
    const std::wstring wide = value.get_value();
    return std::string(wide.begin(), wide.end()) + " " + value.get_language().tostring().c_str();
}

inline std::string describe(const Mirvane::ASN1::CInfoTypeAndValue& value) {
    return std::string(value.get_infoType()) + " " + text(value.get_infoValue());
}

inline std::string describe(const Mirvane::ASN1::CSignerInfo& value) {
    return std::to_string(value.get_version()) + " " + text(value.get_issuer()) + " " +
           text(value.get_serialNumber()) + " " + text(value.get_signature()) + " " +
           value.get_digestAlgorithm().get_algorithm();
}

inline std::string describe(const Mirvane::ASN1::CCertId& value) {
    return stateOrFailure([&] { return text(value.get_issuer().encode()); }) + " " +
           text(value.get_serialNumber());
}

template <typename T>
requires(std::is_class_v<T>) std::string stateOf(const T& value) {
    if constexpr (requires {
                      { value.encode() } -> std::convertible_to<Mirvane::CBlob>;
                  }) {
        return stateOrFailure([&] { return text(value.encode()); });
    } else if constexpr (requires {
                             value.get_oid();
                             value.get_value();
                         }) {
        std::string state = std::string(value.get_oid()) + " " + text(value.get_value());
        if constexpr (requires(T copy) { copy.encode(); }) {
            state += stateOrFailure([&] {
                T copy(value);  // of which the member is shown
                copy.encode();
                return " " + text(copy.get_value());
            });
        }
        return state;
    } else if constexpr (std::is_base_of_v<Mirvane::CBlob, T>) {
        return text(value);
    } else if constexpr (requires {
                             value.size();
                             value.begin();
                         }) {
        std::string all;
        for (const auto& element : value)
            all += stateOf(element) + "; ";
        return all;
    } else {
        return describe(value);
    }
}

}  // namespace test

#endif
