#include "asn1/octet_string.h"

#include <climits>

#include "asn1/bridge.h"
#include "asn1/context_handle.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"

namespace Mirvane::ASN1 {
namespace {

void start(ctxt_handle& context) {
    if (!context.init()) failure::raise(failure::contextMemory);
}

}  // namespace

CBlob toOctetString(CBlob const& blob) {
    if (blob.cbData() > INT_MAX) failure::raise(failure::asn1);
    ctxt_handle context;
    start(context);
    if (xe_setp(context.get(), nullptr, 0) != 0) failure::raise(failure::asn1);
    const int length =
        xe_octstr(context.get(), blob.pbData(), static_cast<std::uint32_t>(blob.cbData()), ASN1EXPL);
    if (length < 0) failure::raise(failure::asn1);
    return CBlob(xe_getp(context.get()), static_cast<unsigned long>(length));
}

CBlob fromOctetString(CBlob const& blob) {
    ctxt_handle context;
    start(context);
    if (blob.cbData() == 0) return CBlob();
    const int size = road::messageLength(blob);
    if (xd_setp(context.get(), blob.pbData(), size, nullptr, nullptr) != 0) failure::raise(failure::asn1);
    CBlob content(static_cast<unsigned long>(size));
    auto count = static_cast<std::uint32_t>(size);
    if (xd_octstr_s(context.get(), content.pbData(), &count, ASN1EXPL, 0) != 0) failure::raise(failure::asn1);
    content.resize_to(count);
    return content;
}

}  // namespace Mirvane::ASN1
