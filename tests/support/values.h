// Checks that every class of values goes through.
#ifndef MIRVANE_TESTS_SUPPORT_VALUES_H
#define MIRVANE_TESTS_SUPPORT_VALUES_H

#include <gtest/gtest.h>

#include <initializer_list>

#include "support/blobs.h"
#include "support/contexts.h"
#include "support/failures.h"

namespace test {

// Decoding each of the octets throws the code and leaves the value as it was.
template <typename Value>
void expectRefused(Value& value, unsigned code, std::initializer_list<char const*> refused) {
    const Value former(value);
    const std::string encoded = text(value.encode());
    for (char const* octets : refused) {
        SCOPED_TRACE(octets);
        EXPECT_EQ(thrownCode([&] { value.decode(blob(octets)); }), code);
        EXPECT_EQ(text(value.encode()), encoded);
        if constexpr (requires { value == former; }) {
            EXPECT_TRUE(value == former);
        }
    }
}

template <typename Value>
void expectRefused(Value const& value, unsigned code, std::initializer_list<char const*> refused) {
    Value read(value);
    expectRefused(read, code, refused);
}

// The value that comes out of the copy of a record, when the record and its memory are gone.
template <typename Traits, typename Record = typename Traits::ASN1_T, typename Value>
Value throughCopiedRecord(Value const& value) {
    LiveContext target;
    Record copy{};
    {
        LiveContext source;
        Record record{};
        Traits::set(source, record, value);
        Traits::copy(target, record, copy);
    }
    Value read;
    Traits::get(copy, read);
    return read;
}

}  // namespace test

#endif
