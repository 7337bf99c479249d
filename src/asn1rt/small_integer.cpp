#include "asn1rt/small_integer.h"

#include "asn1rt/ber_encode.h"
#include "asn1rt/cursor.h"
#include "asn1rt/universal_tags.h"

namespace {

using asn1rt::cursor;
using asn1rt::record;
using asn1rt::room;

int readHeader(ASN1CTXT* ctxt, int* length) {
    // The shortest element takes three octets; within an indefinite message that is left to the reads that
    // follow.
    const std::uint32_t least = ctxt->flags & ASN1_INDEF_MESSAGE ? 2 : 3;
    if (room(ctxt) < least) return record(ctxt, RTS_END_OF_BUFFER);
    if (*cursor(ctxt) != TAG_INTEGER) return RTS_TAG_MISMATCH;
    asn1rt::setConstructed(ctxt, false);
    *length = cursor(ctxt)[1];
    ctxt->buffer.byteIndex += 2;
    return RTS_OK;
}

}  // namespace

extern "C" {

int xe_uint16(ASN1CTXT* ctxt, const std::uint16_t* value, ASN1TagType tagging) {
    if (!value) return RTS_BAD_VALUE;
    const std::uint32_t widened = *value;
    return xe_unsigned(ctxt, &widened, tagging);
}

int xd_uint16(ASN1CTXT* ctxt, std::uint16_t* value, ASN1TagType tagging, int length) {
    if (tagging == ASN1EXPL) {
        if (int status = readHeader(ctxt, &length); status != RTS_OK) return status;
    }
    if (length < 0 || length >= 4) return RTS_INT_TOO_LARGE;
    if (length == 3) {
        if (room(ctxt) == 0) return RTS_END_OF_BUFFER;
        if (*cursor(ctxt) != 0) return RTS_INT_TOO_LARGE;
        ++ctxt->buffer.byteIndex;
    }
    const std::uint32_t octets = length >= 2 ? 2 : 1;
    if (room(ctxt) < octets) return RTS_END_OF_BUFFER;
    const unsigned char* content = cursor(ctxt);
    *value = static_cast<std::uint16_t>(octets == 1 ? content[0] : content[0] << 8 | content[1]);
    ctxt->buffer.byteIndex += octets;
    return RTS_OK;
}

}  // extern "C"
