#include "asn1/time_traits.h"

#include <gtest/gtest.h>

#include "asn1/bridge.h"
#include "base/date_time_span.h"
#include "support/allocation.h"
#include "support/calendar.h"
#include "support/contexts.h"
#include "support/failures.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::thrownCode;

namespace {

// A GeneralizedTime as it stands in a message.
CBlob element(std::string_view text) {
    test::Octets octets = {0x18, static_cast<unsigned char>(text.size())};
    octets.insert(octets.end(), text.begin(), text.end());
    return CBlob(octets.data(), octets.size());
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
        ASSERT_EQ(asn1Encode<ASN1GeneralizedTime_traits>(CDateTime(point, 0)), element(text)) << text;
        ASSERT_EQ(decoded(element(text)), text);
    }
}

TEST(TimeTraits, FractionsAreReadAndCutOffOnWritingAndNeverRounded) {
    EXPECT_EQ(decoded(element("20240229235959.25Z")), "20240229235959.25Z");
    for (const unsigned microseconds : {0u, 499'999u, 500'000u, 999'999u}) {
        EXPECT_EQ(asn1Encode<ASN1GeneralizedTime_traits>(CDateTime(59, microseconds)),
                  element("19700101000059Z"))
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
    const struct {
        CBlob message;
        unsigned code;
    } rows[] = {
        {element(""), 0x80004005},
        {element("20241301000000Z"), 0x80004005},
        {element("2024010100000xZ"), 0x8007076D},
        {CBlob(reinterpret_cast<const unsigned char*>("\x17\x0D"
                                                      "240101000000Z"),
               15),
         0x80093101},
        {CBlob(reinterpret_cast<const unsigned char*>("\x18\x0F"
                                                      "2024"),
               6),
         0x80093101},
        {CBlob(), 0x80093101},
    };
    for (const auto& row : rows) {
        CDateTime date(7, 0);
        EXPECT_EQ(thrownCode([&] { asn1Decode<ASN1GeneralizedTime_traits>(row.message, date); }), row.code);
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
