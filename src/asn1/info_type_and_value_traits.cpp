#include "asn1/info_type_and_value_traits.h"

#include "asn1/certificate_traits.h"
#include "asn1/context_memory.h"
#include "asn1/primitive_traits.h"
#include "asn1data/cmp.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

using asn1data::ASN1T_InfoTypeAndValue;

// A node with its value directly behind it, as rtDListAppendNode wants it.
struct ListedInfo {
    _Asn1RTDListNode node;
    ASN1T_InfoTypeAndValue info;
};
static_assert(sizeof(ListedInfo) == sizeof(_Asn1RTDListNode) + sizeof(ASN1T_InfoTypeAndValue));

}  // namespace

void ASN1TavList_Encode(CInfoTypeAndValueList const& list, _Asn1RTDList& records,
                        ASN1BERDecodeBuffer& buffer) {
    ASN1CTXT* const ctxt = buffer.getCtxtPtr();
    for (CInfoTypeAndValue const& element : list) {
        ASN1T_InfoTypeAndValue& info = newRecord<ListedInfo>(ctxt)->info;
        if (element.get_infoValue().cbData() != 0) {
            info.m.infoValuePresent = 1;
            Asn1TObject_traits::set(ctxt, info.infoValue, element.get_infoValue());
        }
        ASN1TObjId_traits::set(ctxt, info.infoType, element.get_infoType());
        if (asn1data::asn1DTC_InfoTypeAndValue(ctxt, &info) != RTS_OK) failure::raise(failure::asn1);
        rtDListAppendNode(ctxt, &records, &info);
    }
}

void ASN1TavList_Parse(_Asn1RTDList& records, CInfoTypeAndValueList& list) {
    CInfoTypeAndValueList read;
    for (auto const* node = records.head; node != nullptr; node = node->next) {
        auto const& info = *static_cast<ASN1T_InfoTypeAndValue const*>(node->data);
        CStringProxy infoType;
        ASN1TObjId_traits::get(info.infoType, infoType);
        CBlob infoValue;
        if (info.m.infoValuePresent) Asn1TObject_traits::get(info.infoValue, infoValue);
        read.push_back(CInfoTypeAndValue(infoType.c_str(), infoValue));
    }
    list.swap(read);
}

}  // namespace Mirvane::ASN1
