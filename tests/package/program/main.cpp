// A program on the library as another project would have it: asks, reads what it asked, and meets a failure
// of the messages, one of the platform, and a function of the runtime.
#include <cstdio>
#include <cstring>

#include <mirvane/asn1rt/text.h>
#include <mirvane/base/exception.h>
#include <mirvane/ocsp/request_message.h>
#include <mirvane/platform/last_error.h>
#include <mirvane/provider/handle_owners.h>

#include "base/blob.h"

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;
using Mirvane::ASN1::CAlgorithmIdentifier;

namespace {

bool requestComesBack() {
    const CBlob hash(20);
    const unsigned char serialNumber[] = {0x10, 0x01};
    CSingleRequestList entries;
    entries.emplace_back(
        CReqCert(CCertID(CAlgorithmIdentifier("1.3.14.3.2.26"), hash, hash, {serialNumber, 2})));
    CRequestMessage asked;
    asked.put_requestList(entries);
    CRequestMessage read;
    read.decode(asked.encode());
    return *read.get_requestList().front().get_reqCert().get_certID() ==
           *entries.front().get_reqCert().get_certID();
}

bool failureIsCaught() {
    try {
        CRequestMessage().decode(CBlob(1));
    } catch (const ATL::CAtlException& failure) {
        return static_cast<unsigned>(failure.m_hr) == 0x80093101;
    }
    return false;
}

bool platformAnswers() {
    ATL::CCryptProv provider;
    if (CryptAcquireContextA(provider.Place(), "no such key", nullptr, 0, 0)) return false;
    return GetLastError() == static_cast<DWORD>(NTE_BAD_KEYSET) &&
           CryptAcquireContextA(provider.Place(), nullptr, nullptr, PROV_RSA_AES, CRYPT_VERIFYCONTEXT);
}

}  // namespace

int main() {
    const struct {
        const char* name;
        bool holds;
    } checks[] = {
        {"a request comes back", requestComesBack()},
        {"a failure is caught", failureIsCaught()},
        {"the platform answers", platformAnswers()},
        {"the runtime counts", rtUTF8Len("\xC3\xA4") == 1},
        {"names do not meet", std::strcmp(ownBlobHeader, "the program's own") == 0},
    };
    int failures = 0;
    for (const auto& check : checks) {
        std::printf("%s: %s\n", check.name, check.holds ? "yes" : "NO");
        failures += !check.holds;
    }
    return failures;
}
