// Texts: names, times, numbers, identifiers, and the conversions between character sets.
#include <algorithm>
#include <array>
#include <cstring>

#include "asn1/attribute_register.h"
#include "asn1/big_integer_text.h"
#include "asn1/character_string.h"
#include "asn1/name.h"
#include "asn1/object_identifier_text.h"
#include "asn1rt/big_integer.h"
#include "asn1rt/big_integer_codec.h"
#include "asn1rt/generalized_time.h"
#include "asn1rt/text.h"
#include "asn1rt/time_parse.h"
#include "asn1rt/utc_time.h"
#include "base/code_page_text.h"
#include "base/date_time_text.h"
#include "fuzz/fields.h"
#include "fuzz/target.h"
#include "support/contexts.h"

namespace {

using namespace Mirvane;
using fuzz::passes;
using fuzz::require;

// One character for each octet, so that all of 1 to 255 come; `wide` makes every fourth a high one.
std::wstring wideText(const std::string& text, bool wide) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto octet = static_cast<unsigned char>(text[i]);
        result += static_cast<wchar_t>(wide && i % 4 == 3 ? octet * 0x101 : octet);
    }
    return result;
}

// True unless the text is refused: an empty value in a text is std::out_of_range, which is told.
template <typename Operation>
bool takesText(Operation operation) {
    try {
        return passes(operation);
    } catch (const std::out_of_range&) {
        return false;
    }
}

template <typename Name>
void nameFromText(const std::wstring& text) {
    Name name;
    if (!takesText([&] { name.fromString(text.c_str()); })) return;
    CBlob encoded;
    if (!passes([&] { encoded = name.encode(); })) return;
    Name again;
    // The text of a type without a register entry is its encoding, and may be none.
    if (!passes([&] { again.decode(encoded); })) return;
    require(again.encode() == encoded, "a name comes back to its own bytes");
    fuzz::read(again.toString().c_str());
}

}  // namespace

MIRVANE_FUZZ_TARGET(name_text, fuzz::kNoElements) {
    const unsigned mode = input.number();
    const std::wstring text = wideText(input.text(), mode & 1);
    nameFromText<ASN1::CName>(text);
    nameFromText<ASN1::CRelativeDistinguishedName>(text);
    const auto syntax = static_cast<ASN1::StringType>(mode >> 1 & 7);
    takesText([&] {
        const auto attribute = ASN1::CATAVRegister::makeATAV(text.c_str(), syntax);
        fuzz::read(attribute.get_type());
        passes([&] { fuzz::read(attribute.get_value_str().c_str()); });
        passes([&] { attribute.encode(); });
    });
    passes(
        [&] {
            const CBlob encoded = ASN1::encodeCharString(text.c_str(), syntax);
            fuzz::read(ASN1::decodeCharString(encoded).c_str());
        },
        std::array{failure::fromBits(failure::asn1), failure::fromBits(failure::badUtf8)});
}

namespace {

template <typename Time>
void timeObject(const std::string& text, bool derRules) {
    std::string own = text;
    own.resize(text.size() + 40);
    char* record = own.data();
    Time time(record, static_cast<int>(own.size()), derRules);
    for (const int field : {time.getYear(), time.getMonth(), time.getDay(), time.getHour(), time.getMinute(),
                            time.getSecond(), time.getFraction(), time.getDiff(), time.getUTC()})
        fuzz::seen = fuzz::seen + static_cast<unsigned>(field);
    time.getTime();
    time.getDaysNum();
    time.getMillisNum();
    if (time.parseString(text.c_str()) != RTS_OK || time.compileString() != RTS_OK) return;
    const std::string first = time.getTimeStringPtr();
    require(time.parseString(first.c_str()) == RTS_OK, "the text of a time is read");
    require(time.compileString() == RTS_OK, "what was read from a text is written");
    require(time.getTimeStringPtr() == first, "the text of a time comes back");
    Time copy(time);
    require(std::strcmp(copy.getTimeStringPtr(), first.c_str()) == 0, "a copy has the text");
    copy.setDay(31);
    copy.setDiff(-90);
    copy.setUTC(true);
    copy.setSecond(59);
    fuzz::read(copy.getTimeStringPtr());
    fuzz::seen = fuzz::seen + static_cast<unsigned>(copy.equals(time));
}

void timeRecord(int (*parse)(ASN1CTXT*, const char*, rtTimeRecord*), const std::string& text) {
    test::LiveContext context;
    rtTimeRecord time;
    const int status = parse(context, text.c_str(), &time);
    require(status == RTS_OK || status == RTS_BAD_DATETIME, "a time is read or is none");
    require(context.recorded() == status, "a failure is recorded");
    if (status != RTS_OK) return;
    char* written = nullptr;
    const int made = rtMakeGeneralizedTime(context, &time, &written, 0);
    require(made == RTS_OK || made == RTS_BAD_DATETIME, "a time is written or out of range");
    if (made != RTS_OK) return;
    rtTimeRecord again;
    require(rtParseGeneralizedTime(context, written, &again) == RTS_OK, "a written time is read");
    require(again.year == time.year && again.second == time.second && again.diffMinute == time.diffMinute,
            "a written time has the fields");
}

}  // namespace

MIRVANE_FUZZ_TARGET(time_text, fuzz::kNoElements) {
    const bool derRules = input.number() & 1;
    const std::string text = input.text().c_str();
    passes([&] { fuzz::read(CDateTime(text.c_str())); });
    passes([&] {
        const CDateTime time = fromXsdDateTimeString(text.c_str());
        if (!passes([&] { time.year(); })) return;
        const CStringProxy written = toXsdDateTimeString(time);
        require(std::strcmp(toXsdDateTimeString(fromXsdDateTimeString(written.c_str())).c_str(),
                            written.c_str()) == 0,
                "the text of a time comes back");
    });
    timeObject<ASN1CGeneralizedTime>(text, derRules);
    timeObject<ASN1CUTCTime>(text, derRules);
    timeRecord(&rtParseGeneralizedTime, text);
    timeRecord(&rtParseUTCTime, text);
}

namespace {

void bigIntegerText(ASN1CTXT* context, const std::string& text, int radix) {
    ASN1BigInt number;
    rtBigIntInit(&number);
    if (rtBigIntSetStr(context, &number, text.c_str(), radix) == RTS_OK) {
        const int count = rtBigIntGetDataLen(&number);
        test::Octets octets(static_cast<std::size_t>(count));
        require(rtBigIntGetData(context, &number, octets.data(), count) == count,
                "a number fits its own size");
        for (const int other : {2, 8, 10, 16}) {
            const auto digits = static_cast<std::size_t>(rtBigIntDigitsNum(&number, other)) + 2;
            std::string written(digits, '?');
            const int status =
                rtBigIntToString(context, &number, other, written.data(), static_cast<int>(digits));
            require(status == RTS_OK || (number.sign == 0 && status == RTS_BAD_ARGUMENT),
                    "a number fits its own digits");
        }
    }
    rtBigIntFree(context, &number);
}

void bigIntegerCodec(const std::string& text) {
    test::Encoder output;
    const int count = xe_bigint(output, text.c_str(), ASN1EXPL);
    if (count < 0) return;
    const unsigned char* const first = xe_getp(output);
    const test::Octets octets(first, first + count);
    test::Decoder input(octets);
    const char* read = nullptr;
    require(xd_bigint(input, &read, ASN1EXPL, 0) == RTS_OK, "a written number is read");
    test::Encoder again;
    require(xe_bigint(again, read, ASN1EXPL) == count, "a number comes back in its size");
    require(std::memcmp(xe_getp(again), octets.data(), octets.size()) == 0, "a number comes back");
}

}  // namespace

MIRVANE_FUZZ_TARGET(big_integer, fuzz::kNoElements) {
    const unsigned mode = input.number();
    const std::string text = std::string(input.text().c_str());
    test::LiveContext context;
    for (const int radix : {0, 2, 8, 10, 16})
        bigIntegerText(context, text, radix);
    bigIntegerCodec(text);
    test::Encoder output;
    xe_biguint(output, text.c_str(), ASN1EXPL);
    const std::size_t middle = text.size() * mode / 256;
    rtBigIntStrCompare(context, text.substr(0, middle).c_str(), text.substr(middle).c_str());

    const CBlob octets = input.rest();
    ASN1::CBigInteger left(octets.pbData(), octets.cbData() / 2);
    const ASN1::CBigInteger right(octets.pbData() + octets.cbData() / 2, octets.cbData() / 2);
    if (octets.cbData() >= 2) left.add(right);
    left.increment(static_cast<int>(mode));
    require((left < right) == (right > left), "two comparisons agree");
    left.abs();
    passes([&] {
        const CBlob encoded = left.encode();
        ASN1::CBigInteger again;
        again.decode(encoded);
        require(again.encode() == encoded, "a number comes back to its own bytes");
    });
    passes([&] {
        ASN1::CBigInteger number;
        ASN1::StringToBigInteger(text.c_str(), number);
        CBlob written;
        ASN1::BigIntegerToString(number, written);
        fuzz::read(written);
        ASN1::ASN1BigIntegerToDWORD(text.c_str());
    });
}

MIRVANE_FUZZ_TARGET(hex_text, fuzz::kNoElements) {
    const unsigned long group = input.number() % 8;
    const std::string text = input.text();
    CBlob blob;
    blob.readFromHexString(text.c_str());
    require(blob.cbData() <= text.size() / 2, "two digits make an octet");
    CBlob again;
    again.readFromHexString(blob.writeToHexString(group).c_str());
    require(again == blob, "what was written in digits is read");
    const CBlob octets = input.rest();
    again.readFromHexString(octets.writeToHexString(group).c_str());
    require(again == octets, "all octets have digits");
}

MIRVANE_FUZZ_TARGET(object_identifier, fuzz::kNoElements) {
    const std::string text = input.text().c_str();
    ASN1OBJID id{};
    if (rtStrToOid(text.c_str(), &id) == 1) {
        std::string written(static_cast<std::size_t>(rtOidToStrLen(&id)) + 1, '?');
        require(rtOidToStr(&id, written.data(), static_cast<int>(written.size()) - 1) == 1,
                "a text fits its own length");
        ASN1OBJID again{};
        require(rtStrToOid(written.c_str(), &again) == 1 && again == id, "an identifier comes back");
        test::Encoder output;
        const int count = xe_objid(output, &id, ASN1EXPL);
        if (count > 0) {
            test::Decoder decoder(test::Octets(xe_getp(output), xe_getp(output) + count));
            require(xd_objid(decoder, &again, ASN1EXPL, 0) == RTS_OK && again == id, "it is read as written");
        }
    }
    ASN1OBJID record{};
    if (ASN1::str2oid(text.c_str(), &record) == 0) fuzz::read(ASN1::toOID(record).c_str());

    test::Decoder decoder(test::Octets(input.bytes().begin(), input.bytes().end()));
    if (xd_objid(decoder, &id, ASN1EXPL, 0) == RTS_OK) {
        fuzz::read(ASN1::toOID(id).c_str());
        test::Encoder output;
        xe_objid(output, &id, ASN1EXPL);
    }
}

MIRVANE_FUZZ_TARGET(utf8_text, fuzz::kNoElements) {
    const unsigned mode = input.number();
    const std::string text = input.text().c_str();
    test::LiveContext context;
    std::wstring wide(text.size() + 1, L'\0');
    require(rtUTF8Len(text.c_str()) <= static_cast<int>(text.size()), "a character has an octet at least");
    const int units = rtUTF8ToWCS(context, text.c_str(), wide.data(), text.size() * mode / 255);
    // A zero in a form of two octets would end the text.
    const auto end = wide.begin() + std::max(units, 0);
    if (units > 0 && std::find(wide.begin(), end, L'\0') == end) {
        std::string narrow(static_cast<std::size_t>(units) * 6 + 1, '\0');
        const int octets =
            rtWCSToUTF8(context, wide.data(), static_cast<std::size_t>(units), narrow.data(), narrow.size());
        require(octets > 0, "what was read is written");
        std::wstring again(static_cast<std::size_t>(units) + 1, L'\0');
        narrow.resize(static_cast<std::size_t>(octets));
        require(rtUTF8ToWCS(context, narrow.c_str(), again.data(), again.size()) == units, "and read again");
        require(
            again.compare(0, static_cast<std::size_t>(units), wide, 0, static_cast<std::size_t>(units)) == 0,
            "a text comes back");
    }
    Asn132BitCharString string{};
    if (rtCToUCSString(context, text.c_str(), &string, nullptr)) {
        std::wstring back(mode + 1u, L'\0');
        rtUCSToWCSString(&string, back.data(), mode);
    }
    if (const auto platformWide = Mirvane::widened(text.c_str())) {
        const auto narrow = Mirvane::narrowed(platformWide->c_str());
        require(!narrow || narrow->size() >= platformWide->size(), "a character has an octet at least");
    }
}
