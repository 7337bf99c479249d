// INTEGERs without bounds, from and to text.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_NUMBER_TEXT_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_NUMBER_TEXT_H

#include <optional>
#include <string>
#include <string_view>

#include "value.h"

namespace tools {

// The number of a two's complement content; no octets are zero.
BigNumberValue fromContent(OctetSpan content);

// The number of a text as decoders make it (see asn1rt/big_integer_codec.h).
BigNumberValue fromHexText(std::string_view text);

// The number, if its magnitude fits 64 bits.
std::optional<std::string> decimal(const BigNumberValue& number);

// 0x and the digits, a minus sign in front where it is negative.
std::string hexadecimal(const BigNumberValue& number);

// Octets as upper-case digits, side by side.
std::string hex(OctetSpan octets);

}  // namespace tools

#endif
