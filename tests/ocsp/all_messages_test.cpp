// What requests, responses and envelopes have in common.
#include <functional>

#include "asn1rt/heap.h"
#include "messages.h"
#include "ocsp/response_message.h"
#include "ocsp_test.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using test::operator+;

// A name of two attributes in one set, which DER puts in order.
CBlob orderedName() {
    const auto attribute = [](const char* type, const char* text) {
        return element(0x30, octets(type) + element(0x13, Octets(text, text + 2)));
    };
    return blobFrom(
        element(0x30, element(0x31, attribute("06 03 55 04 03", "CA") + attribute("06 03 55 04 0A", "CA"))));
}

// A message with all its parts, and a change to it.
template <typename Message>
struct Sample;

template <>
struct Sample<CRequestMessage> {
    static CRequestMessage filled() {
        CRequestMessage message = requestAbout(CReqCert(CReqCert::certificate, rsaSigner().encoded));
        const ASN1::CExtensions nonce = nonceExtension();
        const CBlob name = orderedName();
        const CBlobList certificates = {rsaSigner().encoded};
        message.put_requestExtensions(&nonce);
        message.put_requestorName(&name);
        test::sign(message, rsaSigner(), &certificates);
        return message;
    }
    static void change(CRequestMessage& message) { message.put_requestList({}); }
};

template <>
struct Sample<CBasicResponse> {
    static CBasicResponse filled() {
        CBasicResponse message(CDateTime("20260101120000Z"),
                               CResponderID(CResponderID::byName, orderedName()));
        const ASN1::CExtensions nonce = nonceExtension();
        const CBlobList certificates = {rsaSigner().encoded};
        message.put_responses(responseOf(rsaSigner()).get_responses());
        message.put_responseExtensions(&nonce);
        message.put_certs(&certificates);
        test::sign(message, rsaSigner());
        return message;
    }
    static void change(CBasicResponse& message) { message.put_responses({}); }
};

template <>
struct Sample<CResponseMessage> {
    static CResponseMessage filled() {
        CResponseMessage message;
        const CBlob bytes = signedResponse().encode();
        message.put_response("1.3.6.1.5.5.7.48.1.1", &bytes);
        return message;
    }
    static void change(CResponseMessage& message) { message.put_response(nullptr, nullptr); }
};

template <typename Message>
class EachMessage : public testing::Test {};

using Messages = testing::Types<CRequestMessage, CBasicResponse, CResponseMessage>;
TYPED_TEST_SUITE(EachMessage, Messages);

TYPED_TEST(EachMessage, CopiesAreDeepAndAssignmentRevivesAClearedOne) {
    TypeParam first = Sample<TypeParam>::filled();
    const CBlob encoded = first.encode();
    TypeParam second(first);
    Sample<TypeParam>::change(first);
    EXPECT_TRUE(second.encode() == encoded);
    first.clear();
    first.clear();
    TypeParam third(first);
    third = second;
    second = first;
    first = third;
    TypeParam const& same = first;
    first = same;
    third.clear();
    EXPECT_TRUE(first.encode() == encoded);
}

TEST(Versions, FollowFromTheWaysToNameACertificate) {
    const CReqCert full(CReqCert::certificate, rsaSigner().encoded);
    const CReqCert withSignature{CCertIdWithSignature(rsaSigner().encoded)};
    const std::pair<std::vector<CReqCert>, std::uint32_t> rows[] = {
        {{certID(), certID()}, 0}, {{full}, 1}, {{certID(), certID(), withSignature}, 1}, {{}, 0}};
    CRequestMessage request;
    CBasicResponse response = responseOf(rsaSigner());
    for (auto const& [names, version] : rows) {
        CSingleRequestList questions(names.begin(), names.end());
        CSingleResponseList answers;
        for (CReqCert const& name : names)
            answers.push_back({name, CCertStatus(), CDateTime(0, 0)});
        request.put_requestList(questions);
        response.put_responses(answers);
        EXPECT_EQ(request.get_version(), version);
        EXPECT_EQ(response.get_version(), version);
        test::sign(response, rsaSigner());
        for (CBlob const& encoded : {request.encode(), response.encode()}) {
            const auto fields = elementsInside(blobFrom(elementsInside(encoded)[0]));
            EXPECT_EQ(test::text(fields[0]).starts_with("A0 03 02 01 01"), version == 1);
        }
        CRequestMessage readRequest;
        readRequest.decode(request.encode());
        EXPECT_EQ(readRequest.get_version(), version);
        EXPECT_EQ(readRequest.get_requestList().size(), names.size());
        CBasicResponse readResponse;
        readResponse.decode(response.encode());
        EXPECT_EQ(readResponse.get_version(), version);
        EXPECT_EQ(readResponse.get_responses().size(), names.size());
    }
    // What nobody filled in names a full certificate. A list may be put into itself.
    response.put_responses(CSingleResponseList(1));
    response.put_responses(response.get_responses());
    EXPECT_EQ(response.get_version(), 1u);
    EXPECT_EQ(response.get_responses().size(), 1u);
}

// How many octets the contexts asked for while `action` ran.
std::uint64_t octetsAllocated(std::function<void()> const& action) {
    static std::uint64_t total;
    total = 0;
    g_malloc_func = [](void* memApp, std::size_t size) {
        total += size;
        return rtDefaultMalloc(memApp, size);
    };
    action();
    g_malloc_func = rtDefaultMalloc;
    return total;
}

TEST(LongLists, TakeMemoryInProportion) {
    const auto octetsOf = [](std::size_t count) {
        CRequestMessage message, read;
        message.put_requestList(CSingleRequestList(count, CSingleRequest(certID())));
        return octetsAllocated([&] { read.decode(message.encode()); });
    };
    EXPECT_LT(octetsOf(40'000), 9 * octetsOf(5'000));
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
