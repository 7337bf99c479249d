#include "asn1/big_integer.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "asn1/big_integer_text.h"
#include "asn1/bridge.h"
#include "asn1data/x509_certificate.h"

namespace Mirvane::ASN1 {
namespace {

using Bytes = std::span<unsigned char const>;

Bytes bytesOf(CBlob const& value) {
    return {value.pbData(), value.cbData()};
}

bool isNegative(unsigned char first) {
    return (first & 0x80) != 0;
}

Bytes withoutSignBytes(Bytes bytes) {
    const bool negative = isNegative(bytes[0]);
    const unsigned char fill = negative ? 0xFF : 0x00;
    while (bytes.size() >= 2 && bytes[0] == fill && isNegative(bytes[1]) == negative)
        bytes = bytes.subspan(1);
    return bytes;
}

// A value against an empty one.
int compareWithEmpty(Bytes bytes) {
    if (bytes.empty()) return 0;
    return isNegative(bytes[0]) ? -1 : 1;
}

int compareOctets(Bytes left, Bytes right) {
    return std::memcmp(left.data(), right.data(), left.size());
}

}  // namespace

void CBigInteger::increment(int stop) {
    if (cbData() == 0) return;
    const unsigned long last = std::min(static_cast<unsigned long>(std::max(stop, 0)), cbData() - 1);
    unsigned long index = cbData();
    do {
        --index;
        if (++pbData()[index] != 0) return;
    } while (index > last);
}

int CBigInteger::add(CBigInteger const& other) {
    if (cbData() != other.cbData()) failure::raise(failure::invalidArgument);
    CBigInteger sum(cbData());
    unsigned int carry = 0;
    for (unsigned long index = cbData(); index-- > 0;) {
        carry += static_cast<unsigned int>(pbData()[index]) + other.pbData()[index];
        sum.pbData()[index] = static_cast<unsigned char>(carry);
        carry >>= 8;
    }
    swap(sum);
    return static_cast<int>(carry);
}

CBigInteger& CBigInteger::operator++() {
    increment(0);
    return *this;
}

CBigInteger CBigInteger::operator++(int) {
    CBigInteger former(*this);
    increment(0);
    return former;
}

CBigInteger CBigInteger::abs() const {
    CBigInteger result(*this);
    // Meant to be no negation of two's complement.
    if (result.cbData() != 0) result.pbData()[0] &= 0x7F;
    return result;
}

int CBigInteger::compare(CBigInteger const& other) const {
    Bytes left = bytesOf(*this);
    Bytes right = bytesOf(other);
    if (right.empty()) return compareWithEmpty(left);
    if (left.empty()) return -compareWithEmpty(right);
    if (isNegative(left[0]) != isNegative(right[0])) return isNegative(left[0]) ? -1 : 1;
    if (left.size() == right.size()) return compareOctets(left, right);
    left = withoutSignBytes(left);
    right = withoutSignBytes(right);
    // Meant for negative values too, where it is the opposite of their arithmetic order.
    if (left.size() != right.size()) return left.size() > right.size() ? 1 : -1;
    return compareOctets(left, right);
}

CBlob CBigInteger::encode() const {
    return road::run([&] {
        CBlob text;
        BigIntegerToString(*this, text);
        auto record = reinterpret_cast<asn1data::ASN1T_CertificateSerialNumber>(text.pbData());
        ASN1BEREncodeBuffer output;
        const int length = asn1data::ASN1C_CertificateSerialNumber(output, record).EncodeTo(output);
        // Meant to refuse a length of 0, which the bridge lets pass.
        if (length < 1) failure::raise(failure::asn1);
        return CBlob(output.getMsgPtr(), static_cast<unsigned long>(length));
    });
}

void CBigInteger::decode(CBlob const& encoded) {
    road::run([&] {
        ASN1BERDecodeBuffer input(encoded.pbData(), road::messageLength(encoded));
        asn1data::ASN1T_CertificateSerialNumber record = nullptr;
        if (asn1data::ASN1C_CertificateSerialNumber(input, record).DecodeFrom(input) < 0) {
            failure::raise(failure::asn1);
        }
        StringToBigInteger(record, *this);
    });
}

bool operator==(CBigInteger const& left, CBigInteger const& right) {
    return left.compare(right) == 0;
}

bool operator!=(CBigInteger const& left, CBigInteger const& right) {
    return left.compare(right) != 0;
}

bool operator<(CBigInteger const& left, CBigInteger const& right) {
    return left.compare(right) < 0;
}

bool operator>(CBigInteger const& left, CBigInteger const& right) {
    return left.compare(right) > 0;
}

bool operator<=(CBigInteger const& left, CBigInteger const& right) {
    return left.compare(right) <= 0;
}

bool operator>=(CBigInteger const& left, CBigInteger const& right) {
    return left.compare(right) >= 0;
}

}  // namespace Mirvane::ASN1
