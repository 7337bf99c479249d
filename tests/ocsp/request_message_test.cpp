#include "ocsp/request_message.h"

#include <new>
#include <set>

#include "messages.h"
#include "ocsp_test.h"
#include "support/failing_memory.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using ASN1::CExtensions;

constexpr unsigned kEmptyMessage = 0x80093102;
constexpr unsigned kIncompleteSignature = 0x8009200D;

CReqCert fullCertificate() {
    return CReqCert(CReqCert::certificate, rsaSigner().encoded);
}

CReqCert withSignature() {
    return CReqCert(CCertIdWithSignature(rsaSigner().encoded));
}

// A message of given parts: what stands in front of and behind the list of entries, which holds one CertID.
CBlob wireRequest(Octets const& before, Octets const& behind = {}, Octets const& signature = {}) {
    const CBlob identifier = certID().encode();
    const Octets entry(identifier.pbData(), identifier.pbData() + identifier.cbData());
    using test::operator+;
    return blobFrom(
        element(0x30, element(0x30, before + element(0x30, element(0x30, entry)) + behind) + signature));
}

Octets versionField(const char* number) {
    return element(0xA0, element(0x02, octets(number)));
}

Octets requestorNameField(Octets const& generalName) {
    return element(0xA1, generalName);
}

TEST(RequestMessage, NobodyFilledItIn) {
    const CRequestMessage message;
    EXPECT_EQ(message.get_version(), 0u);
    EXPECT_TRUE(message.get_requestList().empty());
    EXPECT_EQ(message.get_requestorName(), nullptr);
    EXPECT_EQ(message.get_requestExtensions(), nullptr);
    EXPECT_EQ(message.get_signatureAlgorithm(), nullptr);
    EXPECT_EQ(message.get_signature(), nullptr);
    EXPECT_EQ(message.get_signatureCerts(), nullptr);
    EXPECT_EQ(text(message.encode()), "30 04 30 02 30 00");
}

TEST(RequestMessage, AReceivedVersionStaysUntilEntriesAreSet) {
    CRequestMessage message;
    message.decode(wireRequest(versionField("01")));
    EXPECT_EQ(message.get_version(), 1u);
    EXPECT_TRUE(message.encode() == wireRequest(versionField("01")));
    message.put_requestList(message.get_requestList());
    EXPECT_EQ(message.get_version(), 0u);
    EXPECT_EQ(message.get_requestList().size(), 1u);
    // A version of 0 that is written out is one that DER leaves out.
    message.decode(wireRequest(versionField("00")));
    message.put_requestList(requestList({certID()}));
    EXPECT_TRUE(message.encode() == wireRequest({}));
}

TEST(RequestMessage, EntriesAreReplacedByLongerAndShorterLists) {
    const CExtensions extensions = nonceExtension();
    CRequestMessage message;
    for (std::size_t count : {1u, 3u, 2u, 0u}) {
        CSingleRequestList entries(count);
        for (auto& entry : entries)
            entry.put_singleRequestExtensions(&extensions);
        message.put_requestList(entries);
        ASSERT_EQ(message.get_requestList().size(), count);
        for (auto const& entry : message.get_requestList())
            EXPECT_EQ(*entry.get_singleRequestExtensions(), extensions);
    }
}

TEST(RequestMessage, EmptyExtensionsAreLeftOut) {
    const CExtensions none;
    CSingleRequestList entries = requestList({certID()});
    entries.front().put_singleRequestExtensions(&none);
    CRequestMessage message;
    message.put_requestList(entries);
    message.put_requestExtensions(&none);
    EXPECT_NE(message.get_requestExtensions(), nullptr);
    EXPECT_TRUE(message.encode() == wireRequest({}));
    CRequestMessage read;
    read.decode(message.encode());
    EXPECT_EQ(read.get_requestExtensions(), nullptr);
    EXPECT_EQ(read.get_requestList().front().get_singleRequestExtensions(), nullptr);
}

TEST(RequestMessage, AllPartsComeBack) {
    const CExtensions extensions = nonceExtension();
    const CBlob name = blobFrom(madeName("Asker"));
    CSingleRequestList entries = requestList({certID(), fullCertificate(), withSignature()});
    entries.back().put_singleRequestExtensions(&extensions);
    CRequestMessage message;
    message.put_requestList(entries);
    message.put_requestorName(&name);
    message.put_requestExtensions(&extensions);
    CRequestMessage read;
    read.decode(message.encode());
    EXPECT_EQ(*read.get_requestorName(), name);
    EXPECT_EQ(*read.get_requestExtensions(), extensions);
    auto entry = read.get_requestList().begin();
    EXPECT_EQ(*entry++->get_reqCert().get_certID(), certID());
    EXPECT_EQ(*entry++->get_reqCert().get_fullCert(), rsaSigner().encoded);
    EXPECT_EQ(*entry->get_reqCert().get_certIdWithSignature(), *withSignature().get_certIdWithSignature());
    EXPECT_EQ(*entry->get_singleRequestExtensions(), extensions);
    // A setter takes what the object itself holds.
    read.put_requestorName(read.get_requestorName());
    read.put_requestExtensions(read.get_requestExtensions());
    EXPECT_TRUE(read.encode() == message.encode());
    read.put_requestorName(nullptr);
    read.put_requestExtensions(nullptr);
    EXPECT_EQ(read.get_requestorName(), nullptr);
    EXPECT_EQ(read.get_requestExtensions(), nullptr);
}

TEST(RequestMessage, OnlyADirectoryNameMayAsk) {
    const std::pair<Octets, unsigned> rows[] = {
        {element(0xA4, madeName("Asker")), 0},
        {octets("82 01 41"), kInvalidArgument},                    // dNSName
        {octets("87 04 7F 00 00 01"), kInvalidArgument},           // iPAddress
        {octets("88 01 2A"), kInvalidArgument},                    // registeredID
        {octets("A0 07 06 01 2A A0 02 05 00"), kInvalidArgument},  // otherName
    };
    for (auto const& [generalName, code] : rows) {
        CRequestMessage message;
        EXPECT_EQ(thrownCode([&] { message.decode(wireRequest(requestorNameField(generalName))); }), code)
            << text(generalName);
        EXPECT_EQ(message.get_requestorName() != nullptr, code == 0);
        EXPECT_EQ(message.get_requestList().size(), 1u);
    }
}

TEST(RequestMessage, WhatDoesNotEncodeIsFoundOutThen) {
    const CBlob noName = blob("05 00");
    CRequestMessage message = requestAbout(certID());
    message.put_requestorName(&noName);
    EXPECT_EQ(thrownCode([&] { message.encode(); }), kAsn1);
    message.put_requestorName(nullptr);
    message.encode();
    message.put_requestList(requestList({CReqCert(CReqCert::certificate, blob("30 00"))}));
    EXPECT_EQ(thrownCode([&] { message.encode(); }), kAsn1);
    EXPECT_EQ(message.get_version(), 1u);
}

TEST(RequestMessage, WhatDoesNotDecodeChangesNothing) {
    CRequestMessage message;
    message.decode(wireRequest(versionField("01")));
    EXPECT_EQ(thrownCode([&] { message.decode(CBlob(0ul)); }), kEmptyMessage);
    expectRefused(message, kEmptyMessage, {""});
    expectRefused(message, kAsn1,
                  {"30", "30 00", "30 80", "31 04 30 02 30 00", "30 02 30 00", "30 04 30 02 31 00",
                   "30 06 30 04 30 02 30 00", "30 06 30 02 30 00 05 00", "04 01 00"});
}

TEST(RequestMessage, APartThatEndsBehindTheMessageIsReadAndThenRefused) {
    CRequestMessage message = signedRequest();
    CBlob encoded = wireRequest({});
    encoded.pbData()[3] = 0x7F;
    EXPECT_EQ(thrownCode([&] { message.decode(encoded); }), kAsn1);
    EXPECT_EQ(message.get_requestList().size(), 2u);
    EXPECT_EQ(message.get_signature(), nullptr);
}

TEST(RequestMessage, AnotherDecodeAppendsEntriesAndReplacesTheRest) {
    CRequestMessage message;
    const CBlob first = wireRequest(requestorNameField(element(0xA4, madeName("Asker"))));
    message.decode(first);
    message.decode(first);
    EXPECT_EQ(message.get_requestList().size(), 2u);
    message.decode(wireRequest({}));
    EXPECT_EQ(message.get_requestList().size(), 3u);
    EXPECT_EQ(message.get_requestorName(), nullptr);
}

TEST(RequestMessage, ASignatureOfNoBytesIsPresentAndNotWritten) {
    const Octets unsignedPart =
        element(0xA0, element(0x30, octets(std::string(kSha256WithRsa) + " 03 01 00")));
    CRequestMessage message;
    message.decode(wireRequest({}, {}, unsignedPart));
    ASSERT_NE(message.get_signature(), nullptr);
    EXPECT_EQ(message.get_signature()->cbData(), 0u);
    EXPECT_FALSE(message.verify(rsaSigner().encoded));
    EXPECT_TRUE(message.encode() == wireRequest({}));
}

TEST(SingleRequest, IsReplacedAndRevivedByAssignment) {
    CSingleRequest about(certID());
    const CExtensions extensions = nonceExtension();
    about.put_singleRequestExtensions(&extensions);
    about.put_singleRequestExtensions(about.get_singleRequestExtensions());
    CSingleRequest other;
    EXPECT_EQ(*other.get_reqCert().get_certID(), CCertID());
    other.clear();
    other = about;
    about.put_singleRequestExtensions(nullptr);
    EXPECT_EQ(about.get_singleRequestExtensions(), nullptr);
    EXPECT_EQ(*other.get_singleRequestExtensions(), extensions);
    EXPECT_EQ(*other.get_reqCert().get_certID(), certID());
}

TEST(RequestMessage, RealRequestsComeBackToTheirOwnBytes) {
    const auto files = vectorFiles("ocsp-requests");
    if (files.empty()) GTEST_SKIP() << "no real messages here";
    // Two write out the version that is the default, one has a serial number that is not minimal.
    const std::set<std::string> notDer = {"bcjava-OCSPTest-b64_2.orq.der", "botan-test_ocsp-b64_0.orq.der",
                                          "bssl-good_response_invalid_serial-pem3.orq.der"};
    for (auto const& path : files) {
        const CBlob received = blobFrom(readFile(path));
        CRequestMessage message;
        ASSERT_EQ(thrownCode([&] { message.decode(received); }), 0u) << path;
        EXPECT_EQ(message.encode() == received, !notDer.contains(path.filename())) << path;
    }
}

// Memory fails between the signature and its algorithm: the one way to have only the first.
TEST(RequestMessage, HalfASignatureIsNotWritten) {
    const CBlob encoded = signedRequest().encode();
    bool seen = false;
    for (int index = 0; !seen; ++index) {
        CRequestMessage message;
        bool happened = false;
        {
            const FailingMemory failing(index);
            try {
                message.decode(encoded);
            } catch (std::bad_alloc const&) {
            } catch (ATL::CAtlException const&) {
            }
            happened = failing.happened();
        }
        ASSERT_TRUE(happened);
        if (!message.get_signature() || message.get_signatureAlgorithm()) continue;
        seen = true;
        EXPECT_EQ(thrownCode([&] { message.encode(); }), kIncompleteSignature);
        EXPECT_EQ(thrownCode([&] { test::sign(message, rsaSigner()); }), kIncompleteSignature);
        EXPECT_EQ(thrownCode([&] { message.verify(rsaSigner().encoded); }), kInvalidArgument);
    }
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
