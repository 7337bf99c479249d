// Why a certificate is revoked: CrlReason, one reason (CRLReason of RFC 5280, 5.3.1), and CReasonFlags, the
// set of those that a distribution point answers for (ReasonFlags, 4.2.1.13). They number the reasons
// differently.
#ifndef MIRVANE_ASN1_REVOCATION_REASON_H
#define MIRVANE_ASN1_REVOCATION_REASON_H

#include <cstdint>

#include "asn1rt/export.h"

namespace Mirvane::ASN1 {

// 7 is not assigned, but is read and written; 11 and above are refused both ways.
enum CrlReason : std::uint32_t {
    unspecified = 0,
    keyCompromise = 1,
    cACompromise = 2,
    affiliationChanged = 3,
    superseded = 4,
    cessationOfOperation = 5,
    certificateHold = 6,
    removeFromCRL = 8,
    privilegeWithdrawn = 9,
    aACompromise = 10,
};

// 32 bits, of which bit 0 is the lowest and bit i is the named bit i of the BIT STRING. Bits above 15 stay
// behind when it is encoded.
class MIRVANE_API CReasonFlags {
  public:
    enum Flag : std::uint32_t {
        unused = 0x1,
        keyCompromise = 0x2,
        cACompromise = 0x4,
        affiliationChanged = 0x8,
        superseded = 0x10,
        cessationOfOperation = 0x20,
        certificateHold = 0x40,
        privilegeWithdrawn = 0x80,
        aACompromise = 0x100,
    };

    // All flags in the order of their bits, to walk them.
    static constexpr Flag sequence[] = {
        unused,       keyCompromise,        cACompromise,    affiliationChanged,
        superseded,   cessationOfOperation, certificateHold, privilegeWithdrawn,
        aACompromise,
    };

    explicit CReasonFlags(unsigned int value) : value_(value) {}

    unsigned int get_value() const { return value_; }
    void put_value(unsigned int value) { value_ = value; }

    // The bit `i` modulo 32.
    bool get_bit(unsigned int i) const { return (value_ & bit(i)) != 0; }
    void put_bit(unsigned int i, bool set) { value_ = set ? value_ | bit(i) : value_ & ~bit(i); }

    // With a mask of several flags: sets all, clears all, tells whether any is set.
    void add_flag(Flag flag) { value_ |= flag; }
    void remove_flag(Flag flag) { value_ &= ~std::uint32_t{flag}; }
    bool get_flag(Flag flag) const { return (value_ & flag) != 0; }

    bool operator==(CReasonFlags const& other) const { return value_ == other.value_; }
    bool operator!=(CReasonFlags const& other) const { return !(*this == other); }

  private:
    static std::uint32_t bit(unsigned int i) { return std::uint32_t{1} << (i % 32); }

    std::uint32_t value_;
};

}  // namespace Mirvane::ASN1

#endif
