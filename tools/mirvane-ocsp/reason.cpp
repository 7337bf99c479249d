#include "reason.h"

#include <strings.h>

#include <iterator>

namespace tools {
namespace {

using Mirvane::ASN1::CrlReason;

// By number; 7 is not assigned.
constexpr char const* kNames[] = {"unspecified",        "keyCompromise", "cACompromise",
                                  "affiliationChanged", "superseded",    "cessationOfOperation",
                                  "certificateHold",    nullptr,         "removeFromCRL",
                                  "privilegeWithdrawn", "aACompromise"};

}  // namespace

std::string reasonName(CrlReason reason) {
    if (reason < std::size(kNames) && kNames[reason]) return kNames[reason];
    return std::to_string(reason);
}

std::optional<CrlReason> parseReason(std::string const& text) {
    for (std::size_t number = 0; number < std::size(kNames); ++number) {
        if (kNames[number] && strcasecmp(text.c_str(), kNames[number]) == 0) {
            return static_cast<CrlReason>(number);
        }
    }
    return std::nullopt;
}

}  // namespace tools
