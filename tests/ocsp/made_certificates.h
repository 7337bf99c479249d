// Certificates put together octet by octet, for what no tool would write. Nobody checks their signatures.
#ifndef MIRVANE_TESTS_OCSP_MADE_CERTIFICATES_H
#define MIRVANE_TESTS_OCSP_MADE_CERTIFICATES_H

#include <string>
#include <string_view>

#include "base/blob.h"
#include "support/octets.h"

namespace test {

inline Octets operator+(Octets left, Octets const& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// One element in DER, of less than 64 KiB.
inline Octets element(unsigned char tag, Octets const& content) {
    Octets header = {tag};
    const std::size_t size = content.size();
    if (size > 0xFF) {
        header.insert(header.end(), {0x82, static_cast<unsigned char>(size >> 8)});
    } else if (size > 0x7F) {
        header.push_back(0x81);
    }
    header.push_back(static_cast<unsigned char>(size));
    return header + content;
}

inline Mirvane::CBlob blobFrom(Octets const& octets) {
    return Mirvane::CBlob(octets.data(), octets.size());
}

// A name of one attribute: `type` is the identifier's content in hexadecimal, `tag` that of the string.
inline Octets madeName(std::string_view text, unsigned char tag = 0x13, std::string_view type = "55 04 03") {
    const Octets value = element(tag, Octets(text.begin(), text.end()));
    return element(0x30, element(0x31, element(0x30, element(0x06, octets(type)) + value)));
}

constexpr char kSha256WithRsa[] = "30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00";
constexpr char kSha1WithRsa[] = "30 0D 06 09 2A 86 48 86 F7 0D 01 01 05 05 00";

struct MadeCertificate {
    std::string serial = "01";  // the content of the INTEGER
    Octets issuer = madeName("CA");
    Octets subject = madeName("Leaf");
    std::string innerAlgorithm = kSha256WithRsa;
    std::string outerAlgorithm = kSha256WithRsa;
    std::string keyBits = "00 30 06 02 01 23 02 01 03";  // the count of unused bits first
    std::string signatureBits = "00 DE AD";

    Octets signedPart() const {
        const Octets validity = element(0x17, octets("32 36 30 31 30 31 30 30 30 30 30 30 5A")) +
                                element(0x17, octets("32 37 30 31 30 31 30 30 30 30 30 30 5A"));
        const Octets key =
            octets("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00") + element(0x03, octets(keyBits));
        return element(0x30, element(0x02, octets(serial)) + octets(innerAlgorithm) + issuer +
                                 element(0x30, validity) + subject + element(0x30, key));
    }

    Mirvane::CBlob encoded() const {
        return blobFrom(
            element(0x30, signedPart() + octets(outerAlgorithm) + element(0x03, octets(signatureBits))));
    }
};

}  // namespace test

#endif
