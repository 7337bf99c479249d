#include "asn1/algorithm_identifier.h"

#include "asn1/algorithm_identifier_traits.h"
#include "platform/last_error.h"
#include "support/allocation.h"
#include "value_test.h"

namespace {

constexpr char sha1[] = "1.3.14.3.2.26";
constexpr char sha256[] = "2.16.840.1.101.3.4.2.1";
constexpr char rsa[] = "1.2.840.113549.1.1.1";
constexpr char gostHash[] = "1.2.643.2.2.9";

CAlgorithmIdentifier identifier(const char* oid, std::string_view parameters) {
    CAlgorithmIdentifier value(oid);
    value.put_parameters(test::blob(parameters));
    return value;
}

CAlgorithmIdentifierEx lookedUp(const char* oid) {
    CAlgorithmIdentifierEx value{CAlgorithmIdentifier(oid)};
    value.get_algId();
    return value;
}

// Changes the text below the number that was looked up, so that the number tells whether it was kept.
void changeUnseen(CAlgorithmIdentifierEx& value, const char* oid) {
    static_cast<CAlgorithmIdentifier&>(value).assign(oid);
}

}  // namespace

TEST(AlgorithmIdentifier, TravelsAsX509HasIt) {
    const struct {
        const char* oid;
        const char* parameters;
        const char* encoded;
    } rows[] = {
        {sha1, "", "30 07 06 05 2B 0E 03 02 1A"},
        {sha1, "05 00", "30 09 06 05 2B 0E 03 02 1A 05 00"},
        {rsa, "05 00", "30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00"},
        {gostHash, "06 07 2A 85 03 02 02 1E 01", "30 11 06 06 2A 85 03 02 02 09 06 07 2A 85 03 02 02 1E 01"},
        {"1.2.3", "04 02 AB CD", "30 08 06 02 2A 03 04 02 AB CD"},
    };
    for (const auto& [oid, parameters, encoded] : rows) {
        const CAlgorithmIdentifier value = identifier(oid, parameters);
        EXPECT_EQ(test::text(value.encode()), encoded);
        CAlgorithmIdentifier decoded = identifier("1.1", "02 01 05");
        decoded.decode(blob(encoded));
        EXPECT_EQ(decoded, value) << encoded;
    }
}

TEST(AlgorithmIdentifier, WhatHasNoEncodingIsRefused) {
    const CAlgorithmIdentifier rows[] = {
        CAlgorithmIdentifier(),       CAlgorithmIdentifier(nullptr),          CAlgorithmIdentifier("1..2"),
        CAlgorithmIdentifier("sha1"), CAlgorithmIdentifier("1.2.4294967295"), identifier(rsa, "02 01 05"),
        identifier(rsa, "05"),        identifier(gostHash, "30 00")};
    for (const CAlgorithmIdentifier& value : rows) {
        EXPECT_EQ(thrownCode([&] { value.encode(); }), 0x80093101u)
            << value.get_algorithm() << ' ' << test::text(value.get_parameters());
    }
}

TEST(AlgorithmIdentifier, ARefusedDecodeLeavesTheValue) {
    expectRefused(identifier(sha1, "05 00"), 0x80093101,
                  {"", "30", "30 00", "04 07 06 05 2B 0E 03 02 1A", "30 07 06 05 2B 0E 03 02"});
}

TEST(AlgorithmIdentifier, EqualityIsThatOfTextAndBytes) {
    EXPECT_EQ(identifier(sha1, "05 00"), identifier(sha1, "05 00"));
    EXPECT_NE(identifier(sha1, ""), identifier(sha1, "05 00"));
    EXPECT_NE(identifier(sha1, ""), identifier(sha256, ""));
    EXPECT_NE(CAlgorithmIdentifier("1.2"), CAlgorithmIdentifier("1.02"));
}

TEST(AlgorithmIdentifier, BothFieldsAreCopiedAndExchanged) {
    CAlgorithmIdentifier first = identifier(sha1, "05 00");
    CAlgorithmIdentifier second = identifier(sha256, "");
    first.swap(second);
    EXPECT_EQ(first, identifier(sha256, ""));
    EXPECT_EQ(second, identifier(sha1, "05 00"));
    first.swap(first);
    first = *&first;
    EXPECT_EQ(first, identifier(sha256, ""));
    first.assign(second);
    EXPECT_EQ(first, second);
    first.put_algorithm(first.get_algorithm() + 2);
    EXPECT_STREQ(first.get_algorithm(), sha1 + 2);
    first.put_algorithm(nullptr);
    EXPECT_STREQ(first.get_algorithm(), "");
}

TEST(AlgorithmIdentifier, ARecordSharesNothingWithTheValue) {
    test::LiveContext context;
    asn1data::ASN1T_AlgorithmIdentifier* record = nullptr;
    {
        const CBlob parameters = blob("06 07 2A 85 03 02 02 1E 01");
        record = ASN1T_AlgorithmIdentifier_set(context, gostHash, &parameters);
    }
    CAlgorithmIdentifier value;
    ASN1T_AlgorithmIdentifier_get(value, *record);
    EXPECT_EQ(value, identifier(gostHash, "06 07 2A 85 03 02 02 1E 01"));
    const CBlob empty;
    for (const CBlob* none : {&empty, static_cast<const CBlob*>(nullptr)})
        EXPECT_FALSE(ASN1T_AlgorithmIdentifier_set(context, sha1, none)->m.parametersPresent);
    test::CountedAllocations allocations;
    allocations.allow(0);
    EXPECT_EQ(thrownCode([&] { ASN1T_AlgorithmIdentifier_set(context, sha1, nullptr); }), 0x80093106u);
}

TEST(AlgorithmIdentifierEx, ThePlatformsNumberIsLookedUp) {
    EXPECT_EQ(lookedUp(sha1).get_algId(), CALG_SHA1);
    EXPECT_EQ(lookedUp(sha256).get_algId(), CALG_SHA_256);
    for (const char* oid : {"1.2.3", "", "no identifier"}) {
        SetLastError(0);
        EXPECT_EQ(CAlgorithmIdentifierEx(CAlgorithmIdentifier(oid)).get_algId(), 0u) << oid;
        EXPECT_EQ(GetLastError(), 0x80090008u) << oid;
    }
}

TEST(AlgorithmIdentifierEx, TheNumberIsKeptUntilTheTextChanges) {
    CAlgorithmIdentifierEx value = lookedUp(sha1);
    changeUnseen(value, sha256);
    EXPECT_EQ(value.get_algId(), CALG_SHA1);
    value.put_algorithm(sha256);
    EXPECT_EQ(value.get_algId(), CALG_SHA1);
    value.decode(CAlgorithmIdentifier(sha256).encode());
    EXPECT_EQ(value.get_algId(), CALG_SHA1);
    value.decode(CAlgorithmIdentifier(sha1).encode());
    changeUnseen(value, sha256);
    EXPECT_EQ(value.get_algId(), CALG_SHA_256);
    value.put_algorithm(sha1);
    EXPECT_EQ(value.get_algId(), CALG_SHA1);
}

TEST(AlgorithmIdentifierEx, CopiesAndExchangesTakeTheNumberOver) {
    CAlgorithmIdentifierEx source = lookedUp(sha1);
    changeUnseen(source, sha256);
    CAlgorithmIdentifierEx assigned, other, swapped;
    assigned = source;
    assigned = *&assigned;
    EXPECT_STREQ(assigned.get_algorithm(), sha256);
    other.assign(source);
    for (CAlgorithmIdentifierEx* copy : {&assigned, &other})
        EXPECT_EQ(copy->get_algId(), CALG_SHA1);
    EXPECT_EQ(CAlgorithmIdentifierEx(source).get_algId(), CALG_SHA1);
    const CAlgorithmIdentifierEx fromBase{static_cast<const CAlgorithmIdentifier&>(source)};
    EXPECT_EQ(fromBase.get_algId(), CALG_SHA_256);
    source.swap(swapped);
    EXPECT_EQ(swapped.get_algId(), CALG_SHA1);
    source.put_algorithm(sha256);
    EXPECT_EQ(source.get_algId(), CALG_SHA_256) << "nothing has been looked up here";
}

TEST(AlgorithmIdentifierEx, AnotherTextFromTheBaseForgetsTheNumber) {
    CAlgorithmIdentifier source(sha256);
    CAlgorithmIdentifierEx assigned = lookedUp(sha1);
    assigned = source;
    EXPECT_EQ(assigned.get_algId(), CALG_SHA_256);
    CAlgorithmIdentifierEx swapped = lookedUp(sha1);
    swapped.swap(source);
    EXPECT_EQ(swapped.get_algId(), CALG_SHA_256);
    EXPECT_STREQ(source.get_algorithm(), sha1);
    changeUnseen(swapped, sha1);
    swapped.assign(source);
    EXPECT_EQ(swapped.get_algId(), CALG_SHA_256) << "the same text keeps it";
}
