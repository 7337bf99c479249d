// A context that ends with its scope, set up to encode or to decode.
#ifndef MIRVANE_TESTS_SUPPORT_CONTEXTS_H
#define MIRVANE_TESTS_SUPPORT_CONTEXTS_H

#include <memory>
#include <new>
#include <string_view>

#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "support/octets.h"

namespace test {

class LiveContext {
  public:
    LiveContext() {
        if (rtInitContext(&mContext, nullptr) != RTS_OK) throw std::bad_alloc();
    }
    ~LiveContext() { rtFreeContext(&mContext); }
    LiveContext(const LiveContext&) = delete;
    LiveContext& operator=(const LiveContext&) = delete;

    operator ASN1CTXT*() { return &mContext; }
    ASN1CTXT* operator->() { return &mContext; }
    int recorded() const { return mContext.errInfo.status; }

  private:
    ASN1CTXT mContext;
};

// Writes into a buffer that grows.
class Encoder : public LiveContext {
  public:
    Encoder() { xe_setp(*this, nullptr, 0); }

    std::string message() {
        ASN1CTXT* ctxt = *this;
        return text(xe_getp(ctxt), ctxt->buffer.size - ctxt->buffer.byteIndex - 1);
    }
};

// Reads octets, the whole of which are the buffer, from a copy of exactly their size, so that the address
// sanitizer sees a read behind them. No outermost element is looked for.
class Decoder : public LiveContext {
  public:
    explicit Decoder(std::string_view hex, unsigned flags = 0) : Decoder(octets(hex), flags) {}
    explicit Decoder(const Octets& message, unsigned flags = 0)
        : mSize(static_cast<std::uint32_t>(message.size())), mMessage(new unsigned char[message.size()]) {
        std::copy(message.begin(), message.end(), mMessage.get());
        rtInitContextBuffer(*this, mMessage.get(), mSize);
        rtCtxtSetFlag(*this, static_cast<std::uint16_t>(flags));
    }

    std::uint32_t position() { return (*this)->buffer.byteIndex; }
    const unsigned char* data() const { return mMessage.get(); }
    int size() const { return static_cast<int>(mSize); }

  private:
    std::uint32_t mSize;
    std::unique_ptr<unsigned char[]> mMessage;
};

}  // namespace test

#endif
