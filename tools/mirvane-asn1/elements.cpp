#include "elements.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "asn1rt/ber_decode.h"
#include "asn1rt/universal_tags.h"
#include "identifier_names.h"
#include "number_text.h"

namespace tools {
namespace {

constexpr int kMostLevels = 32;
constexpr std::size_t kMostTagOctets = 5;
constexpr std::size_t kMostLengthOctets = 4;

enum class TagClass : unsigned { Universal = 0, Application = 1, Context = 2, Private = 3 };

struct Header {
    TagClass tagClass;
    bool constructed;
    std::uint32_t number;
    bool indefinite;
    std::size_t length;
};

constexpr const char* kUniversalNames[] = {nullptr,
                                           "BOOLEAN",
                                           "INTEGER",
                                           "BIT STRING",
                                           "OCTET STRING",
                                           "NULL",
                                           "OBJECT IDENTIFIER",
                                           "ObjectDescriptor",
                                           "EXTERNAL",
                                           "REAL",
                                           "ENUMERATED",
                                           "EMBEDDED PDV",
                                           "UTF8String",
                                           "RELATIVE-OID",
                                           "TIME",
                                           nullptr,
                                           "SEQUENCE",
                                           "SET",
                                           "NumericString",
                                           "PrintableString",
                                           "TeletexString",
                                           "VideotexString",
                                           "IA5String",
                                           "UTCTime",
                                           "GeneralizedTime",
                                           "GraphicString",
                                           "VisibleString",
                                           "GeneralString",
                                           "UniversalString",
                                           "CHARACTER STRING",
                                           "BMPString"};

std::string tagText(const Header& header) {
    static constexpr const char* kClasses[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
    if (header.tagClass == TagClass::Universal && header.number < std::size(kUniversalNames) &&
        kUniversalNames[header.number]) {
        return kUniversalNames[header.number];
    }
    return fmt::format("[{}{}]", kClasses[static_cast<unsigned>(header.tagClass)], header.number);
}

// Takes octets from the front; a false result says that they are not there or make no sense.
class Reader {
  public:
    explicit Reader(OctetSpan octets) : mOctets(octets) {}

    bool atEnd() const { return mPosition == mOctets.size(); }
    std::size_t position() const { return mPosition; }

    bool take(unsigned char* octet) {
        if (atEnd()) return false;
        *octet = mOctets[mPosition++];
        return true;
    }
    bool take(std::size_t count, OctetSpan* octets) {
        if (count > mOctets.size() - mPosition) return false;
        *octets = mOctets.subspan(mPosition, count);
        mPosition += count;
        return true;
    }
    bool takeEndOfContents() {
        const OctetSpan rest = mOctets.subspan(mPosition);
        if (rest.size() < 2 || rest[0] != 0 || rest[1] != 0) return false;
        mPosition += 2;
        return true;
    }

    bool header(Header* header) { return tag(header) && length(header); }

  private:
    bool tag(Header* header) {
        unsigned char octet = 0;
        if (!take(&octet)) return false;
        header->tagClass = static_cast<TagClass>(octet >> 6);
        header->constructed = (octet & 0x20) != 0;
        header->number = octet & 0x1F;
        if (header->number == 0x1F) return longTag(header);
        return octet != 0;
    }
    bool longTag(Header* header) {
        header->number = 0;
        for (std::size_t i = 0; i < kMostTagOctets; ++i) {
            unsigned char octet = 0;
            if (!take(&octet) || header->number >> 25 != 0) return false;
            header->number = header->number << 7 | (octet & 0x7F);
            if (octet < 0x80) return true;
        }
        return false;
    }
    bool length(Header* header) {
        unsigned char octet = 0;
        if (!take(&octet)) return false;
        header->indefinite = octet == 0x80;
        header->length = octet < 0x80 ? octet : 0;
        if (header->indefinite) return header->constructed;
        OctetSpan octets;
        if (octet < 0x80) return true;
        if ((octet & 0x7Fu) > kMostLengthOctets || !take(octet & 0x7F, &octets)) return false;
        for (unsigned char part : octets)
            header->length = header->length << 8 | part;
        return true;
    }

    OctetSpan mOctets;
    std::size_t mPosition = 0;
};

std::string_view textOf(OctetSpan octets) {
    return {reinterpret_cast<const char*>(octets.data()), octets.size()};
}

// Arcs as in X.690, 8.19; nothing for what is none, and for arcs above 64 bits.
std::optional<std::string> dottedOf(OctetSpan content) {
    std::string result;
    std::uint64_t arc = 0;
    bool inArc = false;
    for (unsigned char octet : content) {
        if (arc >> 57 != 0 || (!inArc && octet == 0x80)) return std::nullopt;
        arc = arc << 7 | (octet & 0x7F);
        inArc = octet >= 0x80;
        if (inArc) continue;
        if (result.empty()) {
            const std::uint64_t first = std::min<std::uint64_t>(arc / 40, 2);
            result = fmt::format("{}.{}", first, arc - first * 40);
        } else {
            result += fmt::format(".{}", arc);
        }
        arc = 0;
    }
    if (result.empty() || inArc) return std::nullopt;
    return result;
}

template <typename Unit>
std::vector<Unit> unitsOf(OctetSpan content) {
    std::vector<Unit> units(content.size() / sizeof(Unit));
    for (std::size_t i = 0; i < units.size() * sizeof(Unit); ++i) {
        Unit& unit = units[i / sizeof(Unit)];
        unit = static_cast<Unit>(unit << 8 | content[i]);
    }
    return units;
}

// A string or time; nothing for other types.
std::optional<Value> textValue(std::uint32_t number, OctetSpan content) {
    switch (number) {
        case TAG_UTF8_STRING:
            return makeValue(TextValue{fromUtf8(textOf(content))});
        case TAG_NUMERIC_STRING:
        case TAG_PRINTABLE_STRING:
        case TAG_TELETEX_STRING:
        case TAG_IA5_STRING:
        case TAG_VISIBLE_STRING:
            return makeValue(TextValue{fromAscii(textOf(content))});
        case TAG_UTC_TIME:
        case TAG_GENERALIZED_TIME:
            return makeValue(TimeValue{textOf(content), number == TAG_GENERALIZED_TIME});
        case TAG_BMP_STRING:
            if (content.size() % 2 != 0) return std::nullopt;
            return makeValue(TextValue{fromUtf16(unitsOf<std::uint16_t>(content))});
        case TAG_UNIVERSAL_STRING:
            if (content.size() % 4 != 0) return std::nullopt;
            return makeValue(TextValue{fromUtf32(unitsOf<std::uint32_t>(content))});
        default:
            return std::nullopt;
    }
}

std::unique_ptr<Value> sequenceAt(int level, OctetSpan octets);

// A value of another universal type, if its content is one.
std::optional<Value> plainValue(std::uint32_t number, OctetSpan content, int level) {
    switch (number) {
        case TAG_BOOLEAN:
            if (content.size() != 1) return std::nullopt;
            return makeValue(BooleanValue{content.front()});
        case TAG_INTEGER:
        case TAG_ENUMERATED:
            if (content.empty()) return std::nullopt;
            return makeValue(fromContent(content));
        case TAG_NULL:
            if (!content.empty()) return std::nullopt;
            return makeValue(NullValue{});
        case TAG_OBJECT_IDENTIFIER:
            if (const auto dotted = dottedOf(content))
                return makeValue(IdentifierValue{*dotted, nameOf(*dotted)});
            return std::nullopt;
        case TAG_BIT_STRING: {
            if (content.empty() || content.front() > 7 || (content.size() == 1 && content.front() != 0))
                return std::nullopt;
            const std::size_t bits = (content.size() - 1) * 8 - content.front();
            auto sequence = bits % 8 == 0 ? sequenceAt(level, content.subspan(1)) : nullptr;
            return makeValue(BitsValue{
                static_cast<std::uint32_t>(bits), content.subspan(1), false, {}, std::move(sequence)});
        }
        default:
            return textValue(number, content);
    }
}

Value primitive(const Header& header, OctetSpan content, int level) {
    const bool universal = header.tagClass == TagClass::Universal;
    if (universal) {
        if (auto value = plainValue(header.number, content, level)) return std::move(*value);
    }
    return makeValue(OctetsValue{content, !universal, sequenceAt(level, content)});
}

bool readElement(Reader& reader, int level, Value* element);

// All elements to the end of the octets or, if it is wanted, to an end-of-contents, which is taken as well.
bool readList(Reader& reader, int level, bool toEndOfContents, std::vector<Value>* elements) {
    if (level > kMostLevels) return false;
    for (;;) {
        if (toEndOfContents && reader.takeEndOfContents()) return true;
        if (reader.atEnd()) return !toEndOfContents;
        elements->emplace_back();
        if (!readElement(reader, level, &elements->back())) return false;
    }
}

bool readElement(Reader& reader, int level, Value* element) {
    Header header{};
    if (!reader.header(&header)) return false;
    ListValue list;
    OctetSpan content;
    if (header.indefinite) {
        if (!readList(reader, level + 1, true, &list.elements)) return false;
    } else if (!reader.take(header.length, &content)) {
        return false;
    } else if (header.constructed) {
        Reader inner(content);
        if (!readList(inner, level + 1, false, &list.elements)) return false;
    }
    Value value = header.constructed ? makeValue(std::move(list)) : primitive(header, content, level);
    *element = makeValue(ElementValue{tagText(header), onHeap(std::move(value))});
    return true;
}

// The SEQUENCE that is all of a string at this level.
std::unique_ptr<Value> sequenceAt(int level, OctetSpan octets) {
    constexpr unsigned char kSequence = 0x30;
    if (octets.empty() || octets.front() != kSequence) return nullptr;
    Reader reader(octets);
    std::vector<Value> elements;
    if (!readList(reader, level + 1, false, &elements) || elements.size() != 1) return nullptr;
    const auto& sequence = std::get<ElementValue>(elements.front().content);
    if (std::get<ListValue>(sequence.value->content).elements.empty()) return nullptr;
    return onHeap(std::move(elements.front()));
}

// An element of definite length, taken apart.
struct Part {
    Header header{};
    std::size_t start = 0;
    std::size_t contentStart = 0;
    OctetSpan content;
};

bool takePart(Reader& reader, Part* part) {
    part->start = reader.position();
    if (!reader.header(&part->header) || part->header.indefinite) return false;
    part->contentStart = reader.position();
    return reader.take(part->header.length, &part->content);
}

bool haveEqualTags(const Header& left, const Header& right) {
    return left.tagClass == right.tagClass && left.number == right.number &&
           left.constructed == right.constructed;
}

std::size_t differenceAt(OctetSpan message, OctetSpan other, int level) {
    Reader left(message);
    Reader right(other);
    for (;;) {
        Part mine, others;
        const bool present = takePart(left, &mine);
        if (!takePart(right, &others) || !present) return mine.start;
        const bool equal = haveEqualTags(mine.header, others.header);
        if (equal && std::ranges::equal(mine.content, others.content)) {
            const bool sameHeader = mine.contentStart - mine.start == others.contentStart - others.start;
            if (sameHeader) continue;
        } else if (equal && mine.header.constructed && level < kMostLevels) {
            return mine.contentStart + differenceAt(mine.content, others.content, level + 1);
        }
        return mine.start;
    }
}

}  // namespace

std::size_t differingElement(OctetSpan message, OctetSpan other) {
    return differenceAt(message, other, 1);
}

std::optional<std::vector<Value>> readElements(OctetSpan octets) {
    Reader reader(octets);
    std::vector<Value> elements;
    if (!readList(reader, 1, false, &elements) || elements.empty()) return std::nullopt;
    return elements;
}

std::unique_ptr<Value> sequenceIn(OctetSpan octets) {
    return sequenceAt(0, octets);
}

std::size_t elementLength(OctetSpan octets) {
    Reader reader(octets);
    Header header{};
    if (octets.size() > std::numeric_limits<int>::max() || !reader.header(&header)) return 0;
    if (header.indefinite)
        return static_cast<std::size_t>(
            std::max(0, xd_indeflen_ex(octets.data(), static_cast<int>(octets.size()))));
    return header.length <= octets.size() - reader.position() ? reader.position() + header.length : 0;
}

}  // namespace tools
