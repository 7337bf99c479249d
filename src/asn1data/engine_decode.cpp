// The decoder: one pass over the octets, guided by descriptors.
#include <cstddef>
#include <cstring>

#include "asn1data/constraint.h"
#include "asn1data/engine.h"
#include "asn1data/engine_decode_primitive.h"
#include "asn1data/engine_elementwise.h"
#include "asn1data/passing_memory.h"
#include "asn1data/record_access.h"
#include "asn1rt/allocate.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/cursor.h"
#include "asn1rt/open_type.h"

namespace asn1data {
namespace {

// Where the content of a constructed value began, and its length or ASN1_INDEFLEN.
struct Content {
    std::uint32_t start;
    int length;
};

bool readsOwnEndOfContents(Kind kind) {
    return kind != Kind::Sequence && kind != Kind::Set && kind != Kind::List && kind != Kind::Array;
}

// These stand last in Kind.
bool isConstructedKind(Kind kind) {
    return kind >= Kind::Sequence;
}
static_assert(Kind::RawContent < Kind::Sequence && Kind::Sequence < Kind::Set && Kind::Set < Kind::Choice &&
              Kind::Choice < Kind::List && Kind::List < Kind::Array);

// What a decode does not keep.
struct Dropping {
    const ElementTaker* taker = nullptr;
    bool resolved = false;  // the values that tables resolve
};

class Decoder {
  public:
    explicit Decoder(ASN1CTXT* ctxt, Dropping dropping = {}) : mContext(ctxt), mDropping(dropping) {}

    [[gnu::always_inline]] int decode(const TypeDescriptor& type, void* value, ASN1TagType tagging,
                                      int length, const Place& place);
    int resolve(const TypeDescriptor& type, void* record);

  private:
    [[gnu::cold, gnu::noinline]] int failed(const TypeDescriptor& type, const void* value, int status,
                                            const Place& place);
    // Not inline, so that the many values that are primitive don't pay for what constructed ones need.
    [[gnu::noinline]] int decodeConstructed(const TypeDescriptor& type, void* value, ASN1TagType tagging,
                                            int length);
    int decodeSequence(const TypeDescriptor& type, void* record, const Content& content);
    int decodeSet(const TypeDescriptor& type, void* record, const Content& content);
    int decodeChoice(const TypeDescriptor& type, void* record, ASN1TagType tagging);
    int decodeList(const TypeDescriptor& type, void* record, const Content& content);
    bool isTaken(const void* list) const;
    bool keepsElements(const TypeDescriptor& type, const void* list) const;
    int decodeArray(const TypeDescriptor& type, void* record, const Content& content);
    int decodeElements(const TypeDescriptor& type, void* elements, std::uint32_t slots,
                       const Content& content, std::uint32_t* count);
    [[gnu::always_inline]] int decodeTagged(const TypeDescriptor& parent, const FieldDescriptor& field,
                                            void* value, int length, const Place& place);
    int decodeRequired(const TypeDescriptor& parent, const FieldDescriptor& field, void* record);
    int decodeOptional(const TypeDescriptor& parent, const FieldDescriptor& field, void* record,
                       bool* present);
    int decodeAlternative(const TypeDescriptor& choice, const FieldDescriptor& field, void* record,
                          std::uint32_t start, int length);
    const ObjectEntry* entryOf(const ObjectSet& objects, const ASN1OBJID& id);
    int resolveObject(const ObjectEntry& entry, Asn1TObject& object);

    void* newPart(std::uint64_t size);
    bool hasEnded(const Content& content) const;
    bool fits(const TypeDescriptor& type);
    int fail(int status) { return asn1rt::record(mContext, status); }

    ASN1CTXT* mContext;
    Dropping mDropping;
    int mLevel = 0;
    Passing mPassing;
    const ObjectSet* mLastObjects = nullptr;
    const ObjectEntry* mLastEntry = nullptr;  // of mLastObjects
};

// A part of the value that is decoded, zeroed; null if there is no memory.
void* Decoder::newPart(std::uint64_t size) {
    void* const passing = mPassing.applies() ? mPassing.room.take(size) : nullptr;
    if (passing) return std::memset(passing, 0, size);
    return rtMemHeapAllocZ(&mContext->typeMemHeap, static_cast<std::int32_t>(size));
}

bool Decoder::hasEnded(const Content& content) const {
    if (content.length == ASN1_INDEFLEN) {
        return asn1rt::room(mContext) < 2 || asn1rt::atEndOfContents(mContext);
    }
    return static_cast<std::int64_t>(mContext->buffer.byteIndex - content.start) >= content.length ||
           asn1rt::room(mContext) == 0;
}

// Whether a whole tag begins a value of this type.
bool matchesTag(const TypeDescriptor& type, ASN1TAG tag) {
    if (type.outerTag != kNoTag) return tag == type.outerTag;
    if (type.kind == Kind::OpenType || type.kind == Kind::TableOpenType) {
        return type.tag == kNoTag || tag == type.tag;
    }
    if (type.kind != Kind::Choice) return tag == type.tag;
    for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
        const FieldDescriptor& field = type.fields[i];
        if (field.tag != kNoTag ? tag == field.tag : matchesTag(*field.type, tag)) return true;
    }
    return false;
}

bool matchesTag(const FieldDescriptor& field, ASN1TAG tag) {
    return field.tag != kNoTag ? tag == field.tag : matchesTag(*field.type, tag);
}

// Whether the next octet is one that the type's own decoder would take. That decides on an optional value
// without a tag of its own: a mismatch further in is a failure and not an absent value.
bool Decoder::fits(const TypeDescriptor& type) {
    const unsigned char octet = *asn1rt::cursor(mContext);
    switch (type.kind) {
        case Kind::Boolean:
        case Kind::Integer:
        case Kind::Unsigned:
        case Kind::Uint16:
        case Kind::BigInteger:
        case Kind::Enumerated:
        case Kind::Null:
        case Kind::ObjectIdentifier:
        case Kind::InlineOctetString:
        case Kind::InlineBitString:
            return octet == identifierOf(type.tag);
        case Kind::Choice:
        case Kind::OpenType:
        case Kind::TableOpenType:
            break;
        default:
            return (octet & 0xDF) == identifierOf(type.tag);
    }
    if (type.outerTag != kNoTag) return (octet & 0xDF) == identifierOf(type.outerTag);
    if (type.kind != Kind::Choice && type.tag == kNoTag) return true;
    // The tag alone decides: a length that is none is a failure of the value.
    ASN1BufferState start;
    xu_SaveBufferState(mContext, &start);
    ASN1TAG tag = 0;
    const int status = xd_tag(mContext, &tag);
    xu_RestoreBufferState(mContext, &start);
    return status == RTS_OK && matchesTag(type, tag);
}

inline int Decoder::decode(const TypeDescriptor& type, void* value, ASN1TagType tagging, int length,
                           const Place& place) {
    int status = RTS_OK;
    if (isConstructedKind(type.kind)) {
        if (mLevel == kMostLevels) return fail(RTS_NO_MEMORY);
        ++mLevel;
        status = decodeConstructed(type, value, tagging, length);
        --mLevel;
    } else {
        status = decodePrimitive(mContext, type, value, tagging, length, mPassing);
    }
    if (status == RTS_OK && (!type.hasBounds || meetsConstraint(type, value))) return RTS_OK;
    return failed(type, value, status, place);
}

// A decode whose status is not RTS_OK, or whose value is outside its bounds.
int Decoder::failed(const TypeDescriptor& type, const void* value, int status, const Place& place) {
    if (status == RTS_OK) return recordConstraint(mContext, type, value, place);
    // An array that gets no memory leaves it to what it stands in to record that.
    if (status == RTS_NO_MEMORY && type.kind == Kind::Array) return status;
    return fail(status);
}

int Decoder::decodeConstructed(const TypeDescriptor& type, void* value, ASN1TagType tagging, int length) {
    if (type.kind == Kind::Choice) return decodeChoice(type, value, tagging);
    if (tagging == ASN1EXPL) {
        if (int status = xd_match1(mContext, identifierOf(type.tag), &length); status != RTS_OK)
            return status;
    }
    const Content content{mContext->buffer.byteIndex, length};
    int status = RTS_OK;
    switch (type.kind) {
        case Kind::Sequence:
            status = decodeSequence(type, value, content);
            break;
        case Kind::Set:
            status = decodeSet(type, value, content);
            break;
        case Kind::List:
            status = decodeList(type, value, content);
            break;
        default:
            status = decodeArray(type, value, content);
    }
    if (status == RTS_OK && type.cmsEnd && tagging == ASN1EXPL && length == ASN1_INDEFLEN) {
        status = asn1rt::takeEndOfContents(mContext);
    }
    return status == RTS_OK && type.table ? resolve(type, value) : status;
}

bool hasDefault(const FieldDescriptor& field) {
    return field.presence >= Presence::DefaultNumber;
}

void setDefault(const FieldDescriptor& field, void* value) {
    if (field.presence == Presence::DefaultInteger) {
        *static_cast<const char**>(value) = field.defaultText;
        return;
    }
    switch (field.type->kind) {
        case Kind::Boolean:
            *static_cast<unsigned char*>(value) = static_cast<unsigned char>(field.defaultNumber);
            return;
        case Kind::Uint16:
            *static_cast<std::uint16_t*>(value) = static_cast<std::uint16_t>(field.defaultNumber);
            return;
        default:
            *static_cast<std::int32_t*>(value) = field.defaultNumber;
    }
}

// What is left out must not show what the record held before.
void clearRecord(const TypeDescriptor& type, void* record) {
    setPresenceBits(type, record, 0);
    for (std::uint32_t i = 0; type.hasDefaults && i < type.fieldCount; ++i) {
        if (hasDefault(type.fields[i])) setDefault(type.fields[i], memberAt(record, type.fields[i].offset));
    }
    if (isExtensible(type)) rtDListInit(&member<_Asn1RTDList>(record, type.bodyOffset));
}

// The value of a field or alternative whose tag, if it has one of its own, has been read with its length.
// Under an explicit tag that length is no bound on the value: what is left is read as the next field, which
// is meant. A type of the CMS form takes the end-of-contents that belongs to such a tag, unless the value was
// a string, which took it itself.
inline int Decoder::decodeTagged(const TypeDescriptor& parent, const FieldDescriptor& field, void* value,
                                 int length, const Place& place) {
    const bool implicit = field.tagging == Tagging::Implicit;
    const int status = decode(*field.type, value, implicit ? ASN1IMPL : ASN1EXPL, length, place);
    if (status != RTS_OK || !parent.cmsEnd || length != ASN1_INDEFLEN || field.tagging == Tagging::None)
        return status;
    if (implicit && readsOwnEndOfContents(field.type->kind)) return status;
    return asn1rt::takeEndOfContents(mContext);
}

int Decoder::decodeRequired(const TypeDescriptor& parent, const FieldDescriptor& field, void* record) {
    int length = 0;
    if (field.tagging != Tagging::None) {
        if (int status = xd_match1(mContext, identifierOf(field.tag), &length); status != RTS_OK)
            return status;
    }
    return decodeTagged(parent, field, memberAt(record, field.offset), length,
                        Place{Place::Kind::Field, field.name});
}

int Decoder::decodeOptional(const TypeDescriptor& parent, const FieldDescriptor& field, void* record,
                            bool* present) {
    const bool tagged = field.tagging != Tagging::None;
    *present = tagged ? (*asn1rt::cursor(mContext) & 0xDF) == identifierOf(field.tag) : fits(*field.type);
    if (!*present) return RTS_OK;
    int length = 0;
    if (tagged) {
        if (int status = xd_Tag1AndLen(mContext, &length); status != RTS_OK) return status;
    }
    const int status = decodeTagged(parent, field, memberAt(record, field.offset), length,
                                    Place{Place::Kind::Field, field.name});
    if (status == RTS_OK && field.presence == Presence::Optional) {
        setPresenceBits(parent, record, presenceBits(parent, record) | std::uint32_t{1} << field.bit);
    }
    return status;
}

int Decoder::decodeSequence(const TypeDescriptor& type, void* record, const Content& content) {
    clearRecord(type, record);
    std::uint32_t position = 0;
    std::uint32_t required = 0;
    while (!hasEnded(content)) {
        if (position == type.fieldCount) {
            if (!isExtensible(type)) return RTS_EXTRA_ELEMENT;
            const ASN1CCB parent{mContext->buffer.data + content.start, content.length};
            auto& extensions = member<_Asn1RTDList>(record, type.bodyOffset);
            if (int status = xd_OpenTypeExt(mContext, &parent, XD_ANY_TAG, &extensions); status != RTS_OK)
                return status;
            break;
        }
        const FieldDescriptor& field = type.fields[position];
        int status = RTS_OK;
        if (field.presence == Presence::Required) {
            status = decodeRequired(type, field, record);
            ++required;
        } else {
            bool present = false;
            status = decodeOptional(type, field, record, &present);
        }
        if (status != RTS_OK) return status;
        ++position;
    }
    return required == type.requiredCount ? RTS_OK : RTS_MISSING_ELEMENT;
}

int Decoder::decodeSet(const TypeDescriptor& type, void* record, const Content& content) {
    clearRecord(type, record);
    std::uint64_t seen = 0;
    std::uint32_t required = 0;
    while (!hasEnded(content)) {
        const std::uint32_t start = mContext->buffer.byteIndex;
        ASN1TAG tag = 0;
        int length = 0;
        if (int status = xd_tag_len(mContext, &tag, &length, XD_ADVANCE); status != RTS_OK) return status;
        std::uint32_t position = 0;
        while (position < type.fieldCount && !matchesTag(type.fields[position], tag))
            ++position;
        if (position == type.fieldCount) return RTS_UNKNOWN_ELEMENT;
        const FieldDescriptor& field = type.fields[position];
        if (field.tagging == Tagging::None) mContext->buffer.byteIndex = start;
        const int status = decodeTagged(type, field, memberAt(record, field.offset), length,
                                        Place{Place::Kind::Field, field.name});
        if (status != RTS_OK) return status;
        // Only now: the second of two is decoded before it is refused.
        const std::uint64_t bit = std::uint64_t{1} << position;
        if (seen & bit) return RTS_DUPLICATE_ELEMENT;
        seen |= bit;
        if (field.presence == Presence::Required) {
            ++required;
        } else if (field.presence == Presence::Optional) {
            setPresenceBits(type, record, presenceBits(type, record) | std::uint32_t{1} << field.bit);
        }
    }
    return required == type.requiredCount ? RTS_OK : RTS_MISSING_ELEMENT;
}

int Decoder::decodeChoice(const TypeDescriptor& type, void* record, ASN1TagType tagging) {
    member<std::uint32_t>(record, type.headOffset) = 0;
    int outerLength = 0;
    if (type.outerTag != kNoTag && tagging == ASN1EXPL) {
        if (int status = xd_match1(mContext, identifierOf(type.outerTag), &outerLength); status != RTS_OK)
            return status;
    }
    const std::uint32_t start = mContext->buffer.byteIndex;
    ASN1TAG tag = 0;
    int length = 0;
    if (int status = xd_tag_len(mContext, &tag, &length, XD_ADVANCE); status != RTS_OK) return status;
    for (std::uint32_t i = 0; i < type.fieldCount; ++i) {
        if (!matchesTag(type.fields[i], tag)) continue;
        const int status = decodeAlternative(type, type.fields[i], record, start, length);
        if (status == RTS_OK) member<std::uint32_t>(record, type.headOffset) = i + 1;
        return status;
    }
    return RTS_BAD_CHOICE;
}

int Decoder::decodeAlternative(const TypeDescriptor& choice, const FieldDescriptor& field, void* record,
                               std::uint32_t start, int length) {
    const TypeDescriptor& type = *field.type;
    setAlternativePointer(choice, record, nullptr);
    void* value = memberAt(record, choice.bodyOffset);
    if (!isText(type) && type.kind != Kind::Null) {
        value = newPart(type.size);
        if (!value) return RTS_NO_MEMORY;
        setAlternativePointer(choice, record, value);
    }
    const Place place{Place::Kind::Alternative, field.name};
    if (field.tagging != Tagging::None) return decodeTagged(choice, field, value, length, place);
    // The tag that was read is the value's own. What has no tag that the choice knows reads it again.
    if (type.tag == kNoTag || type.kind == Kind::OpenType) {
        mContext->buffer.byteIndex = start;
        return decode(type, value, ASN1EXPL, 0, place);
    }
    const int status = decode(type, value, ASN1IMPL, length, place);
    if (status != RTS_OK || !choice.cmsEnd || length != ASN1_INDEFLEN || readsOwnEndOfContents(type.kind))
        return status;
    return asn1rt::takeEndOfContents(mContext);
}

// Node and element are one allocation, the element behind the node. Elements that are not kept share one.
int Decoder::decodeList(const TypeDescriptor& type, void* record, const Content& content) {
    auto& list = member<_Asn1RTDList>(record, type.headOffset);
    rtDListInit(&list);
    const std::uint32_t most = type.hasBounds && type.upperBound < INT32_MAX ? type.upperBound : INT32_MAX;
    const std::uint64_t size = sizeof(_Asn1RTDListNode) + std::uint64_t{type.element->size};
    const bool keeps = keepsElements(type, record);
    RecentAllocations all(mContext, mPassing.room);
    _Asn1RTDListNode* node = nullptr;
    while (!hasEnded(content)) {
        if (list.count >= most) return RTS_EXTRA_ELEMENT;
        if (keeps || !node) {
            node = static_cast<_Asn1RTDListNode*>(newPart(size));
            if (!node) return RTS_NO_MEMORY;
        } else {
            std::memset(node + 1, 0, type.element->size);
        }
        void* element = node + 1;
        RecentAllocations ofElement(mContext, mPassing.room);
        mPassing.taken += !keeps;
        const std::uint32_t start = mContext->buffer.byteIndex;
        const int status = decode(*type.element, element, ASN1EXPL, 0, Place{Place::Kind::Element});
        mPassing.taken -= !keeps;
        if (status != RTS_OK) return status;
        // An open type lets a cut element pass as nothing, which must not be met for ever.
        if (mContext->buffer.byteIndex == start) return fail(RTS_END_OF_BUFFER);
        if (keeps) {
            rtDListAppendNode(mContext, &list, element);
        } else {
            if (isTaken(record)) mDropping.taker->take(mDropping.taker->taker, element);
            ofElement.release();
            ++list.count;
        }
    }
    if (!keeps) all.release();
    return RTS_OK;
}

bool Decoder::isTaken(const void* list) const {
    return mPassing.tried == 0 && mDropping.taker && mDropping.taker->list == list;
}

// A table looks at the elements of its list once more behind the list.
bool Decoder::keepsElements(const TypeDescriptor& type, const void* list) const {
    if (type.element->kind == Kind::TableOpenType) return true;
    return mPassing.tried == 0 && !isTaken(list);
}

int Decoder::decodeArray(const TypeDescriptor& type, void* record, const Content& content) {
    auto& count = member<std::uint32_t>(record, type.headOffset);
    count = 0;
    if (type.capacity > 0) {
        return decodeElements(type, memberAt(record, type.bodyOffset), type.capacity, content, &count);
    }
    member<void*>(record, type.bodyOffset) = nullptr;
    std::uint32_t slots = 0;
    if (int status = xd_count(mContext, content.length, &slots); status != RTS_OK) return status;
    void* elements = asn1rt::allocate(mContext, std::uint64_t{slots} * type.element->size);
    if (!elements) return RTS_NO_MEMORY;
    member<void*>(record, type.bodyOffset) = elements;
    const std::uint32_t most = type.hasBounds && type.upperBound < slots ? type.upperBound : slots;
    return decodeElements(type, elements, most, content, &count);
}

int Decoder::decodeElements(const TypeDescriptor& type, void* elements, std::uint32_t slots,
                            const Content& content, std::uint32_t* count) {
    while (!hasEnded(content)) {
        if (*count == slots) return RTS_EXTRA_ELEMENT;
        void* element = static_cast<char*>(elements) + std::size_t{*count} * type.element->size;
        // One by one: of elements that are none, little memory is touched before the first is refused.
        std::memset(element, 0, type.element->size);
        const int status = decode(*type.element, element, ASN1EXPL, 0, Place{Place::Kind::Element});
        if (status != RTS_OK) return status;
        ++*count;
    }
    return RTS_OK;
}

// The record is stored whatever the status says, and the position comes back on every path.
int Decoder::resolveObject(const ObjectEntry& entry, Asn1TObject& object) {
    if (!entry.value || object.numocts == 0 || !object.data) return RTS_OK;
    if (mLevel == kMostLevels) return fail(RTS_NO_MEMORY);
    RecentAllocations allocations(mContext, mPassing.room);
    mPassing.tried += mDropping.resolved;
    object.decoded = newPart(entry.value->size > 0 ? entry.value->size : 1);  // a NULL has none
    const auto buffer = mContext->buffer;
    const std::uint16_t flags = mContext->flags;
    int status = RTS_NO_MEMORY;
    if (object.decoded)
        status = xd_setp(mContext, object.data, static_cast<int>(object.numocts), nullptr, nullptr);
    if (status == RTS_OK) {
        ++mLevel;
        status = decode(*entry.value, object.decoded, ASN1EXPL, 0, Place{});
        --mLevel;
    }
    mContext->buffer = buffer;
    mContext->flags = flags;
    if (mDropping.resolved) {
        --mPassing.tried;
        object.decoded = nullptr;
        allocations.release();
    }
    return status == RTS_OK ? status : fail(status);
}

// The elements of a list often name the same object.
const ObjectEntry* Decoder::entryOf(const ObjectSet& objects, const ASN1OBJID& id) {
    if (mLastObjects == &objects && *mLastEntry->id == id) return mLastEntry;
    const ObjectEntry* const found = findObject(objects, id);
    if (found) {
        mLastObjects = &objects;
        mLastEntry = found;
    }
    return found;
}

int Decoder::resolve(const TypeDescriptor& type, void* record) {
    const TableConstraint& table = *type.table;
    const ObjectEntry* entry = entryOf(*table.objects, typeIdentifier(table, record));
    if (table.form == TableConstraint::Form::List) {
        if (!entry) return RTS_OK;
        for (auto* node = member<_Asn1RTDList>(record, table.objectOffset).head; node; node = node->next) {
            const int status = resolveObject(*entry, *static_cast<Asn1TObject*>(node->data));
            if (status != RTS_OK) return status;
        }
        return RTS_OK;
    }
    auto& object = member<Asn1TObject>(record, table.objectOffset);
    object.decoded = nullptr;
    if (!tableValuePresent(type, record)) {
        static_cast<ASN1OpenType&>(object) = {0, nullptr};
        return RTS_OK;
    }
    if (table.form == TableConstraint::Form::OctetString) {
        const auto& octets = member<ASN1TDynOctStr>(record, table.octetsOffset);
        static_cast<ASN1OpenType&>(object) = {octets.numocts, octets.data};
    }
    return entry ? resolveObject(*entry, object) : int{RTS_OK};
}

}  // namespace

int decode(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, ASN1TagType tagging, int length) {
    return Decoder(ctxt).decode(type, value, tagging, length, Place{});
}

int decodeElementwise(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value, const ElementTaker& taker) {
    return Decoder(ctxt, {.taker = &taker}).decode(type, value, ASN1EXPL, 0, Place{});
}

int decodeUnresolved(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value) {
    return Decoder(ctxt, {.resolved = true}).decode(type, value, ASN1EXPL, 0, Place{});
}

int decodeTable(ASN1CTXT* ctxt, const TypeDescriptor& type, void* value) {
    return Decoder(ctxt).resolve(type, value);
}

}  // namespace asn1data
