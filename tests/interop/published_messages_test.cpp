// Real requests and answers through mirvane-ocsp: each is shown or refused with a reason, and answers hold
// where their makers say so.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "support/program.h"
#include "support/vectors.h"

namespace {

using test::Outcome;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// What `show` says of a file: one JSON object, or one line with the place or the length that is wrong.
bool isShownOrRefused(const std::string& file) {
    const Outcome shown = test::run(MIRVANE_OCSP_TOOL " show --json '" + file + "'");
    if (shown.status == 0) return shown.errors.empty() && shown.output.ends_with("}\n");
    const bool isReasoned =
        contains(shown.errors, " at octet ") || contains(shown.errors, "is cut short: ") ||
        contains(shown.errors, "it begins with octet") || contains(shown.errors, "does not fit into") ||
        contains(shown.errors, "is malformed (0x");
    return shown.status == 1 && shown.output.empty() && isReasoned &&
           std::count(shown.errors.begin(), shown.errors.end(), '\n') == 1;
}

TEST(PublishedMessages, AreShownOrRefusedWithAReason) {
    int files = 0;
    for (const char* kind : {"ocsp-requests", "ocsp-responses", "malformed"}) {
        for (const auto& path : test::vectorFiles(kind)) {
            const std::string name = path.filename();
            if (kind == std::string("malformed") && !contains(name, ".or")) continue;
            ++files;
            EXPECT_TRUE(isShownOrRefused(path)) << path;
        }
    }
    if (files == 0) GTEST_SKIP() << "no folder of vectors";
    EXPECT_GT(files, 250);
}

std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> result;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, '|');) {
        const auto start = cell.find_first_not_of(' ');
        result.push_back(
            start == std::string::npos ? "" : cell.substr(start, cell.find_last_not_of(' ') + 1 - start));
    }
    return result;
}

std::string chainOptions(const std::string& names) {
    std::string result;
    std::istringstream stream(names);
    for (std::string name; stream >> name;) {
        if (name != "-" && name != "+") result += " --chain " + name;
    }
    return result;
}

// Rows of five cells tell whether an answer is to be relied on at the end of 2012, when most were a little
// over; rows of six what it says at a day of 2017.
TEST(PublishedAnswers, ComeOutAsTheirMakersExpect) {
    std::ifstream table(test::vectorsFolder() / "VERIFY.md");
    if (!table) GTEST_SKIP() << "no folder of vectors";
    const std::string tool =
        "cd " + test::vectorsFolder().string() + " && " MIRVANE_OCSP_TOOL " verify --issuer ";
    int rows = 0;
    for (std::string line; std::getline(table, line);) {
        const auto row = cells(line);
        if (row.size() < 6 || !(row[1].ends_with(".der") || row[1].ends_with(".bin"))) continue;
        ++rows;
        EXPECT_TRUE(isShownOrRefused(test::vectorsFolder() / row[1])) << line;
        if (row.size() == 6) {
            const std::string issuer = row[2].substr(0, row[2].find(' '));
            const Outcome outcome =
                test::run(tool + issuer + " --at 20121219000000Z --skew 100d" +
                          chainOptions(row[2].substr(issuer.size())) + chainOptions(row[3]) + " " + row[1]);
            EXPECT_EQ(outcome.status, row[5] == "verify" ? 0 : 1) << line << "\n" << outcome.output;
            continue;
        }
        const Outcome outcome = test::run(tool + row[2] + " --at 20170305000000Z --max-age 7d --request " +
                                          row[4] + " " + row[1]);
        const bool isUnknown = row[5] == "UNKNOWN";
        const char* const status = row[5] == "GOOD"      ? ": good"
                                   : row[5] == "REVOKED" ? ": revoked"
                                                         : ": unknown";
        const bool says = outcome.status == 0 && contains(outcome.output, status);
        EXPECT_TRUE(says || (isUnknown && outcome.status == 1)) << line << "\n"
                                                                << outcome.output << outcome.errors;
    }
    EXPECT_GT(rows, 60);
}

}  // namespace
