#include <gtest/gtest.h>

#include <memory>

#include "asn1data/cms.h"
#include "asn1data/ocsp.h"
#include "asn1data/x509_certificate.h"
#include "asn1data/x509_extensions.h"
#include "support/contexts.h"

namespace asn1data {
namespace {

const test::Octets kCertId =
    test::octets("30 17 30 09 06 05 2B 0E 03 02 1A 05 00 04 02 41 42 04 02 43 44 02 02 00 80");

// On one buffer for all: what a control allocates lives on the heap of the buffer that it was bound to last.
std::string encodedBy(ASN1CType& control) {
    static ASN1BEREncodeBuffer buffer;
    const int length = control.EncodeTo(buffer);
    return length < 0 ? "status " + std::to_string(length)
                      : test::text(buffer.getMsgPtr(), static_cast<std::size_t>(length));
}

TEST(ControlClass, CopiesOutliveBufferAndControl) {
    std::unique_ptr<ASN1T_CertID> kept;
    ASN1T_CertID target;
    {
        ASN1BERDecodeBuffer buffer(kCertId.data(), static_cast<int>(kCertId.size()));
        ASN1T_CertID record;
        ASN1C_CertID control(buffer, record);
        ASSERT_EQ(control.Decode(), RTS_OK);
        kept.reset(control.newCopy());
        EXPECT_EQ(control.getCopy(&record), &record) << "the record itself is no copy";
        EXPECT_EQ(control.getCopy(&target), &target);
        EXPECT_NE(target.issuerNameHash.data, record.issuerNameHash.data);
    }
    ASSERT_NE(kept->mpContext, nullptr);
    ASN1C_CertID control(*kept);
    EXPECT_EQ(encodedBy(control), test::text(kCertId));
    ASN1C_CertID other(target);
    EXPECT_EQ(encodedBy(other), test::text(kCertId));
}

TEST(ControlClass, NeedsABufferAndOfNullNoRecord) {
    ASN1T_CertID record;
    ASN1C_CertID alone(record);
    EXPECT_EQ(alone.Encode(), RTS_BAD_ARGUMENT);
    EXPECT_EQ(alone.Decode(), RTS_BAD_ARGUMENT);
    ASN1BEREncodeBuffer buffer;
    ASN1C_UnknownInfo null(buffer);
    EXPECT_EQ(encodedBy(null), "05 00");
}

TEST(ControlClass, CopyInTheHeapIsDestroyedByItsCaller) {
    ASN1BERDecodeBuffer buffer(kCertId.data(), static_cast<int>(kCertId.size()));
    ASN1T_CertID record;
    ASN1C_CertID control(buffer, record);
    ASSERT_EQ(control.Decode(), RTS_OK);
    ASN1T_CertID* copy = control.getCopy();
    EXPECT_EQ(static_cast<ASN1CTXT*>(copy->mpContext), buffer.getCtxtPtr());
    copy->~ASN1T_CertID();
}

TEST(ControlClass, CopyingConstructorsWorkOnRecordsOfTheirOwn) {
    ASN1BERDecodeBuffer buffer(kCertId.data(), static_cast<int>(kCertId.size()));
    ASN1T_CertID record;
    ASN1C_CertID control(buffer, record);
    ASSERT_EQ(control.Decode(), RTS_OK);
    ASN1C_CertID second(control);
    ASN1T_CertID third(second);
    record.issuerKeyHash.numocts = 0;
    EXPECT_EQ(encodedBy(second), test::text(kCertId));
    ASN1C_CertID onThird(third);
    EXPECT_EQ(encodedBy(onThird), test::text(kCertId));
}

TEST(ControlClass, TargetOfAnotherContextIsEmptiedFirst) {
    ASN1T_CertID target;
    for (int round = 0; round < 3; ++round) {
        ASN1BERDecodeBuffer buffer(kCertId.data(), static_cast<int>(kCertId.size()));
        ASN1T_CertID record;
        ASN1C_CertID control(buffer, record);
        ASSERT_EQ(control.Decode(), RTS_OK);
        control.getCopy(&target);
        EXPECT_EQ(static_cast<ASN1CTXT*>(target.mpContext), buffer.getCtxtPtr());
    }
}

TEST(Record, DestructorLeavesLiteralsAndForeignMemoryAlone) {
    ASN1CtxtPtr context(new ASN1Context);
    ASN1CtxtPtr holder = context;
    static const unsigned char octets[] = {1, 2};
    {
        ASN1T_CertID record;
        record.mpContext = context;
        record.serialNumber = "1";
        record.issuerNameHash = {2, octets};
        record.issuerKeyHash = {2, static_cast<unsigned char*>(rtMemHeapAllocZ(&context->typeMemHeap, 2))};
    }
    EXPECT_EQ(context->typeMemHeap->blockList, nullptr) << "what is the heap's has been freed";
    EXPECT_EQ(context->getRefCount(), 2);
}

TEST(ListControl, AssignsByDeepCopy) {
    const auto names = test::octets("30 06 82 01 61 82 01 62");
    ASN1BERDecodeBuffer buffer(names.data(), static_cast<int>(names.size()));
    ASN1T_GeneralNames first;
    ASN1C_GeneralNames control(buffer, first);
    ASSERT_EQ(control.Decode(), RTS_OK);
    EXPECT_EQ(control.size(), 2u);

    ASN1T_GeneralNames second;
    ASN1C_GeneralNames other(second);
    other = control;
    EXPECT_EQ(other.size(), 2u);
    EXPECT_NE(other.getFirst(), control.getFirst());
    ASN1C_GeneralNames& same = other;
    other = same;
    EXPECT_EQ(encodedBy(other), test::text(names));
    control.clear();
    EXPECT_EQ(encodedBy(control), "30 00");
    ASN1C_GeneralNames third(other);
    third.remove(0);
    EXPECT_EQ(encodedBy(third), "30 03 82 01 62");
    EXPECT_EQ(other.size(), 2u);
}

TEST(BitStringControl, FollowsWhatWasDecoded) {
    const auto usage = test::octets("03 02 05 A0");
    ASN1BERDecodeBuffer buffer(usage.data(), 4);
    ASN1T_KeyUsage record{};
    ASN1C_KeyUsage control(buffer, record);
    ASSERT_EQ(control.Decode(), RTS_OK);
    EXPECT_EQ(record.numbits, 3u);
    EXPECT_TRUE(control.get(0));
    EXPECT_FALSE(control.get(1));
    EXPECT_TRUE(control.get(2));
    EXPECT_EQ(control.set(8), RTS_OK);
    EXPECT_EQ(encodedBy(control), "03 03 07 A0 80");
    ASN1C_KeyUsage copy(control);
    EXPECT_EQ(copy.clear(), RTS_OK);
    EXPECT_TRUE(control.get(8));
    const auto tooLong = test::octets("03 04 00 FF FF FF");
    ASN1BERDecodeBuffer longer(tooLong.data(), 6);
    EXPECT_EQ(control.DecodeFrom(longer), RTS_BUFFER_TOO_SMALL);
}

TEST(BitStringControl, DecodedBitsReplaceGrownStorage) {
    const auto signature = test::octets("03 03 00 12 35");
    ASN1BERDecodeBuffer buffer(signature.data(), static_cast<int>(signature.size()));
    ASN1T_Signature record{};
    ASN1C_Signature control(buffer, record);
    EXPECT_EQ(control.set(4000), RTS_OK);
    ASSERT_EQ(control.Decode(), RTS_OK);
    EXPECT_EQ(control.set(16), RTS_OK);
    EXPECT_EQ(encodedBy(control), "03 04 07 12 35 80");
}

TEST(TimeControl, ReadsAndWritesTheRecordsText) {
    const auto cutoff = test::octets("18 0F 32 30 32 34 30 31 30 32 30 33 30 34 30 35 5A");
    ASN1BERDecodeBuffer buffer(cutoff.data(), static_cast<int>(cutoff.size()));
    ASN1T_ArchiveCutoff record = "20010101000000Z";
    ASN1C_ArchiveCutoff control(buffer, record);
    EXPECT_EQ(control.getYear(), 2001);
    ASSERT_EQ(control.Decode(), RTS_OK);
    EXPECT_EQ(control.getYear(), 2024);
    EXPECT_EQ(control.getSecond(), 5);
    EXPECT_EQ(control.setDay(29), RTS_OK);
    EXPECT_STREQ(record, "20240129030405Z");
}

TEST(Aliases, ForwardAndRecord) {
    test::Decoder decoder("31 00");
    ASN1T_CrlLocator record;
    EXPECT_EQ(asn1D_CrlLocator(decoder, &record, ASN1EXPL, 0), RTS_TAG_MISMATCH);
    EXPECT_EQ(decoder.recorded(), RTS_TAG_MISMATCH);
    ASN1C_CrlLocator control(record);
    EXPECT_TRUE((std::is_base_of_v<ASN1C_CRLDistPointsSyntax, ASN1C_CrlLocator>));
    EXPECT_EQ(encodedBy(control), "status -23");
}

}  // namespace
}  // namespace asn1data
