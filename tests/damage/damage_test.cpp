// Systematic damage of real messages and of our own: each form is decoded, encoded, copied and verified, and
// nothing but stated failures comes of it. What is done with a message are the targets of tests/fuzz, whose
// properties hold here as well.
#include <gtest/gtest.h>

#include <map>

#include "damage/damages.h"
#include "fuzz/seeds.h"
#include "fuzz/target.h"
#include "ocsp/response_message.h"
#include "support/recode.h"
#include "support/vectors.h"

namespace {

using test::DamageLimits;
using test::Octets;

#if defined(__SANITIZE_ADDRESS__) || defined(__clang__)
constexpr DamageLimits kForMessages{12, 20, 4};
constexpr DamageLimits kForTypes{4, 6, 1};
constexpr DamageLimits kForSeeds{30, 60, 20};
#else
constexpr DamageLimits kForMessages{60, 120, 20};
constexpr DamageLimits kForTypes{20, 40, 8};
constexpr DamageLimits kForSeeds{400, 2000, 100};
#endif

void runTarget(const std::string& name, const Octets& input) {
    for (const fuzz::Target& target : fuzz::targets()) {
        if (name == target.name) return target.run(fuzz::Input(input));
    }
    throw std::runtime_error("no target " + name);
}

void examineRequest(const Octets& octets) {
    runTarget("request_message", octets);
    runTarget("verify_request", octets);
}

void examineResponse(const Octets& octets) {
    runTarget("response_message", octets);
    Mirvane::PKI::OCSP::CResponseMessage message;
    const bool decoded = fuzz::passes([&] { message.decode(Mirvane::CBlob(octets.data(), octets.size())); });
    if (!decoded || !message.get_response()) return;
    const Mirvane::CBlob& inside = *message.get_response();
    runTarget("verify_response", Octets(inside.pbData(), inside.pbData() + inside.cbData()));
}

// Damages the message in all ways and counts them.
template <typename Examine>
void examineDamages(const std::string& origin, const Octets& message, const DamageLimits& limits,
                    std::size_t turn, Examine examine) {
    test::eachDamage(message, limits, turn, [&](const std::string& damage, const Octets& octets) {
        EXPECT_NO_THROW(examine(octets)) << origin << ", " << damage;
    });
}

template <typename Examine>
void examineFolder(const std::string& folder, const DamageLimits& limits, Examine examine) {
    const auto files = test::vectorFiles(folder);
    if (files.empty()) GTEST_SKIP() << "no real messages here";
    for (std::size_t i = 0; i < files.size(); ++i)
        examineDamages(files[i].filename(), test::readFile(files[i]), limits, i, examine);
}

TEST(Damage, OfRealRequests) {
    examineFolder("ocsp-requests", kForMessages, examineRequest);
}

TEST(Damage, OfRealResponses) {
    examineFolder("ocsp-responses", kForMessages, examineResponse);
}

// What was malformed from the start.
TEST(Damage, OfMalformedMessages) {
    const auto files = test::vectorFiles("malformed");
    if (files.empty()) GTEST_SKIP() << "no real messages here";
    for (const auto& file : files) {
        const Octets octets = test::readFile(file);
        EXPECT_NO_THROW(examineRequest(octets)) << file;
        EXPECT_NO_THROW(examineResponse(octets)) << file;
        EXPECT_NO_THROW(runTarget("verify_response", octets)) << file;
        EXPECT_NO_THROW(runTarget("certificate", octets)) << file;
    }
}

struct Folder {
    const char* name;
    const char* type;
};

void PrintTo(const Folder& folder, std::ostream* stream) {
    *stream << folder.name;
}

class DamageOfOtherMessages : public ::testing::TestWithParam<Folder> {};

TEST_P(DamageOfOtherMessages, GivesAStatusOrAValue) {
    std::uint32_t index = 0;
    while (std::string_view(asn1data::kAllTypes[index].name) != GetParam().type)
        ++index;
    examineFolder(GetParam().name, kForTypes, [&](const Octets& octets) {
        Octets input = {static_cast<unsigned char>(index >> 8), static_cast<unsigned char>(index), 0};
        input.insert(input.end(), octets.begin(), octets.end());
        runTarget("any_type", input);
    });
}

INSTANTIATE_TEST_SUITE_P(Folders, DamageOfOtherMessages,
                         ::testing::Values(Folder{"certs", "Certificate"},
                                           Folder{"crls", "CertificateListLegacy"},
                                           Folder{"pkcs10", "CertificationRequest"},
                                           Folder{"cms", "ContentInfo"}, Folder{"cmp", "PKIMessage"},
                                           Folder{"tsp", "TimeStampResp"},
                                           Folder{"attribute-certs", "AttributeCertificate"}),
                         [](const auto& info) { return std::string(info.param.type); });

TEST(Damage, OfOurOwnMessages) {
    const std::map<std::string, void (*)(const Octets&)> examined = {
        {"request_message", examineRequest},
        {"response_message", examineResponse},
        {"certificate", [](const Octets& octets) { runTarget("certificate", octets); }}};
    const auto seeds = fuzz::makeSeeds();
    for (const auto& [target, examine] : examined) {
        std::size_t turn = 0;
        for (const Octets& message : seeds.at(target))
            examineDamages(target, message, kForSeeds, turn++, examine);
    }
}

}  // namespace
