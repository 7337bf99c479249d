// Information object classes, objects and tables (X.681): what ties an identifier to the type of an open
// value.
//
// Each object of the schema is a class of its own, made of PlainObject or TypedObject. The operations of a
// class without a value type do nothing and return 0 or null; those of a typed object work on the `decoded`
// record of an Asn1TObject, and do nothing where that is null. Tables and objects are made at the first use
// and live until the process ends.
#ifndef MIRVANE_ASN1DATA_INFORMATION_OBJECT_H
#define MIRVANE_ASN1DATA_INFORMATION_OBJECT_H

#include <pthread.h>

#include <cstring>
#include <initializer_list>
#include <new>
#include <vector>

#include "asn1data/control_classes.h"
#include "asn1data/engine.h"
#include "asn1data/table_object.h"
#include "asn1rt/object_identifier.h"

namespace asn1data {

// What all typed objects do, on a descriptor.
namespace object_value {

// A zeroed record in the context's heap. Throws std::bad_alloc.
void* construct(ASN1CTXT* ctxt, const TypeDescriptor& type);
// The octets written, 0 for a null `decoded`, or a status.
int encodeBER(ASN1CTXT* ctxt, const TypeDescriptor& type, const Asn1TObject& object);
// Reads from the context's position into a new record, which is stored whatever the status says.
int decodeBER(ASN1CTXT* ctxt, const TypeDescriptor& type, Asn1TObject& object);
// A deep copy of the record; returns what it stored. Throws std::bad_alloc.
void* copy(ASN1CTXT* ctxt, const TypeDescriptor& type, const Asn1TObject& source, Asn1TObject& target);
// Frees what the record points at and forgets the record, whose own memory stays in the heap.
void free(ASN1CTXT* ctxt, const TypeDescriptor& type, Asn1TObject& object);

// A control object in the heap of the buffer's context, which leaves the record as it was. Its memory belongs
// to that heap: it is destroyed and not deleted. Throws std::bad_alloc.
template <typename Control, const TypeDescriptor& Type>
ASN1CType* constructControl(ASN1MessageBufferIF& buffer, void* value);

}  // namespace object_value

// The classes whose operations are named after &Type.
class TypeField {
  public:
    virtual void* constructASN1TType(ASN1CTXT*) { return nullptr; }
    virtual ASN1CType* constructASN1CType(ASN1MessageBufferIF&, void*) { return nullptr; }
    virtual void destructASN1CType(ASN1CType*) {}
    virtual ~TypeField() = default;
    virtual int encodeBERType(ASN1CTXT*, Asn1TObject&) { return 0; }
    virtual int decodeBERType(ASN1CTXT*, Asn1TObject&) { return 0; }
    virtual void* copyType(ASN1CTXT*, Asn1TObject&, Asn1TObject&) { return nullptr; }
    virtual void freeType(ASN1CTXT*, Asn1TObject&) {}
};

class ExtnTypeField {
  public:
    virtual void* constructASN1TExtnType(ASN1CTXT*) { return nullptr; }
    virtual ASN1CType* constructASN1CExtnType(ASN1MessageBufferIF&, void*) { return nullptr; }
    virtual void destructASN1CExtnType(ASN1CType*) {}
    virtual ~ExtnTypeField() = default;
    virtual int encodeBERExtnType(ASN1CTXT*, Asn1TObject&) { return 0; }
    virtual int decodeBERExtnType(ASN1CTXT*, Asn1TObject&) { return 0; }
    virtual void* copyExtnType(ASN1CTXT*, Asn1TObject&, Asn1TObject&) { return nullptr; }
    virtual void freeExtnType(ASN1CTXT*, Asn1TObject&) {}
};

class AssertionTypeField {
  public:
    virtual void* constructASN1TAssertionType(ASN1CTXT*) { return nullptr; }
    virtual ASN1CType* constructASN1CAssertionType(ASN1MessageBufferIF&, void*) { return nullptr; }
    virtual void destructASN1CAssertionType(ASN1CType*) {}
    virtual ~AssertionTypeField() = default;
    virtual int encodeBERAssertionType(ASN1CTXT*, Asn1TObject&) { return 0; }
    virtual int decodeBERAssertionType(ASN1CTXT*, Asn1TObject&) { return 0; }
    virtual void* copyAssertionType(ASN1CTXT*, Asn1TObject&, Asn1TObject&) { return nullptr; }
    virtual void freeAssertionType(ASN1CTXT*, Asn1TObject&) {}
};

// The fields of an object: its identifier, and in two classes a word of presence bits ahead of it.
template <typename Field>
class IdentifiedObject : public Field {
  public:
    using ValueField = Field;
    explicit IdentifiedObject(const ASN1OBJID& identifier) : id(identifier) {}

    ASN1OBJID id;
};

template <typename Field>
class OptionalValueObject : public Field {
  public:
    using ValueField = Field;
    explicit OptionalValueObject(const ASN1OBJID& identifier) : id(identifier) {}

    std::uint32_t m = 0;
    ASN1OBJID id;
};

class ATTRIBUTE : public IdentifiedObject<TypeField> {
    using IdentifiedObject::IdentifiedObject;
};
class CONTENT_TYPE : public IdentifiedObject<TypeField> {
    using IdentifiedObject::IdentifiedObject;
};
class ECONTENT_TYPE : public IdentifiedObject<TypeField> {
    using IdentifiedObject::IdentifiedObject;
};
class INFOTYPEANDVALUE : public IdentifiedObject<TypeField> {
    using IdentifiedObject::IdentifiedObject;
};
class OCSP_RESPONSE_TYPE : public IdentifiedObject<TypeField> {
    using IdentifiedObject::IdentifiedObject;
};
class ALGORITHM_ID : public OptionalValueObject<TypeField> {
    using OptionalValueObject::OptionalValueObject;
};
class CERT_POLICY_QUALIFIER : public OptionalValueObject<TypeField> {
    using OptionalValueObject::OptionalValueObject;
};
class EXTENSION : public IdentifiedObject<ExtnTypeField> {
    using IdentifiedObject::IdentifiedObject;
};
class MATCHING_RULE : public IdentifiedObject<AssertionTypeField> {
    using IdentifiedObject::IdentifiedObject;
};

// An object without a value type.
template <typename Class>
class PlainObject : public Class {
  public:
    explicit PlainObject(const ASN1OBJID& identifier) : Class(identifier) {}
};

// The operations of an object with a value type, under the names of its class.
template <typename Class, typename Control, const TypeDescriptor& Type,
          typename Field = typename Class::ValueField>
class TypedObject;

template <typename Class, typename Control, const TypeDescriptor& Type>
class TypedObject<Class, Control, Type, TypeField> : public Class {
  public:
    explicit TypedObject(const ASN1OBJID& identifier) : Class(identifier) {}

    void* constructASN1TType(ASN1CTXT* ctxt) override { return object_value::construct(ctxt, Type); }
    ASN1CType* constructASN1CType(ASN1MessageBufferIF& buffer, void* value) override {
        return object_value::constructControl<Control, Type>(buffer, value);
    }
    void destructASN1CType(ASN1CType* control) override { control->~ASN1CType(); }
    int encodeBERType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        return object_value::encodeBER(ctxt, Type, object);
    }
    int decodeBERType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        return object_value::decodeBER(ctxt, Type, object);
    }
    void* copyType(ASN1CTXT* ctxt, Asn1TObject& source, Asn1TObject& target) override {
        return object_value::copy(ctxt, Type, source, target);
    }
    void freeType(ASN1CTXT* ctxt, Asn1TObject& object) override { object_value::free(ctxt, Type, object); }
};

template <typename Class, typename Control, const TypeDescriptor& Type>
class TypedObject<Class, Control, Type, ExtnTypeField> : public Class {
  public:
    explicit TypedObject(const ASN1OBJID& identifier) : Class(identifier) {}

    void* constructASN1TExtnType(ASN1CTXT* ctxt) override { return object_value::construct(ctxt, Type); }
    ASN1CType* constructASN1CExtnType(ASN1MessageBufferIF& buffer, void* value) override {
        return object_value::constructControl<Control, Type>(buffer, value);
    }
    void destructASN1CExtnType(ASN1CType* control) override { control->~ASN1CType(); }
    int encodeBERExtnType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        return object_value::encodeBER(ctxt, Type, object);
    }
    int decodeBERExtnType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        return object_value::decodeBER(ctxt, Type, object);
    }
    void* copyExtnType(ASN1CTXT* ctxt, Asn1TObject& source, Asn1TObject& target) override {
        return object_value::copy(ctxt, Type, source, target);
    }
    void freeExtnType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        object_value::free(ctxt, Type, object);
    }
};

template <typename Class, typename Control, const TypeDescriptor& Type>
class TypedObject<Class, Control, Type, AssertionTypeField> : public Class {
  public:
    explicit TypedObject(const ASN1OBJID& identifier) : Class(identifier) {}

    void* constructASN1TAssertionType(ASN1CTXT* ctxt) override { return object_value::construct(ctxt, Type); }
    ASN1CType* constructASN1CAssertionType(ASN1MessageBufferIF& buffer, void* value) override {
        return object_value::constructControl<Control, Type>(buffer, value);
    }
    void destructASN1CAssertionType(ASN1CType* control) override { control->~ASN1CType(); }
    int encodeBERAssertionType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        return object_value::encodeBER(ctxt, Type, object);
    }
    int decodeBERAssertionType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        return object_value::decodeBER(ctxt, Type, object);
    }
    void* copyAssertionType(ASN1CTXT* ctxt, Asn1TObject& source, Asn1TObject& target) override {
        return object_value::copy(ctxt, Type, source, target);
    }
    void freeAssertionType(ASN1CTXT* ctxt, Asn1TObject& object) override {
        object_value::free(ctxt, Type, object);
    }
};

// A table of objects of one class, in the order of lookup. Read-only once it is made, so any thread may use
// it.
template <typename Class>
class ObjectTable {
  public:
    // The object with this identifier, or null; never found with a count of 0.
    Class* lookupObject(ASN1TObjId identifier) const {
        if (identifier.numids == 0) return nullptr;
        for (Class* object : mObjects) {
            if (object->id == identifier) return object;
        }
        return nullptr;
    }

    std::size_t size() const { return mObjects.size(); }

  protected:
    ObjectTable(std::initializer_list<Class*> objects) : mObjects(objects) {}

  private:
    std::vector<Class*> mObjects;  // never released
};

template <typename Control, const TypeDescriptor& Type>
ASN1CType* object_value::constructControl(ASN1MessageBufferIF& buffer, void* value) {
    void* memory =
        rtMemHeapAlloc(&buffer.getCtxtPtr()->typeMemHeap, static_cast<std::int32_t>(sizeof(Control)));
    if (!memory) throw std::bad_alloc();
    if constexpr (std::is_constructible_v<Control, ASN1MessageBufferIF&>) {
        return ::new (memory) Control(buffer);
    } else {
        using Record = std::remove_reference_t<decltype(*std::declval<Control&>().newCopy())>;
        // A control class may tidy the record that it is made on, which is not its caller's wish here. What
        // is put back are the very octets that stood there, so no reference is counted twice.
        alignas(Record) unsigned char saved[sizeof(Record)];
        std::memcpy(saved, value, sizeof saved);
        ASN1CType* control = ::new (memory) Control(buffer, *static_cast<Record*>(value));
        std::memcpy(value, saved, sizeof saved);
        return control;
    }
}

}  // namespace asn1data

#endif
