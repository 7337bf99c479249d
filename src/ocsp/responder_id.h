// CResponderID, who gives an answer (ResponderID of RFC 6960, 4.2.1): the name of the responder's certificate
// or the hash of its key.
//
// A plain value. Distinct objects may be used from distinct threads; one object belongs to one thread while
// it is changed. What the getters return is valid until the object changes or dies. Failures are
// ATL::CAtlException; a last-error code is what the platform left, a plain system error number (above 0)
// under 0x80070000.
#ifndef MIRVANE_OCSP_RESPONDER_ID_H
#define MIRVANE_OCSP_RESPONDER_ID_H

#include <cstdint>

#include "base/blob.h"

struct ASN1CTXT;
class ASN1BERDecodeBuffer;
class ASN1BEREncodeBuffer;

namespace asn1data {
struct ASN1T_ResponderID;
}

namespace Mirvane::PKI::OCSP {

class MIRVANE_API CResponderID {
  public:
    enum Type : std::uint32_t {
        byName = 0,  // the value is an encoded Name
        byKey = 1,   // the value is the SHA-1 hash of the public key
    };

    // By name, with no bytes.
    CResponderID();
    // Nothing is checked before it is encoded.
    CResponderID(Type type, CBlob const& value);
    CResponderID(CResponderID const& other);
    CResponderID& operator=(CResponderID const& other);
    ~CResponderID();

    // The identifier of the responder with this certificate: its subject, byte for byte, or the hash of its
    // key, which is always SHA-1 and of 20 bytes, over the key without tag, length and count of unused bits.
    // Throws the last-error code for what is no certificate (0x80093102 for no bytes, 0x80093103, 0x80093202)
    // and when hashing fails; then 0x80070057 for another type. Also that for more than 0x7FFFFFFF bytes.
    static CResponderID fromCert(Type type, CBlob const& certificate);

    // The DER of ResponderID; a name is taken apart and written anew. Throws 0x80070057 for another type,
    // 0x80093101 for a name that does not decode, 0x80093106 if memory for a record fails.
    CBlob encode() const;
    // Reads the value at the start of the blob, in BER or DER. Throws 0x80093101 for what is no ResponderID;
    // the object is then as it was.
    void decode(CBlob const& encoded);

    Type get_type() const { return type_; }
    CBlob const& get_value() const { return value_; }
    // Copies the value, which may be the object's own. Nothing is checked.
    void put_value(Type type, CBlob const& value);

    // Of the same type and, by key, of the same bytes. Names are compared by the platform as names are
    // (RFC 5280, 7.1), so that two encodings of one name are equal. Throws 0x80070057 for a name above
    // 0x7FFFFFFF bytes.
    bool operator==(CResponderID const& other) const;
    bool operator!=(CResponderID const& other) const { return !(*this == other); }

  private:
    Type type_ = byName;
    CBlob value_;
};

// The tie between the identifier and its record, for the library's own code: records are not installed.
struct MIRVANE_API ASN1T_ResponderID_traits {
    using ASN1_T = asn1data::ASN1T_ResponderID;

    // Throws as CResponderID::encode.
    static void set(ASN1CTXT* ctxt, ASN1_T& record, CResponderID const& value);
    // Throws 0x80070057 for a record without a known alternative, 0x80093101 for a name that does not encode;
    // the value is then as it was.
    static void get(ASN1_T const& record, CResponderID& value);
    // A deep copy. Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, ASN1_T const& source, ASN1_T& target);
    static int encode(ASN1BEREncodeBuffer& buffer, ASN1_T& record);
    static int decode(ASN1BERDecodeBuffer& buffer, ASN1_T& record);
};

}  // namespace Mirvane::PKI::OCSP

#endif
