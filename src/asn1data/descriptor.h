// How the engine sees an ASN.1 type: constant tables that the schema compiler writes from
// src/asn1data/schema/. Every rule of encoding stands once, in the engine; a descriptor says what a record
// looks like and which tags its fields have.
//
// A record of zero octets is an empty, valid one: null pointers, counts of 0, nothing present, nothing
// chosen.
#ifndef MIRVANE_ASN1DATA_DESCRIPTOR_H
#define MIRVANE_ASN1DATA_DESCRIPTOR_H

#include <cstdint>

#include "asn1rt/context.h"
#include "asn1rt/object_identifier.h"

namespace asn1data {

enum class Kind : std::uint8_t {
    Boolean,            // unsigned char
    Integer,            // std::int32_t
    Unsigned,           // std::uint32_t
    Uint16,             // std::uint16_t
    BigInteger,         // char const*, text
    Enumerated,         // std::uint32_t
    Null,               // nothing
    ObjectIdentifier,   // ASN1TObjId
    OctetString,        // ASN1TDynOctStr
    InlineOctetString,  // numocts, then `capacity` octets
    BitString,          // ASN1TDynBitStr
    InlineBitString,    // numbits, then `capacity` octets; decoding takes up to `upperBound` bits
    CharString,         // char const*, the 8-bit strings and the times
    BmpString,          // Asn116BitCharString
    UniversalString,    // Asn132BitCharString
    OpenType,           // ASN1TOpenType
    TableOpenType,      // Asn1TObject, an open type that a table may resolve
    RawContent,         // ASN1TDynOctStr: the octets inside the field's tag, whatever they are
    Sequence,
    Set,
    Choice,
    List,   // SEQUENCE OF or SET OF, an _Asn1RTDList of pointers to elements
    Array,  // SEQUENCE OF or SET OF of a simple type: n and a pointer to n elements, or `capacity` elements
            // inline
};

enum class Tagging : std::uint8_t { None, Explicit, Implicit };

enum class Presence : std::uint8_t {
    Required,
    Optional,        // a bit of m
    DefaultNumber,   // held by value, absent when equal to defaultNumber
    DefaultInteger,  // held as text, absent when equal as a number to defaultText
};

constexpr ASN1TAG kNoTag = 0xFFFFFFFF;
constexpr std::uint32_t kNoOffset = 0xFFFFFFFF;
constexpr std::uint32_t kNoBound = 0xFFFFFFFF;

struct TypeDescriptor;

// Named numbers and named bits, for printing.
struct NamedNumber {
    const char* name;
    std::uint32_t number;
};

// A field of a SEQUENCE or SET, or an alternative of a CHOICE (where `offset` counts nothing: the value hangs
// from the union's pointer).
struct FieldDescriptor {
    const char* name;
    const TypeDescriptor* type;
    std::uint32_t offset = kNoOffset;
    ASN1TAG tag = kNoTag;  // of the field itself, with the constructed bit as it goes out; kNoTag for none
    Tagging tagging = Tagging::None;
    Presence presence = Presence::Required;
    std::uint8_t bit = 0;  // of m, under Presence::Optional
    std::int32_t defaultNumber = 0;
    const char* defaultText = nullptr;
};

// An information object as the engine needs it.
struct ObjectEntry {
    const ASN1OBJID* id;
    const TypeDescriptor* value;  // null: the object is known and has no value type
    const char* name;
};

struct ObjectSet {
    const char* name;
    const ObjectEntry* entries;  // in the order of lookup
    std::uint32_t count;
};

// The tie between an identifier and an open value beside it.
struct TableConstraint {
    enum class Form : std::uint8_t { OpenType, OctetString, List };

    const ObjectSet* objects;
    Form form;
    std::uint32_t typeOffset;    // of the ASN1TObjId
    std::uint32_t objectOffset;  // of the Asn1TObject, or of the list record that holds Asn1TObjects
    std::uint32_t octetsOffset = kNoOffset;  // Form::OctetString: of the octets that stand on the wire
    std::uint8_t bit = 0;                    // of m, when the value is optional
    bool optional = false;
};

// What is not given is what most types have.
struct TypeDescriptor {
    const char* name;
    Kind kind;
    bool setOf = false;        // List, Array: encoded in DER order under tag 17
    bool cmsEnd = false;       // consumes end-of-contents octets, its own and its fields'
    bool hasBounds = false;    // lowerBound and upperBound are tested
    bool endsOnly = false;     // of the sizes within the bounds only the bounds themselves pass
    bool hasDefaults = false;  // Sequence, Set: of a field
    ASN1TAG tag =
        kNoTag;  // universal tag with the constructed bit; kNoTag for CHOICE, open types and RawContent
    ASN1TAG outerTag = kNoTag;  // explicit tag of a tagged CHOICE type
    std::uint32_t size;         // octets of the record
    std::uint32_t alignment;
    // SIZE, or of an INTEGER whose value is tested: kNoBound for MAX. ENUMERATED has an upper bound alone,
    // the first number refused, kNoBound for no test.
    std::uint32_t lowerBound = 0;
    std::uint32_t upperBound = kNoBound;
    std::uint32_t capacity = 0;            // inline strings: octets; inline arrays: elements; else 0
    std::uint32_t headOffset = kNoOffset;  // Sequence, Set: m; Choice: t; List: the list; Array: n
    std::uint32_t bodyOffset = kNoOffset;  // Choice: u; Array: elem; extensible Sequence: extElem1
    const FieldDescriptor* fields = nullptr;
    std::uint32_t fieldCount = 0;
    std::uint32_t requiredCount = 0;
    const TypeDescriptor* element = nullptr;  // List, Array
    const TableConstraint* table = nullptr;   // Sequence
    const NamedNumber* names = nullptr;
    std::uint32_t nameCount = 0;
};

// One entry of the list of all types: aliases stand under their own name with the descriptor of their base.
struct NamedType {
    const char* name;
    const TypeDescriptor* type;
};

struct NamedIdentifier {
    const char* name;
    const ASN1OBJID* id;
};

// All types, and all identifiers of the registry, sorted by name (bytewise).
extern const NamedType kAllTypes[];
extern const std::uint32_t kAllTypesCount;
extern const NamedIdentifier kAllIdentifiers[];
extern const std::uint32_t kAllIdentifiersCount;

}  // namespace asn1data

#endif
