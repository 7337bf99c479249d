// A message, decoded as a value of one type.
#ifndef MIRVANE_TOOLS_MIRVANE_ASN1_MESSAGE_H
#define MIRVANE_TOOLS_MIRVANE_ASN1_MESSAGE_H

#include <CLI/CLI.hpp>

#include <cstddef>
#include <span>
#include <string>

#include "asn1data/descriptor.h"
#include "asn1rt/shared_context.h"
#include "common/input.h"

namespace tools {

class Message {
  public:
    // Throws InputError, with the status and the octet at which the decoder stopped.
    Message(const asn1data::TypeDescriptor& type, Octets octets, const std::string& source);

    // The record, which lives as long as this object.
    const void* value() const { return mValue; }
    // The message itself, without octets that stand behind it.
    std::span<const unsigned char> octets() const { return std::span(mOctets).first(mLength); }
    std::size_t trailing() const { return mOctets.size() - mLength; }
    // What decodes parts of the value shares the memory of this context.
    ASN1CTXT* context() { return &mContext; }

    // The value, encoded again. Throws InputError.
    Octets encoded() const;

  private:
    const asn1data::TypeDescriptor& mType;
    std::string mSource;
    Octets mOctets;
    ASN1Context mContext;
    void* mValue = nullptr;
    std::size_t mLength = 0;
};

// Decodes all of `octets` as one value, in memory of the owner's; null if they do not decode or if octets are
// left.
const void* decodeWhole(ASN1CTXT* owner, const asn1data::TypeDescriptor& type,
                        std::span<const unsigned char> octets);

// Tells the user of the blocks of PEM in the file that are no part of the message: all but the first.
void tellFurtherBlocks(const CLI::App& app, const Octets& file, const std::string& source);

}  // namespace tools

#endif
