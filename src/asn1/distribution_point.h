// Where revocation lists are found (RFC 5280, 4.2.1.13): CDistributionPointName, the name of such a place;
// CDistributionPoint, the name with the reasons and the issuer; CCRLDistPointsSyntax, the list of them.
//
//   CGeneralName url;
//   url.put_uniformResourceIdentifier(L"http://ca.example/list.crl");
//   CGeneralNames names;
//   names.push_back(url);
//   CDistributionPointName const name(names);
//   CDistributionPoint point;
//   point.put_distributionPoint(&name);
//   CBlob const encoded = point.encode();
//
// Names and points own what they hold and copies are deep; a moved-from one is as after clear(). Distinct
// objects may be used from distinct threads; one object belongs to one thread while it is changed. Failures
// are ATL::CAtlException. What a getter returns is valid until the object changes or dies.
#ifndef MIRVANE_ASN1_DISTRIBUTION_POINT_H
#define MIRVANE_ASN1_DISTRIBUTION_POINT_H

#include <list>
#include <memory>

#include "asn1/general_name.h"
#include "asn1/revocation_reason.h"
#include "asn1rt/export.h"
#include "base/blob.h"

namespace Mirvane::ASN1 {

class CDistributionPointNameImpl;
class CDistributionPointImpl;

class MIRVANE_API CDistributionPointName {
  public:
    // Of the alternatives the names in full; the name relative to the issuer is not supported.
    enum Type : unsigned int { fullName = 1 };

    // Empty: type 0.
    CDistributionPointName();
    CDistributionPointName(CGeneralNames const& names);
    CDistributionPointName(CDistributionPointName const& other);
    CDistributionPointName(CDistributionPointName&& other) noexcept;
    ~CDistributionPointName();

    // A failure leaves the object as it was. What is assigned from a cleared object is cleared as well.
    CDistributionPointName& operator=(CDistributionPointName const& other);
    CDistributionPointName& operator=(CDistributionPointName&& other) noexcept;

    // Frees the names. The object may then only be assigned to, copied or destroyed.
    void clear();

    // A Type, or 0 when empty.
    unsigned int get_type() const;
    // Null when empty.
    CGeneralNames const* get_fullName() const;
    // The argument may be what the object holds. A failure leaves the object as it was.
    void put_fullName(CGeneralNames const& names);

    // The DER form. Throws 0x80093101 for an empty name, 0x80070057 for a name of a kind that CGeneralName
    // does not hold, 0x80093106 for memory that an ASN.1 context does not have.
    CBlob encode() const;
    // Reads the name at the start of the blob. Throws 0x80093101 for what is none, 0x80070057 as above; the
    // object is then as it was. A name relative to the issuer is read and leaves the object as it was, which
    // is meant.
    void decode(CBlob const& encoded);

    // Equal types and, in the same order, names that are equal by the loose rule of CGeneralName.
    bool operator==(CDistributionPointName const& other) const;
    bool operator!=(CDistributionPointName const& other) const { return !(*this == other); }

  private:
    std::unique_ptr<CDistributionPointNameImpl> impl_;  // null when cleared
};

class MIRVANE_API CDistributionPoint {
  public:
    // All fields absent.
    CDistributionPoint();
    CDistributionPoint(CDistributionPoint const& other);
    CDistributionPoint(CDistributionPoint&& other) noexcept;
    ~CDistributionPoint();

    // A failure leaves the object as it was. What is assigned from a cleared object is cleared as well.
    CDistributionPoint& operator=(CDistributionPoint const& other);
    CDistributionPoint& operator=(CDistributionPoint&& other) noexcept;

    // Frees the fields. The object may then only be assigned to, copied or destroyed.
    void clear();

    // Null where absent.
    CDistributionPointName const* get_distributionPoint() const;
    CReasonFlags const* get_reasons() const;
    CGeneralNames const* get_cRLIssuer() const;

    // Takes a copy; null makes the field absent. The argument may be what the object holds. A failure leaves
    // the object as it was.
    void put_distributionPoint(CDistributionPointName const* name);
    void put_reasons(CReasonFlags const* reasons);
    void put_cRLIssuer(CGeneralNames const* issuer);

    // The DER form; an issuer without names is left out. Throws as CDistributionPointName::encode does, an
    // empty name included.
    CBlob encode() const;
    // Reads the point at the start of the blob, and makes absent what it does not have. A name relative to
    // the issuer gives an empty name. Throws 0x80093101 for what is no point, 0x80070057 for a name of a kind
    // that CGeneralName does not hold; the object is then as it was.
    void decode(CBlob const& encoded);

    // Equal or equally absent fields, with names compared by the loose rule of CGeneralName.
    bool operator==(CDistributionPoint const& other) const;
    bool operator!=(CDistributionPoint const& other) const { return !(*this == other); }

  private:
    std::unique_ptr<CDistributionPointImpl> impl_;  // null when cleared
};

class MIRVANE_API CCRLDistPointsSyntax : public std::list<CDistributionPoint> {
  public:
    using std::list<CDistributionPoint>::list;
};

}  // namespace Mirvane::ASN1

#endif
