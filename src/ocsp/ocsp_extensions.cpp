#include "ocsp/ocsp_extensions.h"

#include <limits>
#include <memory>

#include "asn1/bridge.h"
#include "asn1/context_memory.h"
#include "asn1/distribution_point_traits.h"
#include "asn1/primitive_traits.h"
#include "asn1/record_traits.h"
#include "asn1/time_traits.h"
#include "asn1data/ocsp.h"

namespace Mirvane::PKI::OCSP {
namespace {

constexpr char kNonce[] = "1.3.6.1.5.5.7.48.1.2";
constexpr char kAcceptableResponses[] = "1.3.6.1.5.5.7.48.1.4";
constexpr char kArchiveCutoff[] = "1.3.6.1.5.5.7.48.1.6";
constexpr char kCrlLocator[] = "1.2.643.2.2.47.2";
constexpr char kInstantRevocationIndicator[] = "1.2.643.2.2.47.3";
constexpr char kRevocationAnnouncementReference[] = "1.2.643.2.2.47.4";

using AcceptableResponsesRecord =
    ASN1::RecordTraits<asn1data::ASN1T_AcceptableResponses, asn1data::ASN1C_AcceptableResponses,
                       asn1data::asn1Copy_AcceptableResponses>;

// Identifiers of no arcs, in the memory of the context.
ASN1TObjId* newIdentifiers(ASN1CTXT* ctxt, std::size_t count) {
    if (count > std::numeric_limits<std::uint32_t>::max()) failure::raise(failure::contextMemory);
    auto* const identifiers =
        static_cast<ASN1TObjId*>(ASN1::allocate(ctxt, std::uint64_t{count} * sizeof(ASN1TObjId)));
    std::uninitialized_value_construct_n(identifiers, count);
    return identifiers;
}

}  // namespace

CExtNonce::CExtNonce() : CExtValue(kNonce) {}
CExtNonce::CExtNonce(CBlob const& nonce) : CExtValue(kNonce, nonce) {}

void CExtNonce::put_nonce(CBlob const& nonce) {
    value() = nonce;
}

CExtAcceptableResponses::CExtAcceptableResponses() : CExtValue(kAcceptableResponses) {}

CExtAcceptableResponses::CExtAcceptableResponses(CStringList const& acceptableResponses)
    : CExtValue(kAcceptableResponses), acceptableResponses_(acceptableResponses) {
    encode();
}

CExtAcceptableResponses::CExtAcceptableResponses(CBlob const& encoded)
    : CExtValue(kAcceptableResponses, encoded) {
    decode();
}

void CExtAcceptableResponses::put_acceptableResponses(CStringList const& acceptableResponses) {
    acceptableResponses_ = acceptableResponses;
    encode();
}

void CExtAcceptableResponses::encode() {
    value() = ASN1::asn1Encode<ASN1T_AcceptableResponses_traits>(acceptableResponses_);
}

void CExtAcceptableResponses::decode() {
    ASN1::asn1Decode<ASN1T_AcceptableResponses_traits>(get_value(), acceptableResponses_);
}

CExtArchiveCutoff::CExtArchiveCutoff() : CExtValue(kArchiveCutoff), archiveCutoff_(0, 0) {}

CExtArchiveCutoff::CExtArchiveCutoff(CDateTime const& archiveCutoff)
    : CExtValue(kArchiveCutoff), archiveCutoff_(archiveCutoff) {
    encode();
}

CExtArchiveCutoff::CExtArchiveCutoff(CBlob const& encoded)
    : CExtValue(kArchiveCutoff, encoded), archiveCutoff_(0, 0) {
    decode();
}

void CExtArchiveCutoff::put_archiveCutoff(CDateTime const& archiveCutoff) {
    archiveCutoff_ = archiveCutoff;
    encode();
}

void CExtArchiveCutoff::encode() {
    value() = ASN1::asn1Encode<ASN1::ASN1GeneralizedTime_traits>(archiveCutoff_);
}

void CExtArchiveCutoff::decode() {
    ASN1::asn1Decode<ASN1::ASN1GeneralizedTime_traits>(get_value(), archiveCutoff_);
}

CExtCRLLocator::CExtCRLLocator() : CExtValue(kCrlLocator) {}

CExtCRLLocator::CExtCRLLocator(ASN1::CCRLDistPointsSyntax const& distributionPoints)
    : CExtValue(kCrlLocator), distributionPoints_(distributionPoints) {
    encode();
}

CExtCRLLocator::CExtCRLLocator(CBlob const& encoded) : CExtValue(kCrlLocator, encoded) {
    decode();
}

void CExtCRLLocator::put_distributionPoints(ASN1::CCRLDistPointsSyntax const& distributionPoints) {
    distributionPoints_ = distributionPoints;
    encode();
}

void CExtCRLLocator::encode() {
    value() = ASN1::asn1Encode<ASN1::ASN1T_CRLDistPointsSyntax_traits>(distributionPoints_);
}

void CExtCRLLocator::decode() {
    ASN1::asn1Decode<ASN1::ASN1T_CRLDistPointsSyntax_traits>(get_value(), distributionPoints_);
}

CExtInstantRevocationIndicator::CExtInstantRevocationIndicator() : CExtValue(kInstantRevocationIndicator) {}
CExtInstantRevocationIndicator::CExtInstantRevocationIndicator(CBlob const& value)
    : CExtValue(kInstantRevocationIndicator, value) {}

CExtRevocationAnnouncementReference::CExtRevocationAnnouncementReference()
    : CExtValue(kRevocationAnnouncementReference) {}
CExtRevocationAnnouncementReference::CExtRevocationAnnouncementReference(CBlob const& value)
    : CExtValue(kRevocationAnnouncementReference, value) {}

void ASN1T_AcceptableResponses_traits::set(ASN1CTXT* ctxt, ASN1_T& record, CStringList const& value) {
    ASN1TObjId* const identifiers = newIdentifiers(ctxt, value.size());
    ASN1TObjId* next = identifiers;
    for (CStringProxy const& text : value)
        ASN1::ASN1TObjId_traits::set(ctxt, *next++, text.c_str());
    record.n = static_cast<std::uint32_t>(value.size());
    record.elem = identifiers;
}

void ASN1T_AcceptableResponses_traits::get(ASN1_T const& record, CStringList& value) {
    CStringList read;
    for (std::uint32_t i = 0; i < record.n; ++i) {
        ASN1::ASN1TObjId_traits::get(record.elem[i], read.emplace_back());
    }
    value.splice(value.end(), read);
}

void ASN1T_AcceptableResponses_traits::copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target) {
    AcceptableResponsesRecord::copy(ctxt, source, target);
}

int ASN1T_AcceptableResponses_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record) {
    return AcceptableResponsesRecord::encode(buffer, record);
}

int ASN1T_AcceptableResponses_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record) {
    return AcceptableResponsesRecord::decode(buffer, record);
}

}  // namespace Mirvane::PKI::OCSP
