// CRequestMessage, the question of the protocol (OCSPRequest, RFC 6960, 4.1.1): entries that name
// certificates, who asks, extensions, and a signature with certificates, of which all but the entries may be
// missing.
//
//     CSingleRequestList entries;
//     entries.push_back(CSingleRequest(CReqCert(CCertID(sha1, certificate, issuerCertificate))));
//     CRequestMessage message;
//     message.put_requestList(entries);
//     CBlob const question = message.encode();
//
//     CRequestMessage received;
//     received.decode(question);
//     for (CSingleRequest const& entry : received.get_requestList()) answer(entry.get_reqCert());
//
// Nothing demands an entry. A message that is changed after it was signed keeps its signature, which then
// does not fit any more; nothing tells.
//
// Copies are deep. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed. What the getters return points into the object and is valid until its next change. Failures
// are ATL::CAtlException; a last-error code is what the platform left, a plain system error number (above 0)
// under 0x80070000. Memory that an ASN.1 context does not have is 0x80093106 or 0x80093101; std::bad_alloc
// from operator new passes through.
#ifndef MIRVANE_OCSP_REQUEST_MESSAGE_H
#define MIRVANE_OCSP_REQUEST_MESSAGE_H

#include <cstdint>
#include <memory>

#include "asn1/algorithm_identifier.h"
#include "asn1/extensions.h"
#include "base/blob.h"
#include "base/exception.h"
#include "base/lists.h"
#include "ocsp/single_request.h"

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CRequestMessage {
  public:
    // Version 0, no entries, all else absent.
    CRequestMessage();
    // All but the octets that were received, if the message was decoded: see verify(). Of a cleared object it
    // is a cleared one.
    CRequestMessage(CRequestMessage const& other);
    // If memory fails, the object is as after clear().
    CRequestMessage& operator=(CRequestMessage const& other);
    ~CRequestMessage();

    // Ends what the object holds. After it only assignment and destruction are allowed.
    void clear();

    // The DER of the message. A signature of no bytes counts as none, and without one neither its algorithm
    // nor the certificates are written. Certificates, names and extensions are taken apart and written anew,
    // so that bytes of one that was not DER change.
    //
    // Throws 0x8009200D if there is a signature but no algorithm; 0x80093101 for a requestor name, a full
    // certificate or a signer's certificate that does not decode, and for all that does not encode;
    // 0x80070057 for an extension whose identifier is none; 0x80093106 if memory for a record fails. The
    // certificates that sign() took are looked at here for the first time.
    CBlob encode() const;

    // Takes a message from BER or DER; bytes behind it are ignored. The version is what the message says,
    // whatever its entries are. The entries are APPENDED to those that are there, which is meant, while all
    // else is replaced: decode into a fresh object, or verify() says nothing about the earlier entries.
    //
    // Throws 0x80093102 for a blob without bytes, 0x80093101 for what is no OCSPRequest; the object is then
    // as it was. Throws 0x80070057 for a requestor name that is no directoryName, and 0x80093101 for a name
    // or a certificate that does not encode again, and for a part that is signed whose end the message does
    // not have: the message is then read, at least in part, and has no signature, or one whose check hashes a
    // fresh encoding.
    void decode(CBlob const& blob);

    // Signs the message as it is now, with the key of the provider context and key specification, which the
    // platform defines. The context may be shared: a reference to it is held meanwhile. What was decoded is
    // encoded anew, and verify() keeps to the octets received: sign a copy of a decoded message. Null
    // `certificates` keep those that are there; else the list replaces them. It is not looked at: one with a
    // blob that is no certificate makes encode(), verify() and the next sign() throw 0x80093101.
    //
    // Throws what encode() throws; 0x80092004 if the platform knows no such signature algorithm; the
    // last-error code if the provider does not sign (0x80090001 for a stale handle, 0x8009000D without a
    // private key, 0x80090008 if algorithm and key do not fit), unless it is 0. The message is then as it
    // was, but for a failure to give the reference back, which comes after the signature is stored.
    void sign(unsigned long long provider, unsigned int keySpecification,
              ASN1::CAlgorithmIdentifierEx const& signatureAlgorithm, CBlobList const* certificates);

    // Whether the signature is one by the key of this encoded certificate. Nothing else is judged: neither
    // its validity, nor its purpose, nor its issuer. A decoded message is checked over the octets that were
    // received, whatever was changed since; one that was built here, and a copy of a decoded one, over a
    // fresh encoding.
    //
    // False means only that the provider rejected the signature. Throws 0x80070057 for a message that is not
    // signed; what encode() throws for a fresh encoding; the last-error code for a certificate that does not
    // parse, algorithms that are not known or do not fit (0x80090008), a key that cannot be read
    // (0x80090003).
    bool verify(CBlob const& certificate) const;

    // 0 is v1, 1 is v2; a received message may say anything else.
    std::uint32_t get_version() const;
    // The encoded directory name of who asks; null when absent.
    CBlob const* get_requestorName() const;
    CSingleRequestList const& get_requestList() const;
    // Null when absent.
    ASN1::CExtensions const* get_requestExtensions() const;
    ASN1::CAlgorithmIdentifierEx const* get_signatureAlgorithm() const;
    // In the byte order of the message.
    CBlob const* get_signature() const;
    // The certificates that came with the signature. Those of a decoded message are encoded anew: one that is
    // not DER, or has such extensions (a BasicConstraints that says FALSE is common), comes with other bytes
    // than were received, and its own signature then does not fit them. Whoever checks that takes the
    // certificate's octets from the message.
    CBlobList const* get_signatureCerts() const;

    // Copies, which may be of what the object holds; null makes the field absent. The name is looked at when
    // the message is encoded. An empty list of extensions is left out then.
    void put_requestorName(CBlob const* name);
    void put_requestExtensions(ASN1::CExtensions const* extensions);
    // Replaces the entries and sets the version: 1 if one of them names its certificate in another way than
    // by a CertID, else 0. Nothing else has a bearing on the version. If memory fails, the entries are
    // replaced in part.
    void put_requestList(CSingleRequestList const& requests);

  private:
    class MIRVANE_HIDDEN Impl;
    std::unique_ptr<Impl> impl_;  // null when cleared
};

}  // namespace Mirvane::PKI::OCSP

#endif
