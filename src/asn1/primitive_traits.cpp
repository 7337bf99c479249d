#include "asn1/primitive_traits.h"

#include <cwchar>
#include <string>

#include "asn1/context_handle.h"
#include "asn1/context_memory.h"
#include "asn1/object_identifier_text.h"
#include "asn1rt/bit_string.h"
#include "asn1rt/char_string.h"
#include "asn1rt/copy.h"
#include "asn1rt/open_type.h"
#include "asn1rt/text.h"
#include "asn1rt/universal_tags.h"
#include "base/exception.h"

namespace Mirvane::ASN1 {
namespace {

// The copy functions of the runtime return 0 when memory fails.
void requireCopy(int result) {
    if (result == 0) failure::raise(failure::contextMemory);
}

// The context of a buffer that has read the header of its message.
ASN1CTXT* readied(ASN1BERDecodeBuffer& buffer) {
    buffer.init();
    return buffer.getCtxtPtr();
}

}  // namespace

void ASN1IA5String_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, char const* text) {
    rec = copyText(ctxt, text);
}

void ASN1IA5String_traits::get(ASN1_T const& rec, CStringProxy& text) {
    text = rec;
}

void ASN1IA5String_traits::copy(ASN1CTXT*, ASN1_T const& src, ASN1_T& dst) {
    dst = src;
}

int ASN1IA5String_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return xe_charstr(buffer.getCtxtPtr(), rec, ASN1EXPL, TAG_IA5_STRING);
}

int ASN1IA5String_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return xd_charstr(readied(buffer), &rec, ASN1EXPL, TAG_IA5_STRING, 0);
}

void ASN1UTF8String_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, wchar_t const* text) {
    if (text == nullptr) failure::raise(failure::invalidArgument);
    const std::wstring_view characters(text, std::wcslen(text) + 1);  // the terminator is converted too
    std::uint64_t size = 0;
    for (const wchar_t character : characters) {
        size += static_cast<std::uint64_t>(rtUTF8CharSize(static_cast<std::uint32_t>(character)));
    }
    auto* const utf8 = static_cast<char*>(allocate(ctxt, size));
    if (rtWCSToUTF8(ctxt, characters.data(), characters.size(), utf8, size) < 0) {
        failure::raise(failure::invalidArgument);
    }
    rec = utf8;
}

void ASN1UTF8String_traits::get(ASN1_T const& rec, CWStringProxy& text) {
    char const* const utf8 = rec != nullptr ? rec : "";
    const int count = rtUTF8Len(utf8);
    if (count < 0) failure::raise(failure::asn1);
    ctxt_handle context;
    if (!context.init()) failure::raise(failure::contextMemory);
    std::wstring characters(static_cast<std::size_t>(count), 0);
    if (rtUTF8ToWCS(context.get(), utf8, characters.data(), characters.size()) < 0)
        failure::raise(failure::asn1);
    text = characters.c_str();
}

void ASN1UTF8String_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    requireCopy(rtCopyCharStr(ctxt, src, &dst));
}

int ASN1UTF8String_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return xe_charstr(buffer.getCtxtPtr(), rec, ASN1EXPL, TAG_UTF8_STRING);
}

int ASN1UTF8String_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return xd_charstr(readied(buffer), &rec, ASN1EXPL, TAG_UTF8_STRING, 0);
}

void ASN1TObjId_traits::set(ASN1CTXT*, ASN1_T& rec, char const* text) {
    if (str2oid(text, &rec) != 0) failure::raise(failure::invalidArgument);
}

void ASN1TObjId_traits::get(ASN1_T const& rec, CStringProxy& text) {
    text = toOID(rec);
}

void ASN1TObjId_traits::copy(ASN1CTXT*, ASN1_T const& src, ASN1_T& dst) {
    dst = src;
}

int ASN1TObjId_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return xe_objid(buffer.getCtxtPtr(), &rec, ASN1EXPL);
}

int ASN1TObjId_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return xd_objid(readied(buffer), &rec, ASN1EXPL, 0);
}

template <typename Record>
void OctetsTraits<Record>::set(ASN1CTXT* ctxt, Record& rec, CBlob const& value) {
    rec.data = copyOctets(ctxt, value.pbData(), value.cbData());
    rec.numocts = static_cast<std::uint32_t>(value.cbData());
}

template <typename Record>
void OctetsTraits<Record>::get(Record const& rec, CBlob& value) {
    value.assign(rec.data, rec.numocts);
}

template struct OctetsTraits<ASN1TDynOctStr>;
template struct OctetsTraits<ASN1OpenType>;

void ASN1TDynOctStr_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    requireCopy(rtCopyDynOctStr(ctxt, &src, &dst));
}

int ASN1TDynOctStr_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return xe_octstr(buffer.getCtxtPtr(), rec.data, rec.numocts, ASN1EXPL);
}

int ASN1TDynOctStr_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return xd_octstr(readied(buffer), &rec.data, &rec.numocts, ASN1EXPL, 0);
}

void ASN1TOpenType_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    requireCopy(rtCopyOpenType(ctxt, &src, &dst));
}

int ASN1TOpenType_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return xe_OpenType(buffer.getCtxtPtr(), rec.data, rec.numocts);
}

int ASN1TOpenType_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return xd_OpenType(readied(buffer), &rec.data, &rec.numocts);
}

void ASN1TDynBitStr_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CBlob const& value) {
    if (value.cbData() > UINT32_MAX / 8) failure::raise(failure::contextMemory);
    rec.data = copyOctets(ctxt, value.pbData(), value.cbData());
    rec.numbits = static_cast<std::uint32_t>(value.cbData() * 8);
}

void ASN1TDynBitStr_traits::get(ASN1_T const& rec, CBlob& value) {
    value.assign(rec.data, (std::uint64_t{rec.numbits} + 7) / 8);
}

void ASN1TDynBitStr_traits::copy(ASN1CTXT* ctxt, ASN1_T const& src, ASN1_T& dst) {
    requireCopy(rtCopyDynBitStr(ctxt, &src, &dst));
}

int ASN1TDynBitStr_traits::encode(ASN1BEREncodeBuffer& buffer, ASN1_T& rec) {
    return xe_bitstr(buffer.getCtxtPtr(), rec.data, rec.numbits, ASN1EXPL);
}

int ASN1TDynBitStr_traits::decode(ASN1BERDecodeBuffer& buffer, ASN1_T& rec) {
    return xd_bitstr(readied(buffer), &rec.data, &rec.numbits, ASN1EXPL, 0);
}

}  // namespace Mirvane::ASN1
