// One signer that is the same in every run: a key on P-256 from a scalar that is no secret, and a certificate
// of it. Seeds are signed by it, and signatures are checked with it.
#ifndef MIRVANE_TESTS_FUZZ_FIXED_SIGNER_H
#define MIRVANE_TESTS_FUZZ_FIXED_SIGNER_H

#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/param_build.h>

#include "ocsp/messages.h"

namespace fuzz {

inline test::OpensslKey fixedKey() {
    const std::unique_ptr<EC_GROUP, decltype(&EC_GROUP_free)> group(
        EC_GROUP_new_by_curve_name(NID_X9_62_prime256v1), &EC_GROUP_free);
    const std::unique_ptr<EC_POINT, decltype(&EC_POINT_free)> point(EC_POINT_new(group.get()),
                                                                    &EC_POINT_free);
    const std::unique_ptr<BIGNUM, decltype(&BN_free)> scalar(BN_new(), &BN_free);
    BN_set_word(scalar.get(), 0x4D697276616E65);
    EC_POINT_mul(group.get(), point.get(), scalar.get(), nullptr, nullptr, nullptr);
    unsigned char octets[65];
    EC_POINT_point2oct(group.get(), point.get(), POINT_CONVERSION_UNCOMPRESSED, octets, sizeof octets,
                       nullptr);

    const std::unique_ptr<OSSL_PARAM_BLD, decltype(&OSSL_PARAM_BLD_free)> fields(OSSL_PARAM_BLD_new(),
                                                                                 &OSSL_PARAM_BLD_free);
    OSSL_PARAM_BLD_push_utf8_string(fields.get(), OSSL_PKEY_PARAM_GROUP_NAME, "P-256", 0);
    OSSL_PARAM_BLD_push_octet_string(fields.get(), OSSL_PKEY_PARAM_PUB_KEY, octets, sizeof octets);
    OSSL_PARAM_BLD_push_BN(fields.get(), OSSL_PKEY_PARAM_PRIV_KEY, scalar.get());
    const std::unique_ptr<OSSL_PARAM, decltype(&OSSL_PARAM_free)> parameters(
        OSSL_PARAM_BLD_to_param(fields.get()), &OSSL_PARAM_free);
    const std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> context(
        EVP_PKEY_CTX_new_from_name(nullptr, "EC", nullptr), &EVP_PKEY_CTX_free);
    EVP_PKEY* key = nullptr;
    EVP_PKEY_fromdata_init(context.get());
    EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_KEYPAIR, parameters.get());
    return test::own(key);
}

inline test::Algorithms const& fixedAlgorithms() {
    return test::signatureAlgorithms[2];
}

// The certificate alone, for those who only check.
inline const Mirvane::CBlob& fixedCertificate() {
    static const Mirvane::CBlob encoded = test::writtenBy(
        i2d_X509, test::makeCertificate(fixedKey(), EVP_sha256(), fixedAlgorithms().kind, 4711).get());
    return encoded;
}

}  // namespace fuzz

#endif
