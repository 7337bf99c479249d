// What the tests of the value classes share: their names in short, and values of a few octets.
#ifndef MIRVANE_TESTS_ASN1_VALUE_TEST_H
#define MIRVANE_TESTS_ASN1_VALUE_TEST_H

#include <string_view>

#include "asn1/big_integer.h"
#include "asn1/bridge.h"
#include "asn1/general_name.h"
#include "support/values.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;

namespace test {

inline CGeneralName url(wchar_t const* text) {
    CGeneralName name;
    name.put_uniformResourceIdentifier(text);
    return name;
}

inline CBigInteger integer(std::string_view hex) {
    const Octets bytes = octets(hex);
    return CBigInteger(bytes.data(), bytes.size());
}

// An element in DER, of less than 128 characters.
inline CBlob element(unsigned char tag, std::string_view content) {
    Octets octets = {tag, static_cast<unsigned char>(content.size())};
    octets.insert(octets.end(), content.begin(), content.end());
    return CBlob(octets.data(), octets.size());
}

}  // namespace test

using test::blob;
using test::element;
using test::expectRefused;
using test::integer;
using test::thrownCode;
using test::url;

#endif
