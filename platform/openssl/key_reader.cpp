#include "key_reader.h"

#include <openssl/core_names.h>
#include <openssl/params.h>

#include <atomic>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include "certificate_fields.h"
#include "platform/algorithms.h"

namespace platform {
namespace {

using namespace std::string_view_literals;

std::string_view textOf(const BYTE* octets, std::size_t count) {
    return {reinterpret_cast<const char*>(octets), count};
}

std::string_view textOf(Octets octets) {
    return textOf(octets.data(), octets.size());
}

std::string_view parametersOf(const CERT_PUBLIC_KEY_INFO& info) {
    return textOf(info.Algorithm.Parameters.pbData, info.Algorithm.Parameters.cbData);
}

// An element in DER.
std::string element(BYTE tag, std::string_view content) {
    std::string length;
    for (std::size_t rest = content.size(); rest != 0; rest >>= 8) {
        length.insert(length.begin(), static_cast<char>(rest & 0xFF));
    }
    if (content.size() < 0x80) {
        length.assign(1, static_cast<char>(content.size()));
    } else {
        length.insert(length.begin(), static_cast<char>(0x80 | length.size()));
    }
    return std::string(1, static_cast<char>(tag)).append(length).append(content);
}

// The object identifier in DER, empty if the text is none.
std::string encodedIdentifier(const char* text) {
    const ObjectPointer object(OBJ_txt2obj(text, 1));
    const BYTE* const content = object != nullptr ? OBJ_get0_data(object.get()) : nullptr;
    return content != nullptr ? element(tagObjectIdentifier, textOf(content, OBJ_length(object.get())))
                              : std::string();
}

std::string encoded(const CERT_PUBLIC_KEY_INFO& info) {
    const std::string algorithm = encodedIdentifier(info.Algorithm.pszObjId).append(parametersOf(info));
    // The count of unused bits is always 0, whatever came.
    std::string bits(1, '\0');
    bits.append(textOf(info.PublicKey.pbData, info.PublicKey.cbData));
    return element(tagSequence, element(tagSequence, algorithm).append(element(tagBitString, bits)));
}

KeyPointer makeKey(const char* type, int selection, OSSL_PARAM* parameters) {
    const KeyContextPointer context(EVP_PKEY_CTX_new_from_name(nullptr, type, nullptr));
    EVP_PKEY* key = nullptr;
    const bool isMade = context != nullptr && EVP_PKEY_fromdata_init(context.get()) == 1 &&
                        EVP_PKEY_fromdata(context.get(), &key, selection, parameters) == 1;
    return KeyPointer(isMade ? key : nullptr);
}

bool isPositive(Octets integer) {
    if (integer.empty() || integer[0] >= 0x80) return false;
    return integer[0] != 0 || (integer.size() > 1 && integer[1] >= 0x80);
}

// RFC 8017, A.1.1.
KeyPointer readRsaKey(Octets bits) {
    BerReader outer(bits);
    BerReader numbers(outer.take(tagSequence).content);
    const Octets modulus = numbers.take(tagInteger).content;
    const Octets exponent = numbers.take(tagInteger).content;
    if (!numbers.finished() || !isPositive(modulus) || !isPositive(exponent)) return nullptr;
    const std::string inner =
        element(tagInteger, textOf(modulus)).append(element(tagInteger, textOf(exponent)));
    if (element(tagSequence, inner) != textOf(bits)) return nullptr;
    // OpenSSL has the numbers in the order of octets of the machine.
    std::basic_string<BYTE> n(modulus.rbegin(), modulus.rend());
    std::basic_string<BYTE> e(exponent.rbegin(), exponent.rend());
    OSSL_PARAM parameters[] = {OSSL_PARAM_construct_BN(OSSL_PKEY_PARAM_RSA_N, n.data(), n.size()),
                               OSSL_PARAM_construct_BN(OSSL_PKEY_PARAM_RSA_E, e.data(), e.size()),
                               OSSL_PARAM_construct_end()};
    return makeKey("RSA", EVP_PKEY_PUBLIC_KEY, parameters);
}

struct Curve {
    std::string_view identifier;  // in DER
    std::size_t coordinateSize;
    const char* name;
};

constexpr Curve curves[] = {
    {"\x06\x08\x2A\x86\x48\xCE\x3D\x03\x01\x07"sv, 32, "P-256"},
    {"\x06\x05\x2B\x81\x04\x00\x22"sv, 48, "P-384"},
    {"\x06\x05\x2B\x81\x04\x00\x23"sv, 66, "P-521"},
    {"\x06\x09\x2B\x24\x03\x03\x02\x08\x01\x01\x07"sv, 32, "brainpoolP256r1"},
    {"\x06\x09\x2B\x24\x03\x03\x02\x08\x01\x01\x0B"sv, 48, "brainpoolP384r1"},
    {"\x06\x09\x2B\x24\x03\x03\x02\x08\x01\x01\x0D"sv, 64, "brainpoolP512r1"},
};

// A key of the curve without a point: to copy one costs less than to make a curve. Made once and never
// destroyed: OpenSSL may end before we do. Null if it could not be made this time.
EVP_PKEY* emptyKeyOf(const Curve& curve) {
    static std::atomic<EVP_PKEY*> keys[std::size(curves)];
    std::atomic<EVP_PKEY*>& place = keys[&curve - curves];
    EVP_PKEY* known = place.load(std::memory_order_acquire);
    if (known != nullptr) return known;
    OSSL_PARAM parameters[] = {
        OSSL_PARAM_construct_utf8_string(OSSL_PKEY_PARAM_GROUP_NAME, const_cast<char*>(curve.name), 0),
        OSSL_PARAM_construct_end()};
    KeyPointer made = makeKey("EC", EVP_PKEY_KEY_PARAMETERS, parameters);
    // Another thread may have been faster.
    return place.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel) ? made.release()
                                                                                       : known;
}

// RFC 5480, 2.1.1 and 2.2.
KeyPointer readCurveKey(std::string_view curveIdentifier, Octets point) {
    constexpr BYTE bothCoordinates = 4;
    for (const Curve& curve : curves) {
        if (curve.identifier != curveIdentifier) continue;
        if (point.size() != 1 + 2 * curve.coordinateSize || point[0] != bothCoordinates) return nullptr;
        EVP_PKEY* const empty = emptyKeyOf(curve);
        KeyPointer key(empty != nullptr ? EVP_PKEY_dup(empty) : nullptr);
        // Looks whether the point is on the curve.
        const bool isKey =
            key != nullptr && EVP_PKEY_set1_encoded_public_key(key.get(), point.data(), point.size()) == 1;
        return isKey ? std::move(key) : nullptr;
    }
    return nullptr;
}

}  // namespace

KeyPointer readPlainKey(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind) {
    const std::string_view parameters = parametersOf(info);
    const Octets bits(info.PublicKey.pbData, info.PublicKey.cbData);
    if (kind == CALG_ECDSA) return readCurveKey(parameters, bits);
    const bool isRsa = kind == CALG_RSA_KEYX && (parameters.empty() || parameters == "\x05\x00"sv);
    return isRsa ? readRsaKey(bits) : nullptr;
}

KeyPointer decodeKey(const CERT_PUBLIC_KEY_INFO& info) {
    const std::string octets = encoded(info);
    if (octets.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return nullptr;
    const auto* position = reinterpret_cast<const BYTE*>(octets.data());
    const BYTE* const end = position + octets.size();
    KeyPointer key(d2i_PUBKEY(nullptr, &position, static_cast<long>(octets.size())));
    return position == end ? std::move(key) : nullptr;
}

KeyPointer readKey(const CERT_PUBLIC_KEY_INFO& info, ALG_ID kind) {
    if (KeyPointer key = readPlainKey(info, kind)) return key;
    return decodeKey(info);
}

}  // namespace platform
