#include "asn1/choice.h"

#include <stdexcept>
#include <string>

#include "asn1/time_choice_traits.h"
#include "asn1data/x509_certificate.h"
#include "support/calendar.h"
#include "value_test.h"

namespace {

// A value that tells how many of its kind live, and whose copying can be made to fail.
struct Counted {
    explicit Counted(int content) : content(content) { ++alive; }
    Counted(Counted const& other) : content(other.content) {
        if (failing) throw std::runtime_error("no copy");
        ++alive;
    }
    ~Counted() { --alive; }
    Counted& operator=(Counted const&) = default;

    int content;
    static inline int alive = 0;
    static inline bool failing = false;
};

using Sample = ChoiceOf<ChoiceValueTraitsT<Counted, 1>, ChoiceValueTraitsT<std::wstring, 3>>;

CTimeChoice decoded(const CBlob& message) {
    CTimeChoice time;
    time.decode(message);
    return time;
}

}  // namespace

TEST(Choice, HoldsOneAlternativeAtATime) {
    Sample choice;
    EXPECT_EQ(choice.type(), 0u);
    EXPECT_EQ((choice.get<Counted, 1>()), nullptr);
    EXPECT_EQ(Sample(choice).type(), 0u);
    choice.put<Counted, 1>(Counted(7));
    EXPECT_EQ(choice.type(), 1u);
    EXPECT_EQ((choice.get<Counted, 1>()->content), 7);
    EXPECT_EQ((choice.get<std::wstring, 3>()), nullptr);
    choice.put<std::wstring, 3>(L"name");
    EXPECT_EQ(choice.type(), 3u);
    EXPECT_EQ((choice.get<Counted, 1>()), nullptr);
    EXPECT_EQ(Counted::alive, 0);
    choice.put<std::wstring, 3>(*choice.get<std::wstring, 3>());
    EXPECT_EQ((*choice.get<std::wstring, 3>()), L"name") << "its own value can be put again";
}

TEST(Choice, AFailingCopyChangesNothing) {
    Sample choice;
    choice.put<std::wstring, 3>(L"kept");
    const Counted value(1);
    Counted::failing = true;
    EXPECT_THROW((choice.put<Counted, 1>(value)), std::runtime_error);
    Counted::failing = false;
    EXPECT_EQ(choice.type(), 3u);
    EXPECT_EQ((*choice.get<std::wstring, 3>()), L"kept");
}

TEST(Choice, CopiesAreDeepAndFreed) {
    {
        Sample first;
        first.put<Counted, 1>(Counted(5));
        const Sample second(first);
        EXPECT_EQ(Counted::alive, 2);
        first.put<Counted, 1>(Counted(6));
        EXPECT_EQ((second.get<Counted, 1>()->content), 5);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(Choice, UnknownAlternativesHaveTheTraitsOfNoValue) {
    const Sample choice;
    for (const unsigned type : {0u, 2u, 4u, 0xFFFFFFFFu}) {
        EXPECT_EQ(choice.findTraits(type), &NoChoiceValueTraits::instance) << type;
    }
    EXPECT_TRUE(choice.findTraits(3)->isType(3));
    EXPECT_FALSE(choice.findTraits(3)->isType(0));
}

TEST(ChoiceValueTraits, NoValueHoldsAPointer) {
    ChoiceValueTraits const& traits = NoChoiceValueTraits::instance;
    int target = 0;
    void* pointer = &target;
    void* const holder = traits.newValue(&pointer);
    EXPECT_EQ(*static_cast<void**>(holder), &target);
    pointer = nullptr;
    traits.copyValue(holder, holder);
    EXPECT_EQ(*static_cast<void**>(holder), &target);
    traits.copyValue(holder, &pointer);
    EXPECT_EQ(*static_cast<void**>(holder), nullptr);
    traits.deleteValue(holder);
    traits.deleteValue(nullptr);
}

TEST(TimeChoice, TheYearChoosesTheAlternative) {
    const std::pair<const char*, unsigned> rows[] = {{"16010101000000Z", 1}, {"19491231235959Z", 1},
                                                     {"19500101000000Z", 1}, {"20491231235959.999999Z", 1},
                                                     {"20500101000000Z", 2}, {"99991231235959Z", 2}};
    CTimeChoice time;
    EXPECT_EQ(*time.get_time(), CDateTime(0, 0));
    for (const auto& [date, type] : rows) {
        time.put_time(date);
        EXPECT_EQ(time.get_type(), type) << date;
        EXPECT_EQ(*time.get_time(), CDateTime(date)) << date;
        EXPECT_EQ(CTimeChoice(date).get_type(), type) << date;
    }
}

TEST(TimeChoice, RandomPointsTravelInTheFormOfTheirYear) {
    const auto expectForm = [](std::time_t point, const CBlob& expected) {
        ASSERT_EQ(CTimeChoice(CDateTime(point, 999'999)).encode(), expected) << point;
        ASSERT_EQ(*decoded(expected).get_time(), CDateTime(point, 0)) << point;
    };
    for (const std::time_t point : test::pointsBetween(test::startOf1950, test::endOf2049, 1000))
        expectForm(point, element(0x17, test::format("%y%m%d%H%M%SZ", point)));
    for (const std::time_t point : test::pointsBetween(test::endOf2049 + 1, test::endOf9999, 1000))
        expectForm(point, element(0x18, test::generalizedText(point)));
}

TEST(TimeChoice, OffsetsFractionsTheFormAndTheCenturyAreNotKept) {
    EXPECT_EQ(decoded(element(0x18, "20200102030405Z")).encode(), element(0x17, "200102030405Z"));
    EXPECT_EQ(CTimeChoice("19491231235959Z").encode(), element(0x17, "491231235959Z"));
    EXPECT_EQ(*decoded(element(0x17, "491231235959Z")).get_time(), CDateTime("20491231235959Z"));
    EXPECT_EQ(*decoded(element(0x18, "20600102030405.75Z")).get_time(), CDateTime("20600102030405Z"));
    EXPECT_EQ(*decoded(element(0x18, "20600102030405+0300")).get_time(), CDateTime("20600102030405Z"));
    EXPECT_EQ(*decoded(element(0x17, "2001020304-0130")).get_time(), CDateTime("20200102030400Z"));
}

TEST(TimeChoice, WhatIsNoTimeIsRefusedAndTheValueStays) {
    CTimeChoice time(CDateTime(59, 0));
    expectRefused(time, 0x80093101, {"", "04 0D 32 30 30 31 30 32 30 33 30 34 30 35 5A", "17 0D 32 30"});
    for (const CBlob& none :
         {element(0x17, ""), element(0x17, "201302030405Z"), element(0x17, "20010203x405Z"),
          element(0x18, "20230229000000Z"), element(0x18, "15000101000000Z")})
        expectRefused(time, 0x80070057, {test::text(none).c_str()});
    asn1data::ASN1T_Time record;
    for (const auto& [alternative, code] :
         {std::pair(0u, 0x80093101u), {3u, 0x80093101u}, {asn1data::T_Time_generalTime, 0x80070057u}}) {
        record.t = alternative;  // the last without a text
        EXPECT_EQ(thrownCode([&] { ASN1T_Time_traits::get(record, time); }), code);
    }
    EXPECT_EQ(*time.get_time(), CDateTime(59, 0));
}

TEST(TimeChoice, DatesThatCannotBeShownAreRefused) {
    EXPECT_EQ(thrownCode([] { CTimeChoice(CDateTime(test::endOf9999 + 1, 0)).encode(); }), 0x80093101u);
    CTimeChoice time;
    EXPECT_EQ(thrownCode([&] { time.put_time(_FILETIME{2, 0x80000000}); }), 0x80070057u);
    EXPECT_EQ(*time.get_time(), CDateTime(0, 0));
}
