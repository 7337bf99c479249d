#include "asn1/certificate_traits.h"

#include <gtest/gtest.h>

#include "asn1/bridge.h"
#include "support/blobs.h"
#include "support/contexts.h"
#include "support/failures.h"
#include "support/recode.h"
#include "support/vectors.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;
using test::thrownCode;

namespace {

std::vector<CBlob> realObjects(const std::string& kind) {
    std::vector<CBlob> blobs;
    for (const auto& path : test::vectorFiles(kind, 60)) {
        const test::Octets octets = test::readFile(path);
        blobs.push_back(CBlob(octets.data(), octets.size()));
    }
    return blobs;
}

// What the schema makes of a certificate: the same bytes if it is DER, none if it is refused.
CBlob rewritten(const CBlob& certificate) {
    const test::Octets octets(certificate.pbData(), certificate.pbData() + certificate.cbData());
    const test::Recoded recoded = test::recode(test::typeNamed("Certificate"), octets);
    return CBlob(recoded.octets.data(), recoded.octets.size());
}

}  // namespace

TEST(CertificateTraits, RealCertificatesGoIntoARecordOfTheirOwnAndBack) {
    const auto certificates = realObjects("certs");
    if (certificates.empty()) GTEST_SKIP() << "no real certificates here";
    for (const CBlob& real : certificates) {
        const CBlob expected = rewritten(real);
        if (expected.cbData() == 0) continue;
        test::LiveContext context;
        asn1data::ASN1T_Certificate record;
        {
            const CBlob source = real;
            ASN1T_Certificate_traits::set(context, record, source);
        }
        CBlob read = blob("AA");
        ASN1T_Certificate_traits::get(record, read);
        EXPECT_EQ(read, expected);
    }
}

TEST(CertificateTraits, WhatIsNoCertificateIsRefused) {
    test::LiveContext context;
    for (char const* other : {"", "30 00", "05 00", "30 82"}) {
        asn1data::ASN1T_Certificate record;
        EXPECT_EQ(thrownCode([&] { ASN1T_Certificate_traits::set(context, record, blob(other)); }),
                  0x80093101u)
            << other;
    }
    CBlob read = blob("AA");
    EXPECT_EQ(thrownCode([&] { ASN1T_Certificate_traits::get(asn1data::ASN1T_Certificate(), read); }),
              0x80093101u);
    EXPECT_EQ(test::text(read), "AA");
}

TEST(CertificateListTraits, RealListsAreCarriedAsTheyCame) {
    const auto lists = realObjects("crls");
    if (lists.empty()) GTEST_SKIP() << "no real revocation lists here";
    for (const CBlob& real : lists) {
        test::LiveContext context;
        asn1data::ASN1T_CertificateList record{};
        {
            const CBlob source = real;
            ASN1T_CertificateList_traits::set(context, record, source);
        }
        CBlob read;
        ASN1T_CertificateList_traits::get(record, read);
        EXPECT_EQ(read, CBlob(real.pbData(), read.cbData())) << "octets behind the list do not count";
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
