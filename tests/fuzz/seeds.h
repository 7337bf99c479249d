// The inputs that fuzzing starts from, made anew from our own messages; nothing of them is kept in the tree.
#ifndef MIRVANE_TESTS_FUZZ_SEEDS_H
#define MIRVANE_TESTS_FUZZ_SEEDS_H

#include <map>
#include <string>
#include <vector>

#include "support/octets.h"

namespace fuzz {

// By the target's name.
std::map<std::string, std::vector<test::Octets>> makeSeeds();

}  // namespace fuzz

#endif
