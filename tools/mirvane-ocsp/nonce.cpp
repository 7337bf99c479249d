#include "nonce.h"

#include <openssl/rand.h>

#include <stdexcept>

#include "ocsp/ocsp_extensions.h"

namespace tools {
namespace {

using Mirvane::CBlob;
using namespace Mirvane::ASN1;

constexpr unsigned char kOctetString = 0x04;

CBlob octetStringHeader(unsigned long length) {
    if (length < 0x80) {
        const unsigned char header[] = {kOctetString, static_cast<unsigned char>(length)};
        return CBlob(header, sizeof header);
    }
    const unsigned char header[] = {kOctetString, 0x82, static_cast<unsigned char>(length >> 8),
                                    static_cast<unsigned char>(length)};
    if (length > 0xFF) return CBlob(header, sizeof header);
    const unsigned char shorter[] = {kOctetString, 0x81, static_cast<unsigned char>(length)};
    return CBlob(shorter, sizeof shorter);
}

}  // namespace

CExtension nonceExtension(CBlob const& nonce) {
    CBlob value = octetStringHeader(nonce.cbData());
    value += nonce;
    return CExtension(Mirvane::PKI::OCSP::CExtNonce(value), false);
}

CBlob nonceOf(CBlob const& value) {
    for (const unsigned long size : {2ul, 3ul, 4ul}) {
        if (value.cbData() < size) break;
        const CBlob header = octetStringHeader(value.cbData() - size);
        if (header.cbData() == size && CBlob(value.pbData(), size) == header) {
            return CBlob(value.pbData() + size, value.cbData() - size);
        }
    }
    return value;
}

CExtension const* findNonce(CExtensions const* extensions) {
    if (!extensions) return nullptr;
    const auto found = extensions->find(kNonceIdentifier);
    return found == extensions->end() ? nullptr : &*found;
}

CBlob randomNonce(unsigned long length) {
    CBlob nonce(length);
    if (RAND_bytes(nonce.pbData(), static_cast<int>(length)) != 1) {
        throw std::runtime_error("there are no random octets to be had");
    }
    return nonce;
}

}  // namespace tools
