// The names of real certificates, among them those of the system's store, held against what OpenSSL makes of
// them.
#include <openssl/pem.h>

#include <memory>
#include <string>
#include <vector>

#include "asn1/attribute_register.h"
#include "asn1/general_name_traits.h"
#include "asn1/name.h"
#include "asn1/text_conversion.h"
#include "real_objects.h"
#include "value_test.h"

namespace {

struct NamedCertificate {
    std::string file;
    std::shared_ptr<X509> certificate;
};

std::vector<NamedCertificate> realCertificates() {
    std::vector<NamedCertificate> found;
    for (const auto& path : test::vectorFiles("certs")) {
        const test::Octets octets = test::readFile(path);
        auto certificate = test::parsed(d2i_X509, X509_free, octets.data(), octets.size());
        if (certificate) found.push_back({path.filename().string(), std::move(certificate)});
    }
    const auto store = test::owned(BIO_new_file("/etc/ssl/certs/ca-certificates.crt", "r"), BIO_free);
    while (X509* certificate = store ? PEM_read_bio_X509(store.get(), nullptr, nullptr, nullptr) : nullptr)
        found.push_back({"system store", {certificate, X509_free}});
    return found;
}

std::string content(BIO* bio) {
    char* data = nullptr;
    const long length = BIO_get_mem_data(bio, &data);
    return std::string(data, static_cast<std::size_t>(length));
}

std::string printed(const ASN1_STRING* value, unsigned long flags) {
    const auto bio = test::owned(BIO_new(BIO_s_mem()), BIO_free);
    return ASN1_STRING_print_ex(bio.get(), value, flags) < 0 ? "unreadable" : content(bio.get());
}

// The text of a name by OpenSSL, put together in our form: the options sep_comma_plus and utf8, our short
// names, and the DER dump for types that have none.
std::string expectedText(const X509_NAME* name) {
    std::string text;
    int set = 0;
    for (int i = 0; i < X509_NAME_entry_count(name); ++i) {
        const X509_NAME_ENTRY* entry = X509_NAME_get_entry(name, i);
        if (i > 0) text += X509_NAME_ENTRY_set(entry) == set ? "+" : ",";
        set = X509_NAME_ENTRY_set(entry);
        const std::string oid = test::dotted(X509_NAME_ENTRY_get_object(entry));
        const bool known = CATAVRegister::find(oid.c_str()) != CATAVRegister::end();
        text += tostring(CATAVRegister::typeToStr(oid.c_str()).c_str()) + '=';
        text += printed(X509_NAME_ENTRY_get_data(entry),
                        known ? ASN1_STRFLGS_UTF8_CONVERT : ASN1_STRFLGS_DUMP_ALL | ASN1_STRFLGS_DUMP_DER);
    }
    return text;
}

// What is not as it is everywhere else.
const std::string kRefused = "dss-eu-lotl-pivot-335-b64_32.crt.der";  // a country name as UTF8String
const std::string kUnsorted = "ocspbuilder-test-ocsp.crt.der";  // not DER: encoding sorts the attributes

void expectSame(const X509_NAME* real, const std::string& file) {
    const CBlob encoded = test::writtenBy(i2d_X509_NAME, real);
    CName name;
    const unsigned code = test::thrownCode([&] { name.decode(encoded); });
    EXPECT_EQ(code, file == kRefused ? 0x80093101u : 0u);
    if (code != 0) return;
    EXPECT_EQ(tostring(name.toString().c_str()), expectedText(real));
    const CBlob written = name.encode();
    EXPECT_TRUE(written == encoded || (file == kUnsorted && written.cbData() == encoded.cbData()));
}

// A general name in one line: the alternative and its text or octets.
std::string summary(unsigned int type, const std::string& value) {
    return std::to_string(type) + ' ' + value;
}

std::string summary(const CGeneralName& name) {
    for (const wchar_t* text : {name.get_rfc822Name(), name.get_dNSName(),
                                name.get_uniformResourceIdentifier(), name.get_registeredID()}) {
        if (text) return summary(name.get_type(), tostring(text));
    }
    return summary(name.get_type(), name.get_directoryName() ? test::text(*name.get_directoryName()) : "?");
}

std::string summary(const GENERAL_NAME& name) {
    if (name.type == GEN_RID) return summary(9, test::dotted(name.d.registeredID));
    if (name.type == GEN_DIRNAME)
        return summary(5, test::text(test::writtenBy<X509_NAME>(i2d_X509_NAME, name.d.directoryName)));
    const CBlob octets =
        test::blobOf(static_cast<const ASN1_STRING*>(GENERAL_NAME_get0_value(&name, nullptr)));
    // An address comes as a directory name.
    if (name.type == GEN_IPADD) return summary(5, test::text(octets));
    return summary(static_cast<unsigned int>(name.type) + 1,
                   std::string(octets.pbData(), octets.pbData() + octets.cbData()));
}

bool isSupported(const GENERAL_NAMES* names) {
    for (int i = 0; i < sk_GENERAL_NAME_num(names); ++i) {
        const int type = sk_GENERAL_NAME_value(names, i)->type;
        if (type == GEN_OTHERNAME || type == GEN_X400 || type == GEN_EDIPARTY) return false;
    }
    return true;
}

}  // namespace

TEST(RealNames, HaveTheTextAndTheBytesThatOpenSslGives) {
    const auto certificates = realCertificates();
    if (certificates.empty()) GTEST_SKIP() << "no real certificates here";
    for (const auto& [file, certificate] : certificates) {
        SCOPED_TRACE(file);
        expectSame(X509_get_subject_name(certificate.get()), file);
        expectSame(X509_get_issuer_name(certificate.get()), file);
    }
}

TEST(RealNames, AlternativeNamesHoldWhatOpenSslFinds) {
    int compared = 0;
    for (const auto& [file, certificate] : realCertificates()) {
        SCOPED_TRACE(file);
        for (const int kind : {NID_subject_alt_name, NID_issuer_alt_name}) {
            const auto real = test::owned(
                static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate.get(), kind, nullptr, nullptr)),
                GENERAL_NAMES_free);
            if (!real) continue;
            const CBlob encoded =
                test::writtenBy(i2d_GENERAL_NAMES, static_cast<const GENERAL_NAMES*>(real.get()));
            CGeneralNames names;
            const unsigned code =
                test::thrownCode([&] { asn1Decode<ASN1T_GeneralNames_traits>(encoded, names); });
            EXPECT_EQ(code, isSupported(real.get()) ? 0u : 0x80070057u);
            if (code != 0) continue;
            ASSERT_EQ(names.size(), static_cast<std::size_t>(sk_GENERAL_NAME_num(real.get())));
            int index = 0;
            for (const CGeneralName& name : names)
                EXPECT_EQ(summary(name), summary(*sk_GENERAL_NAME_value(real.get(), index++)));
            ++compared;
        }
    }
    if (compared == 0) GTEST_SKIP() << "no real certificates here";
}
