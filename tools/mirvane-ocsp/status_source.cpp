#include "status_source.h"

#include "matching.h"
#include "reason.h"
#include "time_text.h"

namespace tools {

using namespace Mirvane::PKI::OCSP;

CCertStatus const& StatusSource::statusOf(CReqCert const& subject) const {
    const auto serial = serialOf(subject);
    if (!serial) return unlisted;
    const auto found = listed.find(serialText(*serial));
    return found == listed.end() ? unlisted : found->second;
}

CCertStatus goodStatus() {
    CCertStatus status;
    status.put_good();
    return status;
}

CCertStatus parseRevoked(std::string const& text) {
    const std::size_t comma = text.find(',');
    const Mirvane::CDateTime time = parseTime(text.substr(0, comma));
    if (comma == std::string::npos) return CCertStatus(time, nullptr);
    const auto reason = parseReason(text.substr(comma + 1));
    if (!reason) throw InputError(text.substr(comma + 1), "is no revocation reason of RFC 5280");
    return CCertStatus(time, &*reason);
}

}  // namespace tools
