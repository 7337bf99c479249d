// The fuzz targets as an ordinary test: seeds, and the smallest form of each input that once broke one.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "damage/damages.h"
#include "fuzz/mutator.h"
#include "fuzz/seeds.h"
#include "fuzz/target.h"
#include "support/vectors.h"

namespace {

using fuzz::Target;
using test::Octets;

void replay(const Target& target, const Octets& input, const std::string& origin) {
    EXPECT_NO_THROW(target.run(fuzz::Input(input))) << target.name << ": " << origin;
}

class FuzzTargets : public ::testing::TestWithParam<Target> {};

TEST_P(FuzzTargets, HoldOnTheirSeedsAndOnDamageOfThem) {
    static const auto seeds = fuzz::makeSeeds();
    const auto found = seeds.find(GetParam().name);
    ASSERT_NE(found, seeds.end());
    replay(GetParam(), {}, "nothing");
    for (std::size_t i = 0; i < found->second.size(); ++i) {
        const std::string origin = "seed " + std::to_string(i);
        replay(GetParam(), found->second[i], origin);
        test::eachDamage(found->second[i], {4, 8, 1}, i, [&](const std::string& damage, const Octets& input) {
            replay(GetParam(), input, origin + ", " + damage);
        });
    }
}

TEST_P(FuzzTargets, HoldOnWhatBrokeThemOnce) {
    const auto folder = std::filesystem::path(MIRVANE_FUZZ_FOLDER) / "regressions" / GetParam().name;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing))
        replay(GetParam(), test::readFile(entry.path()), entry.path());
}

INSTANTIATE_TEST_SUITE_P(All, FuzzTargets, ::testing::ValuesIn(fuzz::targets()),
                         [](const auto& info) { return info.param.name; });

// Seeds without a target would never run.
TEST(FuzzSeeds, BelongToTargets) {
    auto seeds = fuzz::makeSeeds();
    for (const Target& target : fuzz::targets())
        seeds.erase(target.name);
    EXPECT_TRUE(seeds.empty()) << seeds.begin()->first;
}

std::size_t leaveAlone(std::uint8_t*, std::size_t size, std::size_t) {
    return size;
}

TEST(ElementTree, GivesBackWhatItTookApart) {
    for (const char* octets :
         {"30 06 02 01 01 04 01 02", "24 80 04 01 01 00 00", "04 04 30 02 05 00", "03 03 00 05 00",
          "30 03 02 05 01", "3F 81 01 02 05 00", "30 82 01", "", "A0 03 02 01 05 FF FF"})
        EXPECT_EQ(test::text(test::ElementTree(test::octets(octets)).octets()), octets);
}

TEST(ElementTree, MendsTheLengthsAroundAChange) {
    test::ElementTree tree(test::octets("30 08 A0 06 04 04 30 02 05 00"));
    auto places = tree.places();
    ASSERT_EQ(places.size(), 5u);
    places[4].element().content.assign(200, 0x41);
    EXPECT_TRUE(test::text(tree.octets()).starts_with("30 81 D4 A0 81 D1 04 81 CE 30 81 CB 05 81 C8 41"));
    tree.roots[0].children.clear();
    EXPECT_EQ(test::text(tree.octets()), "30 00");
}

TEST(ElementMutator, MakesManyDistinctEncodingsThatParse) {
    const Octets seed = test::octets("30 0B 02 01 01 04 03 01 02 03 05 00 01 00");
    std::set<Octets> made;
    for (unsigned round = 0; round < 500; ++round)
        made.insert(fuzz::ElementMutator(round, &leaveAlone).mutated(seed));
    EXPECT_GT(made.size(), 150u);
}

}  // namespace
