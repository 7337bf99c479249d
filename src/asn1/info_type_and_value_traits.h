// Lists of InfoTypeAndValue between their record and CInfoTypeAndValueList: steps for those who build and
// read certificate management messages.
#ifndef MIRVANE_ASN1_INFO_TYPE_AND_VALUE_TRAITS_H
#define MIRVANE_ASN1_INFO_TYPE_AND_VALUE_TRAITS_H

#include "asn1/info_type_and_value.h"
#include "asn1rt/list.h"
#include "asn1rt/message_buffer.h"

namespace Mirvane::ASN1 {

// Appends records with memory of the buffer's context to the list; known values are there in decoded form
// too, and that is what is encoded. Throws 0x80070057 for a text that is no object identifier, 0x80093101 for
// the value of a known identifier that does not decode, 0x80093106 for memory that the context does not have;
// the list then has the records before the one that failed.
void ASN1TavList_Encode(CInfoTypeAndValueList const& list, _Asn1RTDList& records,
                        ASN1BERDecodeBuffer& buffer);

// Replaces the content of `list` by what the records, of ASN1T_InfoTypeAndValue, hold.
void ASN1TavList_Parse(_Asn1RTDList& records, CInfoTypeAndValueList& list);

}  // namespace Mirvane::ASN1

#endif
