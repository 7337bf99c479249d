#include <gtest/gtest.h>
#include <openssl/ocsp.h>

#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/exception.h"
#include "libcrypto_extension.h"
#include "ocsp/basic_response.h"
#include "ocsp/ocsp_extensions.h"
#include "ocsp/request_message.h"
#include "ocsp/response_message.h"
#include "support/vectors.h"

namespace Mirvane::PKI::OCSP {
namespace {

using ExtensionList = std::vector<ASN1::CExtension>;

// What libcrypto reads with `read`, null for what it refuses.
template <typename Object>
std::shared_ptr<Object> parsed(Object* (*read)(Object**, unsigned char const**, long),
                               void (*release)(Object*), unsigned char const* data, std::size_t size) {
    return {read(nullptr, &data, static_cast<long>(size)), release};
}

// Those of the message first, then those of its entries: libcrypto's, by its access functions.
template <typename Holder>
void collect(ExtensionList& list, Holder* holder, int (*count)(Holder*),
             X509_EXTENSION* (*get)(Holder*, int)) {
    for (int i = 0; i < count(holder); ++i) {
        X509_EXTENSION* const extension = get(holder, i);
        list.emplace_back(ASN1::CExtValue(test::oidOf(extension).c_str(), test::valueOf(extension)),
                          X509_EXTENSION_get_critical(extension) != 0);
    }
}

// And ours.
void collect(ExtensionList& list, ASN1::CExtensions const* extensions) {
    if (extensions) list.insert(list.end(), extensions->begin(), extensions->end());
}

ExtensionList theirsOfRequest(test::Octets const& message) {
    ExtensionList list;
    const auto request = parsed(d2i_OCSP_REQUEST, OCSP_REQUEST_free, message.data(), message.size());
    if (!request) return list;
    collect(list, request.get(), OCSP_REQUEST_get_ext_count, OCSP_REQUEST_get_ext);
    for (int i = 0; i < OCSP_request_onereq_count(request.get()); ++i) {
        collect(list, OCSP_request_onereq_get0(request.get(), i), OCSP_ONEREQ_get_ext_count,
                OCSP_ONEREQ_get_ext);
    }
    return list;
}

ExtensionList theirsOfResponse(test::Octets const& message) {
    ExtensionList list;
    const auto response = parsed(d2i_OCSP_RESPONSE, OCSP_RESPONSE_free, message.data(), message.size());
    if (!response) return list;
    const std::shared_ptr<OCSP_BASICRESP> basic(OCSP_response_get1_basic(response.get()),
                                                OCSP_BASICRESP_free);
    if (!basic) return list;
    collect(list, basic.get(), OCSP_BASICRESP_get_ext_count, OCSP_BASICRESP_get_ext);
    for (int i = 0; i < OCSP_resp_count(basic.get()); ++i) {
        collect(list, OCSP_resp_get0(basic.get(), i), OCSP_SINGLERESP_get_ext_count, OCSP_SINGLERESP_get_ext);
    }
    return list;
}

ExtensionList oursOfRequest(CBlob const& message) {
    CRequestMessage request;
    request.decode(message);
    ExtensionList list;
    collect(list, request.get_requestExtensions());
    for (auto const& entry : request.get_requestList())
        collect(list, entry.get_singleRequestExtensions());
    return list;
}

ExtensionList oursOfResponse(CBlob const& message) {
    CResponseMessage response;
    response.decode(message);
    CBasicResponse basic;
    basic.decode(*response.get_response());
    ExtensionList list;
    collect(list, basic.get_responseExtensions());
    for (auto const& entry : basic.get_responses())
        collect(list, entry.get_singleExtensions());
    return list;
}

void expectSameCutoff(CBlob const& value) {
    const auto time =
        parsed(d2i_ASN1_GENERALIZEDTIME, ASN1_GENERALIZEDTIME_free, value.pbData(), value.cbData());
    std::tm fields{};
    ASSERT_TRUE(time && ASN1_TIME_to_tm(time.get(), &fields));
    const CExtArchiveCutoff ours(value);
    EXPECT_EQ(ours.get_archiveCutoff(), CDateTime(static_cast<long>(timegm(&fields)), 0));
    EXPECT_EQ(CExtArchiveCutoff(ours.get_archiveCutoff()).get_value(), value);
}

void expectSameResponses(CBlob const& value) {
    const CExtAcceptableResponses ours(value);
    EXPECT_FALSE(ours.get_acceptableResponses().empty());
    EXPECT_EQ(CExtAcceptableResponses(ours.get_acceptableResponses()).get_value(), value);
}

using Seen = std::map<std::string, int>;

// Counts, by identifier, what both read.
template <typename Theirs, typename Ours>
void compare(Seen& seen, std::filesystem::path const& path, Theirs theirs, Ours ours) {
    SCOPED_TRACE(path.filename().string());
    const test::Octets message = test::readFile(path);
    const ExtensionList expected = theirs(message);
    if (expected.empty()) return;
    ExtensionList list;
    try {
        list = ours(CBlob(message.data(), message.size()));
    } catch (ATL::CAtlException const&) {
        return;  // which messages we read is for other tests
    }
    EXPECT_EQ(list, expected);
    for (auto const& extension : list) {
        const std::string oid = extension.get_oid();
        if (oid == "1.3.6.1.5.5.7.48.1.4") expectSameResponses(extension.get_value());
        if (oid == "1.3.6.1.5.5.7.48.1.6") expectSameCutoff(extension.get_value());
        ++seen[oid];
    }
}

TEST(RealOcspExtensions, AreThoseOfLibcryptoAndComeBackToTheirBytes) {
    const auto requests = test::vectorFiles("ocsp-requests");
    const auto responses = test::vectorFiles("ocsp-responses");
    if (requests.empty() || responses.empty()) GTEST_SKIP() << "no real messages here";
    Seen seen;
    for (auto const& path : requests)
        compare(seen, path, theirsOfRequest, oursOfRequest);
    for (auto const& path : responses)
        compare(seen, path, theirsOfResponse, oursOfResponse);
    EXPECT_GT(seen["1.3.6.1.5.5.7.48.1.2"], 30);
    EXPECT_GT(seen["1.3.6.1.5.5.7.48.1.4"], 0);
    EXPECT_GT(seen["1.3.6.1.5.5.7.48.1.6"], 3);
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
