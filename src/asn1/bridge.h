// The bridge between value objects and their encoded bytes: the one road on which a value class is encoded or
// decoded.
//
// A traits struct ties an ASN.1 record to a value and has these static members:
//
//   ASN1_T                                  the record
//   set(ASN1CTXT*, ASN1_T&, Value const&)   fills a record with memory of the context, or throws
//   get(ASN1_T const&, Value&)              overwrites the value, which keeps no pointer into the record
//   copy(ASN1CTXT*, ASN1_T const&, ASN1_T&) a deep copy of a record, with memory of the context
//   encode(ASN1BEREncodeBuffer&, ASN1_T&)   the encoded length, or a negative status
//   decode(ASN1BERDecodeBuffer&, ASN1_T&)   a negative status on failure
//
// A road builds its buffers and contexts on the stack, so calls share nothing and nothing outlives them but
// the result. All failures are ATL::CAtlException: 0x80093101 for whatever status the runtime gave, and what
// `set` and `get` throw. Memory that a context does not have is thus 0x80093106 where a record is filled,
// copied or put in order, and 0x80093101 where the codec has a status for it, or where a traits struct says
// so; std::bad_alloc comes from operator new alone.
#ifndef MIRVANE_ASN1_BRIDGE_H
#define MIRVANE_ASN1_BRIDGE_H

#include <climits>
#include <memory>
#include <type_traits>
#include <utility>

#include "asn1rt/message_buffer.h"
#include "base/blob.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {

// Gives an optional member a new value: a copy of `*src`, or nothing for null. `src` may be what `dst` holds.
template <typename T>
void copy_to_auto_ptr(std::unique_ptr<T>& dst, std::type_identity_t<T> const* src) {
    dst = src != nullptr ? std::make_unique<T>(*src) : nullptr;
}

namespace road {

// Runs the steps of a road; a status that the runtime's classes throw is not passed on.
template <typename Steps>
auto run(Steps steps) {
    try {
        return steps();
    } catch (ASN1RTLException const&) {
        failure::raise(failure::asn1);
    }
}

// The length of a message as the runtime holds it. Throws 0x80093101 for a blob that is longer than any
// message.
inline int messageLength(CBlob const& blob) {
    if (blob.cbData() > INT_MAX) failure::raise(failure::asn1);
    return static_cast<int>(blob.cbData());
}

template <typename Traits>
CBlob encode(ASN1BEREncodeBuffer& buffer, typename Traits::ASN1_T& record) {
    const int length = Traits::encode(buffer, record);
    if (length < 0) failure::raise(failure::asn1);
    return CBlob(buffer.getMsgPtr(), static_cast<unsigned long>(length));
}

template <typename Traits>
void decode(ASN1BERDecodeBuffer& buffer, typename Traits::ASN1_T& record) {
    if (Traits::decode(buffer, record) < 0) failure::raise(failure::asn1);
}

}  // namespace road

// The encoded form of a value.
template <typename Traits, typename Value>
CBlob asn1Encode(Value const& value) {
    return road::run([&] {
        ASN1BEREncodeBuffer output;
        ASN1BERDecodeBuffer memory;  // nothing is decoded: the record lives in its context
        typename Traits::ASN1_T record{};
        Traits::set(memory.getCtxtPtr(), record, value);
        return road::encode<Traits>(output, record);
    });
}

// Reads the value at the start of the blob. Bytes behind it are ignored. `value` is untouched if decoding
// fails.
template <typename Traits, typename Value>
void asn1Decode(CBlob const& blob, Value& value) {
    road::run([&] {
        ASN1BERDecodeBuffer input(blob.pbData(), road::messageLength(blob));
        typename Traits::ASN1_T record{};
        road::decode<Traits>(input, record);
        Traits::get(record, value);
    });
}

// The encoded form of a record, which stays as it is: a control is bound to records that may change, but
// encoding only reads them.
template <typename Traits>
CBlob asn1EncodeT(typename Traits::ASN1_T const& record) {
    return road::run([&] {
        ASN1BEREncodeBuffer output;
        return road::encode<Traits>(output, const_cast<typename Traits::ASN1_T&>(record));
    });
}

// Reads the value at the start of the blob into a record that lives in the caller's context. `record` is
// untouched if decoding fails.
template <typename Traits>
void asn1DecodeT(CBlob const& blob, ASN1CTXT* ctxt, typename Traits::ASN1_T& record) {
    road::run([&] {
        ASN1BERDecodeBuffer input(blob.pbData(), road::messageLength(blob));
        rtCtxtSetFlag(input.getCtxtPtr(), ASN1_NO_COPY);  // one deep copy is enough
        typename Traits::ASN1_T decoded{};
        road::decode<Traits>(input, decoded);
        Traits::copy(ctxt, decoded, record);
    });
}

}  // namespace Mirvane::ASN1

#endif
