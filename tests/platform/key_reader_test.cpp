// The short way of reading keys against OpenSSL's decoder.
#include "openssl/key_reader.h"

#include "provider_support.h"

using namespace test;

namespace {

constexpr const char* plainKinds[] = {
    "RSA", "P-256", "P-384", "P-521", "brainpoolP256r1", "brainpoolP384r1", "brainpoolP512r1"};

ALG_ID kindOf(const PublicKeyInfo& info) {
    return CertOIDToAlgId(info.identifier.c_str());
}

// What the short way takes the decoder takes too, as the same key. Tells whether there is a key.
bool isKey(PublicKeyInfo info) {
    const CERT_PUBLIC_KEY_INFO view = info.info();
    const platform::KeyPointer plain = platform::readPlainKey(view, kindOf(info));
    const platform::KeyPointer decoded = platform::decodeKey(view);
    const platform::KeyPointer either = platform::readKey(view, kindOf(info));
    if (plain != nullptr) {
        EXPECT_NE(decoded, nullptr);
        EXPECT_EQ(EVP_PKEY_eq(plain.get(), decoded.get()), 1);
    }
    EXPECT_EQ(either != nullptr, decoded != nullptr);
    EXPECT_TRUE(either == nullptr || EVP_PKEY_eq(either.get(), decoded.get()) == 1);
    ERR_clear_error();
    return either != nullptr;
}

PublicKeyInfo withBits(PublicKeyInfo info, const Octets& bits) {
    info.bits = bits;
    return info;
}

PublicKeyInfo withParameters(PublicKeyInfo info, const Octets& parameters) {
    info.parameters = parameters;
    return info;
}

}  // namespace

TEST(KeyReader, TakesPlainKeysWithoutTheDecoder) {
    for (const char* kind : plainKinds) {
        PublicKeyInfo info(keyOfKind(kind));
        const platform::KeyPointer key = platform::readPlainKey(info.info(), kindOf(info));
        ASSERT_NE(key, nullptr) << kind;
        EXPECT_EQ(EVP_PKEY_eq(key.get(), keyOfKind(kind).get()), 1) << kind;
    }
}

TEST(KeyReader, AgreesWithTheDecoderOverDamagedKeys) {
    for (const char* kind : plainKinds) {
        const PublicKeyInfo whole(keyOfKind(kind));
        SCOPED_TRACE(kind);
        for (Octets PublicKeyInfo::*part : {&PublicKeyInfo::bits, &PublicKeyInfo::parameters}) {
            for (std::size_t i = 0; i < (whole.*part).size(); ++i) {
                PublicKeyInfo damaged = whole;
                (damaged.*part)[i] ^= static_cast<unsigned char>(1 << i % 8);
                isKey(damaged);
                (damaged.*part).resize(i);
                EXPECT_FALSE(isKey(damaged) && part == &PublicKeyInfo::bits) << "length " << i;
            }
        }
    }
}

TEST(KeyReader, AgreesWithTheDecoderOverFormsOfPoints) {
    const PublicKeyInfo info(keyOfKind("P-256"));
    const auto ofForm = [&](int form, std::size_t size) {
        Octets point(info.bits.begin(), info.bits.begin() + static_cast<std::ptrdiff_t>(size));
        point[0] = static_cast<unsigned char>(form);
        return withBits(info, point);
    };
    const int odd = info.bits.back() & 1;
    EXPECT_TRUE(isKey(ofForm(2 | odd, 33))) << "compressed";
    isKey(ofForm(6 | odd, 65));  // hybrid
    EXPECT_FALSE(isKey(ofForm(7 ^ odd, 65))) << "hybrid with the other sign";
    EXPECT_FALSE(isKey(ofForm(5, 65))) << "no form";
    EXPECT_FALSE(isKey(ofForm(4, 33))) << "half a point";
    isKey(withBits(info, {0}));  // the point at infinity
    EXPECT_FALSE(isKey(withBits(info, Octets(65, 4)))) << "not on the curve";
    Octets twice = info.bits;
    twice.push_back(0);
    EXPECT_FALSE(isKey(withBits(info, twice))) << "an octet behind it";
    EXPECT_FALSE(isKey(withParameters(info, PublicKeyInfo(keyOfKind("brainpoolP256r1")).parameters)))
        << "of another curve";
    // The point with x = 0, whose y is a root of the curve's b.
    const std::string y = "66485C780E2F83D72433BD5D84A06BB6541C2AF31DAE871728BF856A174F93F4";
    EXPECT_TRUE(isKey(withBits(info, octets("04" + std::string(64, '0') + y))));
    const std::string p = "FFFFFFFF00000001000000000000000000000000FFFFFFFFFFFFFFFFFFFFFFFF";
    EXPECT_FALSE(isKey(withBits(info, octets("04" + p + y)))) << "the same with x = p";
}

TEST(KeyReader, AgreesWithTheDecoderOverFormsOfRsaKeys) {
    const PublicKeyInfo info(keyOfKind("RSA"));
    const std::pair<const char*, const char*> rows[] = {
        {"tiny", "30 06 02 01 23 02 01 03"},
        {"even modulus", "30 06 02 01 22 02 01 03"},
        {"modulus 0", "30 06 02 01 00 02 01 03"},
        {"exponent 0", "30 06 02 01 23 02 01 00"},
        {"even exponent", "30 06 02 01 23 02 01 02"},
        {"sign octet", "30 07 02 02 00 A3 02 01 03"},
        {"negative modulus", "30 06 02 01 A3 02 01 03"},
        {"modulus padded", "30 07 02 02 00 23 02 01 03"},
        {"empty modulus", "30 05 02 00 02 01 03"},
        {"length in two octets", "30 07 02 81 01 23 02 01 03"},
        {"indefinite length", "30 80 02 01 23 02 01 03 00 00"},
        {"number behind", "30 09 02 01 23 02 01 03 02 01 05"},
        {"octet behind", "30 06 02 01 23 02 01 03 00"},
        {"one number", "30 03 02 01 23"},
        {"OCTET STRING for INTEGER", "30 06 04 01 23 02 01 03"},
        {"SET for SEQUENCE", "31 06 02 01 23 02 01 03"},
        {"nothing", ""},
    };
    for (const auto& [name, bits] : rows) {
        SCOPED_TRACE(name);
        isKey(withBits(info, octets(bits)));
    }
    EXPECT_TRUE(isKey(withParameters(info, {}))) << "no parameters";
    isKey(withParameters(info, octets("04 01 00")));
    EXPECT_FALSE(isKey(withParameters(info, octets("05 01 00")))) << "NULL with content";
    EXPECT_FALSE(isKey(withParameters(info, octets("05 00 05 00")))) << "NULL twice";
}
