// The runtime's status codes. Zero is success and every failure is negative; an encoder's result that is not
// negative is a length in octets. The codes have no texts: a caller that needs one prints the name.
#ifndef MIRVANE_ASN1RT_STATUS_H
#define MIRVANE_ASN1RT_STATUS_H

enum ASN1Status : int {
    RTS_OK = 0,
    RTS_ENCODE_OVERFLOW = -1,      // the encode buffer is full and may not grow
    RTS_END_OF_BUFFER = -2,        // a read at or behind the end of the buffer
    RTS_TAG_MISMATCH = -3,         // the expected tag is not there
    RTS_BAD_OBJID = -4,            // object identifier with too few, too many or impossible arcs
    RTS_BAD_LENGTH = -5,           // length beyond the buffer, wrong fixed length, missing end-of-contents
    RTS_BAD_ENUM = -6,             // value outside the ENUMERATED type
    RTS_DUPLICATE_ELEMENT = -7,    // a SET element came twice
    RTS_MISSING_ELEMENT = -8,      // a mandatory element is missing
    RTS_UNKNOWN_ELEMENT = -9,      // a tag in a SET matches no element
    RTS_EXTRA_ELEMENT = -10,       // more elements than the type has
    RTS_BAD_CHOICE = -11,          // selector or tag of a CHOICE matches no alternative
    RTS_NO_MEMORY = -12,           // an allocation failed
    RTS_BUFFER_TOO_SMALL = -17,    // the caller's output buffer is too small
    RTS_BAD_VALUE = -18,           // null or malformed input value
    RTS_BAD_TAG = -21,             // tag number too large, or a foreign segment in a constructed string
    RTS_CONSTRAINT = -23,          // a size constraint is broken
    RTS_BAD_RANGE = -24,           // reversed bit range
    RTS_BAD_UTF8 = -26,            // invalid UTF-8
    RTS_STALE_ITERATOR = -27,      // the list changed behind its iterator
    RTS_NO_CURRENT_ELEMENT = -28,  // the iterator stands on no element
    RTS_BAD_INDEX = -29,           // bit index out of range
    RTS_BAD_ARGUMENT = -30,        // null or unusable argument
    RTS_BAD_DATETIME = -31,        // date or time out of range or malformed
    RTS_NOT_INITIALISED = -32,     // the context was never initialised, or has been freed
    RTS_INT_TOO_LARGE = -33,       // an INTEGER does not fit its target
    RTS_NOT_SUPPORTED = -99,       // no such operation for this kind of buffer or type
};

#endif
