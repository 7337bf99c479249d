// The database of `openssl ca`: a line a certificate, with six fields between tabs. They are the status (V, R
// or E), the end of validity, the time of revocation with its reason, the serial number, a file and a name.
#include <strings.h>

#include <fmt/format.h>

#include <sstream>
#include <vector>

#include "reason.h"
#include "status_source.h"
#include "time_text.h"

namespace tools {
namespace {

using Mirvane::CDateTime;
using Mirvane::ASN1::CrlReason;
using namespace Mirvane::PKI::OCSP;

constexpr std::size_t kFields = 6;

std::vector<std::string> split(std::string const& text, char separator) {
    std::vector<std::string> pieces;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, separator);)
        pieces.push_back(piece);
    return pieces;
}

// YYMMDDHHMMSSZ, of the years 1950 to 2049 (RFC 5280, 4.1.2.5.1), or with four digits of the year.
CDateTime readTime(std::string const& text) {
    const bool isForm = (text.size() == 13 || text.size() == 15) && text.back() == 'Z' &&
                        text.find_first_not_of("0123456789") == text.size() - 1;
    try {
        if (isForm) return parseTime(text.size() == 15 ? text : (text[0] < '5' ? "20" : "19") + text);
    } catch (InputError const&) {
    }
    throw InputError(text, "is no time; 260101000000Z and 20260101000000Z are");
}

// The names of RFC 5280, and those under which `openssl ca` notes more than a reason behind it.
CrlReason readReason(std::string const& text) {
    const struct {
        const char* name;
        CrlReason reason;
    } kRemarks[] = {{"holdInstruction", Mirvane::ASN1::certificateHold},
                    {"keyTime", Mirvane::ASN1::keyCompromise},
                    {"CAkeyTime", Mirvane::ASN1::cACompromise}};
    for (const auto& remark : kRemarks) {
        if (strcasecmp(text.c_str(), remark.name) == 0) return remark.reason;
    }
    const auto reason = parseReason(text);
    if (!reason) throw InputError(text, "is no revocation reason");
    return *reason;
}

CCertStatus readRevocation(std::string const& text) {
    const std::vector<std::string> pieces = split(text, ',');
    if (pieces.empty()) throw InputError("the line", "has no time of revocation");
    const CDateTime time = readTime(pieces[0]);
    if (pieces.size() == 1) return CCertStatus(time, nullptr);
    const CrlReason reason = readReason(pieces[1]);
    return reason == Mirvane::ASN1::removeFromCRL ? goodStatus() : CCertStatus(time, &reason);
}

void readLine(std::string const& line, StatusSource& source) {
    const std::vector<std::string> fields = split(line, '\t');
    if (fields.size() != kFields) {
        throw InputError("the line", fmt::format("has {} fields, not {}", fields.size(), kFields));
    }
    const std::string serial = serialText(parseSerial(fields[3]));
    if (fields[0] == "R") {
        source.listed.insert_or_assign(serial, readRevocation(fields[2]));
    } else if (fields[0] == "V" || fields[0] == "E") {
        source.listed.try_emplace(serial, goodStatus());
    } else {
        throw InputError(fields[0], "is no status; V, R and E are");
    }
}

// A new authority's has no lines yet.
Octets readDatabaseFile(std::string const& path) {
    try {
        return readFile(path);
    } catch (EmptyInput const&) {
        return {};
    }
}

}  // namespace

StatusSource readDatabase(std::string const& path) {
    const Octets octets = readDatabaseFile(path);
    std::istringstream stream(std::string(octets.begin(), octets.end()));
    StatusSource source;
    std::size_t number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        if (line.ends_with('\r')) line.pop_back();
        if (line.empty() || line.front() == '#') continue;
        try {
            readLine(line, source);
        } catch (InputError const& error) {
            throw InputError(fmt::format("{}, line {}", sourceName(path), number), error.what());
        }
    }
    return source;
}

}  // namespace tools
