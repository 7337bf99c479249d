#include "ocsp/message_signature.h"

#include "asn1/bridge.h"
#include "asn1rt/cursor.h"
#include "asn1rt/universal_tags.h"
#include "ocsp/parsed_certificate.h"
#include "provider/hashing.h"

namespace Mirvane::PKI::OCSP {
namespace {

// Moves the cursor from the start of a content to behind its element. False if that has no end.
bool leaveElement(ASN1CTXT* ctxt, int length) {
    if (length == ASN1_INDEFLEN) return xd_MovePastEOC(ctxt) == RTS_OK;
    if (static_cast<std::uint32_t>(length) > asn1rt::room(ctxt)) return false;
    asn1rt::stepOver(ctxt, length);
    return true;
}

}  // namespace

CBlob extractTbsBlob(CBlob const& message) {
    const int messageLength = ASN1::road::messageLength(message);
    ASN1BERDecodeBuffer buffer(message.pbData(), messageLength);
    buffer.setBuffer(message.pbData(), messageLength, true);
    ASN1CTXT* const ctxt = buffer.getCtxtPtr();
    int length = 0;
    if (xd_match1(ctxt, TAG_SEQUENCE, &length) != RTS_OK) return CBlob();
    const std::uint32_t start = ctxt->buffer.byteIndex;
    if (xd_match1(ctxt, TAG_SEQUENCE, &length) != RTS_OK || !leaveElement(ctxt, length)) return CBlob();
    return CBlob(message.pbData() + start, ctxt->buffer.byteIndex - start);
}

TbsSigner::TbsSigner(HCRYPTPROV provider) : provider_(provider) {
    if (provider != 0 && CryptContextAddRef(provider, nullptr, 0)) reference_.Attach(provider);
}

CBlob TbsSigner::sign(ALG_ID hashAlgorithm, DWORD keySpecification, CBlob const& tbs) {
    const DWORD tbsLength = platformLength(tbs.cbData());
    checkSoft(CryptCreateHash(provider_, hashAlgorithm, 0, 0, hash_.Place()));
    const HCRYPTHASH hash = hash_.GetHandle();
    checkSoft(CryptHashData(hash, tbs.pbData(), tbsLength, 0));
    DWORD length = 0;
    checkSoft(CryptSignHashA(hash, keySpecification, nullptr, 0, nullptr, &length));
    CBlob signature(static_cast<unsigned long>(length));
    checkSoft(CryptSignHashA(hash, keySpecification, nullptr, 0, signature.pbData(), &length));
    signature.resize_to(length);
    signature.reverse();
    return signature;
}

void TbsSigner::release() {
    // The handle leaves the owner first, so that a failure does not release it twice.
    if (const HCRYPTPROV provider = reference_.Detach()) checkSoft(CryptReleaseContext(provider, 0));
}

bool verifyTbs(CBlob const& tbs, ASN1::CAlgorithmIdentifierEx const& algorithm, CBlob const& signature,
               CBlob const& certificate) {
    const DWORD certificateLength = platformLength(certificate.cbData());
    const ATL2::CCertContext context(
        CertCreateCertificateContext(kCertificateEncoding, certificate.pbData(), certificateLength));
    checkHard(static_cast<bool>(context));
    CERT_PUBLIC_KEY_INFO const& publicKey = context.Info().SubjectPublicKeyInfo;

    const ASN1::CAlgorithmIdentifierEx keyAlgorithm(ASN1::CAlgorithmIdentifier(publicKey.Algorithm.pszObjId));
    // In this order: an unknown key leaves the code that is thrown when no provider is found.
    const ALG_ID keyNumber = keyAlgorithm.get_algId();
    const ALG_ID hashNumber = algorithm.get_algId();
    const ATL::CCryptProv provider(MVGetDefaultCSPThrow(keyNumber, hashNumber));
    checkHard(static_cast<bool>(provider));

    ATL2::CCryptHashEx hash;
    checkSoft(CryptCreateHash(provider.GetHandle(), hashNumber, 0, 0, hash.Place()));
    checkSoft(CryptHashData(hash.GetHandle(), tbs.pbData(), platformLength(tbs.cbData()), 0));
    CBlob reversed(signature);
    reversed.reverse();
    ATL::CCryptKey key;
    checkHard(CryptImportPublicKeyInfo(provider.GetHandle(), kCertificateEncoding, &publicKey, key.Place()));
    if (CryptVerifySignatureA(hash.GetHandle(), reversed.pbData(), platformLength(reversed.cbData()),
                              key.GetHandle(), nullptr, 0)) {
        return true;
    }
    const DWORD error = GetLastError();
    if (error != static_cast<DWORD>(failure::wrongSignature)) failure::raise(failure::fromSystemError(error));
    return false;
}

}  // namespace Mirvane::PKI::OCSP
