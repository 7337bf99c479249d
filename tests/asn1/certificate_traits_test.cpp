#include "asn1/certificate_traits.h"

#include "support/vectors.h"
#include "value_test.h"

namespace {}  // namespace

TEST(CertificateTraits, WhatIsNoCertificateIsRefused) {
    test::LiveContext context;
    asn1data::ASN1T_Certificate record;
    for (char const* other : {"", "30 00", "05 00", "30 82"})
        EXPECT_EQ(thrownCode([&] { ASN1T_Certificate_traits::set(context, record, blob(other)); }),
                  0x80093101u)
            << other;
    CBlob read = blob("AA");
    EXPECT_EQ(thrownCode([&] { ASN1T_Certificate_traits::get(asn1data::ASN1T_Certificate(), read); }),
              0x80093101u);
    EXPECT_EQ(test::text(read), "AA");
}

TEST(CertificateListTraits, RealListsAreCarriedAsTheyCame) {
    const auto files = test::vectorFiles("crls", 60);
    if (files.empty()) GTEST_SKIP() << "no real revocation lists here";
    for (auto const& path : files) {
        const test::Octets real = test::readFile(path);
        test::LiveContext context;
        asn1data::ASN1T_CertificateList record{};
        ASN1T_CertificateList_traits::set(context, record, CBlob(real.data(), real.size()));
        CBlob read;
        ASN1T_CertificateList_traits::get(record, read);
        EXPECT_EQ(read, CBlob(real.data(), read.cbData())) << "octets behind the list do not count";
        EXPECT_GT(read.cbData(), 0u);
    }
}

TEST(CertificateListTraits, NoBytesMakeAnEmptyRecordAndATruncatedListNone) {
    test::LiveContext context;
    asn1data::ASN1T_CertificateList record{};
    EXPECT_EQ(thrownCode([&] { ASN1T_CertificateList_traits::set(context, record, blob("30 03 01 01")); }),
              0x80093101u);
    ASN1T_CertificateList_traits::set(context, record, CBlob());
    CBlob read = blob("AA");
    ASN1T_CertificateList_traits::get(record, read);
    EXPECT_EQ(read.cbData(), 0u);
}

TEST(TableObjectTraits, CarryRawOctetsAndNothingDecoded) {
    test::LiveContext context;
    int decoded = 0;
    asn1data::Asn1Object record;
    record.decoded = &decoded;
    asn1data::Asn1Object copied;
    copied.decoded = &decoded;
    Asn1TObject_traits::set(context, record, blob("05 00"));
    EXPECT_EQ(record.decoded, nullptr);
    Asn1TObject_traits::copy(context, record, copied);
    EXPECT_EQ(copied.decoded, nullptr);
    EXPECT_NE(copied.data, record.data);
    CBlob read;
    Asn1TObject_traits::get(copied, read);
    EXPECT_EQ(test::text(read), "05 00");
    EXPECT_EQ(test::text(asn1EncodeT<Asn1TObject_traits>(copied)), "05 00");
}
