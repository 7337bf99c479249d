// The outermost values of a certificate status answer, OCSPResponse and its parts (RFC 6960, 4.2.1): records,
// codecs and the control class.
//
// An encoder returns the octets written or a negative status, a decoder 0 or a negative status; every failure
// is recorded in the context. Memory of decoded and copied values comes from the context's typeMemHeap.
#ifndef MIRVANE_ASN1DATA_RESPONSE_ENVELOPE_H
#define MIRVANE_ASN1DATA_RESPONSE_ENVELOPE_H

#include "asn1rt/control.h"
#include "asn1rt/object_identifier.h"
#include "asn1rt/value_types.h"

namespace asn1data {

struct ASN1T_ResponseBytes : ASN1TPDU {
    ASN1TObjId responseType{};
    ASN1TDynOctStr response{};
};

struct ASN1T_OCSPResponse : ASN1TPDU {
    struct {
        unsigned responseBytesPresent : 1;
    } m{};
    std::uint32_t responseStatus = 0;
    ASN1T_ResponseBytes responseBytes;
};

int asn1E_ResponseBytes(ASN1CTXT* pctxt, ASN1T_ResponseBytes* pvalue, ASN1TagType tagging);
int asn1D_ResponseBytes(ASN1CTXT* pctxt, ASN1T_ResponseBytes* pvalue, ASN1TagType tagging, int length);

int asn1E_OCSPResponse(ASN1CTXT* pctxt, ASN1T_OCSPResponse* pvalue, ASN1TagType tagging);
int asn1D_OCSPResponse(ASN1CTXT* pctxt, ASN1T_OCSPResponse* pvalue, ASN1TagType tagging, int length);
// Throws std::bad_alloc when memory fails. `dst` comes in empty.
void asn1Copy_OCSPResponse(ASN1CTXT* pctxt, const ASN1T_OCSPResponse* src, ASN1T_OCSPResponse* dst);

class ASN1C_OCSPResponse : public ASN1CType {
  public:
    ASN1C_OCSPResponse(ASN1MessageBufferIF& buffer, ASN1T_OCSPResponse& value)
        : ASN1CType(buffer), msgData(&value) {}

    int EncodeTo(ASN1MessageBufferIF& buffer) override;
    int DecodeFrom(ASN1MessageBufferIF& buffer) override;

  private:
    ASN1T_OCSPResponse* msgData;
};

}  // namespace asn1data

#endif
