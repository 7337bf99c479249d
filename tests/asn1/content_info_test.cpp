#include "asn1/content_info.h"

#include <algorithm>
#include <set>

#include "asn1/content_info_traits.h"
#include "asn1/info_type_and_value.h"
#include "asn1/info_type_and_value_traits.h"
#include "asn1/signer_info.h"
#include "asn1/signer_info_traits.h"
#include "asn1data/cmp.h"
#include "real_signatures.h"
#include "value_test.h"

namespace {

constexpr char kData[] = "1.2.840.113549.1.7.1";
constexpr char kSignedData[] = "1.2.840.113549.1.7.2";

CInfoTypeAndValueList twoInfos() {
    CInfoTypeAndValueList list;
    list.insert(CInfoTypeAndValue("1.2.3", blob("05 00")));
    list.insert(CInfoTypeAndValue("1.2.4"));
    return list;
}

// As a SEQUENCE OF.
std::string encoded(CInfoTypeAndValueList const& list) {
    ASN1BERDecodeBuffer memory;
    asn1data::ASN1T_GenMsgContent records;
    ASN1TavList_Encode(list, records, memory);
    ASN1BEREncodeBuffer output;
    const int length = asn1data::ASN1C_GenMsgContent(output, records).EncodeTo(output);
    return length < 0 ? "refused" : test::text(output.getMsgPtr(), static_cast<std::size_t>(length));
}

}  // namespace

TEST(InfoTypeAndValue, ListKeepsIdentifiersApartWhenInserting) {
    CInfoTypeAndValueList list = twoInfos();
    list.insert(CInfoTypeAndValue("1.2.3", blob("02 01 07")));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(*list.find("1.2.3"), CInfoTypeAndValue("1.2.3", blob("02 01 07")));
    EXPECT_EQ(std::as_const(list).find("1.2"), list.cend());
    EXPECT_EQ(list.find(nullptr), list.end());
    list.remove("1.2.9");
    list.remove("1.2.3");
    EXPECT_EQ(list.size(), 1u);
    EXPECT_NE(list.front(), CInfoTypeAndValue("1.2.4", blob("05 00")));
}

TEST(InfoTypeAndValue, ListGoesIntoRecordsAndBackOrIsRefusedWithTheStatedCode) {
    EXPECT_EQ(encoded(twoInfos()), "30 0E 30 06 06 02 2A 03 05 00 30 04 06 02 2A 04");
    ASN1BERDecodeBuffer memory;
    ASN1TSeqOfList records{};
    ASN1TavList_Encode(twoInfos(), records, memory);
    CInfoTypeAndValueList read = twoInfos();
    read.push_back(CInfoTypeAndValue("1.2.5"));
    ASN1TavList_Parse(records, read);
    EXPECT_EQ(read, twoInfos());

    CInfoTypeAndValueList list;
    list.push_back(CInfoTypeAndValue("1.2.x"));
    EXPECT_EQ(thrownCode([&] { encoded(list); }), 0x80070057u);
    // id-it-signKeyPairTypes is a SEQUENCE.
    list.front() = CInfoTypeAndValue("1.3.6.1.5.5.7.4.2", blob("02 01 00"));
    EXPECT_EQ(thrownCode([&] { encoded(list); }), 0x80093101u);
}

TEST(ContentInfo, HasItsContentInAnExplicitTag) {
    const CContentInfo data(kData, blob("04 02 AB CD"));
    EXPECT_EQ(test::text(data.encode()), "30 11 06 09 2A 86 48 86 F7 0D 01 07 01 A0 04 04 02 AB CD");
    CContentInfo read("1.2.3", blob("05 00"));
    read.decode(data.encode());
    EXPECT_STREQ(read.get_contentType(), kData);
    EXPECT_EQ(read.get_content(), data.get_content());
    CBlob message;
    asn1Decode<ASN1T_ContentInfo_traits>(data.encode(), message);
    EXPECT_EQ(message, data.encode()) << "also held as the blob of its encoding";
    EXPECT_EQ(asn1Encode<ASN1T_ContentInfo_traits>(message), message);
    EXPECT_EQ(thrownCode([] { asn1Encode<ASN1T_ContentInfo_traits>(blob("30 00")); }), 0x80093101u);
}

TEST(ContentInfo, IsRefusedWithTheStatedCodeAndStays) {
    EXPECT_EQ(thrownCode([] { CContentInfo().encode(); }), 0x80070057u);
    EXPECT_EQ(thrownCode([] { CContentInfo(kSignedData, blob("05 00")).encode(); }), 0x80093101u);
    expectRefused(CContentInfo("1.2.3", blob("05 00")), 0x80093101,  // an unknown type
                  {"", "30 00", "30 0F 06 09 2A 86 48 86 F7 0D 01 07 02 A0 02 05 00"});
}

TEST(SignerInfo, IsEqualInEveryField) {
    CSignerInfo info;
    info.put_serialNumber(integer("00 05"));
    CSignerInfo other = info;
    other.put_serialNumber(integer("05"));
    EXPECT_EQ(info, other) << "numbers are compared as such";
    void (*const changes[])(CSignerInfo&) = {
        [](CSignerInfo& changed) { changed.put_version(1); },
        [](CSignerInfo& changed) { changed.put_issuer(blob("30 00")); },
        [](CSignerInfo& changed) { changed.put_serialNumber(CBigInteger(1)); },
        [](CSignerInfo& changed) { changed.put_signatureAlgorithm("1.2"); },
        [](CSignerInfo& changed) { changed.put_digestAlgorithm("1.2"); },
        [](CSignerInfo& changed) { changed.put_signature(blob("01")); },
    };
    for (auto const change : changes) {
        other = info;
        change(other);
        EXPECT_NE(info, other);
    }
}

namespace {

std::string algorithmText(X509_ALGOR const* algorithm) {
    ASN1_OBJECT const* identifier = nullptr;
    X509_ALGOR_get0(&identifier, nullptr, nullptr, algorithm);
    return test::dotted(identifier);
}

std::string sorted(CBlob const& value) {
    std::string octets(value.pbData(), value.pbData() + value.cbData());
    std::sort(octets.begin(), octets.end());
    return octets;
}

// Messages that are refused: the signer's key identifier is a constructed OCTET STRING, and an indefinite
// length stands within a definite one.
const std::set<std::string> kRefused = {"jsrsasign-qunit-do-asn1cms-hex35.p7.der",
                                        "pkijs-ECCCMSSharedInfo_before_RFC5753.spec.ts-pem1.p7.der"};

struct SignedDataTraits
    : RecordTraits<asn1data::ASN1T_SignedData, asn1data::ASN1C_SignedData, asn1data::asn1Copy_SignedData> {};

void expectSigner(CMS_SignerInfo* expected, asn1data::ASN1T_SignerInfo const& record) {
    CSignerInfo signer;
    signer.put_version(77);
    X509_NAME* issuer = nullptr;
    ASN1_INTEGER* serialNumber = nullptr;
    CMS_SignerInfo_get0_signer_id(expected, nullptr, &issuer, &serialNumber);
    const unsigned code = thrownCode([&] { ASN1T_SignerInfo_get(signer, record); });
    EXPECT_EQ(code, issuer != nullptr ? 0u : 0x80093101u);
    if (issuer == nullptr) {
        EXPECT_EQ(signer.get_version(), 77u) << "told by key identifier, and untouched";
        return;
    }
    X509_ALGOR* digest = nullptr;
    X509_ALGOR* signature = nullptr;
    CMS_SignerInfo_get0_algs(expected, nullptr, nullptr, &digest, &signature);
    EXPECT_EQ(signer.get_version(), record.version);
    EXPECT_EQ(signer.get_issuer(), test::writtenBy(i2d_X509_NAME, static_cast<X509_NAME const*>(issuer)));
    EXPECT_EQ(signer.get_serialNumber().encode(),
              test::writtenBy(i2d_ASN1_INTEGER, static_cast<ASN1_INTEGER const*>(serialNumber)));
    EXPECT_EQ(signer.get_digestAlgorithm().get_algorithm(), algorithmText(digest));
    EXPECT_EQ(signer.get_signatureAlgorithm().get_algorithm(), algorithmText(signature));
    EXPECT_EQ(signer.get_signature(), test::blobOf(CMS_SignerInfo_get0_signature(expected)));
}

void expectSigners(CMS_ContentInfo* expected, CContentInfo const& message) {
    test::LiveContext context;
    asn1data::ASN1T_SignedData data;
    asn1DecodeT<SignedDataTraits>(message.get_content(), context, data);
    STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(expected);
    ASSERT_EQ(static_cast<int>(data.signerInfos.count), std::max(0, sk_CMS_SignerInfo_num(signers)));
    int index = 0;
    for (auto const* node = data.signerInfos.head; node != nullptr; node = node->next) {
        expectSigner(sk_CMS_SignerInfo_value(signers, index++),
                     *static_cast<asn1data::ASN1T_SignerInfo const*>(node->data));
    }
}

}  // namespace

TEST(RealContentInfo, IsTakenApartAsLibcryptoReadsItAndBuiltAgain) {
    std::size_t read = 0;
    for (char const* kind : {"cms", "tsp"}) {
        for (auto const& path : test::vectorFiles(kind)) {
            const test::Octets octets = test::readFile(path);
            const auto expected = test::messageIn(octets.data(), octets.size());
            if (!expected) continue;
            SCOPED_TRACE(path.filename().string());
            ++read;
            const CBlob received(octets.data(), octets.size());
            CContentInfo message;
            const bool isRefused = kRefused.contains(path.filename());
            EXPECT_EQ(thrownCode([&] { message.decode(received); }), isRefused ? 0x80093101u : 0u);
            if (isRefused) continue;
            EXPECT_EQ(message.get_contentType(), test::dotted(CMS_get0_type(expected.get())));
            const CBlob built = CContentInfo(message.get_contentType(), message.get_content()).encode();
            // In DER: sets are sorted and lengths are definite, and nothing else differs.
            EXPECT_TRUE(octets[1] == 0x80 || sorted(built) == sorted(received));
            CContentInfo again;
            again.decode(built);
            EXPECT_EQ(again.encode(), built);
            if (message.get_contentType() == std::string(kSignedData)) expectSigners(expected.get(), message);
        }
    }
    if (read == 0) GTEST_SKIP() << "no real messages here";
}
