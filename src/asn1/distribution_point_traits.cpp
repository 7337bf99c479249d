#include "asn1/distribution_point_traits.h"

#include <utility>

#include "asn1/general_name_traits.h"
#include "asn1/revocation_reason_traits.h"

namespace Mirvane::ASN1 {

void ASN1T_DistributionPointName_traits::set(ASN1CTXT* ctxt, ASN1_T& rec,
                                             CDistributionPointName const& name) {
    rec.t = 0;
    rec.u.fullName = nullptr;
    if (CGeneralNames const* const names = name.get_fullName()) {
        rec.t = CDistributionPointName::fullName;
        rec.u.fullName = newRecord<asn1data::ASN1T_GeneralNames>(ctxt);
        ASN1T_GeneralNames_traits::set(ctxt, *rec.u.fullName, *names);
    }
}

void ASN1T_DistributionPointName_traits::get(ASN1_T const& rec, CDistributionPointName& name) {
    if (rec.t != CDistributionPointName::fullName) return;
    CGeneralNames names;
    ASN1T_GeneralNames_traits::get(*rec.u.fullName, names);
    name.put_fullName(names);
}

void ASN1T_DistributionPoint_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CDistributionPoint const& point) {
    rec.m = {};
    if (CDistributionPointName const* const name = point.get_distributionPoint()) {
        rec.m.distributionPointPresent = 1;
        ASN1T_DistributionPointName_traits::set(ctxt, rec.distributionPoint, *name);
    }
    if (CReasonFlags const* const reasons = point.get_reasons()) {
        rec.m.reasonsPresent = 1;
        ASN1T_ReasonFlags_traits::set(ctxt, rec.reasons, *reasons);
    }
    CGeneralNames const* const issuer = point.get_cRLIssuer();
    if (issuer != nullptr && !issuer->empty()) {
        rec.m.cRLIssuerPresent = 1;
        ASN1T_GeneralNames_traits::set(ctxt, rec.cRLIssuer, *issuer);
    }
}

void ASN1T_DistributionPoint_traits::get(ASN1_T const& rec, CDistributionPoint& point) {
    CDistributionPoint read;
    if (rec.m.distributionPointPresent) {
        CDistributionPointName name;
        ASN1T_DistributionPointName_traits::get(rec.distributionPoint, name);
        read.put_distributionPoint(&name);
    }
    if (rec.m.reasonsPresent) {
        CReasonFlags reasons(0);
        ASN1T_ReasonFlags_traits::get(rec.reasons, reasons);
        read.put_reasons(&reasons);
    }
    if (rec.m.cRLIssuerPresent) {
        CGeneralNames issuer;
        ASN1T_GeneralNames_traits::get(rec.cRLIssuer, issuer);
        read.put_cRLIssuer(&issuer);
    }
    point = std::move(read);
}

void ASN1T_CRLDistPointsSyntax_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CCRLDistPointsSyntax const& points) {
    DistributionPointSequence_traits::set(ctxt, rec, points);
}

void ASN1T_CRLDistPointsSyntax_traits::get(ASN1_T const& rec, CCRLDistPointsSyntax& points) {
    CCRLDistPointsSyntax read;
    DistributionPointSequence_traits::get(rec, read);
    points.swap(read);
}

}  // namespace Mirvane::ASN1
