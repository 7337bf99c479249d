// What the control classes ASN1C_X are made of: each ties one value record to a message buffer and shares the
// buffer's context; without a buffer it makes a context of its own. It neither owns nor frees the record.
//
// Besides EncodeTo and DecodeFrom, which run the engine with the type's descriptor, a control class copies
// its record: the copy lives in the context's heap. A copy that derives from ASN1TPDU and had no context
// holds a reference to this one, so that the value lives as long as the copy does; a copy made by
// getCopy(nullptr) stands itself in that heap, and the reference is given back by its destructor, which
// nobody but the caller runs.
#ifndef MIRVANE_ASN1DATA_CONTROL_CLASSES_H
#define MIRVANE_ASN1DATA_CONTROL_CLASSES_H

#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "asn1data/engine.h"
#include "asn1rt/bit_string_class.h"
#include "asn1rt/generalized_time.h"
#include "asn1rt/seq_of_list.h"
#include "asn1rt/utc_time.h"

namespace asn1data {

template <typename Record>
inline constexpr bool kOwnsContext = std::is_base_of_v<ASN1TPDU, Record>;

// Gives a record back to the state in which a copy may fill it: what belongs to a foreign context goes.
template <typename Record>
void dropForeignContext(const ASN1CtxtPtr& context, const TypeDescriptor& type, Record* record) {
    if constexpr (kOwnsContext<Record>) {
        if (!record->mpContext || record->mpContext == static_cast<ASN1Context*>(context)) return;
        releaseRecord(type, *record, record);
        record->mpContext = nullptr;
    }
}

// Copies into an empty record and lets it hold the context.
template <typename Record>
void fillCopy(const ASN1CtxtPtr& context, const TypeDescriptor& type, const Record* source, Record* target) {
    copy(context, type, source, target);
    if constexpr (kOwnsContext<Record>) {
        if (!target->mpContext) target->mpContext = context;
    }
}

// The common part, on the runtime's base for the kind of type.
template <typename Base, typename Record, const TypeDescriptor& Type>
class ControlOn : public Base {
  public:
    int EncodeTo(ASN1MessageBufferIF& buffer) override {
        if (int status = this->prepare(buffer, ASN1MessageBufferIF::BEREncode); status != RTS_OK)
            return status;
        return encode(buffer.getCtxtPtr(), Type, msgData, ASN1EXPL);
    }

    int DecodeFrom(ASN1MessageBufferIF& buffer) override {
        if (int status = this->prepare(buffer, ASN1MessageBufferIF::BERDecode); status != RTS_OK)
            return status;
        const int status = decode(buffer.getCtxtPtr(), Type, msgData, ASN1EXPL, 0);
        recordChanged();
        return status;
    }

    // A deep copy of the record: in `target`, which comes in empty or is first emptied of what belongs to
    // another context, or for null in a record in the context's heap. Throws std::bad_alloc.
    Record* getCopy(Record* target = nullptr) {
        if (target == msgData) return target;
        if (target) {
            dropForeignContext(this->mpContext, Type, target);
        } else {
            target = ::new (newRecord(this->mpContext, Type)) Record();
        }
        fillCopy(this->mpContext, Type, static_cast<const Record*>(msgData), target);
        return target;
    }

    // The same in a record from `new`, which the caller deletes.
    Record* newCopy() {
        auto target = std::make_unique<Record>();
        fillCopy(this->mpContext, Type, static_cast<const Record*>(msgData), target.get());
        return target.release();
    }

  protected:
    template <typename... Arguments>
    explicit ControlOn(Record* data, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...), msgData(data) {}

    // The record that a copying constructor works on. It stands in the heap of the context that both share
    // and holds no reference to it, which would keep the context alive for ever.
    static Record* ownCopy(ControlOn& other) {
        Record* record = ::new (newRecord(other.mpContext, Type)) Record();
        copy(other.mpContext, Type, static_cast<const Record*>(other.msgData), record);
        return record;
    }

    // A base with a view of its own on the record's value has to look at it again.
    void recordChanged() {
        if constexpr (std::is_base_of_v<ASN1CBitStr, Base>) this->recordReplaced();
        if constexpr (std::is_base_of_v<ASN1CTime, Base>) this->textReplaced();
    }

    // What the assignments of list, bit string and time classes do.
    void takeCopyOf(ControlOn& other) {
        copy(this->mpContext, Type, static_cast<const Record*>(other.msgData), msgData);
        recordChanged();
    }

    Record* msgData;
};

// Sequences, sets, choices, arrays and simple types.
template <typename Record, const TypeDescriptor& Type>
class Control : public ControlOn<ASN1CType, Record, Type> {
    using Common = ControlOn<ASN1CType, Record, Type>;

  public:
    explicit Control(Record& value) : Common(&value) {}
    Control(ASN1MessageBufferIF& buffer, Record& value) : Common(&value, buffer) {}
    // Works on a deep copy of the other's record, in the context and on the buffer that both then share.
    Control(Control& other) : Common(Common::ownCopy(other), *other.mpContext) {
        this->mpMsgBuf = other.mpMsgBuf;
    }
};

// A NULL type has no record.
template <const TypeDescriptor& Type>
class NullControl : public ASN1CType {
  public:
    NullControl() = default;
    explicit NullControl(ASN1MessageBufferIF& buffer) : ASN1CType(buffer) {}

    int EncodeTo(ASN1MessageBufferIF& buffer) override {
        if (int status = prepare(buffer, ASN1MessageBufferIF::BEREncode); status != RTS_OK) return status;
        return encode(buffer.getCtxtPtr(), Type, nullptr, ASN1EXPL);
    }
    int DecodeFrom(ASN1MessageBufferIF& buffer) override {
        if (int status = prepare(buffer, ASN1MessageBufferIF::BERDecode); status != RTS_OK) return status;
        return decode(buffer.getCtxtPtr(), Type, nullptr, ASN1EXPL, 0);
    }
};

// Lists, with the operations of ASN1CSeqOfList.
template <typename Record, const TypeDescriptor& Type>
class ListControl : public ControlOn<ASN1CSeqOfList, Record, Type> {
    using Common = ControlOn<ASN1CSeqOfList, Record, Type>;

  public:
    explicit ListControl(Record& value) : Common(&value, static_cast<ASN1TPDUSeqOfList&>(value)) {}
    ListControl(ASN1MessageBufferIF& buffer, Record& value)
        : Common(&value, buffer, static_cast<ASN1TPDUSeqOfList&>(value)) {}
    ListControl(ListControl& other) : ListControl(other, Common::ownCopy(other)) {}

    // Empties the list and fills it with copies of the other's elements. Throws std::bad_alloc.
    ListControl& operator=(ListControl& other) {
        if (this == &other) return *this;
        this->clear();
        this->takeCopyOf(other);
        return *this;
    }

  private:
    ListControl(ListControl& other, Record* copied)
        : Common(copied, *other.mpContext, static_cast<ASN1TPDUSeqOfList&>(*copied)) {
        this->mpMsgBuf = other.mpMsgBuf;
    }
};

// Bit strings, with the operations of ASN1CBitStr.
template <typename Record, const TypeDescriptor& Type>
class BitStringControl : public ControlOn<ASN1CBitStr, Record, Type> {
    using Common = ControlOn<ASN1CBitStr, Record, Type>;
    static constexpr bool kDynamic = std::is_same_v<Record, ASN1TDynBitStr>;

  public:
    explicit BitStringControl(Record& value) requires kDynamic : Common(&value, value) {}
    explicit BitStringControl(Record& value) requires(!kDynamic)
        : Common(&value, value.data, value.numbits, Type.upperBound) {}
    BitStringControl(ASN1MessageBufferIF& buffer, Record& value) requires kDynamic
        : Common(&value, buffer, value) {}
    BitStringControl(ASN1MessageBufferIF& buffer, Record& value) requires(!kDynamic)
        : Common(&value, buffer, value.data, value.numbits, Type.upperBound) {}
    BitStringControl(BitStringControl& other) : BitStringControl(other, Common::ownCopy(other)) {}

    // Throws std::bad_alloc.
    BitStringControl& operator=(BitStringControl& other) {
        if (this != &other) this->takeCopyOf(other);
        return *this;
    }

  private:
    BitStringControl(BitStringControl& other, Record* copied) requires kDynamic
        : Common(copied, *other.mpContext, *copied) {
        this->mpMsgBuf = other.mpMsgBuf;
    }
    BitStringControl(BitStringControl& other, Record* copied) requires(!kDynamic)
        : Common(copied, *other.mpContext, copied->data, copied->numbits, Type.upperBound) {
        this->mpMsgBuf = other.mpMsgBuf;
    }
};

// Times, with the operations of ASN1CTime; in distinguished form, as DER asks for.
template <typename Base, typename Record, const TypeDescriptor& Type>
class TimeControl : public ControlOn<Base, Record, Type> {
    using Common = ControlOn<Base, Record, Type>;
    static constexpr bool kDistinguished = true;

  public:
    explicit TimeControl(Record& value) : Common(&value, value, kDistinguished) {}
    TimeControl(ASN1MessageBufferIF& buffer, Record& value) : Common(&value, buffer, value, kDistinguished) {}
    TimeControl(TimeControl& other) : TimeControl(other, Common::ownCopy(other)) {}

    // Throws std::bad_alloc.
    TimeControl& operator=(TimeControl& other) {
        if (this != &other) this->takeCopyOf(other);
        return *this;
    }

  private:
    TimeControl(TimeControl& other, Record* copied)
        : Common(copied, *other.mpContext, *copied, kDistinguished) {
        this->mpMsgBuf = other.mpMsgBuf;
    }
};

template <typename Record, const TypeDescriptor& Type>
class GeneralizedTimeControl : public TimeControl<ASN1CGeneralizedTime, Record, Type> {
  public:
    using TimeControl<ASN1CGeneralizedTime, Record, Type>::TimeControl;
};

template <typename Record, const TypeDescriptor& Type>
class UtcTimeControl : public TimeControl<ASN1CUTCTime, Record, Type> {
  public:
    using TimeControl<ASN1CUTCTime, Record, Type>::TimeControl;
};

}  // namespace asn1data

#endif
