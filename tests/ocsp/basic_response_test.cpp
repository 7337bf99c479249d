#include "ocsp/basic_response.h"

#include <climits>
#include <set>

#include "asn1data/ocsp.h"
#include "libcrypto_extension.h"
#include "messages.h"
#include "ocsp/clock_precision.h"
#include "ocsp/message_signature.h"
#include "ocsp_test.h"
#include "support/allocation.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using ASN1::CExtensions;

CDateTime noonPlus(unsigned microseconds) {
    return CDateTime(2026, 1, 1, 12, 0, 0, microseconds / 1000, microseconds % 1000);
}

// The times of the wire as OpenSSL finds them.
struct WireTimes {
    explicit WireTimes(CBlob const& encoded) {
        const test::Response read = opensslResponse(encoded);
        ASN1_GENERALIZEDTIME* revoked = nullptr;
        ASN1_GENERALIZEDTIME* from = nullptr;
        ASN1_GENERALIZEDTIME* until = nullptr;
        OCSP_single_get0_status(OCSP_resp_get0(read.get(), 0), nullptr, &revoked, &from, &until);
        producedAt = content(OCSP_resp_get0_produced_at(read.get()));
        revocationTime = content(revoked);
        thisUpdate = content(from);
        nextUpdate = content(until);
    }

    static std::string content(ASN1_GENERALIZEDTIME const* time) {
        return reinterpret_cast<char const*>(ASN1_STRING_get0_data(time));
    }

    std::string producedAt, revocationTime, thisUpdate, nextUpdate;
};

TEST(ClockPrecision, CutsDigitsAndRoundsOnlyWithoutAny) {
    const struct {
        int digits;
        unsigned microseconds;
        const char* fraction;  // of the text
    } rows[] = {
        {6, 123456, "00.123456Z"}, {6, 100000, "00.1Z"},  {5, 123456, "00.12345Z"}, {4, 999999, "00.9999Z"},
        {3, 123999, "00.123Z"},    {2, 129999, "00.12Z"}, {1, 199999, "00.1Z"},     {1, 99999, "00Z"},
        {0, 500000, "00Z"},        {0, 500001, "01Z"},    {0, 999999, "01Z"},       {0, 0, "00Z"},
    };
    for (auto const& row : rows) {
        const CDateTime time = noonPlus(row.microseconds);
        CBasicResponse response(time, CResponderID(CResponderID::byKey, blob("01")));
        CSingleResponse entry(certID(), CCertStatus(time, nullptr), time);
        entry.put_nextUpdate(&time);
        response.put_responses({entry});
        response.put_clockPrecisionDigits(row.digits);
        test::sign(response, rsaSigner());
        const WireTimes times(response.encode());
        const std::string expected = std::string("202601011200") + row.fraction;
        EXPECT_EQ(times.producedAt, expected);
        EXPECT_EQ(times.thisUpdate, expected);
        EXPECT_EQ(times.nextUpdate, expected);
        EXPECT_EQ(times.revocationTime, "20260101120000Z");
        EXPECT_TRUE(response.get_producedAt() == time);
    }
}

TEST(ClockPrecision, RoundingCarriesIntoTheNextDay) {
    CClockPrecision precision;
    precision.put_clockPrecisionDigits(0);
    const CDateTime lastSecond(2026, 12, 31, 23, 59, 59, 900, 0);
    EXPECT_TRUE(precision.truncateDigits(lastSecond) == CDateTime("20270101000000Z"));
}

TEST(ClockPrecision, KnowsSevenPrecisions) {
    CClockPrecision precision;
    precision.put_clockPrecisionDigits(2);
    CBasicResponse response;
    for (int digits : {-1, 7, 100, INT_MIN, INT_MAX}) {
        EXPECT_EQ(thrownCode([&] { precision.put_clockPrecisionDigits(digits); }), kInvalidArgument);
        EXPECT_EQ(thrownCode([&] { response.put_clockPrecisionDigits(digits); }), kInvalidArgument);
    }
    EXPECT_TRUE(precision.truncateDigits(noonPlus(123456)) == noonPlus(120000));
}

TEST(BasicResponse, ACopyAndADecodedOneKeepThePrecision) {
    CBasicResponse fine = CBasicResponse(noonPlus(123456), CResponderID(CResponderID::byKey, blob("01")));
    CSingleResponse entry(certID(), CCertStatus(noonPlus(0), nullptr), noonPlus(123456));
    const CDateTime next = noonPlus(0);
    entry.put_nextUpdate(&next);
    fine.put_responses({entry});
    test::sign(fine, rsaSigner());
    const CBlob encoded = fine.encode();
    CBasicResponse coarse;
    coarse.put_clockPrecisionDigits(3);
    coarse.decode(encoded);
    EXPECT_TRUE(coarse.get_producedAt() == noonPlus(123456));
    EXPECT_EQ(WireTimes(CBasicResponse(coarse).encode()).thisUpdate, "20260101120000.123Z");
}

TEST(ResponderId, TellsTheNameOrTheKeyOfACertificate) {
    X509* const certificate = rsaSigner().certificate.get();
    Octets hash(20);
    X509_pubkey_digest(certificate, EVP_sha1(), hash.data(), nullptr);
    const CResponderID byKey = CResponderID::fromCert(CResponderID::byKey, rsaSigner().encoded);
    EXPECT_EQ(byKey.get_type(), CResponderID::byKey);
    EXPECT_EQ(byKey.get_value(), blobFrom(hash));
    const CResponderID byName = CResponderID::fromCert(CResponderID::byName, rsaSigner().encoded);
    EXPECT_EQ(byName.get_type(), CResponderID::byName);
    EXPECT_EQ(byName.get_value(), writtenBy(i2d_X509_NAME, X509_get_subject_name(certificate)));
    const auto sameKey = makeCertificate(rsaSigner().key, rsaSigner().digest, "Another", 1);
    EXPECT_TRUE(byKey == CResponderID::fromCert(CResponderID::byKey, writtenBy(i2d_X509, sameKey.get())));
}

TEST(ResponderId, WhatIsNoCertificateComesBeforeWhatIsNoType) {
    const auto noType = static_cast<CResponderID::Type>(2);
    EXPECT_EQ(thrownCode([] { CResponderID::fromCert(CResponderID::byKey, CBlob()); }), 0x80093102u);
    EXPECT_EQ(thrownCode([&] { CResponderID::fromCert(noType, blob("30 00")); }), 0x80093103u);
    EXPECT_EQ(thrownCode([&] { CResponderID::fromCert(noType, rsaSigner().encoded); }), kInvalidArgument);
}

TEST(ResponderId, ComparesNamesAsNamesAndKeysAsBytes) {
    const auto named = [](std::string_view name, unsigned char tag) {
        return CResponderID(CResponderID::byName, blobFrom(madeName(name, tag)));
    };
    EXPECT_TRUE(named("Responder", 0x13) == named("responder", 0x0C));
    EXPECT_TRUE(named("Responder", 0x13) != named("Responders", 0x13));
    EXPECT_TRUE(CResponderID() == CResponderID());
    CResponderID keyed(CResponderID::byKey, named("a", 0x13).get_value());
    EXPECT_TRUE(keyed != named("a", 0x13));
    EXPECT_TRUE(keyed != CResponderID(CResponderID::byKey, named("A", 0x13).get_value()));
    keyed.put_value(CResponderID::byName, keyed.get_value());
    EXPECT_TRUE(keyed == named("a", 0x13));
}

TEST(ResponderId, IsEncodedByItsType) {
    CResponderID id(CResponderID::byKey, blob("01 02"));
    EXPECT_EQ(text(id.encode()), "A2 04 04 02 01 02");
    CResponderID read;
    read.decode(id.encode());
    EXPECT_TRUE(read == id);
    id.put_value(CResponderID::byName, blobFrom(madeName("A")));
    EXPECT_EQ(text(id.encode()), "A1 0E 30 0C 31 0A 30 08 06 03 55 04 03 13 01 41");
    read.decode(id.encode());
    EXPECT_EQ(read.get_type(), CResponderID::byName);
    EXPECT_EQ(read.get_value(), id.get_value());
    expectRefused(id, kAsn1, {"", "A0 02 05 00", "A3 02 05 00", "A2 02 05 00", "A2 04 04 05 01"});
    id.put_value(static_cast<CResponderID::Type>(2), blob("01"));
    EXPECT_EQ(thrownCode([&] { id.encode(); }), kInvalidArgument);
    id.put_value(CResponderID::byName, blob("05 00"));
    EXPECT_EQ(thrownCode([&] { id.encode(); }), kAsn1);
    const asn1data::ASN1T_ResponderID noAlternative;
    EXPECT_EQ(thrownCode([&] { ASN1T_ResponderID_traits::get(noAlternative, read); }), kInvalidArgument);
}

TEST(BasicResponse, NobodyFilledItInAndNobodySignedIt) {
    CBasicResponse response;
    EXPECT_EQ(response.get_version(), 0u);
    EXPECT_TRUE(response.get_producedAt() == CDateTime("19700101000000Z"));
    EXPECT_TRUE(response.get_responderID() == CResponderID());
    EXPECT_TRUE(response.get_responses().empty());
    EXPECT_EQ(response.get_signature(), nullptr);
    EXPECT_EQ(response.get_signatureAlgorithm(), nullptr);
    EXPECT_EQ(response.get_certs(), nullptr);
    EXPECT_EQ(response.get_responseExtensions(), nullptr);
    // Told before the responder, which has no name.
    EXPECT_EQ(thrownCode([&] { response.encode(); }), kGeneral);
    EXPECT_EQ(thrownCode([&] { response.verify(rsaSigner().encoded); }), kGeneral);
}

TEST(BasicResponse, AllPartsComeBack) {
    const CExtensions extensions = nonceExtension();
    const CBlobList certificates = {rsaSigner().encoded, rsaSigner().encoded};
    const ASN1::CrlReason reason = ASN1::keyCompromise;
    CBasicResponse response = responseOf(rsaSigner());
    CSingleResponse revoked(certID(), CCertStatus(noonPlus(0), &reason), noonPlus(0));
    revoked.put_singleExtensions(&extensions);
    response.put_responses({response.get_responses().front(), revoked});
    response.put_responseExtensions(&extensions);
    response.put_certs(&certificates);
    response.put_certs(response.get_certs());
    response.put_responseExtensions(response.get_responseExtensions());
    test::sign(response, rsaSigner());
    const CBlob encoded = response.encode();
    EXPECT_TRUE(response.encode() == encoded);
    CBasicResponse read;
    read.decode(encoded);
    EXPECT_TRUE(read.get_responderID() == response.get_responderID());
    EXPECT_EQ(*read.get_responseExtensions(), extensions);
    EXPECT_TRUE(*read.get_certs() == certificates);
    EXPECT_EQ(*read.get_signatureAlgorithm(), rsaSigner().algorithm);
    EXPECT_EQ(*read.get_responses().back().get_certStatus().get_revocationReason(), reason);
    EXPECT_EQ(*read.get_responses().back().get_singleExtensions(), extensions);
    // One certificate as well: a second encoding begins at its start again.
    const CBlobList one = {rsaSigner().encoded};
    read.put_certs(&one);
    EXPECT_TRUE(read.encode() == read.encode());
}

TEST(BasicResponse, EmptyListsAreLeftOut) {
    const CExtensions noExtensions;
    const CBlobList noCertificates;
    CBasicResponse response = signedResponse();
    const CBlob plain = response.encode();
    response.put_responseExtensions(&noExtensions);
    response.put_certs(&noCertificates);
    EXPECT_TRUE(response.encode() == plain);
    CBasicResponse read;
    read.put_certs(&noCertificates);
    read.decode(plain);
    EXPECT_EQ(read.get_certs(), nullptr);
    EXPECT_EQ(read.get_responseExtensions(), nullptr);
}

TEST(BasicResponse, WhatDoesNotEncodeOrDecodeChangesNothing) {
    CBasicResponse response = signedResponse();
    expectRefused(response, kInvalidArgument, {""});
    expectRefused(response, kAsn1, {"30", "30 00", "30 80", "31 00", "30 02 30 00", "30 04 30 02 05 00"});
    const CBlobList noCertificates = {blob("30 00")};
    response.put_certs(&noCertificates);
    EXPECT_EQ(thrownCode([&] { response.encode(); }), kAsn1);
    EXPECT_TRUE(response.verify(rsaSigner().encoded));
}

// The parts of an entry stand in a room of fixed size while it is read; what it can't hold stands elsewhere.
TEST(BasicResponse, EntriesOfAllSizesComeBack) {
    const CCertID small = certID();
    CCertStatus good;
    good.put_good();
    CSingleResponseList entries;
    for (unsigned long octets : {1, 8, 900, 1014, 1022, 1023, 1024, 2000, 2048, 100000, 8}) {
        CBlob number(octets);
        for (unsigned long i = 0; i < octets; ++i)
            number.pbData()[i] = static_cast<unsigned char>(1 + i % 127);
        entries.push_back({CCertID(small.get_hashAlgorithm(), small.get_issuerNameHash(),
                                   small.get_issuerKeyHash(), ASN1::CBigInteger(number.pbData(), octets)),
                           good, noonPlus(0)});
    }
    CBasicResponse response(noonPlus(0), CResponderID(CResponderID::byKey, blob("01")));
    response.put_responses(entries);
    test::sign(response, rsaSigner());
    CBasicResponse read;
    read.decode(signedResponse().encode());
    read.decode(response.encode());  // replaces the one that was there
    ASSERT_EQ(read.get_responses().size(), entries.size());
    auto expected = entries.begin();
    for (CSingleResponse const& entry : read.get_responses()) {
        EXPECT_TRUE(*entry.get_reqCert().get_certID() == *expected->get_reqCert().get_certID());
        EXPECT_TRUE(entry.get_thisUpdate() == expected->get_thisUpdate());
        ++expected;
    }
}

// A response whose producedAt is this text of fifteen characters.
CBlob responseAt(std::string_view time) {
    CBlob encoded = signedResponse().encode();
    constexpr std::string_view producedAt = "20260101120000Z";
    unsigned char* const found = std::search(encoded.pbData(), encoded.pbData() + encoded.cbData(),
                                             producedAt.begin(), producedAt.end());
    std::copy(time.begin(), time.end(), found);
    return encoded;
}

TEST(BasicResponse, ATimeThatIsNoneLeavesNoOctetsOfAnEarlierResponse) {
    for (auto [time, code] : {std::pair("2026010112000AZ", 0x8007076Du), {"20261301120000Z", kGeneral}}) {
        CBasicResponse response;
        response.decode(signedResponse().encode());
        EXPECT_EQ(thrownCode([&] { response.decode(responseAt(time)); }), code) << time;
        EXPECT_EQ(response.get_signature(), nullptr);
        EXPECT_EQ(thrownCode([&] { response.verify(rsaSigner().encoded); }), kGeneral);
        EXPECT_EQ(thrownCode([&] { response.encode(); }), kGeneral);
    }
}

// Entries are read while the octets behind them are still to be decoded.
TEST(BasicResponse, OctetsThatDoNotDecodeAreToldBeforeATimeOfAnEntryThatIsNone) {
    CBlob encoded = signedResponse().encode();
    unsigned char* const end = encoded.pbData() + encoded.cbData();
    constexpr std::string_view thisUpdate = "20260101120000Z";
    std::find_end(encoded.pbData(), end, thisUpdate.begin(), thisUpdate.end())[5] = 'A';
    CBasicResponse response = signedResponse();
    const CBlob former = response.encode();
    const CBlob identifier = blob("06 09 2A 86 48 86 F7 0D 01 01 0B");
    unsigned char* const algorithm =
        std::find_end(encoded.pbData(), end, identifier.pbData(), identifier.pbData() + identifier.cbData());
    ASSERT_NE(algorithm, end);
    *algorithm = 0x07;
    EXPECT_EQ(thrownCode([&] { response.decode(encoded); }), kAsn1);
    EXPECT_TRUE(response.encode() == former);
    *algorithm = 0x06;
    EXPECT_EQ(thrownCode([&] { response.decode(encoded); }), 0x8007076Du);
    EXPECT_TRUE(response.get_responses().empty());
    EXPECT_EQ(response.get_signature(), nullptr);
}

TEST(BasicResponse, EncodingAgainAndAgainKeepsNoMemory) {
    CBasicResponse response = signedResponse();
    const CBlobList certificates = {rsaSigner().encoded};
    response.put_certs(&certificates);
    const CountedAllocations allocations;
    for (int round = 0; round < 3; ++round)
        response.encode();
    EXPECT_EQ(allocations.alive(), 0);
}

TEST(BasicResponseRecord, HoldsAWholeResponse) {
    const CBlob encoded = signedResponse().encode();
    EXPECT_TRUE(throughCopiedRecord<ASN1T_BasicOCSPResponse_traits>(encoded) == encoded);
    LiveContext context;
    asn1data::ASN1T_BasicOCSPResponse record;
    EXPECT_EQ(thrownCode([&] { ASN1T_BasicOCSPResponse_traits::set(context, record, blob("30 00")); }),
              kAsn1);
}

CExtensions valueOf(CExtensions const* extensions) {
    return extensions ? *extensions : CExtensions();
}

// The extensions of the response and of its entries, as libcrypto finds them.
void expectTheirExtensions(CBasicResponse const& response, OCSP_BASICRESP* theirs) {
    EXPECT_EQ(valueOf(response.get_responseExtensions()),
              extensionsOf(theirs, OCSP_BASICRESP_get_ext_count, OCSP_BASICRESP_get_ext));
    int index = 0;
    for (CSingleResponse const& entry : response.get_responses()) {
        EXPECT_EQ(valueOf(entry.get_singleExtensions()),
                  extensionsOf(OCSP_resp_get0(theirs, index++), OCSP_SINGLERESP_get_ext_count,
                               OCSP_SINGLERESP_get_ext));
    }
}

TEST(BasicResponse, RealResponsesComeBackToTheirOwnBytes) {
    const auto files = vectorFiles("ocsp-responses");
    if (files.empty()) GTEST_SKIP() << "no real messages here";
    // All but one write out the version that is the default, the fourth also fractions of zeros; the second
    // has a certificate whose BasicConstraints say FALSE.
    const std::set<std::string> notDer = {
        "bcjava-OCSPTest-b64_1.ors.der", "dss-DSSRevocationUtilsTest-b64_0.ors.der",
        "go-ocsp_test-hex3.ors.der",     "dss-Signature-X-BG-1-b64_3.ors.der",
        "go-ocsp_test-hex4.ors.der",     "dss-diagnosticData-ASIC-S_with_container-b64_13.ors.der"};
    for (auto const& path : files) {
        const CBlob inside = basicResponseInside(blobFrom(readFile(path)));
        if (inside.cbData() == 0) continue;
        CBasicResponse response;
        ASSERT_EQ(thrownCode([&] { response.decode(inside); }), 0u) << path;
        EXPECT_EQ(text(extractTbsBlob(inside)), text(elementsInside(inside)[0])) << path;
        EXPECT_EQ(response.encode() == inside, !notDer.contains(path.filename())) << path;
        const test::Response theirs = opensslResponse(inside);
        if (theirs) expectTheirExtensions(response, theirs.get());
    }
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
