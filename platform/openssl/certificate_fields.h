// The outer shape of signed objects, and algorithm identifiers and object identifiers as text.
#ifndef MIRVANE_PLATFORM_OPENSSL_CERTIFICATE_FIELDS_H
#define MIRVANE_PLATFORM_OPENSSL_CERTIFICATE_FIELDS_H

#include <string>

#include "ber_reader.h"

namespace platform {

enum Tag : BYTE {
    tagBoolean = 0x01,
    tagInteger = 0x02,
    tagBitString = 0x03,
    tagOctetString = 0x04,
    tagObjectIdentifier = 0x06,
    tagUtcTime = 0x17,
    tagGeneralizedTime = 0x18,
    tagSequence = 0x30,
};

// SIGNED of X.509: what is signed, the algorithm, the signature.
struct SignedObject {
    Element toBeSigned;
    Element algorithm;
};

// Codes: CRYPT_E_ASN1_EOD for no octets, CRYPT_E_ASN1_NOEOD for octets behind the end, CRYPT_E_ASN1_CORRUPT.
DWORD readSignedObject(Octets octets, SignedObject& object);

struct AlgorithmFields {
    std::string objectIdentifier;
    Octets parameters;  // with tag and length; empty if absent
};

// From the content of an AlgorithmIdentifier. False if it is none.
bool readAlgorithm(Octets content, AlgorithmFields& algorithm);

// Dotted text from the content of an OBJECT IDENTIFIER (X.690, 8.19). False for what is none, and for an arc
// above 128 bits.
bool readObjectIdentifier(Octets content, std::string& text);

}  // namespace platform

#endif
