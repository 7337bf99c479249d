#include "message.h"

#include <fmt/format.h>

#include <limits>

#include "asn1data/engine.h"
#include "asn1rt/ber_decode.h"
#include "asn1rt/ber_encode.h"
#include "common/program.h"
#include "common/status_name.h"
#include "elements.h"

namespace tools {
namespace {

int sizeOf(std::span<const unsigned char> octets) {
    return static_cast<int>(octets.size());
}

std::string failure(int status, std::size_t octet) {
    return fmt::format("status {} ({}) at byte {}", status, statusName(status), octet);
}

}  // namespace

Message::Message(const asn1data::TypeDescriptor& type, Octets octets, const std::string& source)
    : mType(type), mSource(source), mOctets(std::move(octets)) {
    if (mOctets.size() > std::numeric_limits<int>::max()) throw InputError(source, "is too large");
    mValue = asn1data::newRecord(&mContext, type);
    int status = xd_setp(&mContext, mOctets.data(), sizeOf(mOctets), nullptr, nullptr);
    if (status == RTS_OK) status = asn1data::decode(&mContext, type, mValue, ASN1EXPL, 0);
    const std::size_t length = elementLength(mOctets);
    // An open type without an end decodes as one without octets.
    if (status == RTS_OK && type.kind == asn1data::Kind::OpenType && length == 0) status = RTS_END_OF_BUFFER;
    if (status != RTS_OK) throw InputError(source, failure(status, mContext.buffer.byteIndex));
    mLength = length > 0 ? length : mOctets.size();
}

Octets Message::encoded() const {
    ASN1Context context;
    int status = xe_setp(&context, nullptr, 0);
    if (status == RTS_OK) status = asn1data::encode(&context, mType, mValue, ASN1EXPL);
    const unsigned char* start = xe_getp(&context);
    if (status >= 0) return Octets(start, start + status);
    // An encoder writes from the end: what stands behind the failing value is all that it has written.
    const std::size_t written = context.buffer.size - 1 - context.buffer.byteIndex;
    throw InputError(mSource, "encoding: " + failure(status, written) + " from the end");
}

const void* decodeWhole(ASN1CTXT* owner, const asn1data::TypeDescriptor& type,
                        std::span<const unsigned char> octets) {
    if (octets.empty() || elementLength(octets) != octets.size()) return nullptr;
    ASN1Context context;
    rtCtxtSetMemHeap(&context, owner);
    void* value = asn1data::newRecord(&context, type);
    if (xd_setp(&context, octets.data(), sizeOf(octets), nullptr, nullptr) != RTS_OK) return nullptr;
    return asn1data::decode(&context, type, value, ASN1EXPL, 0) == RTS_OK ? value : nullptr;
}

void tellFurtherBlocks(const CLI::App& app, const Octets& file, const std::string& source) {
    const std::size_t count = pemBlocks(file);
    if (count > 1) complain(app, fmt::format("{}: {} more PEM blocks are left out", source, count - 1));
}

}  // namespace tools
