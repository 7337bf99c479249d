#include "asn1/bridge.h"

#include <gtest/gtest.h>

#include <new>

#include "asn1/primitive_traits.h"
#include "asn1data/ocsp.h"
#include "support/allocation.h"
#include "support/blobs.h"
#include "support/contexts.h"
#include "support/failures.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;
using test::thrownCode;

namespace {

struct Envelope {
    unsigned status = 0;
    CStringProxy type;
    CBlob response;
};

struct EnvelopeTraits {
    using ASN1_T = asn1data::ASN1T_OCSPResponse;

    static void set(ASN1CTXT* ctxt, ASN1_T& rec, const Envelope& value) {
        rec.responseStatus = value.status;
        rec.m.responseBytesPresent = 1;
        ASN1TObjId_traits::set(ctxt, rec.responseBytes.responseType, value.type.c_str());
        ASN1TDynOctStr_traits::set(ctxt, rec.responseBytes.response, value.response);
    }
    static void get(const ASN1_T& rec, Envelope& value) {
        value.status = rec.responseStatus;
        ASN1TObjId_traits::get(rec.responseBytes.responseType, value.type);
        ASN1TDynOctStr_traits::get(rec.responseBytes.response, value.response);
    }
    static void copy(ASN1CTXT* ctxt, const ASN1_T& src, ASN1_T& dst) {
        asn1data::asn1Copy_OCSPResponse(ctxt, &src, &dst);
    }
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
        return asn1data::ASN1C_OCSPResponse(buffer, rec).EncodeTo(buffer);
    }
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
        return asn1data::ASN1C_OCSPResponse(buffer, rec).DecodeFrom(buffer);
    }
};

// OCSPResponse { successful, { a type without a schema, 01 02 03 } }, put together by hand.
constexpr char message[] = "30 17 0A 01 00 A0 12 30 10 06 09 2B 06 01 05 05 07 30 01 63 04 03 01 02 03";

const Envelope& envelope() {
    static const Envelope value{0, "1.3.6.1.5.5.7.48.1.99", blob("01 02 03")};
    return value;
}

}  // namespace

TEST(Bridge, AValueTravelsBothWays) {
    EXPECT_EQ(test::text(asn1Encode<EnvelopeTraits>(envelope())), message);
    Envelope read;
    asn1Decode<EnvelopeTraits>(blob(message), read);
    EXPECT_EQ(read.status, 0u);
    EXPECT_STREQ(read.type.c_str(), envelope().type.c_str());
    EXPECT_EQ(test::text(read.response), "01 02 03");
}

TEST(Bridge, BytesBehindTheFirstValueAreIgnored) {
    CBlob longer = blob(message);
    longer += blob("DE AD BE EF");
    Envelope read;
    asn1Decode<EnvelopeTraits>(longer, read);
    EXPECT_EQ(test::text(read.response), "01 02 03");
}

TEST(Bridge, EveryTruncationIsRefusedWithOneCodeAndTheValueStays) {
    const CBlob whole = blob(message);
    for (unsigned long length = 0; length < whole.cbData(); ++length) {
        Envelope read{7, "1.2", blob("AA")};
        const CBlob cut(whole.pbData(), length);
        EXPECT_EQ(thrownCode([&] { asn1Decode<EnvelopeTraits>(cut, read); }), 0x80093101u) << length;
        EXPECT_EQ(read.status, 7u);
        EXPECT_EQ(test::text(read.response), "AA");
    }
}

TEST(Bridge, WhatTheEncoderRefusesHasOneCode) {
    Envelope unknownStatus = envelope();
    unknownStatus.status = 9;
    EXPECT_EQ(thrownCode([&] { asn1Encode<EnvelopeTraits>(unknownStatus); }), 0x80093101u);
    Envelope impossibleType = envelope();
    impossibleType.type = "1.40.1";
    EXPECT_EQ(thrownCode([&] { asn1Encode<EnvelopeTraits>(impossibleType); }), 0x80093101u);
    Envelope noType = envelope();
    noType.type = "one.two";
    EXPECT_EQ(thrownCode([&] { asn1Encode<EnvelopeTraits>(noType); }), 0x80070057u) << "what `set` throws";
}

TEST(Bridge, ARecordLivesInTheCallersContext) {
    test::LiveContext context;
    asn1data::ASN1T_OCSPResponse record;
    {
        const CBlob source = blob(message);
        asn1DecodeT<EnvelopeTraits>(source, context, record);
    }
    EXPECT_EQ(test::text(record.responseBytes.response.data, record.responseBytes.response.numocts),
              "01 02 03");
    EXPECT_EQ(test::text(asn1EncodeT<EnvelopeTraits>(record)), message);
    EXPECT_EQ(thrownCode([&] { asn1DecodeT<EnvelopeTraits>(blob("30 03"), context, record); }), 0x80093101u);
    record.responseStatus = 9;
    EXPECT_EQ(thrownCode([&] { asn1EncodeT<EnvelopeTraits>(record); }), 0x80093101u);
}

TEST(Bridge, FailureOfAnyAllocationIsAFailureOfTheCall) {
    const CBlob encoded = blob(message);
    for (int index = 0;; ++index) {
        test::FailingAllocation failing(index);
        bool failed = false;
        try {
            Envelope read;
            asn1Decode<EnvelopeTraits>(asn1Encode<EnvelopeTraits>(envelope()), read);
            test::LiveContext context;
            asn1data::ASN1T_OCSPResponse record;
            asn1DecodeT<EnvelopeTraits>(encoded, context, record);
            asn1EncodeT<EnvelopeTraits>(record);
        } catch (const ATL::CAtlException& failure) {
            failed = true;
            const auto code = static_cast<unsigned>(failure.m_hr);
            EXPECT_TRUE(code == 0x80093101 || code == 0x80093106) << std::hex << code;
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        EXPECT_EQ(failed, failing.happened()) << index;
        if (!failed) break;
        ASSERT_LT(index, 1000);
    }
}

TEST(OptionalMember, TakesACopyOrNothing) {
    std::unique_ptr<CBlob> member;
    const CBlob value = blob("01 02");
    copy_to_auto_ptr(member, &value);
    ASSERT_NE(member, nullptr);
    EXPECT_EQ(*member, value);
    const CBlob* const former = member.get();
    copy_to_auto_ptr(member, member.get());
    EXPECT_EQ(*member, value);
    EXPECT_NE(member.get(), former);
    copy_to_auto_ptr(member, nullptr);
    EXPECT_EQ(member, nullptr);
}
