// The kinds of types, and the facts that go with each: how a value is held, and under which universal tag it
// travels.
#ifndef MIRVANE_ASN1GEN_KINDS_H
#define MIRVANE_ASN1GEN_KINDS_H

#include <cstdint>
#include <string_view>

namespace asn1gen {

// The same as asn1data::Kind.
enum class Kind : std::uint8_t {
    Boolean,
    Integer,
    Unsigned,
    Uint16,
    BigInteger,
    Enumerated,
    Null,
    ObjectIdentifier,
    OctetString,
    InlineOctetString,
    BitString,
    InlineBitString,
    CharString,
    BmpString,
    UniversalString,
    OpenType,
    TableOpenType,
    RawContent,
    Sequence,
    Set,
    Choice,
    List,
    Array,
};

// What the value of a kind looks like as a member of a record.
enum class Holding : std::uint8_t {
    Number,   // initialised to 0
    Text,     // a pointer to text, initialised to null
    Plain,    // a plain structure of the runtime, initialised by {}
    Object,   // a structure that initialises itself
    Nothing,  // no member
};

struct KindFacts {
    std::string_view name;     // the enumerator
    std::string_view cppType;  // empty: a structure of the type's own
    Holding holding;
    std::uint32_t tag;  // with the constructed bit; kNoTag; for strings that of the string type
    bool ownsMemory;    // asn1Free_ has something to do
    bool isPdu;         // the structure carries a context
};

constexpr std::uint32_t kNoTag = 0xFFFFFFFF;
constexpr std::uint32_t kConstructed = 0x20000000;
constexpr std::uint32_t kMaxTagNumber = 30;

const KindFacts& facts(Kind kind);

// Whether a type of this kind has a structure of its own in C++.
inline bool hasStructure(Kind kind) {
    return facts(kind).cppType.empty() && kind != Kind::Null;
}

// A type that needs no descriptor of its own: builtin::<name> of the runtime.
struct BuiltinType {
    std::string_view notation;  // as in a schema
    std::string_view name;      // in namespace builtin
    Kind kind;
    std::uint32_t tag;
};

// The string type of this notation, such as "IA5String"; null if there is none.
const BuiltinType* findString(std::string_view notation);

// The builtin type of a kind other than the strings and the structured kinds; null if there is none.
const BuiltinType* findBuiltin(Kind kind);

}  // namespace asn1gen

#endif
