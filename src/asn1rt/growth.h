// Room in an encode buffer ahead of its use; not part of the interface.
#ifndef MIRVANE_ASN1RT_GROWTH_H
#define MIRVANE_ASN1RT_GROWTH_H

#include <cstdint>

#include "asn1rt/ber_encode.h"

namespace asn1rt {

// An encode buffer grows by a fixed step and moves all that is written each time, which takes what is written
// in many pieces out of linear time. Called before each piece, this makes room in proportion to what is
// written. Where that fails, the step may still do.
inline void growAhead(ASN1CTXT* ctxt) {
    const auto& buffer = ctxt->buffer;
    const std::uint32_t written = buffer.size - buffer.byteIndex;
    if (!buffer.dynamic || written < 4 * XE_GROWTH_STEP || buffer.byteIndex >= written / 4) return;
    xe_expandBuffer(ctxt, written);
}

}  // namespace asn1rt

#endif
