#include "ocsp/response_message.h"

#include "asn1data/ocsp.h"
#include "ocsp_test.h"
#include "support/vectors.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;

// A type that the library has no schema for: its octets are opaque.
constexpr char kOwnType[] = "1.3.6.1.4.1.99999.1";
constexpr char kOwnResponse[] =
    "30 19 0A 01 00 A0 14 30 12 06 08 2B 06 01 04 01 86 8D 1F 04 06 30 04 02 02 01 2C";

TEST(ResponseMessage, NobodyFilledItInSaysInternalError) {
    CResponseMessage message;
    EXPECT_EQ(message.get_responseStatus(), internalError);
    EXPECT_EQ(message.get_responseType(), nullptr);
    EXPECT_EQ(message.get_response(), nullptr);
    EXPECT_EQ(text(message.encode()), "30 03 0A 01 02");
}

TEST(ResponseMessage, AnyStatusGoesWithOrWithoutBytes) {
    const CBlob bytes = blob("04 00");
    for (std::uint32_t status : {0u, 1u, 4u, 6u, 7u, 8u}) {
        CResponseMessage message;
        message.put_responseStatus(static_cast<ResponseStatus>(status));
        for (bool withBytes : {false, true}) {
            if (withBytes) message.put_response(kOwnType, &bytes);
            CResponseMessage read;
            read.decode(message.encode());
            EXPECT_EQ(read.get_responseStatus(), status);
            EXPECT_EQ(read.get_response() != nullptr, withBytes);
        }
    }
}

TEST(ResponseMessage, TakesTheOctetsApartAndTogether) {
    CResponseMessage message;
    message.decode(blob(kOwnResponse));
    EXPECT_EQ(message.get_responseStatus(), successful);
    EXPECT_STREQ(message.get_responseType(), "1.3.6.1.4.1.99999");
    EXPECT_EQ(text(*message.get_response()), "30 04 02 02 01 2C");
    EXPECT_EQ(text(message.encode()), kOwnResponse);
    message.decode(blob("30 03 0A 01 06 FF FF"));
    EXPECT_EQ(message.get_responseType(), nullptr);
    EXPECT_EQ(message.get_response(), nullptr);
}

TEST(ResponseMessage, ReadsIndefiniteForms) {
    CResponseMessage message;
    message.decode(
        blob("30 80 0A 01 00 A0 80 30 80 06 02 2A 03 24 80 04 01 41 04 01 42 00 00 00 00 00 00 00 00"));
    EXPECT_STREQ(message.get_responseType(), "1.2.3");
    EXPECT_EQ(text(*message.get_response()), "41 42");
    EXPECT_EQ(text(message.encode()), "30 0F 0A 01 00 A0 0A 30 08 06 02 2A 03 04 02 41 42");
}

TEST(ResponseMessage, PutResponseTakesBothOrNeither) {
    CResponseMessage message;
    const CBlob empty;
    EXPECT_EQ(thrownCode([&] { message.put_response("1.2.3", nullptr); }), kInvalidArgument);
    EXPECT_EQ(thrownCode([&] { message.put_response(nullptr, &empty); }), kInvalidArgument);
    EXPECT_EQ(message.get_response(), nullptr);
    message.put_response("1.2.3", &empty);
    EXPECT_EQ(text(message.encode()), "30 0D 0A 01 02 A0 08 30 06 06 02 2A 03 04 00");
    message.put_response(message.get_responseType(), message.get_response());
    EXPECT_STREQ(message.get_responseType(), "1.2.3");
    message.put_response(nullptr, nullptr);
    message.put_response(nullptr, nullptr);
    EXPECT_EQ(text(message.encode()), "30 03 0A 01 02");
}

TEST(ResponseMessage, OctetsThatAreGivenAwayAreNotCopied) {
    CResponseMessage message;
    CBlob octets = blob("04 00");
    unsigned char const* const place = octets.pbData();
    EXPECT_EQ(thrownCode([&] { message.put_response(nullptr, std::move(octets)); }), kInvalidArgument);
    EXPECT_EQ(octets.cbData(), 2u);
    message.put_response("1.2.3", std::move(octets));
    EXPECT_EQ(message.get_response()->pbData(), place);
    EXPECT_EQ(octets.cbData(), 0u);
    octets = blob("05 00");
    message.put_response(message.get_responseType(), std::move(octets));
    EXPECT_STREQ(message.get_responseType(), "1.2.3");
    EXPECT_EQ(text(*message.get_response()), "05 00");
}

TEST(ResponseMessage, WhatDoesNotEncodeThrowsAndChangesNothing) {
    CResponseMessage message;
    const CBlob bytes = blob("01");
    for (const char* type : {"", "1.2.", "abc", "1.2.x"}) {
        message.put_response(type, &bytes);
        EXPECT_EQ(thrownCode([&] { message.encode(); }), kInvalidArgument) << type;
        EXPECT_STREQ(message.get_responseType(), type);
    }
    for (const char* type : {"1", "3.1", "1.40"}) {
        message.put_response(type, &bytes);
        EXPECT_EQ(thrownCode([&] { message.encode(); }), kAsn1) << type;
    }
    message.put_response(nullptr, nullptr);
    for (std::uint32_t status : {9u, 127u, 0xFFFFFFFFu}) {
        message.put_responseStatus(static_cast<ResponseStatus>(status));
        EXPECT_EQ(thrownCode([&] { message.encode(); }), kAsn1) << status;
    }
}

TEST(ResponseMessage, WhatDoesNotDecodeThrowsAndChangesNothing) {
    CResponseMessage message;
    message.decode(blob(kOwnResponse));
    expectRefused(message, kInvalidArgument, {""});
    expectRefused(
        message, kAsn1,
        {"30", "30 00", "30 80", "31 03 0A 01 00", "30 03 02 01 00", "30 03 0A 01 09", "30 03 0A 01 FF",
         "30 05 0A 01 00 05 00", "30 05 0A 01 00 A0 00", "30 07 0A 01 00 A0 02 30 00",
         "30 0B 0A 01 00 A0 06 30 04 06 02 2A 03", "30 0F 0A 01 00 A0 0A 30 08 06 02 2A 03 04 00 05 00",
         "30 0D 0A 01 00 A0 08 30 06 06 02 2A 03 04 01", "30 04 0A 01 00"});
}

TEST(ResponseRecord, IsCopiedWithItsOctets) {
    CResponseMessage message;
    message.decode(blob(kOwnResponse));
    EXPECT_EQ(text(test::throughCopiedRecord<ASN1T_OCSPResponse_traits>(message).encode()), kOwnResponse);
}

// The response octets stay as they came, so even answers that are not DER inside come back whole.
TEST(ResponseMessage, RealResponsesComeBackToTheirOwnBytes) {
    const auto files = test::vectorFiles("ocsp-responses");
    if (files.empty()) GTEST_SKIP() << "no real messages here";
    for (auto const& path : files) {
        const test::Octets octets = test::readFile(path);
        const CBlob received(octets.data(), octets.size());
        CResponseMessage message;
        const unsigned code = thrownCode([&] { message.decode(received); });
        // One holds an empty list of extensions, which the basic response inside may not.
        EXPECT_EQ(code, path.filename() == "bcjava-OCSPTest-b64_4.ors.der" ? kAsn1 : 0) << path;
        EXPECT_TRUE(code != 0 || message.encode() == received) << path;
    }
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
