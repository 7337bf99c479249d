#include "asn1/revocation_reason.h"

#include "asn1/revocation_reason_traits.h"
#include "value_test.h"

TEST(CrlReason, NumbersBelow11PassBothWaysAndOthersNeither) {
    for (unsigned int number = 0; number < 14; ++number) {
        const auto reason = static_cast<CrlReason>(number);
        const CBlob expected = element(0x0A, std::string(1, static_cast<char>(number)));
        const unsigned refused = number > 10 ? 0x80093101u : 0u;
        CrlReason read = unspecified;
        CBlob encoded = expected;
        EXPECT_EQ(thrownCode([&] { encoded = asn1Encode<ASN1T_CRLReason_traits>(reason); }), refused);
        EXPECT_EQ(encoded, expected);
        EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1T_CRLReason_traits>(expected, read); }), refused);
        EXPECT_EQ(read, refused ? unspecified : reason);
    }
}

TEST(ReasonFlags, BitsAndMasksAreTheSameSet) {
    CReasonFlags flags(0);
    flags.add_flag(CReasonFlags::superseded);
    EXPECT_EQ(flags.get_value(), 0x10u);
    EXPECT_TRUE(flags.get_bit(4));
    EXPECT_TRUE(flags.get_bit(4 + 32)) << "modulo 32";
    flags.put_bit(33, true);
    flags.put_bit(31, true);
    EXPECT_EQ(flags, CReasonFlags(0x80000012));
    const auto mask = static_cast<CReasonFlags::Flag>(0x6);
    EXPECT_TRUE(flags.get_flag(mask)) << "one of two is enough";
    flags.remove_flag(mask);
    EXPECT_FALSE(flags.get_flag(mask));
    flags.put_bit(31, false);
    EXPECT_EQ(flags.get_value(), 0x10u);
    EXPECT_NE(flags, CReasonFlags(0));
}

TEST(ReasonFlags, TheSequenceHasEachFlagOnceInItsPlace) {
    unsigned int bit = 0;
    for (const CReasonFlags::Flag flag : CReasonFlags::sequence)
        EXPECT_EQ(flag, 1u << bit++);
    EXPECT_EQ(bit, 9u);
    EXPECT_EQ(CReasonFlags::sequence[8], CReasonFlags::aACompromise);
}

TEST(ReasonFlags, EncodeAsNamedBits) {
    const std::pair<unsigned int, char const*> rows[] = {{0, "03 01 00"},
                                                         {0x1, "03 02 07 80"},
                                                         {0x2, "03 02 06 40"},
                                                         {0x80, "03 02 00 01"},
                                                         {0x100, "03 03 07 00 80"},
                                                         {0x1FF, "03 03 07 FF 80"},
                                                         {0x8000, "03 03 00 00 01"},
                                                         {0x62, "03 02 01 46"}};
    for (const auto& [value, encoded] : rows) {
        EXPECT_EQ(test::text(asn1Encode<ASN1T_ReasonFlags_traits>(CReasonFlags(value))), encoded);
        CReasonFlags read(0xFFFFFFFF);
        asn1Decode<ASN1T_ReasonFlags_traits>(blob(encoded), read);
        EXPECT_EQ(read.get_value(), value);
    }
    EXPECT_EQ(test::text(asn1Encode<ASN1T_ReasonFlags_traits>(CReasonFlags(0xFFFF0002))), "03 02 06 40");
    CReasonFlags read(1);
    EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1T_ReasonFlags_traits>(blob("03 04 07 00 00 80"), read); }),
              0x80093101u);
    EXPECT_EQ(read.get_value(), 1u);
    asn1Decode<ASN1T_ReasonFlags_traits>(blob("03 03 00 40 00"), read);
    EXPECT_EQ(read.get_value(), 2u) << "zero bits at the end are read";
}
