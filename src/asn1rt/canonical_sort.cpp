#include "asn1rt/canonical_sort.h"

#include <algorithm>
#include <cstring>

#include "asn1rt/allocate.h"
#include "asn1rt/ber_encode.h"

namespace {

struct Element {
    const unsigned char* octets;
    std::uint32_t length;
};

const ASN1BufLocDescr* locationOf(const rtSListNode* node) {
    return static_cast<const ASN1BufLocDescr*>(node->data);
}

Element elementOf(const ASN1CTXT* ctxt, const rtSListNode* node) {
    const ASN1BufLocDescr* location = locationOf(node);
    const unsigned char* end = ctxt->buffer.data + ctxt->buffer.size - 1;
    return {end - location->offset, static_cast<std::uint32_t>(location->numocts)};
}

bool precedes(const Element& first, const Element& second) {
    const int order = std::memcmp(first.octets, second.octets, std::min(first.length, second.length));
    return order != 0 ? order < 0 : first.length < second.length;
}

// The octets of all elements, if each lies in what has been written and all fit there; a status otherwise.
int measureElements(const ASN1CTXT* ctxt, const rtSList* list, std::uint32_t* count) {
    const std::uint32_t written =
        ctxt->buffer.byteIndex < ctxt->buffer.size ? ctxt->buffer.size - ctxt->buffer.byteIndex - 1 : 0;
    std::uint64_t total = 0;
    for (const rtSListNode* node = list->head; node; node = node->next) {
        const ASN1BufLocDescr* location = locationOf(node);
        if (location->numocts < 0 || location->offset > written) return RTS_BAD_LENGTH;
        if (static_cast<std::uint32_t>(location->numocts) > location->offset) return RTS_BAD_LENGTH;
        total += static_cast<std::uint32_t>(location->numocts);
        ++*count;
    }
    return total <= written ? static_cast<int>(total) : RTS_BAD_LENGTH;
}

// The encoder works from the end of the buffer, so elements in order were encoded, and listed, in descending
// order.
bool isInOrder(const ASN1CTXT* ctxt, const rtSList* list) {
    for (const rtSListNode* node = list->head; node->next; node = node->next) {
        if (precedes(elementOf(ctxt, node), elementOf(ctxt, node->next))) return false;
    }
    return true;
}

int rewriteInOrder(ASN1CTXT* ctxt, const rtSList* list, std::uint32_t count, std::uint32_t total) {
    auto* elements = static_cast<Element*>(asn1rt::allocate(ctxt, std::uint64_t{count} * sizeof(Element)));
    unsigned char* sorted = asn1rt::allocateOctets(ctxt, total);
    if (elements && sorted) {
        Element* end = elements;
        for (const rtSListNode* node = list->head; node; node = node->next)
            *end++ = elementOf(ctxt, node);
        std::sort(elements, end, precedes);
        unsigned char* target = sorted;
        for (const Element* element = elements; element != end; ++element) {
            target = std::copy_n(element->octets, element->length, target);
        }
        std::memcpy(xe_getp(ctxt), sorted, total);
    }
    rtMemHeapFreePtr(&ctxt->typeMemHeap, elements);
    rtMemHeapFreePtr(&ctxt->typeMemHeap, sorted);
    return elements && sorted ? RTS_OK : RTS_NO_MEMORY;
}

void consume(ASN1CTXT* ctxt, const rtSList* list) {
    for (const rtSListNode* node = list->head; node; node = node->next) {
        rtMemHeapFreePtr(&ctxt->typeMemHeap, node->data);
    }
    rtSList nodes = *list;  // the caller's head stays as it is
    rtSListFree(&nodes);
}

}  // namespace

extern "C" {

int xe_derCanonicalSort(ASN1CTXT* ctxt, rtSList* list) {
    if (!list || !list->head) return 0;
    std::uint32_t count = 0;
    const int total = measureElements(ctxt, list, &count);
    if (total < 0) return total;
    if (!isInOrder(ctxt, list)) {
        const int status = rewriteInOrder(ctxt, list, count, static_cast<std::uint32_t>(total));
        if (status != RTS_OK) return status;
    }
    consume(ctxt, list);
    return total;
}

}  // extern "C"
