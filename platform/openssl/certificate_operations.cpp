// Names compared, integers encoded, what was signed hashed.
#include <vector>

#include "answer.h"
#include "certificate_fields.h"
#include "hash_object.h"
#include "object_identifiers.h"
#include "platform/certificates.h"
#include "pointers.h"
#include "provider_context.h"

namespace platform {
namespace {

Octets octetsOf(const _CRYPTOAPI_BLOB& blob) {
    return {blob.pbData, blob.cbData};
}

NamePointer readName(Octets octets) {
    const BYTE* position = octets.data();
    if (position == nullptr) return nullptr;
    NamePointer name(d2i_X509_NAME(nullptr, &position, static_cast<long>(octets.size())));
    return position == octets.data() + octets.size() ? std::move(name) : nullptr;
}

// OpenSSL compares names by the rules of RFC 5280, 7.1.
bool namesAreEqual(Octets one, Octets other) {
    if (std::equal(one.begin(), one.end(), other.begin(), other.end())) return true;
    const FailureScope scope;
    const NamePointer first = readName(one);
    const NamePointer second = first != nullptr ? readName(other) : nullptr;
    const bool areEqual = second != nullptr && X509_NAME_cmp(first.get(), second.get()) == 0;
    if (!areEqual) scope.throwIfMemoryFailed();
    return areEqual;
}

// The number without the octets of sign that say nothing. Its last octet is the most significant.
Octets shortest(Octets number) {
    while (number.size() > 1) {
        const BYTE top = number.back();
        const bool nextIsNegative = number[number.size() - 2] >= 0x80;
        if (!(top == 0x00 && !nextIsNegative) && !(top == 0xFF && nextIsNegative)) break;
        number = number.first(number.size() - 1);
    }
    return number;
}

DWORD encodeInteger(const CRYPT_INTEGER_BLOB& integer, BYTE* encoded, DWORD* length) {
    static constexpr BYTE zero = 0;
    Octets number = integer.cbData != 0 ? octetsOf(integer) : Octets(&zero, 1);
    if (number.data() == nullptr || number.size() > 0x7FFFFFFF - 8) return E_INVALIDARG;
    number = shortest(number);
    BYTE header[6] = {tagInteger};
    std::size_t headerSize = 1;
    std::size_t lengthOctets = 0;
    for (std::size_t rest = number.size(); rest != 0; rest >>= 8)
        ++lengthOctets;
    if (number.size() >= 0x80) header[headerSize++] = static_cast<BYTE>(0x80 | lengthOctets);
    while (lengthOctets != 0)
        header[headerSize++] = static_cast<BYTE>(number.size() >> (8 * --lengthOctets));

    const DWORD capacity = *length;
    *length = static_cast<DWORD>(headerSize + number.size());
    if (encoded == nullptr) return success;
    if (capacity < *length) return ERROR_MORE_DATA;
    std::reverse_copy(number.begin(), number.end(), std::copy_n(header, headerSize, encoded));
    return success;
}

// The hash in the parameters of RSASSA-PSS (RFC 4055, 3.1), which is SHA-1 where none is named.
DWORD pssHash(Octets parameters, ALG_ID& hash) {
    constexpr BYTE tagHashAlgorithm = 0xA0;
    hash = CALG_SHA1;
    if (parameters.empty()) return success;
    BerReader outer(parameters);
    BerReader fields(outer.take(tagSequence).content);
    if (!outer.finished()) return CRYPT_E_ASN1_CORRUPT;
    if (!fields.isNext(tagHashAlgorithm)) return success;
    BerReader tagged(fields.take(tagHashAlgorithm).content);
    AlgorithmFields algorithm;
    const bool isRead = readAlgorithm(tagged.take(tagSequence).content, algorithm) && tagged.finished();
    hash = algorithmOf(Kind::hash, algorithm.objectIdentifier);
    return isRead ? success : CRYPT_E_ASN1_CORRUPT;
}

DWORD hashOfSignature(Octets content, const HashAlgorithm*& hash) {
    AlgorithmFields algorithm;
    if (!readAlgorithm(content, algorithm)) return CRYPT_E_ASN1_CORRUPT;
    ALG_ID id = algorithmOf(Kind::signature, algorithm.objectIdentifier);
    if (algorithm.objectIdentifier == rsassaPss) {
        if (const DWORD code = pssHash(algorithm.parameters, id); code != success) return code;
    }
    hash = Registry::instance().hash(id);
    return hash != nullptr ? success : NTE_BAD_ALGID;
}

DWORD hashToBeSigned(Octets encoded, BYTE* hash, DWORD* length) {
    SignedObject object;
    if (const DWORD code = readSignedObject(encoded, object); code != success) return code;
    const HashAlgorithm* algorithm = nullptr;
    if (const DWORD code = hashOfSignature(object.algorithm.content, algorithm); code != success) return code;
    const ErrorScope scope;
    HashObject digest(*algorithm, nullptr);
    if (const DWORD code = digest.add(object.toBeSigned.whole); code != success) return code;
    return digest.deliverValue(hash, length);
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL CertCompareCertificateName(DWORD encodingType, const CERT_NAME_BLOB* one, const CERT_NAME_BLOB* other) {
    bool areEqual = false;
    const BOOL wasCompared = answer([&]() -> DWORD {
        if (encodingType != acceptedEncodingType || one == nullptr || other == nullptr) return E_INVALIDARG;
        areEqual = namesAreEqual(octetsOf(*one), octetsOf(*other));
        return success;
    });
    return wasCompared && areEqual;
}

BOOL CryptEncodeObject(DWORD encodingType, const char* structureType, const void* structure, BYTE* encoded,
                       DWORD* length) {
    return answer([&]() -> DWORD {
        if (encodingType != acceptedEncodingType || structure == nullptr || length == nullptr)
            return E_INVALIDARG;
        if (structureType != X509_MULTI_BYTE_INTEGER) return ERROR_FILE_NOT_FOUND;
        return encodeInteger(*static_cast<const CRYPT_INTEGER_BLOB*>(structure), encoded, length);
    });
}

BOOL CryptHashToBeSigned(HCRYPTPROV provider, DWORD encodingType, const BYTE* encoded, DWORD encodedLength,
                         BYTE* hash, DWORD* length) {
    return answer([&]() -> DWORD {
        if (provider != 0 && !providerContexts.pin(provider)) return NTE_BAD_UID;
        if (encodingType != acceptedEncodingType || length == nullptr) return E_INVALIDARG;
        if (encoded == nullptr) return CRYPT_E_ASN1_EOD;
        return hashToBeSigned({encoded, encodedLength}, hash, length);
    });
}
