#include "common/status_name.h"

#include "asn1rt/status.h"

namespace tools {

std::string_view statusName(int status) {
    switch (status) {
        case RTS_OK:
            return "RTS_OK";
        case RTS_ENCODE_OVERFLOW:
            return "RTS_ENCODE_OVERFLOW";
        case RTS_END_OF_BUFFER:
            return "RTS_END_OF_BUFFER";
        case RTS_TAG_MISMATCH:
            return "RTS_TAG_MISMATCH";
        case RTS_BAD_OBJID:
            return "RTS_BAD_OBJID";
        case RTS_BAD_LENGTH:
            return "RTS_BAD_LENGTH";
        case RTS_BAD_ENUM:
            return "RTS_BAD_ENUM";
        case RTS_DUPLICATE_ELEMENT:
            return "RTS_DUPLICATE_ELEMENT";
        case RTS_MISSING_ELEMENT:
            return "RTS_MISSING_ELEMENT";
        case RTS_UNKNOWN_ELEMENT:
            return "RTS_UNKNOWN_ELEMENT";
        case RTS_EXTRA_ELEMENT:
            return "RTS_EXTRA_ELEMENT";
        case RTS_BAD_CHOICE:
            return "RTS_BAD_CHOICE";
        case RTS_NO_MEMORY:
            return "RTS_NO_MEMORY";
        case RTS_BUFFER_TOO_SMALL:
            return "RTS_BUFFER_TOO_SMALL";
        case RTS_BAD_VALUE:
            return "RTS_BAD_VALUE";
        case RTS_BAD_TAG:
            return "RTS_BAD_TAG";
        case RTS_CONSTRAINT:
            return "RTS_CONSTRAINT";
        case RTS_BAD_RANGE:
            return "RTS_BAD_RANGE";
        case RTS_BAD_UTF8:
            return "RTS_BAD_UTF8";
        case RTS_STALE_ITERATOR:
            return "RTS_STALE_ITERATOR";
        case RTS_NO_CURRENT_ELEMENT:
            return "RTS_NO_CURRENT_ELEMENT";
        case RTS_BAD_INDEX:
            return "RTS_BAD_INDEX";
        case RTS_BAD_ARGUMENT:
            return "RTS_BAD_ARGUMENT";
        case RTS_BAD_DATETIME:
            return "RTS_BAD_DATETIME";
        case RTS_NOT_INITIALISED:
            return "RTS_NOT_INITIALISED";
        case RTS_INT_TOO_LARGE:
            return "RTS_INT_TOO_LARGE";
        case RTS_NOT_SUPPORTED:
            return "RTS_NOT_SUPPORTED";
        default:
            return "unknown";
    }
}

}  // namespace tools
