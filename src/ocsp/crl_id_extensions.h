// Two extensions that point to a revocation list by its address, number or time (CrlID of RFC 6960, 4.4.2):
// CExtCrlID says where an answer comes from, CExtHistoricalRequest asks for the status by that list.
//
//   CExtCrlID list;
//   list.put_crlUrl("http://ca.example/list.crl");
//   ASN1::CExtension const extension(list, false);
//
//   CExtCrlID const received(extension.get_extnValue());
//   if (char const* const url = received.get_crlUrl()) fetch(url);
//
// Copies are deep; a moved-from object is as after CExtCrlID::clear(). Distinct objects may be used from
// distinct threads; one object belongs to one thread while it is changed. Failures are ATL::CAtlException.
// What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_OCSP_CRL_ID_EXTENSIONS_H
#define MIRVANE_OCSP_CRL_ID_EXTENSIONS_H

#include <memory>

#include "asn1/extensions.h"
#include "base/date_time.h"

namespace Mirvane::PKI::OCSP {

class CCrlIDImpl;

// What the two have in common: all but the identifier. What is written through value() never reaches the
// fields; the next put_ operation replaces it.
class MIRVANE_API CCrlIDExtension : public ASN1::CExtValue {
  public:
    // Null where absent.
    char const* get_crlUrl() const;
    unsigned int const* get_crlNum() const;
    CDateTime const* get_crlTime() const;

    // Each takes a copy, or with null removes the field, and encodes the three anew; without any they are an
    // empty SEQUENCE. The argument may be what the object holds. If encoding throws, the field is the new one
    // and the blob the old one: the last error for a time outside the calendar, 0x80093106 for memory that an
    // ASN.1 context does not have.
    // The characters of the address are not looked at, here or in what is read.
    void put_crlUrl(char const* crlUrl);
    // On the wire the number is signed and has 32 bits: it comes back equal, but others read one from
    // 0x80000000 on as negative.
    void put_crlNum(unsigned int const* crlNum);
    // Encodes whole seconds, the fraction cut off, and keeps the rest in the field.
    void put_crlTime(CDateTime const* crlTime);

  protected:
    // No fields, and an empty blob, which is no encoding of them.
    explicit CCrlIDExtension(char const* oid);
    // Reads the fields from the value without the OCTET STRING around it. Throws 0x80093101 for what does not
    // decode, and what CDateTime(char const*) throws for a time that is none.
    CCrlIDExtension(char const* oid, CBlob const& encoded);
    CCrlIDExtension(CCrlIDExtension const& other);
    CCrlIDExtension(CCrlIDExtension&& other);
    ~CCrlIDExtension();

    // A failure leaves the object as it was.
    CCrlIDExtension& operator=(CCrlIDExtension const& other);
    CCrlIDExtension& operator=(CCrlIDExtension&& other);

    void endFields();

  private:
    void encodeFields();

    std::unique_ptr<CCrlIDImpl> impl_;  // null when cleared
};

// The list that an answer was taken from, 1.3.6.1.5.5.7.48.1.3 (RFC 6960, 4.4.2).
class MIRVANE_API CExtCrlID : public CCrlIDExtension {
  public:
    CExtCrlID();
    explicit CExtCrlID(CBlob const& encoded);

    // Ends the fields. After it only assignment and destruction are allowed.
    void clear();
};

// The list that an answer shall be taken from, 1.2.643.2.2.47.5.
class MIRVANE_API CExtHistoricalRequest : public CCrlIDExtension {
  public:
    CExtHistoricalRequest();
    explicit CExtHistoricalRequest(CBlob const& encoded);
};

}  // namespace Mirvane::PKI::OCSP

#endif
