// The encoder: the last field first, every value before its length and tag.
#include <new>

#include "asn1data/constraint.h"
#include "asn1data/engine.h"
#include "asn1data/record_access.h"
#include "asn1rt/ber_encode.h"
#include "asn1rt/big_integer.h"
#include "asn1rt/big_integer_codec.h"
#include "asn1rt/bit_string.h"
#include "asn1rt/canonical_sort.h"
#include "asn1rt/char_string.h"
#include "asn1rt/cursor.h"
#include "asn1rt/growth.h"
#include "asn1rt/open_type.h"
#include "asn1rt/small_integer.h"
#include "asn1rt/universal_tags.h"

namespace asn1data {
namespace {

constexpr ASN1TAG kSequenceTag = TM_CONSTRUCTED | TAG_SEQUENCE;
constexpr ASN1TAG kSetTag = TM_CONSTRUCTED | TAG_SET;

class Encoder {
  public:
    explicit Encoder(ASN1CTXT* ctxt) : mContext(ctxt) {}

    // `entry` is what the table of the enclosing record says of an open value.
    int encode(const TypeDescriptor& type, const void* value, ASN1TagType tagging, const Place& place,
               const ObjectEntry* entry = nullptr) {
        const int result = encodeValue(type, value, tagging, entry);
        if (result >= 0) return result;
        if (result == RTS_CONSTRAINT && mContext->errInfo.status == RTS_OK) {
            return recordConstraint(mContext, type, value, place);
        }
        return asn1rt::record(mContext, result);
    }

  private:
    int encodeValue(const TypeDescriptor& type, const void* value, ASN1TagType tagging,
                    const ObjectEntry* entry);
    int encodeSequence(const TypeDescriptor& type, const void* record, ASN1TagType tagging);
    int encodeField(const TypeDescriptor& type, const FieldDescriptor& field, const void* record,
                    const ObjectEntry* entry);
    int encodeChoice(const TypeDescriptor& type, const void* record, ASN1TagType tagging);
    int encodeList(const TypeDescriptor& type, const void* record, ASN1TagType tagging,
                   const ObjectEntry* entry);
    int encodeArray(const TypeDescriptor& type, const void* record, ASN1TagType tagging);
    int encodeObject(const Asn1TObject& object, const ObjectEntry* entry);
    int encodeInlineBits(const TypeDescriptor& type, const void* value, ASN1TagType tagging);
    int encodeInlineOctets(const TypeDescriptor& type, const void* value, ASN1TagType tagging);
    int tagged(ASN1TAG tag, Tagging tagging, const TypeDescriptor& type, const void* value,
               const Place& place, const ObjectEntry* entry);
    int withTag(ASN1TAG tag, int length, ASN1TagType tagging) {
        return tagging == ASN1EXPL ? xe_tag_len(mContext, tag, length) : length;
    }

    ASN1CTXT* mContext;
};

bool isPresent(const TypeDescriptor& type, const FieldDescriptor& field, const void* record, ASN1CTXT* ctxt) {
    const void* value = memberAt(record, field.offset);
    switch (field.presence) {
        case Presence::Required:
            return true;
        case Presence::Optional:
            return presenceBits(type, record) >> field.bit & 1;
        case Presence::DefaultInteger:
            return rtBigIntStrCompare(ctxt, *static_cast<const char* const*>(value), field.defaultText) != 0;
        case Presence::DefaultNumber:
            break;
    }
    switch (field.type->kind) {
        case Kind::Boolean:
            return (*static_cast<const unsigned char*>(value) != 0) != (field.defaultNumber != 0);
        case Kind::Uint16:
            return *static_cast<const std::uint16_t*>(value) != field.defaultNumber;
        default:
            return *static_cast<const std::int32_t*>(value) != field.defaultNumber;
    }
}

// Remembers where the elements of a SET OF lie, and puts them in order at the end. A single one is in order.
class ElementOrder {
  public:
    ElementOrder(ASN1CTXT* ctxt, bool wanted) : mContext(ctxt), mWanted(wanted) {
        rtSListInitEx(ctxt, &mList);
    }

    void add(int length) {
        if (!mWanted) return;
        auto* location = static_cast<ASN1BufLocDescr*>(
            rtMemHeapAlloc(&mContext->typeMemHeap, static_cast<std::int32_t>(sizeof(ASN1BufLocDescr))));
        if (!location) throw std::bad_alloc();
        xe_getBufLocDescr(mContext, length, location);
        if (!rtSListAppend(&mList, location)) throw std::bad_alloc();
    }

    int finish(int length) { return mWanted ? xe_derCanonicalSort(mContext, &mList) : length; }

  private:
    ASN1CTXT* mContext;
    bool mWanted;
    rtSList mList;
};

int Encoder::encodeValue(const TypeDescriptor& type, const void* value, ASN1TagType tagging,
                         const ObjectEntry* entry) {
    if (!meetsConstraint(type, value)) return RTS_CONSTRAINT;
    switch (type.kind) {
        case Kind::Boolean:
            return xe_boolean(mContext, static_cast<const unsigned char*>(value), tagging);
        case Kind::Integer:
            return xe_integer(mContext, static_cast<const std::int32_t*>(value), tagging);
        case Kind::Unsigned:
            return xe_unsigned(mContext, static_cast<const std::uint32_t*>(value), tagging);
        case Kind::Uint16:
            return xe_uint16(mContext, static_cast<const std::uint16_t*>(value), tagging);
        case Kind::BigInteger:
            return xe_bigint(mContext, *static_cast<const char* const*>(value), tagging);
        case Kind::Enumerated:
            if (!isEnumerator(type, *static_cast<const std::uint32_t*>(value))) return RTS_BAD_ENUM;
            return xe_enum(mContext, static_cast<const std::int32_t*>(value), tagging);
        case Kind::Null:
            return xe_null(mContext, tagging);
        case Kind::ObjectIdentifier:
            return xe_objid(mContext, static_cast<const ASN1OBJID*>(value), tagging);
        case Kind::OctetString: {
            const auto& string = *static_cast<const ASN1TDynOctStr*>(value);
            return xe_octstr(mContext, string.data, string.numocts, tagging);
        }
        case Kind::InlineOctetString:
            return encodeInlineOctets(type, value, tagging);
        case Kind::BitString: {
            const auto& string = *static_cast<const ASN1TDynBitStr*>(value);
            return xe_bitstr(mContext, string.data, string.numbits, tagging);
        }
        case Kind::InlineBitString:
            return encodeInlineBits(type, value, tagging);
        case Kind::CharString:
            return xe_charstr(mContext, *static_cast<const char* const*>(value), tagging, type.tag);
        case Kind::BmpString:
            return xe_16BitCharStr(mContext, static_cast<const Asn116BitCharString*>(value), tagging,
                                   type.tag);
        case Kind::UniversalString:
            return xe_32BitCharStr(mContext, static_cast<const Asn132BitCharString*>(value), tagging,
                                   type.tag);
        case Kind::OpenType: {
            const auto& element = *static_cast<const ASN1OpenType*>(value);
            return xe_OpenType(mContext, element.data, element.numocts);
        }
        case Kind::TableOpenType:
            return encodeObject(*static_cast<const Asn1TObject*>(value), entry);
        case Kind::RawContent: {
            const auto& content = *static_cast<const ASN1TDynOctStr*>(value);
            return content.data ? xe_memcpy(mContext, content.data, content.numocts) : 0;
        }
        case Kind::Sequence:
        case Kind::Set:
            return encodeSequence(type, value, tagging);
        case Kind::Choice:
            return encodeChoice(type, value, tagging);
        case Kind::List:
            return encodeList(type, value, tagging, entry);
        case Kind::Array:
            return encodeArray(type, value, tagging);
    }
    return RTS_NOT_SUPPORTED;
}

int Encoder::encodeInlineOctets(const TypeDescriptor& type, const void* value, ASN1TagType tagging) {
    const auto& string = *static_cast<const InlineString*>(value);
    if (string.count > type.capacity) return RTS_CONSTRAINT;
    return xe_octstr(mContext, string.data, string.count, tagging);
}

// As many bits as the record says go out, also such as DER would cut (X.690, 11.2.2).
int Encoder::encodeInlineBits(const TypeDescriptor& type, const void* value, ASN1TagType tagging) {
    const auto& string = *static_cast<const InlineString*>(value);
    if (string.count > std::uint64_t{type.capacity} * 8) return RTS_CONSTRAINT;
    return xe_bitstr(mContext, string.data, string.count, tagging);
}

// The record of a known type is written in place; the raw octets beside it stay as they are.
int Encoder::encodeObject(const Asn1TObject& object, const ObjectEntry* entry) {
    // What is resolved has an entry. NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
    if (isResolved(entry, object)) return encode(*entry->value, object.decoded, ASN1EXPL, Place{});
    return xe_OpenType(mContext, object.data, object.numocts);
}

int Encoder::tagged(ASN1TAG tag, Tagging tagging, const TypeDescriptor& type, const void* value,
                    const Place& place, const ObjectEntry* entry) {
    const int length = encode(type, value, tagging == Tagging::Implicit ? ASN1IMPL : ASN1EXPL, place, entry);
    return tagging == Tagging::None ? length : xe_tag_len(mContext, tag, length);
}

int Encoder::encodeField(const TypeDescriptor& type, const FieldDescriptor& field, const void* record,
                         const ObjectEntry* entry) {
    const Place place{Place::Kind::Field, field.name};
    const TableConstraint* table = type.table;
    if (!table || table->form != TableConstraint::Form::OctetString || field.offset != table->octetsOffset) {
        return tagged(field.tag, field.tagging, *field.type, memberAt(record, field.offset), place, entry);
    }
    const auto& object = member<Asn1TObject>(record, table->objectOffset);
    if (!isResolved(entry, object)) {
        return tagged(field.tag, field.tagging, *field.type, memberAt(record, field.offset), place, nullptr);
    }
    int length = encode(*entry->value, object.decoded, ASN1EXPL, Place{});
    if (field.tagging != Tagging::Implicit) length = xe_tag_len(mContext, TAG_OCTET_STRING, length);
    return field.tagging == Tagging::None ? length : xe_tag_len(mContext, field.tag, length);
}

// A SET is written like a SEQUENCE, in the order of declaration.
int Encoder::encodeSequence(const TypeDescriptor& type, const void* record, ASN1TagType tagging) {
    const ObjectEntry* entry =
        type.table ? findObject(*type.table->objects, typeIdentifier(*type.table, record)) : nullptr;
    std::int64_t total = 0;
    if (isExtensible(type)) {
        const int extensions = xe_OpenTypeExt(mContext, &member<_Asn1RTDList>(record, type.bodyOffset));
        if (extensions < 0) return extensions;
        total = extensions;
    }
    for (std::uint32_t i = type.fieldCount; i-- > 0;) {
        const FieldDescriptor& field = type.fields[i];
        if (!isPresent(type, field, record, mContext)) continue;
        const int length = encodeField(type, field, record, entry);
        if (length < 0) return length;
        total += length;
    }
    if (total > INT32_MAX) return RTS_BAD_LENGTH;
    return withTag(type.kind == Kind::Set ? kSetTag : kSequenceTag, static_cast<int>(total), tagging);
}

int Encoder::encodeChoice(const TypeDescriptor& type, const void* record, ASN1TagType tagging) {
    const FieldDescriptor* chosen = chosenAlternative(type, record);
    if (!chosen) return RTS_BAD_CHOICE;
    const void* value = alternativeValue(type, record, *chosen->type);
    if (!value && chosen->type->kind != Kind::Null) return RTS_BAD_VALUE;
    const Place place{Place::Kind::Alternative, chosen->name};
    const int length = tagged(chosen->tag, chosen->tagging, *chosen->type, value, place, nullptr);
    return type.outerTag == kNoTag ? length : withTag(type.outerTag, length, tagging);
}

int Encoder::encodeList(const TypeDescriptor& type, const void* record, ASN1TagType tagging,
                        const ObjectEntry* entry) {
    const auto& list = member<_Asn1RTDList>(record, type.headOffset);
    ElementOrder order(mContext, type.setOf && list.head != list.tail);
    std::int64_t total = 0;
    for (const _Asn1RTDListNode* node = list.tail; node; node = node->prev) {
        if (!node->data) return RTS_BAD_VALUE;
        asn1rt::growAhead(mContext);
        const int length = encode(*type.element, node->data, ASN1EXPL, Place{Place::Kind::Element}, entry);
        if (length < 0) return length;
        order.add(length);
        total += length;
    }
    if (total > INT32_MAX) return RTS_BAD_LENGTH;
    return withTag(type.tag, order.finish(static_cast<int>(total)), tagging);
}

int Encoder::encodeArray(const TypeDescriptor& type, const void* record, ASN1TagType tagging) {
    const auto count = member<std::uint32_t>(record, type.headOffset);
    const void* elements = arrayElements(type, record);
    if (count > 0 && !elements) return RTS_BAD_VALUE;
    if (type.capacity > 0 && count > type.capacity) return RTS_CONSTRAINT;
    ElementOrder order(mContext, type.setOf && count > 1);
    std::int64_t total = 0;
    for (std::uint32_t i = count; i-- > 0;) {
        const void* element = static_cast<const char*>(elements) + std::size_t{i} * type.element->size;
        asn1rt::growAhead(mContext);
        const int length = encode(*type.element, element, ASN1EXPL, Place{Place::Kind::Element});
        if (length < 0) return length;
        order.add(length);
        total += length;
    }
    if (total > INT32_MAX) return RTS_BAD_LENGTH;
    return withTag(type.tag, order.finish(static_cast<int>(total)), tagging);
}

// A buffer of its own for a context, which has its former one back in the end.
class InnerBuffer {
  public:
    explicit InnerBuffer(ASN1CTXT* ctxt) : mContext(ctxt) {
        rtCopyContext(&mOuter, ctxt);
        mStatus = xe_setp(ctxt, nullptr, 0);
    }
    ~InnerBuffer() {
        if (mStatus == RTS_OK) xe_free(mContext);
        rtCopyContext(mContext, &mOuter);
    }
    InnerBuffer(const InnerBuffer&) = delete;
    InnerBuffer& operator=(const InnerBuffer&) = delete;

    int status() const { return mStatus; }

  private:
    ASN1CTXT* mContext;
    ASN1CTXT mOuter{};
    int mStatus;
};

// The octets of one resolved object, in memory of their exact size.
int renewRawOctets(ASN1CTXT* ctxt, const TypeDescriptor& type, Asn1TObject& object) {
    const InnerBuffer buffer(ctxt);
    if (buffer.status() != RTS_OK) return asn1rt::record(ctxt, buffer.status());
    const int length = encode(ctxt, type, object.decoded, ASN1EXPL);
    if (length < 0) return length;
    void* octets = rtMemHeapAlloc(&ctxt->typeMemHeap, length);
    if (!octets) return asn1rt::record(ctxt, RTS_NO_MEMORY);
    std::memcpy(octets, xe_getp(ctxt), static_cast<std::size_t>(length));
    static_cast<ASN1OpenType&>(object) = {static_cast<std::uint32_t>(length),
                                          static_cast<const unsigned char*>(octets)};
    return RTS_OK;
}

}  // namespace

int encode(ASN1CTXT* ctxt, const TypeDescriptor& type, const void* value, ASN1TagType tagging) {
    return Encoder(ctxt).encode(type, value, tagging, Place{});
}

int encodeTable(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value) {
    const TableConstraint& table = *type.table;
    const ObjectEntry* entry = findObject(*table.objects, typeIdentifier(table, value));
    if (!entry || !tableValuePresent(type, value)) return RTS_OK;
    if (table.form == TableConstraint::Form::List) {
        for (auto* node = member<_Asn1RTDList>(value, table.objectOffset).head; node; node = node->next) {
            auto& object = *static_cast<Asn1TObject*>(node->data);
            if (!isResolved(entry, object)) continue;
            if (int status = renewRawOctets(ctxt, *entry->value, object); status != RTS_OK) return status;
        }
        return RTS_OK;
    }
    auto& object = member<Asn1TObject>(value, table.objectOffset);
    if (!isResolved(entry, object)) return RTS_OK;
    if (int status = renewRawOctets(ctxt, *entry->value, object); status != RTS_OK) return status;
    if (table.form == TableConstraint::Form::OctetString) {
        member<ASN1TDynOctStr>(value, table.octetsOffset) = {object.numocts, object.data};
    }
    return RTS_OK;
}

}  // namespace asn1data
