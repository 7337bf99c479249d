#include "platform/certificates.h"

#include <ctime>

#include "provider_support.h"
#include "support/vectors.h"

using namespace test;

namespace {

struct FreeContext {
    void operator()(PCCERT_CONTEXT context) const { CertFreeCertificateContext(context); }
};
using Context = std::unique_ptr<const CERT_CONTEXT, FreeContext>;

Context parse(const Octets& encoded) {
    return Context(
        CertCreateCertificateContext(encoding, encoded.data(), static_cast<DWORD>(encoded.size())));
}

DWORD parseCode(const Octets& encoded) {
    return codeOf([&] { return parse(encoded) != nullptr; });
}

Octets octetsOf(const _CRYPTOAPI_BLOB& blob) {
    return {blob.pbData, blob.pbData + blob.cbData};
}

template <typename Object>
Octets der(int (*encode)(const Object*, unsigned char**), const Object* object) {
    return test::octetsOf(writtenBy(encode, object));
}

std::int64_t secondsOf(const FILETIME& time) {
    const auto ticks = std::int64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return ticks / 10'000'000 - 11'644'473'600;
}

// Times before the first that a FILETIME tells come as that one.
std::int64_t secondsOf(const ASN1_TIME* time) {
    std::tm parts = {};
    ASN1_TIME_to_tm(time, &parts);
    return std::max<std::int64_t>(timegm(&parts), -11'644'473'600);
}

Octets derOf(const std::filesystem::path& path) {
    const Octets content = readFile(path);
    if (content.size() < 10 || content[0] != '-') return content;
    const auto file = owned(BIO_new_mem_buf(content.data(), static_cast<int>(content.size())), BIO_free);
    const auto read = owned(PEM_read_bio_X509(file.get(), nullptr, nullptr, nullptr), X509_free);
    return read != nullptr ? der(i2d_X509, read.get()) : content;
}

void expectSameAsOpenssl(const CERT_INFO& info, const X509* certificate) {
    Octets serial = reversed(octetsOf(info.SerialNumber));
    const Octets encodedSerial = der(i2d_ASN1_INTEGER, X509_get0_serialNumber(certificate));
    EXPECT_EQ(serial, Octets(encodedSerial.begin() + 2, encodedSerial.end()));
    EXPECT_EQ(octetsOf(info.Issuer), der(i2d_X509_NAME, X509_get_issuer_name(certificate)));
    EXPECT_EQ(octetsOf(info.Subject), der(i2d_X509_NAME, X509_get_subject_name(certificate)));
    EXPECT_EQ(secondsOf(info.NotBefore), secondsOf(X509_get0_notBefore(certificate)));
    EXPECT_EQ(secondsOf(info.NotAfter), secondsOf(X509_get0_notAfter(certificate)));
    EXPECT_EQ(static_cast<long>(info.dwVersion), X509_get_version(certificate));

    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, X509_get0_tbs_sigalg(certificate));
    EXPECT_EQ(info.SignatureAlgorithm.pszObjId, dotted(object));
    const ASN1_BIT_STRING* bits = X509_get0_pubkey_bitstr(certificate);
    EXPECT_EQ(Octets(info.SubjectPublicKeyInfo.PublicKey.pbData,
                     info.SubjectPublicKeyInfo.PublicKey.pbData + info.SubjectPublicKeyInfo.PublicKey.cbData),
              Octets(bits->data, bits->data + bits->length));

    ASSERT_EQ(static_cast<int>(info.cExtension), std::max(X509_get_ext_count(certificate), 0));
    for (int i = 0; i < X509_get_ext_count(certificate); ++i) {
        X509_EXTENSION* extension = X509_get_ext(certificate, i);
        const ASN1_OCTET_STRING* value = X509_EXTENSION_get_data(extension);
        EXPECT_EQ(info.rgExtension[i].pszObjId, dotted(X509_EXTENSION_get_object(extension)));
        EXPECT_EQ(info.rgExtension[i].fCritical, X509_EXTENSION_get_critical(extension));
        EXPECT_EQ(octetsOf(info.rgExtension[i].Value), Octets(value->data, value->data + value->length));
    }
}

// A small certificate of our own making, in hexadecimal text with places to put something else.
struct Parts {
    std::string serialNumber = "02 01 05";
    std::string algorithm = "30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00";
    std::string notBefore = "17 0D 32 30 30 31 30 31 30 30 30 30 30 30 5A";
    std::string publicKey = "30 0A 30 05 06 03 2A 03 04 03 01 00";
    std::string rest = "";
};

Octets element(unsigned char tag, const Octets& content) {
    Octets result = {tag};
    if (content.size() >= 0x80) result.push_back(0x81);
    result.push_back(static_cast<unsigned char>(content.size()));
    result.insert(result.end(), content.begin(), content.end());
    return result;
}

Octets certificateOf(const Parts& parts) {
    const std::string notAfter = "18 0F 32 30 35 30 30 31 30 31 30 30 30 30 30 30 5A";
    const std::string name = "30 00";
    const Octets validity = element(0x30, octets(parts.notBefore + notAfter));
    const Octets toBeSigned = element(0x30, octets(parts.serialNumber + parts.algorithm + name +
                                                   text(validity) + name + parts.publicKey + parts.rest));
    return element(0x30, octets(text(toBeSigned) + parts.algorithm + "03 02 00 AA"));
}

Octets encodedInteger(const Octets& littleEndian) {
    Octets copy = littleEndian;
    const CRYPT_INTEGER_BLOB blob = {static_cast<DWORD>(copy.size()), copy.data()};
    DWORD length = 0;
    EXPECT_TRUE(CryptEncodeObject(encoding, X509_MULTI_BYTE_INTEGER, &blob, nullptr, &length));
    Octets encoded(length);
    EXPECT_TRUE(CryptEncodeObject(encoding, X509_MULTI_BYTE_INTEGER, &blob, encoded.data(), &length));
    return encoded;
}

Octets name(std::initializer_list<std::tuple<const char*, int, std::string>> entries) {
    const auto made = owned(X509_NAME_new(), X509_NAME_free);
    for (const auto& [type, kind, value] : entries)
        X509_NAME_add_entry_by_txt(made.get(), type, kind,
                                   reinterpret_cast<const unsigned char*>(value.data()),
                                   static_cast<int>(value.size()), -1, 0);
    return der(i2d_X509_NAME, made.get());
}

bool equal(Octets one, Octets other) {
    const CERT_NAME_BLOB first = {static_cast<DWORD>(one.size()), one.data()};
    const CERT_NAME_BLOB second = {static_cast<DWORD>(other.size()), other.data()};
    SetLastError(7);
    const bool result = CertCompareCertificateName(encoding, &first, &second) != 0;
    EXPECT_EQ(GetLastError(), 7u);
    return result;
}

Octets hashToBeSigned(const Octets& encoded) {
    Octets hash(64);
    DWORD length = 64;
    const auto encodedLength = static_cast<DWORD>(encoded.size());
    EXPECT_TRUE(CryptHashToBeSigned(0, encoding, encoded.data(), encodedLength, hash.data(), &length));
    hash.resize(length);
    return hash;
}

DWORD hashCode(const Octets& encoded) {
    DWORD length = 0;
    const auto encodedLength = static_cast<DWORD>(encoded.size());
    return codeOf(
        [&] { return CryptHashToBeSigned(0, encoding, encoded.data(), encodedLength, nullptr, &length); });
}

}  // namespace

TEST(CertificateContext, OfRealCertificatesShowsWhatOpensslReads) {
    int compared = 0;
    for (const auto& path : vectorFiles("certs")) {
        SCOPED_TRACE(path);
        const Octets encoded = derOf(path);
        const unsigned char* position = encoded.data();
        const auto read = owned(d2i_X509(nullptr, &position, static_cast<long>(encoded.size())), X509_free);
        if (read == nullptr || position != encoded.data() + encoded.size()) continue;
        const Context context = parse(encoded);
        ASSERT_NE(context, nullptr);
        expectSameAsOpenssl(*context->pCertInfo, read.get());
        ++compared;
    }
    ERR_clear_error();
    if (compared == 0) GTEST_SKIP() << "no certificates under " << vectorsFolder();
}

TEST(CertificateContext, CutOrLengthenedIsRefused) {
    const Octets whole = certificateOf({});
    ASSERT_EQ(parseCode(whole), 0u);
    EXPECT_EQ(parseCode({}), CRYPT_E_ASN1_EOD);
    EXPECT_CODE(CRYPT_E_ASN1_EOD, CertCreateCertificateContext(encoding, nullptr, 5) != nullptr);
    for (std::size_t length = 1; length < whole.size(); ++length)
        EXPECT_EQ(parseCode(Octets(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))),
                  CRYPT_E_ASN1_CORRUPT);
    Octets longer = whole;
    longer.push_back(0);
    EXPECT_EQ(parseCode(longer), CRYPT_E_ASN1_NOEOD);
    EXPECT_CODE(E_INVALIDARG, CertCreateCertificateContext(1, whole.data(), 9) != nullptr);
    EXPECT_TRUE(CertFreeCertificateContext(nullptr));
}

TEST(CertificateContext, DamagedAnywhereNeverReadsOutside) {
    const Octets whole = certificateOf({.rest = "A3 0D 30 0B 30 09 06 03 55 1D 13 04 02 30 00"});
    ASSERT_EQ(parseCode(whole), 0u);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (unsigned char value : {0x00, 0x1F, 0x7F, 0x80, 0x84, 0x88, 0xFF}) {
            // A copy of its own size, so that a step outside is seen.
            Octets damaged = whole;
            damaged[i] = value;
            parse(damaged);
            hashCode(damaged);
        }
    }
}

TEST(CertificateContext, HoldsAllOctetsOfTheSerialNumber) {
    for (const char* content : {"00", "05", "00 80", "80", "FF", "00 00 01", "FF FF FE",
                                "7F 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13"}) {
        const Octets octetsOfNumber = octets(content);
        const Context context = parse(certificateOf({.serialNumber = text(element(2, octetsOfNumber))}));
        ASSERT_NE(context, nullptr) << content;
        EXPECT_EQ(reversed(octetsOf(context->pCertInfo->SerialNumber)), octetsOfNumber);
    }
    EXPECT_EQ(parseCode(certificateOf({.serialNumber = "02 00"})), CRYPT_E_ASN1_CORRUPT);
}

TEST(CertificateContext, AcceptsBerAndUnknownAlgorithms) {
    const Parts rows[] = {
        {.algorithm = "30 80 06 03 2A 03 04 30 80 02 01 01 00 00 00 00"},
        {.algorithm = "30 81 05 06 03 2A 03 04"},
        {.algorithm = "30 06 06 04 69 83 FF 7F"},
        {.notBefore = "17 0B 32 30 30 31 30 31 30 30 30 30 5A"},
        {.publicKey = "30 80 30 80 06 03 2A 03 04 00 00 03 02 07 FF 00 00"},
        {.rest = "A3 80 30 80 30 80 06 03 55 1D 13 01 01 01 04 02 30 00 00 00 00 00 00 00"},
    };
    for (const Parts& parts : rows)
        EXPECT_EQ(parseCode(certificateOf(parts)), 0u) << parts.algorithm << parts.publicKey << parts.rest;

    const Context context = parse(certificateOf(rows[0]));
    EXPECT_STREQ(context->pCertInfo->SignatureAlgorithm.pszObjId, "1.2.3.4");
    EXPECT_EQ(text(octetsOf(context->pCertInfo->SignatureAlgorithm.Parameters)), "30 80 02 01 01 00 00");
    const Context whole = parse(certificateOf(rows[4]));
    EXPECT_EQ(whole->pCertInfo->SubjectPublicKeyInfo.PublicKey.cbData, 1u);
}

TEST(CertificateContext, RefusesWhatIsNoCertificate) {
    const Parts rows[] = {
        {.serialNumber = "04 01 05"},
        {.serialNumber = ""},
        {.algorithm = "30 03 06 01 80"},
        {.algorithm = "30 05 06 03 2A 03 84"},
        {.algorithm = "30 09 06 03 2A 03 04 05 00 05 00"},
        {.notBefore = "17 0D 32 30 31 33 30 31 30 30 30 30 30 30 5A"},
        {.notBefore = "18 0E 31 36 30 30 30 31 30 31 30 30 30 30 30 30"},
        {.notBefore = "1E 0D 32 30 30 31 30 31 30 30 30 30 30 30 5A"},
        {.publicKey = "30 09 30 05 06 03 2A 03 04 03 00"},
        {.rest = "04 00"},
        {.rest = "A3 02 30 00 A3 02 30 00"},
    };
    for (const Parts& parts : rows)
        EXPECT_EQ(parseCode(certificateOf(parts)), CRYPT_E_ASN1_CORRUPT)
            << parts.serialNumber << '/' << parts.algorithm << '/' << parts.notBefore << '/'
            << parts.publicKey;
}

TEST(CertificateContext, WritesArcsOfUpTo128Bits) {
    const std::pair<const char*, const char*> rows[] = {
        {"06 01 4F", "1.39"},
        {"06 01 50", "2.0"},
        {"06 03 88 37 03", "2.999.3"},
        {"06 14 69 83 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF 7F",
         "2.25.340282366920938463463374607431768211455"},
    };
    for (const auto& [identifier, expected] : rows) {
        const Context context = parse(certificateOf({.algorithm = text(element(0x30, octets(identifier)))}));
        ASSERT_NE(context, nullptr) << expected;
        EXPECT_STREQ(context->pCertInfo->SignatureAlgorithm.pszObjId, expected);
    }
    const Octets above = octets("06 14 69 84 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 00");
    EXPECT_EQ(parseCode(certificateOf({.algorithm = text(element(0x30, above))})), CRYPT_E_ASN1_CORRUPT);
}

TEST(EncodedInteger, IsTheShortestDer) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "02 01 00"},         {"00", "02 01 00"},       {"05", "02 01 05"},    {"80", "02 01 80"},
        {"80 00", "02 02 00 80"}, {"01 00", "02 01 01"},    {"FF FF", "02 01 FF"}, {"7F FF", "02 02 FF 7F"},
        {"00 80", "02 02 80 00"}, {"05 00 00", "02 01 05"},
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(text(encodedInteger(octets(number))), expected) << number;
    for (std::size_t size : {127, 128, 255, 256, 65536}) {
        const Octets encoded = encodedInteger(Octets(size, 0x11));
        const auto read = parsed(d2i_ASN1_INTEGER, ASN1_INTEGER_free, encoded.data(), encoded.size());
        ASSERT_NE(read, nullptr) << size;
        EXPECT_EQ(der(i2d_ASN1_INTEGER, read.get()), encoded);
    }
    BYTE number = 5;
    CRYPT_INTEGER_BLOB blob = {1, &number};
    BYTE encoded[3];
    DWORD length = 2;
    EXPECT_CODE(ERROR_MORE_DATA,
                CryptEncodeObject(encoding, X509_MULTI_BYTE_INTEGER, &blob, encoded, &length));
    EXPECT_EQ(length, 3u);
    EXPECT_CODE(E_INVALIDARG, CryptEncodeObject(1, X509_MULTI_BYTE_INTEGER, &blob, encoded, &length));
    EXPECT_CODE(ERROR_FILE_NOT_FOUND, CryptEncodeObject(encoding, "27", &blob, encoded, &length));
    blob.cbData = 0xFFFFFFFF;
    EXPECT_CODE(E_INVALIDARG, CryptEncodeObject(encoding, X509_MULTI_BYTE_INTEGER, &blob, encoded, &length));
}

TEST(NameComparison, FollowsTheRulesOfRfc5280) {
    constexpr int utf8 = V_ASN1_UTF8STRING;
    constexpr int printable = V_ASN1_PRINTABLESTRING;
    const Octets plain = name({{"O", printable, "Example Org"}, {"CN", printable, "One"}});
    EXPECT_TRUE(equal(plain, plain));
    EXPECT_TRUE(equal(plain, name({{"O", utf8, "Example Org"}, {"CN", V_ASN1_IA5STRING, "One"}})));
    EXPECT_TRUE(equal(plain, name({{"O", utf8, " EXAMPLE   oRG "}, {"CN", printable, "one"}})));
    EXPECT_TRUE(equal(
        plain, name({{"O", utf8, "Example Org"}, {"CN", V_ASN1_BMPSTRING, std::string("\0O\0n\0e", 6)}})));
    EXPECT_FALSE(equal(plain, name({{"CN", printable, "One"}, {"O", printable, "Example Org"}})));
    EXPECT_FALSE(equal(plain, name({{"O", printable, "Example Org"}})));
    EXPECT_FALSE(equal(plain, name({{"O", printable, "ExampleOrg"}, {"CN", printable, "One"}})));
    EXPECT_FALSE(equal(plain, name({{"O", printable, "Example Org"}, {"OU", printable, "One"}})));
}

TEST(NameComparison, OctetsThatAreNoNameEqualOnlyThemselves) {
    const Octets good = name({{"CN", V_ASN1_UTF8STRING, "x"}});
    Octets longer = good;
    longer.push_back(0);
    EXPECT_TRUE(equal({}, {}));
    EXPECT_TRUE(equal(octets("FF 01"), octets("FF 01")));
    EXPECT_FALSE(equal(octets("FF 01"), octets("FF 02")));
    EXPECT_FALSE(equal({}, octets("30 00")));
    EXPECT_FALSE(equal(good, {}));
    EXPECT_FALSE(equal(good, longer));
    EXPECT_TRUE(equal(longer, longer));
    const CERT_NAME_BLOB blob = {0, nullptr};
    EXPECT_CODE(E_INVALIDARG, CertCompareCertificateName(1, &blob, &blob));
    EXPECT_CODE(E_INVALIDARG, CertCompareCertificateName(encoding, nullptr, &blob));
}

TEST(HashToBeSigned, EqualsTheHashThatOpensslChecks) {
    int compared = 0;
    for (const auto& path : vectorFiles("certs")) {
        const Octets encoded = derOf(path);
        const auto read = parsed(d2i_X509, X509_free, encoded.data(), encoded.size());
        if (read == nullptr || hashCode(encoded) != 0) continue;
        const Octets toBeSigned =
            der(reinterpret_cast<int (*)(const X509*, unsigned char**)>(i2d_re_X509_tbs), read.get());
        int digest = NID_undef;
        X509_get_signature_info(read.get(), &digest, nullptr, nullptr, nullptr);
        Octets expected(64);
        unsigned length = 0;
        ASSERT_TRUE(EVP_Digest(toBeSigned.data(), toBeSigned.size(), expected.data(), &length,
                               EVP_get_digestbynid(digest), nullptr))
            << path;
        expected.resize(length);
        EXPECT_EQ(hashToBeSigned(encoded), expected) << path;
        ++compared;
    }
    ERR_clear_error();
    if (compared == 0) GTEST_SKIP() << "no certificates under " << vectorsFolder();
}

TEST(HashToBeSigned, TakesTheHashOfPssFromItsParameters) {
    const std::string pss = "06 09 2A 86 48 86 F7 0D 01 01 0A";
    const std::string sha256 = "30 0B 06 09 60 86 48 01 65 03 04 02 01";
    const std::pair<std::string, std::size_t> rows[] = {
        {"30 0B " + pss, 20},
        {"30 0D " + pss + "30 00", 20},
        {"30 1C " + pss + "30 0F A0 0D " + sha256, 32},
    };
    for (const auto& [algorithm, size] : rows)
        EXPECT_EQ(hashToBeSigned(certificateOf({.algorithm = algorithm})).size(), size) << algorithm;
    EXPECT_EQ(hashCode(certificateOf({.algorithm = "30 0D " + pss + "31 00"})), CRYPT_E_ASN1_CORRUPT);
}

TEST(HashToBeSigned, RefusalsHaveTheirCodes) {
    const Octets good = certificateOf({});
    EXPECT_EQ(hashCode({}), CRYPT_E_ASN1_EOD);
    EXPECT_EQ(hashCode(octets("30 03 02 01 01")), CRYPT_E_ASN1_CORRUPT);
    EXPECT_EQ(hashCode(certificateOf({.algorithm = "30 05 06 03 2B 65 70"})), NTE_BAD_ALGID);  // Ed25519
    EXPECT_EQ(hashCode(certificateOf({.algorithm = "30 05 06 03 2A 03 04"})), NTE_BAD_ALGID);
    BYTE hash[32];
    DWORD length = 31;
    const auto call = [&](HCRYPTPROV provider, DWORD encodingType) {
        return codeOf([&] {
            return CryptHashToBeSigned(provider, encodingType, good.data(), static_cast<DWORD>(good.size()),
                                       hash, &length);
        });
    };
    EXPECT_EQ(call(0, encoding), ERROR_MORE_DATA);
    EXPECT_EQ(length, 32u);
    EXPECT_EQ(call(99, encoding), NTE_BAD_UID);
    EXPECT_EQ(call(0, 1), E_INVALIDARG);
}
