// The two roads that every message class travels between an object and its bytes. All that a call needs
// stands on its stack: one buffer with its context, the record and its control object, which end in reverse
// order whatever is thrown. Not part of the interface.
#ifndef MIRVANE_OCSP_MESSAGE_ROAD_H
#define MIRVANE_OCSP_MESSAGE_ROAD_H

#include "asn1/bridge.h"
#include "asn1/context_memory.h"

namespace Mirvane::PKI::OCSP::road {

// `fill` puts the object into the record, with memory of the context that it is given. An encoding of no
// octets is a failure as well: 0x80093101. Failures of memory are told apart as in asn1/bridge.h.
template <typename Control, typename Record, typename Fill>
CBlob encode(Fill fill) {
    return ASN1::road::run([&] {
        ASN1BEREncodeBuffer buffer;
        Record record;
        fill(buffer.getCtxtPtr(), record);
        Control control(buffer, record);
        const int length = ASN1::inContextMemory([&] { return control.Encode(); });
        if (length < 1) failure::raise(failure::asn1);
        return CBlob(buffer.getMsgPtr(), static_cast<unsigned long>(length));
    });
}

// `decode` fills the record from the buffer and gives a status; `read` takes the object out of the record. A
// blob without bytes throws `emptyCode`, one that does not decode 0x80093101, both before `read` is called.
// Bytes behind the first value are ignored.
template <typename Record, typename Decode, typename Read>
void decodeBy(CBlob const& blob, ATL::HRESULT emptyCode, Decode decode, Read read) {
    if (blob.cbData() == 0 || !blob.pbData()) failure::raise(emptyCode);
    ASN1::road::run([&] {
        ASN1BERDecodeBuffer buffer(blob.pbData(), ASN1::road::messageLength(blob));
        Record record;
        if (decode(buffer, record) < 0) failure::raise(failure::asn1);
        read(record);
    });
}

// The same with the decoder of the record's control class.
template <typename Control, typename Record, typename Read>
void decode(CBlob const& blob, ATL::HRESULT emptyCode, Read read) {
    decodeBy<Record>(
        blob, emptyCode,
        [](ASN1BERDecodeBuffer& buffer, Record& record) { return Control(buffer, record).Decode(); }, read);
}

}  // namespace Mirvane::PKI::OCSP::road

#endif
