// The extensions of OCSP messages: those of RFC 6960, 4.4, and this system's own under 1.2.643.2.2.47. Each
// is a CExtValue with a fixed identifier and, where the value is known, a member that holds what the blob
// encodes. They go into a CExtension as they are, and are made again from the blob that comes back:
//
//   CBlob nonce(octetStringHeader, 2);  // 04 20, the OCTET STRING of RFC 9654 around 32 octets
//   nonce += random;
//   request.insert(ASN1::CExtension(CExtNonce(nonce), false));
//
//   auto const found = received.find("1.3.6.1.5.5.7.48.1.6");
//   if (found != received.end()) {
//       CDateTime const cutoff = CExtArchiveCutoff(found->get_extnValue()).get_archiveCutoff();
//   }
//
// Those with a member have these in common (ocsp/crl_id_extensions.h and ocsp/service_locator.h, which this
// header includes, say where theirs differ):
// - A new object without arguments has an empty blob, which is no encoding of its member.
// - The constructor from the member's type and each put_ store a copy of the member and then encode it. The
//   argument of put_ may be what the object holds. If encoding throws, the member is the new one and the blob
//   the old one.
// - The constructor from a blob decodes it. The blob is the value without the OCTET STRING around it.
// - encode() writes the member into the blob. It throws 0x80093101 for what cannot be encoded, 0x80093106 for
//   memory that an ASN.1 context does not have.
// - decode() reads the member from the blob. It throws 0x80093101 for what does not decode; the member is
//   then as it was. What is written through value() reaches the member by decode() alone.
// - An assignment that memory fails may have taken the blob and not the member, unless told otherwise.
//
// Copies are deep. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed. Failures are ATL::CAtlException. What a getter returns is valid until the object changes or
// dies.
#ifndef MIRVANE_OCSP_OCSP_EXTENSIONS_H
#define MIRVANE_OCSP_OCSP_EXTENSIONS_H

#include "asn1/distribution_point.h"
#include "asn1/extensions.h"
#include "base/date_time.h"
#include "base/lists.h"
#include "ocsp/crl_id_extensions.h"
#include "ocsp/service_locator.h"

namespace asn1data {
struct ASN1T_AcceptableResponses;
}

namespace Mirvane::PKI::OCSP {

// What ties an answer to its request, 1.3.6.1.5.5.7.48.1.2 (RFC 6960, 4.4.1). The bytes are the value as it
// is: whoever wants the OCTET STRING of RFC 9654 around the nonce puts it there.
class MIRVANE_API CExtNonce : public ASN1::CExtValue {
  public:
    CExtNonce();
    explicit CExtNonce(CBlob const& nonce);

    CBlob const& get_nonce() const { return get_value(); }
    // The argument may be the object's own.
    void put_nonce(CBlob const& nonce);
};

// The types of response that a client reads, 1.3.6.1.5.5.7.48.1.4 (RFC 6960, 4.4.3): object identifiers.
class MIRVANE_API CExtAcceptableResponses : public ASN1::CExtValue {
  public:
    // No types.
    CExtAcceptableResponses();
    // Dotted texts. Throws 0x80070057 for one that does not parse.
    CExtAcceptableResponses(CStringList const& acceptableResponses);
    explicit CExtAcceptableResponses(CBlob const& encoded);

    CStringList const& get_acceptableResponses() const { return acceptableResponses_; }
    void put_acceptableResponses(CStringList const& acceptableResponses);

    void encode();
    // Appends to what the object already holds, which is meant: the blob is then without the older ones until
    // encode().
    void decode();

  private:
    CStringList acceptableResponses_;
};

// How far back a responder answers, 1.3.6.1.5.5.7.48.1.6 (RFC 6960, 4.4.4).
class MIRVANE_API CExtArchiveCutoff : public ASN1::CExtValue {
  public:
    // The start of 1970.
    CExtArchiveCutoff();
    // Encodes whole seconds, the fraction cut off, and keeps the rest in the member. Throws the last error
    // for a date outside the calendar.
    CExtArchiveCutoff(CDateTime const& archiveCutoff);
    // Throws what CDateTime(char const*) throws for a text that is no date; so does decode().
    explicit CExtArchiveCutoff(CBlob const& encoded);

    CDateTime const& get_archiveCutoff() const { return archiveCutoff_; }
    void put_archiveCutoff(CDateTime const& archiveCutoff);

    void encode();
    void decode();

  private:
    CDateTime archiveCutoff_;
};

// Where the revocation list that an answer rests on can be had, 1.2.643.2.2.47.2.
class MIRVANE_API CExtCRLLocator : public ASN1::CExtValue {
  public:
    // No places.
    CExtCRLLocator();
    // Throws what CDistributionPoint::encode throws; a list without points is 0x80093101.
    CExtCRLLocator(ASN1::CCRLDistPointsSyntax const& distributionPoints);
    // Throws 0x80070057 for a name of a kind that CGeneralName does not hold; so does decode().
    explicit CExtCRLLocator(CBlob const& encoded);

    ASN1::CCRLDistPointsSyntax const& get_distributionPoints() const { return distributionPoints_; }
    void put_distributionPoints(ASN1::CCRLDistPointsSyntax const& distributionPoints);

    void encode();
    void decode();

  private:
    ASN1::CCRLDistPointsSyntax distributionPoints_;
};

// 1.2.643.2.2.47.3. What the bytes mean is between those who exchange them.
class MIRVANE_API CExtInstantRevocationIndicator : public ASN1::CExtValue {
  public:
    CExtInstantRevocationIndicator();
    explicit CExtInstantRevocationIndicator(CBlob const& value);
};

// 1.2.643.2.2.47.4. What the bytes mean is between those who exchange them.
class MIRVANE_API CExtRevocationAnnouncementReference : public ASN1::CExtValue {
  public:
    CExtRevocationAnnouncementReference();
    explicit CExtRevocationAnnouncementReference(CBlob const& value);
};

// The tie between a list of response types and its record, for the library's own code: records are not
// installed.
struct MIRVANE_API ASN1T_AcceptableResponses_traits {
    using ASN1_T = asn1data::ASN1T_AcceptableResponses;

    // Throws 0x80070057 for a text that does not parse, 0x80093106 for memory that the context does not have;
    // the record is then as it was.
    static void set(ASN1CTXT* ctxt, ASN1_T& record, CStringList const& value);
    // Meant: appends, and replaces nothing. A failure leaves the value as it was.
    static void get(ASN1_T const& record, CStringList& value);
    // A deep copy. Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record);
};

}  // namespace Mirvane::PKI::OCSP

#endif
