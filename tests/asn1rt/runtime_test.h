// What the tests of the runtime share: contexts that encode and decode, under watched memory.
#ifndef MIRVANE_TESTS_ASN1RT_RUNTIME_TEST_H
#define MIRVANE_TESTS_ASN1RT_RUNTIME_TEST_H

#include <gtest/gtest.h>

#include "support/allocation.h"
#include "support/contexts.h"

using test::CountedAllocations;
using test::Decoder;
using test::Encoder;
using test::LiveContext;

#endif
