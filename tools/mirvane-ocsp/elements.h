// A walk over the elements of a message as they stand in its octets: what the library decodes it encodes
// anew.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_ELEMENTS_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_ELEMENTS_H

#include <cstddef>
#include <optional>
#include <vector>

#include "asn1rt/context.h"
#include "base/blob.h"

namespace tools {

inline constexpr unsigned char kSequence = 0x30;

// Steps go into elements and past them. After the first that fails all others do nothing.
class Elements {
  public:
    // The octets must outlive the walk.
    Elements(unsigned char const* octets, std::size_t size);
    ~Elements();
    Elements(Elements const&) = delete;
    Elements& operator=(Elements const&) = delete;

    // Of the steps up to now; at first that of reading the outermost header.
    int status() const { return status_; }
    // Octets from the start.
    std::size_t position() const { return ctxt_.buffer.byteIndex; }
    // The length that the outermost element claims, with its header; nothing for the indefinite form and for
    // octets that are no element at all.
    std::optional<std::size_t> length() const;

    bool isAt(unsigned char identifier) const;
    // Goes to the content of the element, which has to be there.
    Elements& enter(unsigned char identifier);
    Elements& skip();
    // The element here as it stands, and a step past it.
    Mirvane::CBlob take();

  private:
    unsigned char const* octets_;
    ASN1CTXT ctxt_;
    int length_ = ASN1_INDEFLEN;
    int status_;
};

// An element where it stands in a message.
struct Piece {
    std::size_t start;
    Mirvane::CBlob octets;
};

// The certificates that are sent with the signature, of a request and of a basic response. Of octets that are
// none there are no pieces.
std::vector<Piece> certificatesOfRequest(unsigned char const* octets, std::size_t size);
std::vector<Piece> certificatesOfResponse(unsigned char const* octets, std::size_t size);

}  // namespace tools

#endif
