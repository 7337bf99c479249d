// The signers of real signed messages and time stamps with their attributes, as libcrypto finds them, to hold
// the value classes against.
#ifndef MIRVANE_TESTS_ASN1_REAL_SIGNATURES_H
#define MIRVANE_TESTS_ASN1_REAL_SIGNATURES_H

#include <gtest/gtest.h>
#include <openssl/cms.h>
#include <openssl/rsa.h>
#include <openssl/ts.h>

#include <memory>
#include <string>
#include <vector>

#include "real_objects.h"

namespace test {

struct RealAttribute {
    std::string file;
    std::string oid;
    Mirvane::CBlob encoded;
    std::vector<Mirvane::CBlob> values;
};

struct RealSigner {
    std::string file;
    std::shared_ptr<CMS_ContentInfo> message;
    CMS_SignerInfo* info;  // of the message
    std::vector<RealAttribute> signedAttributes;
    std::vector<RealAttribute> unsignedAttributes;
};

inline std::shared_ptr<CMS_ContentInfo> messageIn(unsigned char const* data, std::size_t size) {
    return parsed(d2i_CMS_ContentInfo, CMS_ContentInfo_free, data, size);
}

// The message, or the token of a time-stamp response.
inline std::shared_ptr<CMS_ContentInfo> signedMessage(Octets const& octets) {
    if (const auto message = messageIn(octets.data(), octets.size())) return message;
    const auto response = parsed(d2i_TS_RESP, TS_RESP_free, octets.data(), octets.size());
    PKCS7* const token = response ? TS_RESP_get_token(response.get()) : nullptr;
    if (token == nullptr) return nullptr;
    const Mirvane::CBlob encoded = writtenBy(i2d_PKCS7, token);
    return messageIn(encoded.pbData(), encoded.cbData());
}

inline RealAttribute realAttribute(std::string const& file, X509_ATTRIBUTE* attribute) {
    RealAttribute real{
        file, dotted(X509_ATTRIBUTE_get0_object(attribute)), writtenBy(i2d_X509_ATTRIBUTE, attribute), {}};
    for (int i = 0; i < X509_ATTRIBUTE_count(attribute); ++i) {
        real.values.push_back(writtenBy(i2d_ASN1_TYPE, X509_ATTRIBUTE_get0_type(attribute, i)));
    }
    return real;
}

// Of every message that libcrypto reads.
inline std::vector<RealSigner> realSigners() {
    std::vector<RealSigner> signers;
    auto files = vectorFiles("cms");
    for (auto const& path : vectorFiles("tsp"))
        files.push_back(path);
    for (auto const& path : files) {
        const auto message = signedMessage(readFile(path));
        auto* const infos = message ? CMS_get0_SignerInfos(message.get()) : nullptr;
        for (int i = 0; i < sk_CMS_SignerInfo_num(infos); ++i) {
            CMS_SignerInfo* const info = sk_CMS_SignerInfo_value(infos, i);
            RealSigner signer{path.filename().string(), message, info, {}, {}};
            for (int j = 0; j < CMS_signed_get_attr_count(info); ++j) {
                signer.signedAttributes.push_back(realAttribute(signer.file, CMS_signed_get_attr(info, j)));
            }
            for (int j = 0; j < CMS_unsigned_get_attr_count(info); ++j) {
                signer.unsignedAttributes.push_back(
                    realAttribute(signer.file, CMS_unsigned_get_attr(info, j)));
            }
            signers.push_back(std::move(signer));
        }
    }
    return signers;
}

// The values of all signed attributes with one identifier, beside the signer that has each.
inline std::vector<std::pair<RealSigner const*, Mirvane::CBlob>> signedValues(
    std::vector<RealSigner> const& signers, std::string const& oid) {
    std::vector<std::pair<RealSigner const*, Mirvane::CBlob>> found;
    for (auto const& signer : signers) {
        for (auto const& attribute : signer.signedAttributes) {
            if (attribute.oid != oid) continue;
            for (auto const& value : attribute.values)
                found.emplace_back(&signer, value);
        }
    }
    return found;
}

// An issuer's name under [7] that holds what belongs under [4]: the one signing certificate that is refused.
constexpr char kMalformedSigner[] =
    "tspclient-TimeStampTokenWithWrongSigningCertificateV2IssuerChoiceTag.tst.der";

// Tests on the real signers; they skip where there are none.
class RealSigners : public ::testing::Test {
  protected:
    void SetUp() override {
        if (signers().empty()) GTEST_SKIP() << "no real signed messages here";
    }
    static std::vector<RealSigner> const& signers() {
        static const auto found = realSigners();
        return found;
    }
    static auto values(char const* oid) {
        auto found = signedValues(signers(), oid);
        EXPECT_FALSE(found.empty()) << oid;
        return found;
    }
};

// The signer's certificate, if the message has it.
inline std::shared_ptr<X509> signerCertificate(RealSigner const& signer) {
    auto* const certificates = CMS_get1_certs(signer.message.get());
    std::shared_ptr<X509> found;
    for (int i = 0; i < sk_X509_num(certificates); ++i) {
        X509* const certificate = sk_X509_value(certificates, i);
        if (found || CMS_SignerInfo_cert_cmp(signer.info, certificate) != 0) continue;
        X509_up_ref(certificate);
        found.reset(certificate, X509_free);
    }
    sk_X509_pop_free(certificates, X509_free);
    return found;
}

}  // namespace test

#endif
