#include "fuzz/seeds.h"

#include "asn1/content_info.h"
#include "fuzz/fixed_signer.h"
#include "fuzz/value_rows.h"
#include "ocsp/ocsp_extensions.h"
#include "ocsp/response_message.h"
#include "support/random_record.h"
#include "support/recode.h"

namespace fuzz {
namespace {

using namespace Mirvane::PKI::OCSP;
using Mirvane::CBlob;
using Mirvane::CBlobList;
using Mirvane::CDateTime;
using test::Octets;
using Seeds = std::map<std::string, std::vector<Octets>>;

Octets octetsOf(const CBlob& blob) {
    return Octets(blob.pbData(), blob.pbData() + blob.cbData());
}

Octets octetsOf(std::string_view text) {
    return Octets(text.begin(), text.end());
}

// The three ways to name a certificate.
std::vector<CReqCert> subjects(const test::Signer& signer) {
    return {CReqCert(test::certID(signer)), CReqCert(CReqCert::certificate, signer.encoded),
            CReqCert(CCertIdWithSignature(signer.encoded))};
}

CRequestMessage fullRequest(const test::Signer& signer) {
    const auto nonce = test::nonceExtension();
    const CBlob name = test::writtenBy(i2d_X509_NAME, X509_get_subject_name(signer.certificate.get()));
    CSingleRequestList entries;
    for (const CReqCert& subject : subjects(signer)) {
        entries.emplace_back(subject);
        entries.back().put_singleRequestExtensions(&nonce);
    }
    CRequestMessage message;
    message.put_requestList(entries);
    message.put_requestorName(&name);
    message.put_requestExtensions(&nonce);
    return message;
}

// Good, revoked with and without a reason, unknown.
std::vector<CCertStatus> statuses() {
    const CDateTime time("20260102030405Z");
    const auto reason = Mirvane::ASN1::keyCompromise;
    CCertStatus good;
    good.put_good();
    return {good, CCertStatus(time, &reason), CCertStatus(time, nullptr), CCertStatus()};
}

CBasicResponse fullResponse(const test::Signer& signer) {
    const auto nonce = test::nonceExtension();
    const CDateTime next("20260108120000Z");
    CSingleResponseList entries;
    for (const CCertStatus& status : statuses()) {
        const CReqCert subject = subjects(signer)[entries.size() % 3];
        entries.emplace_back(subject, status, CDateTime("20260101120000.5Z"));
        entries.back().put_nextUpdate(&next);
        entries.back().put_singleExtensions(&nonce);
    }
    CBasicResponse response = test::responseOf(signer);
    response.put_responses(entries);
    response.put_responseExtensions(&nonce);
    const CBlobList certificates = {signer.encoded};
    response.put_certs(&certificates);
    test::sign(response, signer);
    return response;
}

void addMessages(Seeds& seeds) {
    const test::Signer signer(fixedAlgorithms(), fixedKey());
    const CBlobList certificates = {signer.encoded};
    CRequestMessage signedRequest = fullRequest(signer);
    test::sign(signedRequest, signer, &certificates);
    for (const CRequestMessage& message : {CRequestMessage(), test::requestAbout(test::certID(signer)),
                                           fullRequest(signer), signedRequest, test::signedRequest(signer)}) {
        seeds["request_message"].push_back(octetsOf(message.encode()));
        if (message.get_signature()) seeds["verify_request"].push_back(octetsOf(message.encode()));
    }
    for (const CBasicResponse& message : {test::signedResponse(signer), fullResponse(signer)}) {
        const CBlob encoded = message.encode();
        seeds["basic_response"].push_back(octetsOf(encoded));
        seeds["verify_response"].push_back(octetsOf(encoded));
        CResponseMessage envelope;
        envelope.put_responseStatus(successful);
        envelope.put_response("1.3.6.1.5.5.7.48.1.1", &encoded);
        seeds["response_message"].push_back(octetsOf(envelope.encode()));
    }
    seeds["response_message"].push_back(octetsOf(CResponseMessage().encode()));
    seeds["certificate"].push_back(octetsOf(signer.encoded));
}

// A random value of the type, encoded; nothing for one without octets.
Octets randomValue(const asn1data::TypeDescriptor& type, unsigned seed) {
    test::LiveContext context;
    void* const record = asn1data::newRecord(context, type);
    test::RandomRecord(context, seed).fill(type, record);
    test::Encoder output;
    const int length = asn1data::encode(output, type, record, ASN1EXPL);
    if (length <= 0) return {};
    return Octets(xe_getp(output), xe_getp(output) + length);
}

Octets joined(std::initializer_list<unsigned> front, const Octets& back) {
    Octets result(front.begin(), front.end());
    result.insert(result.end(), back.begin(), back.end());
    return result;
}

void addValues(Seeds& seeds) {
    for (std::uint32_t i = 0; i < asn1data::kAllTypesCount; ++i) {
        for (unsigned round = 0; round < 3; ++round) {
            const Octets value = randomValue(*asn1data::kAllTypes[i].type, i * 1000 + round);
            seeds["any_type"].push_back(joined({i >> 8, i & 0xFF, round}, value));
        }
    }
    for (unsigned row = 0; row < kValueRowCount; ++row) {
        for (unsigned round = 0; round < 8; ++round) {
            const Octets value = randomValue(test::typeNamed(kValueRows[row].type), row * 1000 + round);
            seeds["value_classes"].push_back(joined({row}, value));
        }
    }
}

// Each primitive as the first step, on elements that it may read, in both forms.
void addPrimitives(Seeds& seeds) {
    const char* const elements[] = {"02 02 01 00",
                                    "0A 01 05",
                                    "01 01 FF",
                                    "05 00",
                                    "04 03 01 02 03",
                                    "24 80 04 02 01 02 04 01 03 00 00",
                                    "24 07 04 02 01 02 04 01 03",
                                    "03 03 04 AB C0",
                                    "23 80 03 02 00 FF 03 02 04 F0 00 00",
                                    "06 03 2A 03 04",
                                    "02 09 00 FF FF FF FF FF FF FF FF",
                                    "0C 02 41 42",
                                    "1E 04 00 41 04 10",
                                    "1C 08 00 00 00 41 00 01 00 00",
                                    "30 80 02 01 01 30 80 00 00 00 00",
                                    "30 06 02 01 01 02 01 02"};
    for (unsigned step = 0; step < 23; ++step) {
        for (const char* const element : elements) {
            Octets input(17, static_cast<unsigned char>(step));
            input[0] = static_cast<unsigned char>(step % 8);
            const Octets content = test::octets(element);
            input.insert(input.end(), content.begin(), content.end());
            seeds["primitives"].push_back(input);
        }
    }
}

void addTexts(Seeds& seeds) {
    const std::pair<const char*, std::vector<std::string_view>> texts[] = {
        {"name_text",
         {"\x01"
          "C=RU,O=Example,CN=Ivan+E=ivan@example.org",
          "CN=A", "2.5.4.3=#0C0141,OU=B+OU=C", "\x05S=\xC4\xD0,L=x"}},
        {"time_text",
         {" 20240229235959Z", " 20240229235959.123456Z",
          "\x01"
          "20240229235959+0330",
          " 240229235959Z", " 2402292359-1130", " 2024-02-29T23:59:59.5+03:00", " 2024-02-29T23:59:59Z",
          " 2024022923,5"}},
        {"big_integer",
         {"\x10"
          "1234567890123456789012345678901234567890",
          " 0x80ff", " 0xff", " -0987654321", " 0b1010101", " 0o7777",
          "\x80"
          "0x0",
          " 0x00000000000000ff"}},
        {"hex_text",
         {"\x02"
          "0123 4567 89 ab CD EF",
          " 00", " 0g",
          "\x04"
          "aa bb\tcc\ndd"}},
        {"object_identifier",
         {"1.2.643.2.2.19", "2.999.1.4294967295", "0.39", " 1. 2.-3", "\x06\x03\x2A\x86\x48",
          "2.16.840.1.101.3.4.2.1"}},
        {"utf8_text",
         {"\xFFhello", "\x80\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\xFF\xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD",
          "\x40\xFC\x84\x80\x80\x80\x80"}},
        {"pem_input",
         {"-----BEGIN CERTIFICATE-----\nMAMCAQE=\n-----END CERTIFICATE-----\n", "0\x03\x02\x01\x01",
          "text before\r\n-----BEGIN X-----\r\nA: b\r\n\r\nMAA=\r\n-----END X-----\r\n"}},
        {"certificate_database",
         {"V\t260101000000Z\t\t01\tunknown\t/"
          "CN=A\nR\t260101000000Z\t250101000000Z,keyCompromise\t0A\tunknown\t"
          "/CN=B\n",
          "E\t20560101000000Z\t\tFF00\tf\t/O=x/CN=C\r\n# comment\n\n",
          "R\t260101000000Z\t250101000000Z,CAkeyTime,20240101000000Z\t0B\tunknown\t/\n"}},
        {"schema_text",
         {"Small DEFINITIONS IMPLICIT TAGS ::= BEGIN\nA ::= SEQUENCE { a INTEGER (0..MAX), b [0] OCTET "
          "STRING "
          "OPTIONAL, c BOOLEAN DEFAULT FALSE }\nB ::= CHOICE { x NULL, y [1] EXPLICIT A }\nC ::= SET OF B\n"
          "D ::= ENUMERATED { one(1), two(2) }\nE ::= BIT STRING { first(0) }\nid OBJECT IDENTIFIER ::= { 1 "
          "2 3 "
          "}\nF ::= SEQUENCE SIZE (1..MAX) OF UTF8String (SIZE (1..64))\nEND\n",
          "T DEFINITIONS EXPLICIT TAGS ::= BEGIN\nALG ::= CLASS { &id OBJECT IDENTIFIER UNIQUE, &Type "
          "OPTIONAL } "
          "WITH SYNTAX { [&Type] IDENTIFIED BY &id }\none ALG ::= { NULL IDENTIFIED BY {1 2 4} }\nAll ALG "
          "::= { "
          "one }\nX ::= SEQUENCE { a ALG.&id({All}), b ALG.&Type({All}{@a}) OPTIONAL }\nEND\n"}}};
    for (const auto& [target, inputs] : texts) {
        for (const std::string_view input : inputs)
            seeds[target].push_back(octetsOf(input));
    }
}

}  // namespace

Seeds makeSeeds() {
    Seeds seeds;
    addMessages(seeds);
    addValues(seeds);
    addPrimitives(seeds);
    addTexts(seeds);
    return seeds;
}

}  // namespace fuzz
