#include "bounds_inputs.h"

#include <string_view>

#include "asn1/big_integer.h"
#include "asn1/name.h"
#include "ocsp/basic_response.h"
#include "ocsp/request_message.h"
#include "support/recode.h"

namespace bench {
namespace {

using Make = std::function<Octets(std::size_t)>;
using Read = std::function<bool(const Octets&)>;

// The octets of `front`, then of `back`.
Octets joined(Octets front, const Octets& back) {
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

Octets wrapped(unsigned char identifier, const Octets& content) {
    const auto size = static_cast<std::uint32_t>(content.size());
    Octets header = {identifier, 0x84};
    for (int shift = 24; shift >= 0; shift -= 8)
        header.push_back(static_cast<unsigned char>(size >> shift));
    return joined(std::move(header), content);
}

Octets repeated(const Octets& piece, std::size_t size) {
    Octets all;
    all.reserve(size + piece.size());
    while (all.size() < size)
        all.insert(all.end(), piece.begin(), piece.end());
    return all;
}

// One element of definite, and one of indefinite length, around as many pieces as fit.
Make many(unsigned char identifier, const char* piece) {
    return [=](std::size_t size) { return wrapped(identifier, repeated(test::octets(piece), size)); };
}
Make manyIndefinite(unsigned char identifier, const char* piece) {
    return [=](std::size_t size) {
        const Octets content = repeated(test::octets(piece), size);
        return joined(joined({identifier, 0x80}, content), {0, 0});
    };
}

// Openings without an end, or with all ends behind them.
Make openings(const char* opening, bool areClosed) {
    return [=](std::size_t size) {
        const Octets piece = test::octets(opening);
        if (!areClosed) return repeated(piece, size);
        const Octets front = repeated(piece, size * piece.size() / (piece.size() + 2));
        return joined(front, Octets(front.size() / piece.size() * 2, 0));
    };
}

// Each level with its true length: what stands in front of the value at that level, and the identifier around
// both, from the inside out.
struct Level {
    const char* front;
    unsigned char identifier;
};
Make levels(const char* innermost, std::vector<Level> turn) {
    return [=](std::size_t size) {
        test::Encoder output;
        int length = 0;
        const auto put = [&](const char* hex) {
            const Octets octets = test::octets(hex);
            if (!octets.empty())
                length += xe_memcpy(output, octets.data(), static_cast<std::uint32_t>(octets.size()));
        };
        put(innermost);
        while (static_cast<std::size_t>(length) < size) {
            for (const Level& level : turn) {
                put(level.front);
                const ASN1TAG tag =
                    static_cast<ASN1TAG>(level.identifier & 0xE0) << 24 | (level.identifier & 0x1F);
                length = xe_tag_len(output, tag, length);
            }
        }
        return Octets(xe_getp(output), xe_getp(output) + length);
    };
}

// INTEGERs that fall, so that sorting has the most to do.
Octets fallingIntegers(std::size_t size) {
    Octets content;
    for (std::uint32_t number = 0x7FFFFFFF; content.size() < size; number -= 0x1000) {
        for (const std::uint32_t octet : {2u, 4u, number >> 24, number >> 16, number >> 8, number})
            content.push_back(static_cast<unsigned char>(octet));
    }
    return wrapped(0x31, content);
}

// Identifiers of so many arcs, as many as fit.
Make identifiers(std::size_t arcs) {
    return [=](std::size_t size) { return wrapped(0x30, repeated(wrapped(6, Octets(arcs - 1, 1)), size)); };
}
Make oneIdentifier(unsigned char octet) {
    return [=](std::size_t size) {
        Octets arcs(size, octet);
        arcs.back() = 1;
        return wrapped(0x30, wrapped(6, arcs));
    };
}

// A length far behind the end, with octets behind it all the same.
Make claiming(const char* front) {
    return [=](std::size_t size) { return joined(test::octets(front), Octets(size)); };
}
Make claimingInside(unsigned char identifier, const char* front) {
    return [=](std::size_t size) { return wrapped(identifier, joined(test::octets(front), Octets(size))); };
}

// What reads: any type of the schemas, that and the encoder, or a class.
Read decode(const char* name) {
    const auto& type = test::typeNamed(name);
    return [&type](const Octets& input) {
        test::LiveContext context;
        return xd_setp(context, input.data(), static_cast<int>(input.size()), nullptr, nullptr) == RTS_OK &&
               asn1data::decode(context, type, asn1data::newRecord(context, type), ASN1EXPL, 0) == RTS_OK;
    };
}
Read decodeAndEncode(const char* name) {
    const auto& type = test::typeNamed(name);
    return [&type](const Octets& input) { return test::recode(type, input).status == RTS_OK; };
}
template <typename Class>
Read throughClass() {
    return [](const Octets& input) {
        try {
            Class value;
            value.decode(Mirvane::CBlob(input.data(), input.size()));
            value.encode();
            return true;
        } catch (const ATL::CAtlException&) {
            return false;
        }
    };
}
bool nameToText(const Octets& input) {
    Mirvane::ASN1::CName name;
    name.decode(Mirvane::CBlob(input.data(), input.size()));
    return name.toString().c_str()[0] != 0;
}

// The smallest entries of the messages: identifiers of one arc and no hashes.
Octets request(std::size_t size) {
    const Octets entry = test::octets("30 0E 30 0C 30 03 06 01 2A 04 00 04 00 02 01 01");
    return wrapped(0x30, wrapped(0x30, wrapped(0x30, repeated(entry, size))));
}
Octets response(std::size_t size) {
    const Octets entry = test::octets(
        "30 1F 30 0C 30 03 06 01 2A 04 00 04 00 02 01 01 80 00 18 0D 32 30 32 36 30 31 30 31 31 32 30 30 5A");
    const Octets front = test::octets("A2 02 04 00 18 0F 32 30 32 36 30 31 30 31 31 32 30 30 30 30 5A");
    const Octets data = wrapped(0x30, joined(front, wrapped(0x30, repeated(entry, size))));
    return wrapped(0x30, joined(data, test::octets("30 03 06 01 2A 03 01 00")));
}

using Inputs = std::vector<HostileInput>;

void addNesting(Inputs& inputs) {
    const std::vector<Level> messages = {{"", 0xB4}, {"30 09 02 01 02 82 01 61 82 01 62", 0x30}};
    const std::vector<Level> extensions = {{"", 0x31},
                                           {"06 09 2A 86 48 86 F7 0D 01 09 0E", 0x30},
                                           {"", 0x30},
                                           {"", 0x04},
                                           {"06 03 55 1D 09", 0x30},
                                           {"", 0x30}};
    inputs.push_back({"messages in messages, true lengths", false,
                      levels("30 0F 30 09 02 01 02 82 01 61 82 01 62 B3 02 05 00", messages),
                      decode("PKIMessage")});
    inputs.push_back({"messages in messages, indefinite", false,
                      openings("30 80 30 09 02 01 02 82 01 61 82 01 62 B4 80", true), decode("PKIMessage")});
    inputs.push_back({"extensions in the values of extensions", false,
                      levels("30 08 30 06 06 02 2A 03 04 00", extensions), decode("Extensions")});
    inputs.push_back(
        {"an open type nested without end", true, openings("30 80", false), decode("CertificateList")});
    inputs.push_back({"an open type nested, with all ends", true, openings("30 80", true),
                      decodeAndEncode("CertificateList")});
    inputs.push_back(
        {"strings in strings, indefinite", false, openings("24 80", true), decode("SubjectKeyIdentifier")});
}

void addElements(Inputs& inputs) {
    inputs.push_back({"names of no characters", true, many(0x30, "81 00"), decodeAndEncode("GeneralNames")});
    inputs.push_back({"the same, indefinite", true, manyIndefinite(0x30, "81 00"), decode("GeneralNames")});
    inputs.push_back(
        {"numbers of one octet", true, many(0x30, "02 01 00"), decodeAndEncode("POPODecKeyRespContent")});
    inputs.push_back(
        {"identifiers of one octet", true, many(0x30, "06 01 2A"), decodeAndEncode("AcceptableResponses")});
    inputs.push_back({"NULLs for identifiers", false, many(0x30, "05 00"), decode("AcceptableResponses")});
    inputs.push_back({"names of one attribute, as text", true,
                      many(0x30, "31 0A 30 08 06 03 55 04 03 0C 01 61"), nameToText});
    inputs.push_back({"a request of the smallest entries", true, request,
                      throughClass<Mirvane::PKI::OCSP::CRequestMessage>()});
    inputs.push_back({"a response of the smallest entries", true, response,
                      throughClass<Mirvane::PKI::OCSP::CBasicResponse>()});
}

void addStrings(Inputs& inputs) {
    inputs.push_back(
        {"an octet string of empty segments", true, many(0x24, "04 00"), decode("SubjectKeyIdentifier")});
    inputs.push_back({"the same, indefinite, an octet in each", true, manyIndefinite(0x24, "04 01 41"),
                      decode("SubjectKeyIdentifier")});
    inputs.push_back({"a bit string of segments of one octet", true, many(0x23, "03 02 00 41"),
                      decodeAndEncode("UniqueIdentifier")});
    inputs.push_back({"the same, indefinite", true, manyIndefinite(0x23, "03 02 00 41"),
                      decodeAndEncode("UniqueIdentifier")});
    inputs.push_back(
        {"text in segments of one octet", true, manyIndefinite(0x36, "04 01 41"), decodeAndEncode("CPSuri")});
    inputs.push_back({"one long INTEGER", true,
                      [](std::size_t size) { return wrapped(2, Octets(size, 0x5A)); },
                      throughClass<Mirvane::ASN1::CBigInteger>()});
}

void addSortingAndIdentifiers(Inputs& inputs) {
    inputs.push_back(
        {"SET OF in reverse order, decoded", true, fallingIntegers, decode("CertificateRevocationLists")});
    inputs.push_back({"SET OF in reverse order, encoded too", true, fallingIntegers,
                      decodeAndEncode("CertificateRevocationLists")});
    inputs.push_back(
        {"identifiers of 128 arcs", true, identifiers(128), decodeAndEncode("AcceptableResponses")});
    inputs.push_back({"identifiers of 129 arcs", false, identifiers(129), decode("AcceptableResponses")});
    inputs.push_back(
        {"one identifier of ever more arcs", false, oneIdentifier(1), decode("AcceptableResponses")});
    inputs.push_back({"one arc without end", true, oneIdentifier(0x81), decode("AcceptableResponses")});
}

void addLengths(Inputs& inputs) {
    inputs.push_back({"two gigabytes claimed", false, claiming("30 84 7F FF FF FF"), decode("OCSPRequest")});
    inputs.push_back({"two gigabytes claimed inside", false,
                      claimingInside(0x30, "30 03 06 01 2A 04 84 7F FF FF 00"), decode("CertID")});
    inputs.push_back({"two gigabytes claimed by segments", false,
                      claimingInside(0x24, "04 01 41 04 84 7F FF FF 00"), decode("SubjectKeyIdentifier")});
    inputs.push_back({"two gigabytes claimed by elements", false, claimingInside(0x30, "06 84 7F FF FF 00"),
                      decode("AcceptableResponses")});
}

}  // namespace

std::vector<HostileInput> hostileInputs() {
    Inputs inputs;
    addNesting(inputs);
    addElements(inputs);
    addStrings(inputs);
    addSortingAndIdentifiers(inputs);
    addLengths(inputs);
    return inputs;
}

}  // namespace bench
