// The library's one failure type, and the codes that it is thrown with.
//
// A code is 32 bits in the form of an HRESULT and all that a failure carries. Where "the last error" is
// thrown, it is what the platform's last-error slot holds: a code as it stands, and a system error number
// above 0 as its low 16 bits under 0x80070000. It may be any, even 0. An allocation failure of the standard
// library passes through as it is.
#ifndef MIRVANE_BASE_EXCEPTION_H
#define MIRVANE_BASE_EXCEPTION_H

#include <cstdint>

#include "asn1rt/export.h"

namespace ATL {

using HRESULT = std::int32_t;

class MIRVANE_API CAtlException {
  public:
    explicit CAtlException(HRESULT code) noexcept : m_hr(code) {}

    operator HRESULT() const noexcept { return m_hr; }

    HRESULT m_hr;
};

}  // namespace ATL

namespace Mirvane::failure {

constexpr ATL::HRESULT fromBits(std::uint32_t bits) {
    return static_cast<ATL::HRESULT>(bits);
}

enum Code : ATL::HRESULT {
    general = fromBits(0x80004005),              // no signature, or a date that does not convert
    outOfMemory = fromBits(0x8007000E),          // for a temporary text
    fileNotOpened = fromBits(0x80070002),        // a file cannot be opened
    invalidArgument = fromBits(0x80070057),      // also: the wrong kind of value in a record
    fileNotRead = fromBits(0x80070570),          // a file cannot be read in full
    invalidTime = fromBits(0x8007076D),          // a text is no time
    wrongSignature = fromBits(0x80090006),       // from the platform; verifying turns it into false
    badAlgorithm = fromBits(0x80090008),         // left in the last-error slot, not thrown at once
    outOfTimeMemory = fromBits(0x8009000E),      // while a time's text is split
    unknownAlgorithm = fromBits(0x80092004),     // the platform does not know the signature algorithm
    incompleteSignature = fromBits(0x8009200D),  // a signature value without an algorithm
    asn1 = fromBits(0x80093101),                 // encoding, decoding or a table constraint failed
    emptyMessage = fromBits(0x80093102),         // a request of no bytes
    contextMemory = fromBits(0x80093106),        // the memory of an ASN.1 context is exhausted
    badUtf8 = fromBits(0x8009310E),              // a received text is no UTF-8
};

// Throws the code as ATL::CAtlException.
[[noreturn]] inline void raise(ATL::HRESULT code) {
    throw ATL::CAtlException(code);
}

}  // namespace Mirvane::failure

#endif
