// The platform under watch: it stands in the test program in front of the real one, counts what is alive, and
// makes one call fail.
#ifndef MIRVANE_TESTS_OCSP_WATCHED_PLATFORM_H
#define MIRVANE_TESTS_OCSP_WATCHED_PLATFORM_H

#include <string>

#include "platform/keys.h"

namespace test {

struct WatchedPlatform {
    int failAt = -1;       // the call that is to fail, counted from 0; -1 for none
    DWORD code = 0;        // what it leaves in the last-error slot
    int made = 0;          // calls so far
    std::string failed{};  // the function of the call that failed, empty if it did not come to that

    int references = 0;  // of provider contexts
    int hashes = 0;
    int keys = 0;
    int certificates = 0;

    int alive() const { return references + hashes + keys + certificates; }
};

extern WatchedPlatform watched;

}  // namespace test

#endif
