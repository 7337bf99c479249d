#include "elements.h"

#include <utility>

#include "asn1rt/ber_decode.h"

namespace tools {
namespace {

using Mirvane::CBlob;

constexpr unsigned char kContext0 = 0xA0;
constexpr std::size_t kMostOctets = 0x7FFFFFFF;

std::vector<Piece> takeCertificates(Elements& elements) {
    std::vector<Piece> result;
    if (!elements.isAt(kContext0)) return result;
    elements.enter(kContext0).enter(kSequence);
    while (elements.isAt(kSequence)) {
        Piece piece{elements.position(), elements.take()};
        if (elements.status() == RTS_OK) result.push_back(std::move(piece));
    }
    return result;
}

}  // namespace

Elements::Elements(unsigned char const* octets, std::size_t size) : octets_(octets) {
    status_ = rtInitContext(&ctxt_, nullptr);
    if (size > kMostOctets) status_ = RTS_BAD_LENGTH;
    // No size at all would mean an unknown one.
    if (size == 0) status_ = RTS_END_OF_BUFFER;
    if (status_ == RTS_OK) status_ = xd_setp(&ctxt_, octets, static_cast<int>(size), nullptr, &length_);
}

Elements::~Elements() {
    rtFreeContext(&ctxt_);
}

std::optional<std::size_t> Elements::length() const {
    if (length_ == ASN1_INDEFLEN) return std::nullopt;
    return static_cast<std::size_t>(length_);
}

bool Elements::isAt(unsigned char identifier) const {
    return status_ == RTS_OK && position() < ctxt_.buffer.size && octets_[position()] == identifier;
}

Elements& Elements::enter(unsigned char identifier) {
    if (status_ == RTS_OK && !isAt(identifier)) status_ = RTS_TAG_MISMATCH;
    if (status_ == RTS_OK) status_ = xd_match1(&ctxt_, identifier, nullptr);
    return *this;
}

Elements& Elements::skip() {
    if (status_ == RTS_OK) status_ = xd_NextElement(&ctxt_);
    return *this;
}

CBlob Elements::take() {
    const std::size_t start = position();
    skip();
    return status_ == RTS_OK ? CBlob(octets_ + start, position() - start) : CBlob();
}

std::vector<Piece> certificatesOfRequest(unsigned char const* octets, std::size_t size) {
    Elements elements(octets, size);
    elements.enter(kSequence).skip();
    if (!elements.isAt(kContext0)) return {};
    elements.enter(kContext0).enter(kSequence).skip().skip();
    return takeCertificates(elements);
}

std::vector<Piece> certificatesOfResponse(unsigned char const* octets, std::size_t size) {
    Elements elements(octets, size);
    elements.enter(kSequence).skip().skip().skip();
    return takeCertificates(elements);
}

}  // namespace tools
