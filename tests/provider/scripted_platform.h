// A platform that does what a test scripts and notes what it was asked: it stands in the test program in
// front of the real one.
#ifndef MIRVANE_TESTS_PROVIDER_SCRIPTED_PLATFORM_H
#define MIRVANE_TESTS_PROVIDER_SCRIPTED_PLATFORM_H

#include <map>
#include <string>
#include <vector>

#include "platform/certificates.h"
#include "platform/hash.h"

namespace test {

struct ScriptedProvider {
    DWORD type = 0;
    std::string name;
    std::vector<ALG_ID> algorithms{};
    std::vector<DWORD> enumerationErrors{};  // one for each call that is to fail, in order
    DWORD acquisitionError = 0;              // 0 for success
    DWORD listEnd = ERROR_NO_MORE_ITEMS;     // the code behind the last algorithm
};

struct ScriptedPlatform {
    std::vector<ScriptedProvider> types;
    std::vector<ScriptedProvider> providers;
    bool providersEnd = true;  // false: index after index fails, and the end is never told
    DWORD reportedLength = 0;  // 0 for the true one
    HCRYPTPROV defaultAnswer = 0;
    bool refusesReferences = false;
    std::map<std::string, DWORD> failures;  // by name of function: the code that it leaves

    std::map<std::string, int> calls;      // by name of function
    std::map<HCRYPTPROV, int> references;  // of each context
    std::map<HCRYPTPROV, ScriptedProvider> contexts;
    std::vector<DWORD> capacities;  // that came with the calls of an enumeration
    std::vector<DWORD> walkFlags;   // that came with the calls for a list of algorithms
    int liveHashes = 0;
    std::vector<std::string> trace;  // what was done with certificates and what was hashed, in order

    // A context that a test's caller holds.
    HCRYPTPROV addContext(ScriptedProvider provider);
    int totalReferences() const;
};

extern ScriptedPlatform platform;

}  // namespace test

#endif
