// CGeneralName, the GeneralName choice of X.509 (RFC 5280, 4.2.1.6), and the list of such names.
//
//   CGeneralName location;
//   location.put_uniformResourceIdentifier(L"http://ocsp.example.org/");
//   CBlob const encoded = location.encode();
//
//   CGeneralName received;
//   received.decode(encoded);
//   if (wchar_t const* uri = received.get_uniformResourceIdentifier()) std::wcout << uri;
//
// Comparison and toString() look at no more than the first character of a text, so neither may key a
// container or decide about trust: compare what the getters give. A text that was decoded ends at the first
// zero octet of its encoding.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException, and leave the object as it was. What a getter returns is valid until the
// object changes or dies.
#ifndef MIRVANE_ASN1_GENERAL_NAME_H
#define MIRVANE_ASN1_GENERAL_NAME_H

#include <list>
#include <memory>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane::ASN1 {

class CGeneralNameImpl;

class MIRVANE_API CGeneralName {
  public:
    // The alternatives that a value can hold, by their place in the ASN.1 type. otherName (1), x400Address
    // (4) and ediPartyName (6) are not supported.
    enum Type : unsigned int {
        rfc822Name = 2,
        dNSName = 3,
        directoryName = 5,
        uniformResourceIdentifier = 7,
        iPAddress = 8,
        registeredID = 9,
    };

    // Empty: type 0 and no value.
    CGeneralName();
    // A deep copy; of a cleared object a cleared one.
    CGeneralName(CGeneralName const& other);
    // Leaves `other` as clear() does.
    CGeneralName(CGeneralName&& other) noexcept;
    ~CGeneralName();
    CGeneralName& operator=(CGeneralName const& other);
    CGeneralName& operator=(CGeneralName&& other) noexcept;

    // Frees the value. The object is not empty then but dead: it may only be assigned to, copied or
    // destroyed.
    void clear();

    // A Type, or 0.
    unsigned int get_type() const;

    // The value, or null if another alternative is held.
    wchar_t const* get_rfc822Name() const;
    wchar_t const* get_dNSName() const;
    wchar_t const* get_uniformResourceIdentifier() const;
    // The dotted text of the identifier.
    wchar_t const* get_registeredID() const;
    // The encoded Name.
    CBlob const* get_directoryName() const;
    // 4 or 16 octets in network order, twice as many in name constraints.
    CBlob const* get_iPAddress() const;

    // Make this the alternative, with a copy of the value, which may be the object's own. The value is not
    // looked at before it is encoded. Null throws 0x80070057.
    void put_rfc822Name(wchar_t const* text);
    void put_dNSName(wchar_t const* text);
    void put_uniformResourceIdentifier(wchar_t const* text);
    void put_registeredID(wchar_t const* text);
    void put_directoryName(CBlob const& name);
    void put_iPAddress(CBlob const& address);

    // The alternative's name with ": " and, of a text, its first character only, which is meant; of a
    // directory name its text; of an address that there is none. The empty text for an empty object. Throws
    // 0x80093101 for a directory name that does not decode.
    CWStringProxy toString() const;

    // The DER form; texts are written as octets of the platform's code page. Throws 0x80070057 for an empty
    // object and for a registeredID that is no object identifier; 0x80093101 for one that cannot be encoded,
    // a directory name that does not decode, and a text of 0x3FFFFFFF characters or more; 0x80093106 for
    // memory that the context does not have.
    CBlob encode() const;
    // Reads the name at the start of the blob. An iPAddress becomes a directoryName with the octets of the
    // address, which is meant: only put_iPAddress makes one. Throws 0x80093101 for what is no GeneralName,
    // 0x80070057 for an alternative that is not supported.
    void decode(CBlob const& encoded);

    // The same alternative, and the same bytes or the same first character: "abc" and "a" are equal, which is
    // meant.
    bool operator==(CGeneralName const& other) const;
    bool operator!=(CGeneralName const& other) const { return !(*this == other); }

  private:
    std::unique_ptr<CGeneralNameImpl> impl_;  // null when cleared
};

class MIRVANE_API CGeneralNames : public std::list<CGeneralName> {
  public:
    using std::list<CGeneralName>::list;
};

}  // namespace Mirvane::ASN1

#endif
