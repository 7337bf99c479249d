#include "asn1/time_traits.h"

#include "base/date_time_span.h"
#include "support/allocation.h"
#include "support/calendar.h"
#include "value_test.h"

namespace {

// A GeneralizedTime as it stands in a message.
CBlob generalized(std::string_view text) {
    return element(0x18, text);
}

std::string decoded(const CBlob& message) {
    CDateTime date(0, 0);
    asn1Decode<ASN1GeneralizedTime_traits>(message, date);
    return date.getGeneralizedTime().c_str();
}

}  // namespace

TEST(TimeTraits, RandomPointsTravelAsGeneralizedTime) {
    for (const std::time_t point : test::pointsBetween(test::startOf1950, test::endOf9999)) {
        const std::string text = test::generalizedText(point);
        ASSERT_EQ(asn1Encode<ASN1GeneralizedTime_traits>(CDateTime(point, 0)), generalized(text)) << text;
        ASSERT_EQ(decoded(generalized(text)), text);
    }
}

TEST(TimeTraits, FractionsAreReadAndCutOffOnWritingAndNeverRounded) {
    EXPECT_EQ(decoded(generalized("20240229235959.25Z")), "20240229235959.25Z");
    for (const unsigned microseconds : {0u, 499'999u, 500'000u, 999'999u}) {
        EXPECT_EQ(asn1Encode<ASN1GeneralizedTime_traits>(CDateTime(59, microseconds)),
                  generalized("19700101000059Z"))
            << microseconds;
    }
    test::LiveContext context;
    EXPECT_STREQ(DateToASN1GeneralizedTime(context, CDateTime(59, 999'000), true), "19700101000059Z");
    EXPECT_STREQ(DateToASN1GeneralizedTime(context, CDateTime(59, 999'000), false), "19700101000059.999Z");
    const CDateTime belowMicrosecond = CDateTime(0, 0) + CDateTimeSpan(0, 1) / 2;
    EXPECT_STREQ(DateToASN1GeneralizedTime(context, belowMicrosecond, true), "19700101000000Z");
}

TEST(TimeTraits, ACopyIsWrittenAnew) {
    test::LiveContext context;
    const char* const source = "20240229235959.999Z";
    const char* copy = nullptr;
    ASN1GeneralizedTime_traits::copy(context, source, copy);
    EXPECT_STREQ(copy, "20240229235959Z");
    EXPECT_EQ(thrownCode([&] { ASN1GeneralizedTime_traits::copy(context, nullptr, copy); }), 0x80070057u);
}

TEST(TimeTraits, WhatIsNoTimeIsRefusedAndTheDateStays) {
    const std::pair<CBlob, unsigned> rows[] = {
        {generalized(""), 0x80004005},
        {generalized("20241301000000Z"), 0x80004005},
        {generalized("2024010100000xZ"), 0x8007076D},
        {test::element(0x17, "240101000000Z"), 0x80093101},
        {blob("18 0F 32 30 32 34"), 0x80093101},
        {CBlob(), 0x80093101},
    };
    for (const auto& [message, code] : rows) {
        CDateTime date(7, 0);
        EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1GeneralizedTime_traits>(message, date); }), code);
        EXPECT_EQ(date, CDateTime(7, 0));
    }
    const CDateTime outside{_FILETIME{2, 0x80000000}};
    EXPECT_EQ(thrownCode([&] { asn1Encode<ASN1GeneralizedTime_traits>(outside); }), 0x80070057u);
}

TEST(TimeTraits, AContextWithoutMemoryIsToldSo) {
    test::LiveContext context;
    test::CountedAllocations allocations;
    allocations.allow(0);
    EXPECT_EQ(thrownCode([&] { DateToASN1GeneralizedTime(context, CDateTime(0, 0), true); }), 0x80093106u);
}
