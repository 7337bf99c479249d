#include "asn1/revocation_reason_traits.h"

namespace Mirvane::ASN1 {
namespace {

constexpr unsigned int kMostBits = 16;

}  // namespace

void ASN1T_CRLReason_traits::set(ASN1CTXT*, ASN1_T& rec, CrlReason reason) {
    rec = reason;
}

void ASN1T_CRLReason_traits::get(ASN1_T const& rec, CrlReason& reason) {
    reason = static_cast<CrlReason>(rec);
}

void ASN1T_ReasonFlags_traits::set(ASN1CTXT*, ASN1_T& rec, CReasonFlags const& flags) {
    rec = {};
    rec.numbits = kMostBits;
    asn1data::ASN1C_ReasonFlags bits(rec);
    bits.clear();
    for (unsigned int i = 0; i < kMostBits; ++i) {
        if (flags.get_bit(i)) bits.set(i);
    }
}

void ASN1T_ReasonFlags_traits::get(ASN1_T const& rec, CReasonFlags& flags) {
    ASN1_T copied = rec;  // the control may write to what it works on
    const asn1data::ASN1C_ReasonFlags bits(copied);
    flags.put_value(0);
    for (unsigned int i = 0; i < bits.length(); ++i) {
        if (bits.get(i)) flags.put_bit(i, true);
    }
}

}  // namespace Mirvane::ASN1
