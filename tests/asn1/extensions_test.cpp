#include "asn1/extensions.h"

#include <map>

#include "asn1/extension_traits.h"
#include "real_objects.h"
#include "value_test.h"

namespace {

constexpr char kUnknown[] = "1.2.3.4";
constexpr char kReasonCode[] = "2.5.29.21";

CExtension extension(char const* oid, std::string_view value, bool critical = false) {
    return CExtension(CExtValue(oid, blob(value)), critical);
}

CExtensions three() {
    return {extension("1.2.1", "01"), extension("1.2.2", "02", true), extension("1.2.3", "03")};
}

}  // namespace

TEST(Extension, EncodesWithTheFlagOnlyIfItIsSet) {
    EXPECT_EQ(test::text(extension(kReasonCode, "0A 01 01").encode()), "30 0A 06 03 55 1D 15 04 03 0A 01 01");
    EXPECT_EQ(test::text(extension(kReasonCode, "0A 01 01", true).encode()),
              "30 0D 06 03 55 1D 15 01 01 FF 04 03 0A 01 01");
}

TEST(Extension, ComesBackFromItsEncoding) {
    for (const bool critical : {false, true}) {
        const CExtension written = extension(kUnknown, "DE AD", critical);
        CExtension read = extension(kReasonCode, "0A 01 01", !critical);
        read.decode(written.encode());
        EXPECT_EQ(read, written);
        EXPECT_STREQ(read.get_extnID(), kUnknown);
        EXPECT_EQ(read.get_critical(), critical);
    }
}

TEST(Extension, MayHaveNoValue) {
    for (char const* oid : {kUnknown, kReasonCode}) {
        CExtension read = extension("1.2", "01");
        read.decode(CExtension(CExtValue(oid), false).encode());
        EXPECT_EQ(read, CExtension(CExtValue(oid), false));
        EXPECT_EQ(CExtension(read).encode(), read.encode());
    }
}

TEST(Extension, IsRefusedWithTheStatedCodeAndStays) {
    EXPECT_EQ(thrownCode([] { CExtension().encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CExtension(CExtValue(nullptr), true).encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { extension("1.2.x", "01").encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { extension("1.40.1", "01").encode(); }), 0x80093101u);
    EXPECT_EQ(thrownCode([] { extension(kReasonCode, "0A 02 01").encode(); }), 0x80093101u);
    expectRefused(extension(kUnknown, "01", true), 0x80093101,
                  {"", "30 00", "30 0A 06 03 55 1D 15 04 03 0A 02 01", "31 03 06 01 2A"});
}

TEST(Extension, IsEqualInFlagIdentifierAndValueTogether) {
    const CExtension first = extension("1.2", "01");
    EXPECT_EQ(first, extension("1.2", "01"));
    EXPECT_NE(first, extension("1.2", "01", true));
    EXPECT_NE(first, extension("1.02", "01"));
    EXPECT_NE(first, extension("1.2", "01 00"));
}

TEST(Extension, AKnownValueThatIsNotDerIsWrittenInDer) {
    // basicConstraints with cA FALSE written out.
    EXPECT_EQ(test::text(extension("2.5.29.19", "30 03 01 01 00").encode()),
              "30 09 06 03 55 1D 13 04 02 30 00");
}

TEST(Extensions, AreFoundByTheirExactIdentifier) {
    CExtensions list = three();
    EXPECT_EQ(list.find("1.2.2"), std::next(list.begin()));
    EXPECT_EQ(std::as_const(list).find("1.2.2"), std::next(list.cbegin()));
    for (char const* other : {"1.2", "1.2.22", "", static_cast<char const*>(nullptr)}) {
        EXPECT_EQ(list.find(other), list.end());
    }
    list.push_back(extension("1.2.2", "04"));
    EXPECT_EQ(list.find("1.2.2"), std::next(list.begin())) << "the first of several";
}

TEST(Extensions, InsertReplacesInPlaceOrAppends) {
    CExtensions list = three();
    list.insert(extension("1.2.2", "AA"));
    EXPECT_EQ(list,
              (CExtensions{extension("1.2.1", "01"), extension("1.2.2", "AA"), extension("1.2.3", "03")}));
    list.insert(extension("1.2.4", "BB", true));
    EXPECT_EQ(list.size(), 4u);
    EXPECT_EQ(list.back(), extension("1.2.4", "BB", true));
    list.insert(list.front());
    EXPECT_EQ(list.size(), 4u);
}

TEST(Extensions, EraseRemovesTheFirstMatchOnly) {
    CExtensions list = three();
    list.push_back(extension("1.2.1", "04"));
    list.erase("1.2.1");
    EXPECT_EQ(list, (CExtensions{extension("1.2.2", "02", true), extension("1.2.3", "03"),
                                 extension("1.2.1", "04")}));
    list.erase("1.2.9");
    list.erase(nullptr);
    EXPECT_EQ(list.size(), 3u);
}

TEST(Extensions, AreEqualInTheSameOrderOnly) {
    CExtensions other = three();
    EXPECT_EQ(other, three());
    other.reverse();
    EXPECT_NE(other, three());
    other.reverse();
    other.pop_back();
    EXPECT_NE(other, three());
}

TEST(Extensions, ComeBackWithEveryDuplicate) {
    CExtensions written = three();
    written.push_back(written.front());
    CExtensions read = three();
    read.decode(written.encode());
    EXPECT_EQ(read, written);
}

TEST(Extensions, AnEmptyListIsRefusedBothWays) {
    EXPECT_EQ(thrownCode([] { CExtensions().encode(); }), 0x80093101u);
    expectRefused(three(), 0x80093101, {"30 00"});
}

TEST(Extensions, ACopiedRecordOutlivesItsSource) {
    EXPECT_EQ(test::throughCopiedRecord<ASN1T_Extensions_traits>(three()), three());
}

// Lists of real certificates that are refused, or come back to other bytes than their own (code 0).
struct Exception {
    unsigned code;
    char const* reason;
};

const std::map<std::string, Exception> kExceptions = {
    {"mbedtls-test_suite_x509parse-hex228.crt.der", {0x80093101, "a general name of no alternative"}},
    {"pyca-san_edipartyname.crt.der",
     {0, "an explicit tag in primitive form, which goes out as a constructed one"}},
};

TEST(RealExtensions, OfEveryCertificateAreTakenApartAndBuiltAgain) {
    const auto lists = test::certificateExtensions();
    if (lists.empty()) GTEST_SKIP() << "no real certificates here";
    std::size_t exceptions = 0;
    for (const auto& real : lists) {
        const auto exception = kExceptions.find(real.file);
        const bool expected = exception == kExceptions.end();
        exceptions += expected ? 0 : 1;
        CExtensions read;
        const unsigned code = thrownCode([&] { read.decode(real.encoded); });
        EXPECT_EQ(code, expected ? 0u : exception->second.code) << real.file;
        if (code != 0) continue;
        CExtensions built;
        for (const auto& part : real.extensions) {
            built.push_back(CExtension(CExtValue(part.oid.c_str(), part.value), part.critical));
        }
        EXPECT_EQ(read, built) << real.file;
        EXPECT_EQ(built.encode() == real.encoded, expected) << real.file << test::text(built.encode());
    }
    EXPECT_EQ(exceptions, kExceptions.size()) << "an exception is told of a file that is not there";
}
