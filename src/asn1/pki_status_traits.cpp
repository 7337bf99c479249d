#include "asn1/pki_status_traits.h"

#include <algorithm>

#include "asn1/free_text_traits.h"
#include "asn1rt/bit_string.h"

namespace Mirvane::ASN1 {
namespace {

constexpr std::uint32_t octetCount = sizeof(asn1data::ASN1T_PKIFailureInfo::data);
constexpr std::uint32_t bitCount = octetCount * 8;

// The bits up to the last one that is set.
std::uint32_t usedBits(unsigned char const (&octets)[octetCount]) {
    std::uint32_t count = octetCount;
    while (count > 0 && octets[count - 1] == 0)
        --count;
    if (count == 0) return 0;
    return 8 * (count - 1) + static_cast<std::uint32_t>(rtOctetBitLen(octets[count - 1]));
}

}  // namespace

void ASN1T_PKIFailureInfo_traits::set(ASN1CTXT*, ASN1_T& rec, CPKIFailureInfo const& info) {
    rec = {};
    for (std::uint32_t i = 0; i < bitCount; ++i) {
        if (info.get_bit(i)) rtSetBit(rec.data, bitCount, i);
    }
    rec.numbits = usedBits(rec.data);
}

void ASN1T_PKIFailureInfo_traits::get(ASN1_T const& rec, CPKIFailureInfo& info) {
    const std::uint32_t count = std::min(rec.numbits, bitCount);
    for (std::uint32_t i = 0; i < count; ++i) {
        // Bits that `info` has are meant to stay.
        if (rtTestBit(rec.data, count, i) != 0) info.put_bit(i, true);
    }
}

void ASN1T_PKIStatusInfo_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CPKIStatusInfo const& info) {
    rec.m = {};
    rec.status = info.get_pkiStatus();
    if (info.get_failureInfo().get_value() != 0) {
        ASN1T_PKIFailureInfo_traits::set(ctxt, rec.failInfo, info.get_failureInfo());
        rec.m.failInfoPresent = 1;
    }
    if (!info.get_statusString().empty()) {
        rec.m.statusStringPresent = 1;
        CPKIFreeText_Encode(ctxt, rec.statusString, info.get_statusString());
    }
}

void ASN1T_PKIStatusInfo_traits::get(ASN1_T const& rec, CPKIStatusInfo& info) {
    CPKIStatusInfo read(static_cast<PKIStatusEnum>(rec.status));
    if (rec.m.failInfoPresent) {
        CPKIFailureInfo failures(0);
        ASN1T_PKIFailureInfo_traits::get(rec.failInfo, failures);
        read.put_failureInfo(failures);
    }
    if (rec.m.statusStringPresent) {
        ASN1BERDecodeBuffer memory;  // nothing is decoded from it: the steps want a context
        CPKIFreeText text;
        CPKIFreeText_Parse(memory.getCtxtPtr(), text, rec.statusString);
        read.put_statusString(text);
    }
    info = read;
}

}  // namespace Mirvane::ASN1
