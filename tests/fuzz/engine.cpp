// Every type of the schemas through the engine: two octets choose the type, one the flags of the context.
#include "fuzz/fields.h"
#include "fuzz/target.h"
#include "fuzz/whole_value.h"
#include "support/contexts.h"
#include "support/recode.h"

namespace {

using fuzz::require;
using test::Octets;
using Type = asn1data::TypeDescriptor;

// The octets of a record, nothing if it does not encode.
Octets encoded(const Type& type, const void* record, int* status) {
    test::Encoder output;
    *status = asn1data::encode(output, type, record, ASN1EXPL);
    require(output.recorded() == std::min(*status, 0), "a failed encode is recorded");
    if (*status < 0) return {};
    const unsigned char* const first = xe_getp(output);
    return Octets(first, first + *status);
}

// What a value encodes to, its copy encodes to as well, also when the value itself is gone.
void copyAndFree(ASN1CTXT* source, const Type& type, void* record, const Octets& expected) {
    test::LiveContext target;
    void* const copied = asn1data::newRecord(target, type);
    asn1data::copy(target, type, record, copied);
    asn1data::freeValue(source, type, record);
    int status = 0;
    require(encoded(type, copied, &status) == expected, "a copy encodes as the original");
    asn1data::freeValue(target, type, copied);
}

}  // namespace

MIRVANE_FUZZ_TARGET(any_type, 3) {
    const Type& type = *asn1data::kAllTypes[input.number16() % asn1data::kAllTypesCount].type;
    const unsigned flags = input.number();
    const Octets message(input.bytes().begin(), input.bytes().end());
    test::LiveContext context;
    if (xd_setp(context, message.data(), static_cast<int>(message.size()), nullptr, nullptr) != RTS_OK)
        return;
    if (flags & 1) rtCtxtSetFlag(context, ASN1_NO_COPY);
    if (flags & 2) rtCtxtSetFlag(context, ASN1_LAX_LENGTH);

    void* const record = asn1data::newRecord(context, type);
    const int decoded = asn1data::decode(context, type, record, ASN1EXPL, 0);
    require(decoded <= 0, "a decode is a success or a failure");
    // The first failure that is met stands in the record, also one that was no reason to stop.
    require(decoded == RTS_OK || context.recorded() != RTS_OK, "a failed decode is recorded");
    if (decoded != RTS_OK) {
        asn1data::freeValue(context, type, record);
        return;
    }
    int status = 0;
    const Octets first = encoded(type, record, &status);
    const bool strict = fuzz::isWhole(type, record);
    require(status >= 0 || !strict, "what decodes encodes");
    if (!first.empty()) {
        const test::Recoded again = test::recode(type, first);
        require(again.status == RTS_OK || !strict, "what was encoded decodes");
        require(again.octets == first || !strict, "what was encoded comes back to its own bytes");
    }
    copyAndFree(context, type, record, first);
}
