// What the platform says while libcrypto runs out of memory, in each place in turn.
#include <openssl/crypto.h>

#include <climits>
#include <cstdlib>
#include <functional>

#include "platform/certificates.h"
#include "provider_support.h"

using namespace test;

namespace {

constexpr int never = INT_MAX;
thread_local int remaining = never;
thread_local bool onlyOnce = true;
thread_local bool happened = false;

bool failsNow() {
    if (remaining == never || remaining-- > 0) return false;
    remaining = onlyOnce ? never : 0;
    return happened = true;
}

void* allocate(std::size_t size, const char*, int) {
    return failsNow() ? nullptr : std::malloc(size);
}

void* reallocate(void* memory, std::size_t size, const char*, int) {
    return failsNow() ? nullptr : std::realloc(memory, size);
}

void release(void* memory, const char*, int) {
    std::free(memory);
}

// libcrypto takes these only before its first allocation.
[[maybe_unused]] const int installed = CRYPTO_set_mem_functions(allocate, reallocate, release);

// Runs `call` with libcrypto's first, second, ... allocation failing, alone or with all behind it, until none
// is left to fail, and shows `look` each code. The last call, in which none fails, is to succeed.
void sweepMemory(const std::function<bool()>& call, const std::function<void(DWORD)>& look) {
    ASSERT_EQ(installed, 1);
    // What libcrypto and the platform make at their first use is not meant: libcrypto remembers that it
    // failed.
    ASSERT_EQ(codeOf(call), 0u);
    for (bool alone : {true, false}) {
        for (int index = 0;; ++index) {
            onlyOnce = alone;
            happened = false;
            remaining = index;
            const DWORD code = codeOf(call);
            remaining = never;
            EXPECT_EQ(ERR_peek_error(), 0u);
            if (!happened) {
                EXPECT_EQ(code, 0u);
                EXPECT_GT(index, 0);
                break;
            }
            look(code);
        }
    }
}

void expectOutOfMemory(DWORD code) {
    EXPECT_EQ(code, E_OUTOFMEMORY);
}

}  // namespace

TEST(MemoryFailure, OfAHashIsToldAsSuch) {
    const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(CALG_SHA_256, 0));
    ASSERT_NE(provider, 0u);
    sweepMemory(
        [&] {
            Hash hash;
            return makeHash(provider, CALG_SHA_256, hash);
        },
        expectOutOfMemory);
}

TEST(MemoryFailure, OfACertificateIsToldAsSuch) {
    const Octets encoded = octets(
        "30 57 30 42 02 01 05 30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00 30 00 30 1E 17 0D 32 30 30 31 30 "
        "31 30 "
        "30 30 30 30 30 5A 17 0D 33 30 30 31 30 31 30 30 30 30 30 30 5A 30 00 30 0A 30 05 06 03 2A 03 04 03 "
        "01 00 "
        "30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00 03 02 00 AA");
    const auto length = static_cast<DWORD>(encoded.size());
    sweepMemory(
        [&] {
            PCCERT_CONTEXT const context = CertCreateCertificateContext(encoding, encoded.data(), length);
            CertFreeCertificateContext(context);
            return context != nullptr;
        },
        expectOutOfMemory);
    sweepMemory(
        [&] {
            BYTE hash[32];
            DWORD hashLength = sizeof hash;
            return CryptHashToBeSigned(0, encoding, encoded.data(), length, hash, &hashLength) != 0;
        },
        expectOutOfMemory);
}

// A key that is not seen for the first time takes no memory, so each call has another one.
TEST(MemoryFailure, OfAKeyIsToldAsSuchOrGotRound) {
    const auto expectNoRefusal = [](DWORD code) { EXPECT_TRUE(code == 0 || code == E_OUTOFMEMORY) << code; };
    const auto sweepImport = [&](const std::function<PublicKeyInfo(std::size_t)>& next) {
        std::size_t index = 0;
        PublicKeyInfo info = next(index);
        const ALG_ID kind = CertOIDToAlgId(info.identifier.c_str());
        const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(kind, 0));
        sweepMemory(
            [&] {
                const CERT_PUBLIC_KEY_INFO view = info.info();
                test::PublicKey key;
                const bool isKey = CryptImportPublicKeyInfo(provider, encoding, &view, key.place());
                const int kept = std::exchange(remaining, never);
                info = next(++index);
                remaining = kept;
                return isKey;
            },
            expectNoRefusal);
    };
    sweepImport([rsa = PublicKeyInfo(keyOfKind("RSA"))](std::size_t index) {
        PublicKeyInfo info = rsa;
        info.bits[20] ^= static_cast<unsigned char>(index);
        info.bits[21] ^= static_cast<unsigned char>(index >> 8);
        return info;
    });
    sweepImport([](std::size_t) {
        return PublicKeyInfo(OpensslKey(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"), EVP_PKEY_free));
    });
}

TEST(MemoryFailure, NeverMakesEqualNamesUnequal) {
    Octets one = octets("30 0C 31 0A 30 08 06 03 55 04 03 13 01 61");
    Octets other = octets("30 0C 31 0A 30 08 06 03 55 04 03 0C 01 41");
    const CERT_NAME_BLOB first = {static_cast<DWORD>(one.size()), one.data()};
    const CERT_NAME_BLOB second = {static_cast<DWORD>(other.size()), other.data()};
    sweepMemory([&] { return CertCompareCertificateName(encoding, &first, &second) != 0; },
                expectOutOfMemory);
}

TEST(MemoryFailure, NeverMakesARightSignatureWrong) {
    for (const char* kind : {"RSA", "P-256"}) {
        const OpensslKey key = keyOfKind(kind);
        const Octets signature = reversed(opensslSignature(key, EVP_sha256()));
        const auto size = static_cast<DWORD>(signature.size());

        const Provider provider(MVCAPI_I_CryptGetDefaultCryptProv(
            CertOIDToAlgId(PublicKeyInfo(key).identifier.c_str()), CALG_SHA_256));
        test::PublicKey imported;
        Hash hash;
        ASSERT_TRUE(import(provider, key, imported) && makeHash(provider, CALG_SHA_256, hash));
        sweepMemory(
            [&] { return CryptVerifySignatureA(hash, signature.data(), size, imported, nullptr, 0) != 0; },
            [](DWORD code) { EXPECT_NE(code, NTE_BAD_SIGNATURE); });
    }
}
