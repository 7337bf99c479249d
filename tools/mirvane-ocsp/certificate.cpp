#include "certificate.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/pem.h>

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <string_view>

#include "base/exception.h"
#include "ocsp/request_message.h"

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

constexpr std::string_view kPemMark = "-----BEGIN ";

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

std::vector<Certificate> certificatesOfPem(Octets const& octets, std::string const& source) {
    const Bio bio(BIO_new_mem_buf(octets.data(), static_cast<int>(octets.size())));
    std::vector<Certificate> result;
    char* name = nullptr;
    char* header = nullptr;
    unsigned char* data = nullptr;
    long length = 0;
    while (bio && PEM_read_bio(bio.get(), &name, &header, &data, &length)) {
        const bool isCertificate = std::string_view(name) == PEM_STRING_X509;
        const CBlob block(data, static_cast<unsigned long>(length));
        OPENSSL_free(name);
        OPENSSL_free(header);
        OPENSSL_free(data);
        if (!isCertificate) continue;
        const auto certificate = Certificate::fromOctets(block, source);
        if (!certificate) throw InputError(source, "holds a PEM block that is no certificate");
        result.push_back(*certificate);
    }
    ERR_clear_error();
    return result;
}

void negate(std::vector<unsigned char>& octets) {
    for (unsigned char& octet : octets)
        octet = static_cast<unsigned char>(~octet);
    for (auto octet = octets.rbegin(); octet != octets.rend() && ++*octet == 0;)
        ++octet;
}

}  // namespace

std::optional<Certificate> Certificate::fromOctets(CBlob const& octets, std::string const& source) {
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

bool Certificate::isSamePartyAs(Certificate const& other) const {
    return X509_NAME_cmp(X509_get_subject_name(get()), X509_get_subject_name(other.get())) == 0 &&
           written(i2d_X509_PUBKEY, X509_get_X509_PUBKEY(get())) ==
               written(i2d_X509_PUBKEY, X509_get_X509_PUBKEY(other.get()));
}

std::vector<Certificate> readCertificates(std::string const& path) {
    const std::string source = sourceName(path);
    const Octets octets = readFile(path);
    if (octets.front() == 0x30) {
        if (const auto one = Certificate::fromOctets(CBlob(octets.data(), octets.size()), source)) {
            return {*one};
        }
    }
    if (std::search(octets.begin(), octets.end(), kPemMark.begin(), kPemMark.end()) == octets.end()) {
        throw InputError(source, "is no certificate");
    }
    std::vector<Certificate> result = certificatesOfPem(octets, source);
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

void demandEncodable(Certificate const& certificate) {
    CRequestMessage probe;
    probe.put_requestList({CSingleRequest(CReqCert(CReqCert::certificate, certificate.octets()))});
    try {
        probe.encode();
    } catch (ATL::CAtlException const& failure) {
        throw InputError(
            certificate.source(),
            fmt::format("the certificate of {} cannot go into a message: the library does not "
                        "take a value in it (0x{:08X})",
                        nameText(certificate.subject()), static_cast<std::uint32_t>(failure.m_hr)));
    }
}

std::string nameText(CBlob const& name) {
    unsigned char const* position = name.pbData();
    const std::unique_ptr<X509_NAME, NameFree> decoded(
        d2i_X509_NAME(nullptr, &position, static_cast<long>(name.cbData())));
    const Bio bio(BIO_new(BIO_s_mem()));
    constexpr unsigned long kStyle = XN_FLAG_ONELINE & ~(ASN1_STRFLGS_ESC_MSB | XN_FLAG_SPC_EQ);
    const int written = decoded && bio ? X509_NAME_print_ex(bio.get(), decoded.get(), 0, kStyle) : -1;
    ERR_clear_error();
    if (written < 0) return hexText(name);
    char* text = nullptr;
    const long length = BIO_get_mem_data(bio.get(), &text);
    return std::string(text, static_cast<std::size_t>(length));
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
