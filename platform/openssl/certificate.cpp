// Certificate contexts.
#include "platform/certificates.h"

#include <array>
#include <cstddef>
#include <ctime>
#include <memory_resource>
#include <string>
#include <vector>

#include "answer.h"
#include "certificate_fields.h"
#include "pointers.h"

namespace platform {
namespace {

constexpr BYTE tagVersion = 0xA0;
constexpr BYTE tagIssuerUniqueId = 0x81;
constexpr BYTE tagSubjectUniqueId = 0x82;
constexpr BYTE tagExtensions = 0xA3;

CRYPT_OBJID_BLOB blobOf(Octets octets) {
    return {static_cast<DWORD>(octets.size()), const_cast<BYTE*>(octets.data())};
}

// A context and what it points to.
class Certificate : public CERT_CONTEXT {
  public:
    explicit Certificate(Octets encoded) : CERT_CONTEXT(), octets_(encoded.begin(), encoded.end()) {
        static_cast<CERT_CONTEXT&>(*this) = {acceptedEncodingType, octets_.data(),
                                             static_cast<DWORD>(octets_.size()), &info_};
    }
    Certificate(const Certificate&) = delete;
    Certificate& operator=(const Certificate&) = delete;

    // Takes the certificate apart; a code.
    DWORD read();

  private:
    bool readVersion(BerReader& fields);
    bool readSerialNumber(Octets content);
    bool readValidity(Octets content);
    bool readPublicKey(Octets content);
    bool readUniqueId(BerReader& fields, BYTE identifier, CRYPT_BIT_BLOB& bits);
    bool readExtensions(BerReader& fields);
    bool readExtension(Octets content);
    bool readInfo(Octets content);
    bool readAlgorithmInto(Octets content, CRYPT_ALGORITHM_IDENTIFIER& algorithm);
    char* keep(const std::string& text);

    CERT_INFO info_ = {};
    std::vector<BYTE> octets_;
    // For all that the octets do not show as it is told. Most certificates find room in the object itself.
    std::array<std::byte, 1024> room_;
    std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
    std::pmr::vector<CERT_EXTENSION> extensions_{&memory_};
    AlgorithmFields algorithm_;  // to read each one into
};

// The octets behind the count of unused bits.
bool readBits(Octets content, CRYPT_BIT_BLOB& bits) {
    if (content.empty()) return false;
    const CRYPT_OBJID_BLOB value = blobOf(content.subspan(1));
    bits = {value.cbData, value.pbData, content[0]};
    return true;
}

bool readTime(BerReader& fields, FILETIME& time) {
    const bool isUtcTime = fields.isNext(tagUtcTime);
    const Octets text = fields.take(isUtcTime ? tagUtcTime : tagGeneralizedTime).content;
    constexpr std::size_t mostCharacters = 64;
    if (fields.failed() || text.size() > mostCharacters) return false;
    const TimePointer value(ASN1_STRING_type_new(isUtcTime ? V_ASN1_UTCTIME : V_ASN1_GENERALIZEDTIME));
    if (value == nullptr || ASN1_STRING_set(value.get(), text.data(), static_cast<int>(text.size())) != 1) {
        throw std::bad_alloc();
    }
    std::tm parts = {};
    if (ASN1_TIME_to_tm(value.get(), &parts) != 1) return false;
    // Earlier than any file time: the first one stands for it.
    if (parts.tm_year + 1900 < 1601) return true;
    const auto word = [](int part) { return static_cast<WORD>(part); };
    const SYSTEMTIME calendar = {
        word(parts.tm_year + 1900), word(parts.tm_mon + 1), 0, word(parts.tm_mday), word(parts.tm_hour),
        word(parts.tm_min),         word(parts.tm_sec),     0};
    return SystemTimeToFileTime(&calendar, &time) != 0;
}

char* Certificate::keep(const std::string& text) {
    auto* const kept = static_cast<char*>(memory_.allocate(text.size() + 1, 1));
    std::copy_n(text.c_str(), text.size() + 1, kept);
    return kept;
}

bool Certificate::readAlgorithmInto(Octets content, CRYPT_ALGORITHM_IDENTIFIER& algorithm) {
    if (!readAlgorithm(content, algorithm_)) return false;
    algorithm = {keep(algorithm_.objectIdentifier), blobOf(algorithm_.parameters)};
    return true;
}

bool Certificate::readVersion(BerReader& fields) {
    if (!fields.isNext(tagVersion)) return true;
    BerReader inner(fields.take(tagVersion).content);
    const Octets number = inner.take(tagInteger).content;
    if (!inner.finished() || number.size() != 1) return false;
    info_.dwVersion = number[0];
    return true;
}

bool Certificate::readSerialNumber(Octets content) {
    auto* const number = static_cast<BYTE*>(memory_.allocate(content.size(), 1));
    std::reverse_copy(content.begin(), content.end(), number);
    info_.SerialNumber = blobOf({number, content.size()});
    return !content.empty();
}

bool Certificate::readValidity(Octets content) {
    BerReader fields(content);
    return readTime(fields, info_.NotBefore) && readTime(fields, info_.NotAfter) && fields.finished();
}

bool Certificate::readPublicKey(Octets content) {
    BerReader fields(content);
    const Element algorithm = fields.take(tagSequence);
    const Element key = fields.take(tagBitString);
    return fields.finished() && readAlgorithmInto(algorithm.content, info_.SubjectPublicKeyInfo.Algorithm) &&
           readBits(key.content, info_.SubjectPublicKeyInfo.PublicKey);
}

bool Certificate::readUniqueId(BerReader& fields, BYTE identifier, CRYPT_BIT_BLOB& bits) {
    return !fields.isNext(identifier) || readBits(fields.take(identifier).content, bits);
}

bool Certificate::readExtensions(BerReader& fields) {
    if (!fields.isNext(tagExtensions)) return true;
    BerReader tagged(fields.take(tagExtensions).content);
    BerReader list(tagged.take(tagSequence).content);
    if (!tagged.finished()) return false;
    constexpr std::size_t usualExtensions = 12;
    extensions_.reserve(usualExtensions);
    while (!list.atEnd()) {
        const Element extension = list.take(tagSequence);
        if (list.failed() || !readExtension(extension.content)) return false;
    }
    info_.cExtension = static_cast<DWORD>(extensions_.size());
    info_.rgExtension = extensions_.data();
    return true;
}

bool Certificate::readExtension(Octets content) {
    BerReader fields(content);
    const Element identifier = fields.take(tagObjectIdentifier);
    Octets critical;
    if (fields.isNext(tagBoolean)) critical = fields.take(tagBoolean).content;
    const Element value = fields.take(tagOctetString);
    std::string& text = algorithm_.objectIdentifier;
    if (!fields.finished() || !readObjectIdentifier(identifier.content, text)) return false;
    const BOOL isCritical = !critical.empty() && critical[0] != 0;
    extensions_.push_back({keep(text), isCritical, blobOf(value.content)});
    return true;
}

bool Certificate::readInfo(Octets content) {
    BerReader fields(content);
    if (!readVersion(fields)) return false;
    const Element serialNumber = fields.take(tagInteger);
    const Element algorithm = fields.take(tagSequence);
    info_.Issuer = blobOf(fields.take(tagSequence).whole);
    const Element validity = fields.take(tagSequence);
    info_.Subject = blobOf(fields.take(tagSequence).whole);
    const Element publicKey = fields.take(tagSequence);
    return !fields.failed() && readSerialNumber(serialNumber.content) &&
           readAlgorithmInto(algorithm.content, info_.SignatureAlgorithm) && readValidity(validity.content) &&
           readPublicKey(publicKey.content) &&
           readUniqueId(fields, tagIssuerUniqueId, info_.IssuerUniqueId) &&
           readUniqueId(fields, tagSubjectUniqueId, info_.SubjectUniqueId) && readExtensions(fields) &&
           fields.finished();
}

DWORD Certificate::read() {
    SignedObject object;
    if (const DWORD code = readSignedObject(octets_, object); code != success) return code;
    const bool isCertificate =
        readAlgorithm(object.algorithm.content, algorithm_) && readInfo(object.toBeSigned.content);
    return isCertificate ? success : CRYPT_E_ASN1_CORRUPT;
}

}  // namespace
}  // namespace platform

using namespace platform;

PCCERT_CONTEXT CertCreateCertificateContext(DWORD encodingType, const BYTE* encoded, DWORD length) {
    PCCERT_CONTEXT context = nullptr;
    answer([&]() -> DWORD {
        if (encodingType != acceptedEncodingType) return E_INVALIDARG;
        if (encoded == nullptr) return CRYPT_E_ASN1_EOD;
        const ErrorScope scope;
        auto certificate = std::make_unique<Certificate>(Octets(encoded, length));
        if (const DWORD code = certificate->read(); code != success) return code;
        context = certificate.release();
        return success;
    });
    return context;
}

BOOL CertFreeCertificateContext(PCCERT_CONTEXT certificate) {
    delete static_cast<const Certificate*>(certificate);
    return 1;
}
