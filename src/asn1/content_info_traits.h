// The traits of ContentInfo, in the form that asn1/bridge.h tells.
#ifndef MIRVANE_ASN1_CONTENT_INFO_TRAITS_H
#define MIRVANE_ASN1_CONTENT_INFO_TRAITS_H

#include "asn1/content_info.h"
#include "asn1/record_traits.h"
#include "asn1data/cms.h"

namespace Mirvane::ASN1 {

// A message in its two parts, or as the blob of its encoding. `set` throws 0x80093106 for memory that the
// context does not have; what else is thrown stands with each.
struct ASN1T_ContentInfo_traits
    : RecordTraits<asn1data::ASN1T_ContentInfo, asn1data::ASN1C_ContentInfo, asn1data::asn1Copy_ContentInfo> {
    // Throws 0x80093101 if the blob does not start with a ContentInfo.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& encoded);
    // Throws 0x80093101 for a record that does not encode; `encoded` is then as it was.
    static void get(ASN1_T const& rec, CBlob& encoded);
    // The record gets content of a known type in decoded form too, and that is what is encoded. Throws
    // 0x80070057 for a text that is no object identifier, 0x80093101 for content of a known type that does
    // not decode.
    static void set(ASN1CTXT* ctxt, ASN1_T& rec, CContentInfo const& info);
    static void get(ASN1_T const& rec, CContentInfo& info);
};

}  // namespace Mirvane::ASN1

#endif
