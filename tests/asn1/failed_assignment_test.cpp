// An assignment that fails for want of memory leaves the object as it was.
#include <gtest/gtest.h>

#include <string>

#include "asn1/attributes.h"
#include "asn1/content_info.h"
#include "asn1/distribution_point.h"
#include "asn1/ess_identifiers.h"
#include "asn1/pki_status.h"
#include "asn1/revocation_announcement.h"
#include "asn1/signing_certificate_attributes.h"
#include "asn1/time_choice.h"
#include "asn1/typed_attributes.h"
#include "support/blobs.h"
#include "support/failing_new.h"

using namespace Mirvane;
using namespace Mirvane::ASN1;
using test::blob;

namespace {

template <typename T>
CBlob contentOf(T const& object) {
    if constexpr (std::is_base_of_v<CAttrValue, T>) {
        return object.get_value();
    } else {
        return object.encode();
    }
}

template <typename T>
void expectUnchanged(T const& before, T const& source) {
    for (int index = 0;; ++index) {
        T target(before);
        bool happened = false;
        try {
            const test::FailingNew failing(index);
            target = source;
        } catch (std::bad_alloc const&) {
            happened = true;
        }
        EXPECT_EQ(contentOf(target), contentOf(happened ? before : source)) << index;
        if (!happened) return;
    }
}

CAlgorithmIdentifier algorithm(char const* oid) {
    CAlgorithmIdentifier value(oid);
    value.put_parameters(blob("05 00"));
    return value;
}

// Longer than what a string holds in place.
CGeneralName name(wchar_t last) {
    std::wstring text(40, L'a');
    text.back() = last;
    CGeneralName value;
    value.put_uniformResourceIdentifier(text.c_str());
    return value;
}

CAttribute attribute(char const* value) {
    CAttribute result("1.2.3.4.5.6.7.8.9.10.11.12");
    result.add(blob(value));
    return result;
}

CPKIStatusInfo status(wchar_t const* text) {
    CPKIStatusInfo result(rejection);
    result.put_statusString(CPKIFreeText(text, CLanguageTagEnUs()));
    return result;
}

CRevAnnContent announcement(wchar_t last) {
    return CRevAnnContent(accepted, CCertId(name(last), CBigInteger(blob("01").pbData(), 1)), CDateTime(1, 0),
                          CDateTime(2, 0));
}

}  // namespace

TEST(FailedAssignment, ChangesNothing) {
    expectUnchanged(CTimeChoice(CDateTime(1, 0)), CTimeChoice("20600101000000Z"));
    expectUnchanged(algorithm("1.3.6.1.4.1.99999.987654321.1"), algorithm("1.3.6.1.4.1.99999.987654321.2"));
    expectUnchanged(name(L'x'), name(L'y'));
    expectUnchanged(CDistributionPointName({name(L'x')}), CDistributionPointName({name(L'y')}));
    expectUnchanged(COtherHash(blob("AA")), COtherHash(COtherHashAlgAndValue(blob("BB"), algorithm("1.2"))));
    expectUnchanged(CESSCertID(blob("AA")), CESSCertID(blob("BB")));
    expectUnchanged(CESSCertIDv2(blob("AA")), CESSCertIDv2(blob("BB"), algorithm("1.2")));
    expectUnchanged(COtherCertID(blob("AA")), COtherCertID(blob("BB"), algorithm("1.2")));
    expectUnchanged(attribute("05 00"), attribute("02 01 07"));
    expectUnchanged(CContentInfo("1.2", blob("05 00")), CContentInfo("1.3", blob("02 01 07")));
    expectUnchanged(status(L"no"), status(L"not at all, and that is said at length"));
    expectUnchanged(announcement(L'x'), announcement(L'y'));
    expectUnchanged(CAttrSigningTime(CDateTime(1, 0)), CAttrSigningTime(CDateTime(2, 0)));
    expectUnchanged(CAttrSigningCertificateV2({CESSCertIDv2(blob("AA"))}), CAttrSigningCertificateV2());
}
