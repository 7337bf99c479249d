// The traits of a SEQUENCE OF or SET OF over a list of values, made of the traits of its element. The traits
// of a list type delegate to it and add encode and decode.
#ifndef MIRVANE_ASN1_SEQUENCE_TRAITS_H
#define MIRVANE_ASN1_SEQUENCE_TRAITS_H

#include <utility>

#include "asn1/context_memory.h"
#include "asn1rt/list.h"

namespace Mirvane::ASN1 {

template <typename Record, typename ElementTraits, typename Element, typename List>
struct ASN1TSeqOfList_traits {
    // Records and nodes live in `ctxt`; the order is that of `list`. Throws 0x80093106 if memory fails, and
    // what the element's `set` throws; `listRecord` is then as it was.
    static void set(ASN1CTXT* ctxt, _Asn1RTDList& listRecord, List const& list) {
        _Asn1RTDList records{};
        for (auto const& element : list) {
            auto* record = newRecord<Record>(ctxt);
            ElementTraits::set(ctxt, *record, element);
            append(ctxt, records, record);
        }
        listRecord = records;
    }

    // Replaces the content of `list`, which stays as it was when an element's `get` throws.
    static void get(_Asn1RTDList const& listRecord, List& list) {
        List elements;
        for (auto const* node = listRecord.head; node != nullptr; node = node->next) {
            Element element;
            ElementTraits::get(*static_cast<Record const*>(node->data), element);
            elements.push_back(std::move(element));
        }
        list.swap(elements);
    }

    // A deep copy, whatever `dst` held before. Throws as `set` does.
    static void copy(ASN1CTXT* ctxt, _Asn1RTDList const& src, _Asn1RTDList& dst) {
        _Asn1RTDList records{};
        for (auto const* node = src.head; node != nullptr; node = node->next) {
            auto* record = newRecord<Record>(ctxt);
            ElementTraits::copy(ctxt, *static_cast<Record const*>(node->data), *record);
            append(ctxt, records, record);
        }
        dst = records;
    }
};

}  // namespace Mirvane::ASN1

#endif
