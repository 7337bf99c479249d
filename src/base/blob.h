// CBlob, the byte string in which every encoded object, hash, signature and key crosses the interface.
//
// A blob owns its bytes and copies are deep. Its capacity is not recorded: shrinking keeps the array, and
// growing after a shrink takes a new one. An empty blob may have a null pointer or a live array, so only the
// length tells. Distinct objects may be used from distinct threads; one object belongs to one thread while it
// is changed.
#ifndef MIRVANE_BASE_BLOB_H
#define MIRVANE_BASE_BLOB_H

#include <cstdint>
#include <memory>

#include "asn1rt/export.h"
#include "base/text_holders.h"

namespace Mirvane {

class MIRVANE_API CBlob {
  public:
    // No bytes, and a null pointer.
    CBlob() noexcept;
    // A copy of `count` bytes. With 0 the pointer is not read, and the blob's own is null.
    CBlob(unsigned char const* bytes, unsigned long count);
    // `count` bytes of value 0; an array exists even for 0.
    explicit CBlob(unsigned long count);
    CBlob(CBlob const& other);
    // Leaves `other` as default construction does.
    CBlob(CBlob&& other) noexcept;
    ~CBlob();

    CBlob& operator=(CBlob const& other);
    CBlob& operator=(CBlob&& other) noexcept;

    // The length in bytes.
    unsigned long cbData() const { return length_; }
    // The bytes, through which a blob may also be filled. Valid until the blob is assigned, grows or dies.
    unsigned char* pbData() const { return data_.get(); }

    // Takes a copy of the bytes, which may be the blob's own.
    void assign(unsigned char const* bytes, unsigned long count);
    // Keeps the first bytes; what a growth adds has no certain value.
    void resize_to(unsigned long count);
    // Sets the length to 0 and keeps the array.
    void clear() noexcept { length_ = 0; }
    void swap(CBlob& other) noexcept;
    // Turns the order of the bytes round, in place.
    void reverse() noexcept;
    // Appends; a blob appended to itself gives its bytes twice.
    CBlob& operator+=(CBlob const& other);

    // The bytes of a file, whose name is narrow text for the system or wide text, which goes through the
    // platform's code page. An empty file gives no bytes and a null pointer. Throws 0x80070002 if the file
    // cannot be opened or the name is null, 0x80070570 if it cannot be read in full or is no file of a known
    // size, a last-error code if a wide name does not convert. After a failure to open or read the length is
    // 0.
    void readFromFile(char const* path);
    void readFromFile(wchar_t const* path);
    // Replaces the file's content. Only opening is checked (0x80070002): a disk that is full goes unreported.
    // The wide form as above.
    void writeToFile(char const* path) const;
    void writeToFile(wchar_t const* path) const;

    // The bytes that a text of hexadecimal digits tells, in either case, with white space between pairs. The
    // first character that does not fit ends the text without a failure, and so does a digit without a
    // partner. Null gives no bytes.
    void readFromHexString(char const* text);
    // Upper-case digits, with a blank between groups of so many bytes; 0 makes no groups.
    CStringProxy writeToHexString(unsigned long group = 0) const;

    // Equal lengths and bytes. The order is that of a dictionary over unsigned bytes: a prefix comes first,
    // but behind a blob that is 2^31 bytes longer or more, since the lengths' difference is taken in 32 bits.
    bool operator==(CBlob const& other) const noexcept;
    bool operator!=(CBlob const& other) const noexcept { return !(*this == other); }
    bool operator<(CBlob const& other) const noexcept { return compare(other) < 0; }
    bool operator<=(CBlob const& other) const noexcept { return compare(other) <= 0; }
    bool operator>(CBlob const& other) const noexcept { return compare(other) > 0; }
    bool operator>=(CBlob const& other) const noexcept { return compare(other) >= 0; }

  private:
    int compare(CBlob const& other) const noexcept;

    std::uint64_t length_ = 0;
    std::unique_ptr<unsigned char[]> data_;
};

}  // namespace Mirvane

#endif
