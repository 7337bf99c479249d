// Extensions whose value is known: each is a CExtValue with a fixed identifier and a member that holds what
// the blob encodes. They go into a CExtension as they are, and are made again from the blob that comes back:
//
//   CExtension const extension(CExtInvalidityDate(CDateTime("20240229120000Z")), false);
//   CDateTime const since = CExtInvalidityDate(extension.get_extnValue()).get_invalidityDate();
//
// All have these in common:
// - A new object without arguments has an empty blob, which is no encoding of its member.
// - The constructor from the member's type and each put_ store the member and then encode it. If that throws,
//   the member is the new one and the blob the old one.
// - The constructor from a blob decodes it. The blob is the value without the OCTET STRING around it.
// - encode() writes the member into the blob. It throws 0x80093101 for what cannot be encoded, 0x80093106 for
//   memory that an ASN.1 context does not have.
// - decode() reads the member from the blob. It throws 0x80093101 for what does not decode; the member is
//   then as it was.
// - An assignment that memory fails may have taken the blob and not the member, unless told otherwise.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_TYPED_EXTENSIONS_H
#define MIRVANE_ASN1_TYPED_EXTENSIONS_H

#include <memory>

#include "asn1/extensions.h"
#include "asn1/general_name.h"
#include "asn1/revocation_reason.h"
#include "base/date_time.h"

namespace Mirvane::ASN1 {

// reasonCode of a revoked entry, 2.5.29.21 (RFC 5280, 5.3.1).
class MIRVANE_API CExtCRLReason : public CExtValue {
  public:
    // unspecified.
    CExtCRLReason();
    // Throws 0x80093101 from 11 on.
    CExtCRLReason(CrlReason reason);
    explicit CExtCRLReason(CBlob const& encoded);

    CrlReason get_reason() const { return reason_; }
    void put_reason(CrlReason reason);

    void encode();
    void decode();

  private:
    CrlReason reason_ = unspecified;
};

// What to do with a certificate on hold, 2.5.29.23: an object identifier.
class MIRVANE_API CExtHoldInstructionCode : public CExtValue {
  public:
    // The empty text.
    CExtHoldInstructionCode();
    // The dotted text. Throws 0x80070057 for a text that does not parse, null included.
    CExtHoldInstructionCode(char const* code);
    explicit CExtHoldInstructionCode(CBlob const& encoded);

    char const* get_code() const { return code_.c_str(); }
    void put_code(char const* code);

    void encode();
    void decode();

  private:
    CStringProxy code_;
};

// Since when a key is thought to be known to others, 2.5.29.24 (RFC 5280, 5.3.2).
class MIRVANE_API CExtInvalidityDate : public CExtValue {
  public:
    // The start of 1970.
    CExtInvalidityDate();
    // Encodes whole seconds and keeps the rest in the member. Throws the last error for a date outside the
    // calendar.
    CExtInvalidityDate(CDateTime const& invalidityDate);
    // Throws what CDateTime(char const*) throws for a text that is no date.
    explicit CExtInvalidityDate(CBlob const& encoded);

    CDateTime const& get_invalidityDate() const { return invalidityDate_; }
    void put_invalidityDate(CDateTime const& invalidityDate);

    void encode();
    void decode();

  private:
    CDateTime invalidityDate_;
};

// Whose certificate an entry of an indirect list is, 2.5.29.29 (RFC 5280, 5.3.3).
class MIRVANE_API CExtCertificateIssuer : public CExtValue {
  public:
    // No names.
    CExtCertificateIssuer();
    // Throws 0x80070057 for a name of a kind that CGeneralName does not hold.
    CExtCertificateIssuer(CGeneralNames const& issuer);
    // As above.
    explicit CExtCertificateIssuer(CBlob const& encoded);

    CGeneralNames const& get_issuer() const { return issuer_; }
    void put_issuer(CGeneralNames const& issuer);

    void encode();
    void decode();

  private:
    CGeneralNames issuer_;
};

// When the private key may sign, 2.5.29.16. Of the two ends either or both may be absent. There is no
// construction without arguments.
class MIRVANE_API CExtPrivateKeyUsagePeriod : public CExtValue {
  public:
    // Null is an absent end; two of them encode as an empty SEQUENCE. Dates as for CExtInvalidityDate.
    CExtPrivateKeyUsagePeriod(CDateTime const* notBefore, CDateTime const* notAfter);
    // Encodes what it has read, so that the blob may differ from the given one.
    explicit CExtPrivateKeyUsagePeriod(CBlob const& encoded);
    CExtPrivateKeyUsagePeriod(CExtPrivateKeyUsagePeriod const& other);
    // Leaves `other` without dates and with an empty blob.
    CExtPrivateKeyUsagePeriod(CExtPrivateKeyUsagePeriod&& other);
    ~CExtPrivateKeyUsagePeriod();

    // A failure leaves the object as it was.
    CExtPrivateKeyUsagePeriod& operator=(CExtPrivateKeyUsagePeriod const& other);
    CExtPrivateKeyUsagePeriod& operator=(CExtPrivateKeyUsagePeriod&& other);

    // Null where absent.
    CDateTime const* get_notBefore() const { return notBefore_.get(); }
    CDateTime const* get_notAfter() const { return notAfter_.get(); }
    // The argument may be what the object holds.
    void put_notBefore(CDateTime const* notBefore);
    void put_notAfter(CDateTime const* notAfter);

    void encode();
    // Encodes what it has read, as the constructor does.
    void decode();

  private:
    std::unique_ptr<CDateTime> notBefore_;
    std::unique_ptr<CDateTime> notAfter_;
};

}  // namespace Mirvane::ASN1

#endif
