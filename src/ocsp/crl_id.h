// CCrlIDImpl, a reference to a revocation list (CrlID of RFC 6960, 4.4.2): what CExtCrlID and
// CExtHistoricalRequest hold. Not part of the interface.
//
// Each field owns its value, and null is an absent one. Distinct objects may be used from distinct threads;
// one object belongs to one thread while it is changed. Failures are ATL::CAtlException.
#ifndef MIRVANE_OCSP_CRL_ID_H
#define MIRVANE_OCSP_CRL_ID_H

#include <memory>
#include <string>

#include "base/blob.h"
#include "base/date_time.h"

struct ASN1CTXT;

namespace asn1data {
struct ASN1T_CrlID;
}

namespace Mirvane::PKI::OCSP {

class CCrlIDImpl {
  public:
    CCrlIDImpl() = default;
    CCrlIDImpl(CCrlIDImpl const& other);
    CCrlIDImpl& operator=(CCrlIDImpl const&) = delete;

    // The DER form, an empty SEQUENCE if no field is there. The time is in whole seconds, its fraction cut
    // off. A number from 0x80000000 on goes out as the negative one of the same bits. Throws 0x80093101 for
    // what does not encode, 0x80093106 for memory that the context does not have, and the last error for a
    // time outside the calendar.
    CBlob encode() const;

    // Replaces all fields by those of the CrlID at the start of the blob. Throws 0x80093101 for what is none,
    // bytes of a number above 32 bits included; all is then as it was. Throws what CDateTime(char const*)
    // throws for a time that is none, with the other two fields read.
    void decode(CBlob const& encoded);

    // The two halves of that. `fill` wants an empty record and gives it memory of the context.
    void fillASN1T_CrlID(ASN1CTXT* ctxt, asn1data::ASN1T_CrlID& record) const;
    void readASN1T_CrlID(asn1data::ASN1T_CrlID const& record);

    std::unique_ptr<std::string> crlUrl;
    std::unique_ptr<unsigned int> crlNum;
    std::unique_ptr<CDateTime> crlTime;
};

}  // namespace Mirvane::PKI::OCSP

#endif
