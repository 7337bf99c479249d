#include "certificate.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <string_view>

#include "asn1/name.h"
#include "base/code_page_text.h"
#include "base/exception.h"
#include "elements.h"
#include "ocsp/request_message.h"
#include "platform/provider.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using Mirvane::ASN1::CBigInteger;
using namespace Mirvane::PKI::OCSP;

struct BioFree {
    void operator()(BIO* bio) const { BIO_free(bio); }
};
using Bio = std::unique_ptr<BIO, BioFree>;

struct NameFree {
    void operator()(X509_NAME* name) const { X509_NAME_free(name); }
};

struct KeyContextFree {
    void operator()(EVP_PKEY_CTX* context) const { EVP_PKEY_CTX_free(context); }
};

// What one of OpenSSL's i2d functions writes.
template <typename Write, typename Object>
CBlob written(Write write, Object const* object) {
    const int length = write(object, nullptr);
    if (length <= 0) return {};
    CBlob result(static_cast<unsigned long>(length));
    unsigned char* position = result.pbData();
    write(object, &position);
    return result;
}

// What PEM_read_bio allocates.
struct PemBlock {
    ~PemBlock() {
        OPENSSL_free(name);
        OPENSSL_free(header);
        OPENSSL_free(data);
    }
    bool read(BIO* bio) { return PEM_read_bio(bio, &name, &header, &data, &length) == 1; }
    bool isCertificate() const {
        return std::string_view(name) == PEM_STRING_X509 || std::string_view(name) == PEM_STRING_X509_OLD;
    }

    char* name = nullptr;
    char* header = nullptr;
    unsigned char* data = nullptr;
    long length = 0;
};

std::vector<Certificate> certificatesOfPem(Octets const& octets, std::string const& source) {
    const Bio bio(BIO_new_mem_buf(octets.data(), static_cast<int>(octets.size())));
    if (!bio) throw std::bad_alloc();
    std::vector<Certificate> result;
    while (true) {
        PemBlock block;
        if (!block.read(bio.get())) break;
        if (!block.isCertificate()) continue;
        const auto certificate =
            Certificate::fromOctets(CBlob(block.data, static_cast<unsigned long>(block.length)), source);
        if (!certificate) throw InputError(source, "holds a PEM block that is no certificate");
        result.push_back(*certificate);
    }
    const bool isBroken = ERR_GET_REASON(ERR_peek_last_error()) != PEM_R_NO_START_LINE;
    ERR_clear_error();
    if (isBroken) throw InputError(source, "holds a PEM block that is broken or cut short");
    return result;
}

std::vector<Certificate> certificatesOfDer(Octets const& octets, std::string const& source) {
    std::vector<Certificate> result;
    for (std::size_t start = 0; start < octets.size();) {
        const CBlob one = Elements(octets.data() + start, octets.size() - start).take();
        const auto certificate = Certificate::fromOctets(one, source);
        if (!certificate) {
            throw InputError(source, result.empty() ? std::string("is no certificate")
                                                    : fmt::format("has {} octets behind its certificate",
                                                                  octets.size() - start));
        }
        result.push_back(*certificate);
        start += one.cbData();
    }
    return result;
}

// The plain text of the library's own class; nothing for a name that it does not take.
std::optional<std::string> plainText(CBlob const& name) {
    try {
        Mirvane::ASN1::CName decoded;
        decoded.decode(name);
        return Mirvane::narrowed(decoded.toString().c_str());
    } catch (ATL::CAtlException const&) {
    } catch (std::exception const&) {
    }
    return std::nullopt;
}

// OpenSSL is more lenient: a country in UTF-8, for one.
std::optional<std::string> lenientText(CBlob const& name) {
    unsigned char const* position = name.pbData();
    const std::unique_ptr<X509_NAME, NameFree> decoded(
        d2i_X509_NAME(nullptr, &position, static_cast<long>(name.cbData())));
    const Bio bio(BIO_new(BIO_s_mem()));
    constexpr unsigned long kStyle =
        (XN_FLAG_RFC2253 & ~(ASN1_STRFLGS_ESC_MSB | XN_FLAG_DN_REV)) | XN_FLAG_SEP_COMMA_PLUS;
    const int written = decoded && bio ? X509_NAME_print_ex(bio.get(), decoded.get(), 0, kStyle) : -1;
    ERR_clear_error();
    if (written < 0) return std::nullopt;
    char* text = nullptr;
    const long length = BIO_get_mem_data(bio.get(), &text);
    return std::string(text, static_cast<std::size_t>(length));
}

bool encodes(CRequestMessage const& message) {
    try {
        message.encode();
    } catch (ATL::CAtlException const&) {
        return false;
    }
    return true;
}

void negate(std::vector<unsigned char>& octets) {
    for (unsigned char& octet : octets)
        octet = static_cast<unsigned char>(~octet);
    for (auto octet = octets.rbegin(); octet != octets.rend() && ++*octet == 0;)
        ++octet;
}

}  // namespace

std::optional<Certificate> Certificate::fromOctets(CBlob const& octets, std::string const& source) {
    // OpenSSL takes a key apart with its certificate or never: the platform's engines have to be there.
    static const HCRYPTPROV isPlatformReady = MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA1, 0);
    static_cast<void>(isPlatformReady);
    unsigned char const* position = octets.pbData();
    Certificate result;
    result.x509_.reset(d2i_X509(nullptr, &position, static_cast<long>(octets.cbData())), &X509_free);
    ERR_clear_error();
    if (!result.x509_ || position != octets.pbData() + octets.cbData()) return std::nullopt;
    result.octets_ = octets;
    result.source_ = source;
    return result;
}

CBlob Certificate::subject() const {
    return written(i2d_X509_NAME, X509_get_subject_name(get()));
}

CBlob Certificate::issuer() const {
    return written(i2d_X509_NAME, X509_get_issuer_name(get()));
}

CBigInteger Certificate::serialNumber() const {
    CBigInteger result;
    result.decode(written(i2d_ASN1_INTEGER, X509_get0_serialNumber(get())));
    return result;
}

CBlob Certificate::keyBits() const {
    ASN1_BIT_STRING const* const bits = X509_get0_pubkey_bitstr(get());
    return CBlob(bits->data, static_cast<unsigned long>(bits->length));
}

std::string Certificate::keyAlgorithm() const {
    ASN1_OBJECT* algorithm = nullptr;
    X509_PUBKEY_get0_param(&algorithm, nullptr, nullptr, nullptr, X509_get_X509_PUBKEY(get()));
    char text[256] = {};
    OBJ_obj2txt(text, sizeof text, algorithm, 1);
    return text;
}

bool Certificate::namesItselfIssuerOf(Certificate const& other) const {
    return X509_NAME_cmp(X509_get_subject_name(get()), X509_get_issuer_name(other.get())) == 0;
}

bool Certificate::issued(Certificate const& other) const {
    EVP_PKEY* const key = X509_get0_pubkey(get());
    const bool result = key && namesItselfIssuerOf(other) && X509_verify(other.get(), key) == 1;
    ERR_clear_error();
    return result;
}

bool Certificate::signedHash(CBlob const& hash, std::string const& algorithm, CBlob const& signature) const {
    int hashNumber = NID_undef;
    OBJ_find_sigid_algs(OBJ_txt2nid(algorithm.c_str()), &hashNumber, nullptr);
    EVP_MD const* const digest = EVP_get_digestbynid(hashNumber);
    EVP_PKEY* const key = X509_get0_pubkey(get());
    // The gost engine ends the process at a hash of another length.
    if (!digest || !key || hash.cbData() != static_cast<unsigned long>(EVP_MD_get_size(digest))) return false;
    const std::unique_ptr<EVP_PKEY_CTX, KeyContextFree> context(EVP_PKEY_CTX_new(key, nullptr));
    const bool result = context && EVP_PKEY_verify_init(context.get()) == 1 &&
                        EVP_PKEY_CTX_set_signature_md(context.get(), digest) == 1 &&
                        EVP_PKEY_verify(context.get(), signature.pbData(), signature.cbData(), hash.pbData(),
                                        hash.cbData()) == 1;
    ERR_clear_error();
    return result;
}

bool Certificate::isSamePartyAs(Certificate const& other) const {
    return X509_NAME_cmp(X509_get_subject_name(get()), X509_get_subject_name(other.get())) == 0 &&
           written(i2d_X509_PUBKEY, X509_get_X509_PUBKEY(get())) ==
               written(i2d_X509_PUBKEY, X509_get_X509_PUBKEY(other.get()));
}

std::vector<Certificate> readCertificates(std::string const& path) {
    constexpr std::size_t kMostOctets = 16u << 20;
    const std::string source = sourceName(path);
    const Octets octets = readFile(path, kMostOctets);
    std::vector<Certificate> result =
        isPem(octets) ? certificatesOfPem(octets, source) : certificatesOfDer(octets, source);
    if (result.empty()) throw InputError(source, "holds no certificate");
    return result;
}

Certificate readCertificate(std::string const& path) {
    return readCertificates(path).front();
}

std::vector<Certificate> readCertificates(std::vector<std::string> const& paths) {
    std::vector<Certificate> result;
    for (std::string const& path : paths) {
        for (Certificate const& certificate : readCertificates(path))
            result.push_back(certificate);
    }
    return result;
}

bool isEncodable(Certificate const& certificate) {
    CRequestMessage probe;
    probe.put_requestList({CSingleRequest(CReqCert(CReqCert::certificate, certificate.octets()))});
    return encodes(probe);
}

bool isEncodableName(CBlob const& name) {
    CRequestMessage probe;
    probe.put_requestorName(&name);
    return encodes(probe);
}

void demandEncodable(Certificate const& certificate) {
    if (isEncodable(certificate)) return;
    throw InputError(certificate.source(),
                     "the certificate of " + nameText(certificate.subject()) +
                         " cannot go into a message: the library does not take a value in it");
}

std::string nameText(CBlob const& name) {
    if (auto text = plainText(name)) return *text;
    if (auto text = lenientText(name)) return *text;
    return hexText(name);
}

std::string hexText(CBlob const& octets) {
    return octets.writeToHexString().c_str();
}

std::string serialText(CBigInteger const& number) {
    std::vector<unsigned char> octets(number.pbData(), number.pbData() + number.cbData());
    const bool isNegative = !octets.empty() && (octets.front() & 0x80) != 0;
    if (isNegative) negate(octets);
    const auto start = std::find_if(octets.begin(), octets.end(), [](unsigned char o) { return o != 0; });
    const CBlob magnitude(octets.data() + (start - octets.begin()),
                          static_cast<unsigned long>(octets.end() - start));
    if (magnitude.cbData() == 0) return "00";
    return (isNegative ? "-" : "") + hexText(magnitude);
}

CBigInteger parseSerial(std::string const& text) {
    std::string digits = text;
    const bool isNegative = digits.starts_with('-');
    if (isNegative) digits.erase(0, 1);
    if (digits.starts_with("0x") || digits.starts_with("0X")) digits.erase(0, 2);
    std::erase_if(digits, [](char c) { return c == ':' || c == ' '; });
    const bool isHex =
        std::all_of(digits.begin(), digits.end(), [](unsigned char c) { return std::isxdigit(c) != 0; });
    if (digits.empty() || !isHex) throw InputError(text, "is no serial number in hexadecimal digits");
    digits.insert(0, digits.size() % 2 ? "0" : "");
    CBlob magnitude;
    magnitude.readFromHexString(("00" + digits).c_str());
    std::vector<unsigned char> octets(magnitude.pbData(), magnitude.pbData() + magnitude.cbData());
    if (isNegative) negate(octets);
    // The shortest form, as DER has it.
    while (octets.size() > 1 &&
           ((octets[0] == 0 && octets[1] < 0x80) || (octets[0] == 0xFF && octets[1] >= 0x80)))
        octets.erase(octets.begin());
    return CBigInteger(octets.data(), octets.size());
}

}  // namespace tools
