#include "ocsp/single_response.h"

#include "asn1/bridge.h"
#include "asn1data/ocsp.h"
#include "ocsp/made_certificates.h"
#include "ocsp/single_response_record.h"
#include "ocsp_test.h"

namespace Mirvane::PKI::OCSP {
namespace {

using namespace test;
using ASN1::CExtensions;
using ASN1::CrlReason;

const CDateTime kNoon("20260102120000.75Z");

CReqCert subject() {
    return CReqCert(
        CCertID(ASN1::CAlgorithmIdentifier("1.2.3"), blob("0A"), blob("0B"), ASN1::CBigInteger(1)));
}

CExtensions oneExtension() {
    CExtensions extensions;
    extensions.insert(ASN1::CExtension(ASN1::CExtValue("1.2.3", blob("05 00")), false));
    return extensions;
}

// The status as text: its type, and time and reason as far as they show.
std::string shown(CCertStatus const& status) {
    std::string result = std::to_string(status.get_type());
    result += status.isGood() ? " good" : "";
    result += status.isRevoked() ? " revoked" : "";
    result += status.isUnknown() ? " unknown" : "";
    if (auto const* const time = status.get_revocationTime())
        result += std::string(" ") + time->getGeneralizedTime().c_str();
    if (auto const* const reason = status.get_revocationReason()) result += " for " + std::to_string(*reason);
    return result;
}

TEST(CertStatus, GoesThroughItsStates) {
    const CrlReason superseded = ASN1::superseded;
    CCertStatus status;
    EXPECT_EQ(shown(status), "2 unknown");
    status.put_revoked(kNoon, &superseded);
    EXPECT_EQ(shown(status), "1 revoked 20260102120000.75Z for 4");
    status.put_revoked(*status.get_revocationTime(), status.get_revocationReason());
    EXPECT_EQ(shown(status), "1 revoked 20260102120000.75Z for 4") << "its own parts";
    status.put_good();
    EXPECT_EQ(shown(status), "0 good");
    status.put_unknown();
    EXPECT_EQ(shown(status), "2 unknown");
    status.put_revoked(CDateTime(0, 0), nullptr);
    EXPECT_EQ(shown(status), "1 revoked 19700101000000Z");
    EXPECT_EQ(shown(CCertStatus(kNoon, nullptr)), "1 revoked 20260102120000.75Z");
    EXPECT_EQ(shown(CCertStatus(kNoon, &superseded)), "1 revoked 20260102120000.75Z for 4");
}

// The status in DER, made through its record.
std::string encodedStatus(CCertStatus const& status) {
    Encoder output;
    asn1data::ASN1T_CertStatus record, copy;
    ASN1T_CertStatus_traits::set(output, record, status);
    ASN1T_CertStatus_traits::copy(output, record, copy);
    if (asn1data::asn1E_CertStatus(output, &copy, ASN1EXPL) < 0) failure::raise(failure::asn1);
    return output.message();
}

TEST(CertStatusRecord, IsWrittenInWholeSeconds) {
    const CrlReason compromise = ASN1::keyCompromise;
    CCertStatus status;
    EXPECT_EQ(encodedStatus(status), "82 00");
    status.put_good();
    EXPECT_EQ(encodedStatus(status), "80 00");
    status.put_revoked(kNoon, nullptr);
    EXPECT_EQ(encodedStatus(status), "A1 11 18 0F 32 30 32 36 30 31 30 32 31 32 30 30 30 30 5A");
    status.put_revoked(kNoon, &compromise);
    EXPECT_EQ(encodedStatus(status),
              "A1 16 18 0F 32 30 32 36 30 31 30 32 31 32 30 30 30 30 5A A0 03 0A 01 01");
    const auto unassigned = static_cast<CrlReason>(11);
    status.put_revoked(kNoon, &unassigned);
    EXPECT_EQ(thrownCode([&] { encodedStatus(status); }), kAsn1);
}

TEST(CertStatusRecord, IsReadByItsAlternative) {
    const CrlReason compromise = ASN1::keyCompromise;
    asn1data::ASN1T_RevokedInfo info;
    info.revocationTime = "20240229235959Z";
    asn1data::ASN1T_CertStatus record;
    record.u.revoked = &info;
    CCertStatus status(kNoon, &compromise);
    const auto read = [&](unsigned alternative) {
        record.t = alternative;
        ASN1T_CertStatus_traits::get(record, status);
        return shown(status);
    };
    EXPECT_EQ(read(0), "1 revoked 20260102120000.75Z for 1");
    EXPECT_EQ(read(4), "1 revoked 20260102120000.75Z for 1");
    EXPECT_EQ(read(1), "0 good");
    EXPECT_EQ(read(2), "1 revoked 20240229235959Z");
    info.m.revocationReasonPresent = 1;
    info.revocationReason = ASN1::aACompromise;
    EXPECT_EQ(read(2), "1 revoked 20240229235959Z for 10");
    EXPECT_EQ(read(3), "2 unknown");
    info.revocationTime = "2024022923595xZ";
    EXPECT_EQ(thrownCode([&] { read(2); }), 0x8007076D);
    EXPECT_EQ(shown(status), "2 unknown");
}

TEST(SingleResponse, OptionalFieldsAreCopiedReplacedAndRemoved) {
    CSingleResponse entry(subject(), CCertStatus(), kNoon);
    const CExtensions extensions = oneExtension();
    entry.put_nextUpdate(&kNoon);
    entry.put_singleExtensions(&extensions);
    entry.put_nextUpdate(entry.get_nextUpdate());
    entry.put_singleExtensions(entry.get_singleExtensions());
    CSingleResponse copy(entry);
    entry.put_nextUpdate(nullptr);
    entry.put_singleExtensions(nullptr);
    EXPECT_EQ(entry.get_nextUpdate(), nullptr);
    EXPECT_EQ(entry.get_singleExtensions(), nullptr);
    EXPECT_TRUE(*copy.get_nextUpdate() == kNoon);
    EXPECT_TRUE(*copy.get_singleExtensions() == extensions);
    EXPECT_NE(copy.get_reqCert().get_certID(), nullptr);
    EXPECT_TRUE(copy.get_thisUpdate() == kNoon);
}

// The entry in DER, made through its record.
CBlob encodedEntry(CSingleResponse const& entry) {
    Encoder output;
    asn1data::ASN1T_SingleResponse record;
    fillASN1T_SingleResponse(output, record, entry, {});
    const int length = asn1data::asn1E_SingleResponse(output, &record, ASN1EXPL);
    if (length < 0) failure::raise(failure::asn1);
    return CBlob(xe_getp(output), static_cast<unsigned long>(length));
}

CSingleResponse decodedEntry(CBlob const& bytes) {
    ASN1BERDecodeBuffer buffer(bytes.pbData(), static_cast<int>(bytes.cbData()));
    asn1data::ASN1T_SingleResponse record;
    asn1data::ASN1C_SingleResponse control(buffer, record);
    if (control.Decode() < 0) failure::raise(failure::asn1);
    return readASN1T_SignleResponse(record);
}

TEST(SingleResponseRecord, WhatIsAbsentOrEmptyIsLeftOut) {
    const std::string reqCert = "30 0F 30 04 06 02 2A 03 04 01 0A 04 01 0B 02 01 00 ";
    const std::string time = "18 0F 31 39 37 30 30 31 30 31 30 30 30 30 30 30 5A";
    const CExtensions none, one = oneExtension();
    const CDateTime start(0, 0);
    CSingleResponse entry(subject(), CCertStatus(), start);
    EXPECT_EQ(text(encodedEntry(entry)), "30 24 " + reqCert + "82 00 " + time);
    entry.put_singleExtensions(&none);
    EXPECT_EQ(text(encodedEntry(entry)), "30 24 " + reqCert + "82 00 " + time);
    EXPECT_EQ(decodedEntry(encodedEntry(entry)).get_singleExtensions(), nullptr);
    entry.put_singleExtensions(&one);
    entry.put_nextUpdate(&start);
    EXPECT_EQ(text(encodedEntry(entry)), "30 45 " + reqCert + "82 00 " + time + " A0 11 " + time +
                                             " A1 0C 30 0A 30 08 06 02 2A 03 04 02 05 00");
    const CSingleResponse read = decodedEntry(encodedEntry(entry));
    EXPECT_TRUE(*read.get_singleExtensions() == one);
    EXPECT_TRUE(*read.get_nextUpdate() == start);
}

TEST(SingleResponseRecord, NextUpdateWithoutTextIsAbsent) {
    LiveContext context;
    asn1data::ASN1T_SingleResponse record;
    fillASN1T_SingleResponse(context, record, CSingleResponse(subject(), CCertStatus(), kNoon), {});
    record.m.nextUpdatePresent = 1;
    for (char const* empty : {static_cast<char const*>(nullptr), ""}) {
        record.nextUpdate = empty;
        EXPECT_EQ(readASN1T_SignleResponse(record).get_nextUpdate(), nullptr);
    }
    record.nextUpdate = "202601x2120000Z";
    EXPECT_EQ(thrownCode([&] { readASN1T_SignleResponse(record); }), 0x8007076D);
}

TEST(SingleResponse, NobodyFilledItInNamesAFullCertificateAndDoesNotEncode) {
    const CSingleResponse entry;
    EXPECT_EQ(entry.get_reqCert().get_certID(), nullptr);
    EXPECT_EQ(*entry.get_reqCert().get_fullCertType(), CReqCert::certificate);
    EXPECT_EQ(entry.get_reqCert().get_fullCert()->cbData(), 0u);
    EXPECT_TRUE(entry.get_certStatus().isUnknown());
    EXPECT_TRUE(entry.get_thisUpdate() == CDateTime(0, 0));
    EXPECT_EQ(entry.get_nextUpdate(), nullptr);
    EXPECT_EQ(entry.get_singleExtensions(), nullptr);
    EXPECT_EQ(thrownCode([&] { encodedEntry(entry); }), kAsn1);
}

}  // namespace
}  // namespace Mirvane::PKI::OCSP
