// What the thread sanitizer is not to look at, built into the program so that it holds however that is run.
//
// The sanitizer sees only code that was compiled with it. libcrypto and its GOST engine are the system's: of
// them it sees the calls of malloc, free and memcpy, but not the atomic operations that stand between, by
// which one thread counts down a reference and another frees the object. It would take each such pair for a
// race.

// The sanitizer's library finds it by name; without the sanitizer nobody asks.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();

const char* __tsan_default_suppressions() {
    return "race:libcrypto.so\n"
           "race:gost.so\n";
}
