// The order that DER asks of a SET OF (X.690, 11.6).
#ifndef MIRVANE_ASN1RT_CANONICAL_SORT_H
#define MIRVANE_ASN1RT_CANONICAL_SORT_H

#include "asn1rt/context.h"
#include "asn1rt/slist.h"

extern "C" {

// Puts the encoded elements at the cursor into ascending order. `list` holds an ASN1BufLocDescr from
// typeMemHeap for each, in the order in which they were encoded; together they are the octets at the cursor.
// The sum of their octets, or RTS_NO_MEMORY, or RTS_BAD_LENGTH for elements that do not lie in the buffer;
// not recorded. But on failure the list is consumed: records and nodes are freed, and the head is left as it
// stands, not to be used before rtSListInitEx.
MIRVANE_API int xe_derCanonicalSort(ASN1CTXT* ctxt, rtSList* list);

}  // extern "C"

#endif
