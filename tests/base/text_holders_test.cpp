#include "base/text_holders.h"

#include <gtest/gtest.h>

#include <utility>

#include "base/lists.h"

namespace {

// Both holders follow one set of rules.
template <typename Holder>
class TextHolder : public testing::Test {
  protected:
    using Character = std::remove_cvref_t<decltype(*Holder(nullptr).c_str())>;
    using View = std::basic_string_view<Character>;

    static constexpr Character first[] = {'a', 'b', 0};
    static constexpr Character second[] = {'c', 0};
};

using Holders = testing::Types<Mirvane::CStringProxy, Mirvane::CWStringProxy>;
TYPED_TEST_SUITE(TextHolder, Holders);

}  // namespace

TYPED_TEST(TextHolder, NullAndDefaultAreTheEmptyText) {
    using View = typename TestFixture::View;
    EXPECT_EQ(View(TypeParam().c_str()), View());
    EXPECT_EQ(View(TypeParam(nullptr).c_str()), View());
}

TYPED_TEST(TextHolder, CopiesAreIndependent) {
    using View = typename TestFixture::View;
    TypeParam original(this->first);
    TypeParam copy(original);
    TypeParam assigned;
    assigned = original;
    original = TypeParam(this->second);
    EXPECT_EQ(View(copy.c_str()), View(this->first));
    EXPECT_EQ(View(assigned.c_str()), View(this->first));
    EXPECT_EQ(View(original.c_str()), View(this->second));
    const TypeParam& itself = copy;
    copy = itself;
    EXPECT_EQ(View(copy.c_str()), View(this->first));
}

TYPED_TEST(TextHolder, MovedFromHolderHasTheEmptyTextAndIsUsable) {
    using View = typename TestFixture::View;
    TypeParam source(this->first);
    TypeParam target(std::move(source));
    EXPECT_EQ(View(target.c_str()), View(this->first));
    EXPECT_EQ(View(source.c_str()), View());
    source = std::move(target);
    EXPECT_EQ(View(source.c_str()), View(this->first));
    EXPECT_EQ(View(target.c_str()), View());
    TypeParam& itself = source;
    source = std::move(itself);
    EXPECT_EQ(View(source.c_str()), View(this->first));
}

TEST(StringList, CopiesEveryElementInOrder) {
    Mirvane::CStringList list{"1.2", "1.3"};
    Mirvane::CStringList copy = list;
    list.front() = "9";
    ASSERT_EQ(copy.size(), 2u);
    EXPECT_STREQ(copy.front().c_str(), "1.2");
    EXPECT_STREQ(copy.back().c_str(), "1.3");
}
