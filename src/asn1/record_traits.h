// What the traits of all generated records have in common, in the form that asn1/bridge.h tells. The traits
// of a type derive from it and add `set` and `get`:
//
//   struct ASN1T_Time_traits
//       : RecordTraits<asn1data::ASN1T_Time, asn1data::ASN1C_Time, asn1data::asn1Copy_Time> { ... };
#ifndef MIRVANE_ASN1_RECORD_TRAITS_H
#define MIRVANE_ASN1_RECORD_TRAITS_H

#include "asn1/context_memory.h"
#include "asn1rt/message_buffer.h"

namespace Mirvane::ASN1 {

template <typename Record, typename Control, void (*Copy)(ASN1CTXT*, Record const*, Record*)>
struct RecordTraits {
    using ASN1_T = Record;

    // Into an empty record. Throws 0x80093106 for memory that the context does not have.
    static void copy(ASN1CTXT* ctxt, Record const& src, Record& dst) {
        inContextMemory([&] { Copy(ctxt, &src, &dst); });
    }

    // Throws 0x80093106 where memory fails for the order of a SET OF.
    static int encode(ASN1BEREncodeBuffer& buffer, Record& rec) {
        return inContextMemory([&] { return Control(buffer, rec).EncodeTo(buffer); });
    }
    static int decode(ASN1BERDecodeBuffer& buffer, Record& rec) {
        return Control(buffer, rec).DecodeFrom(buffer);
    }
};

}  // namespace Mirvane::ASN1

#endif
