// Takes elements off BER (X.690), DER included: a read checks, takes and steps on, and the first failure
// stays. Nothing is copied; what is taken shows the octets given. No recursion, and the time is linear in
// them.
#ifndef MIRVANE_PLATFORM_OPENSSL_BER_READER_H
#define MIRVANE_PLATFORM_OPENSSL_BER_READER_H

#include "answer.h"

namespace platform {

struct Element {
    Octets whole;    // with tag and length, and the end-of-contents octets of an indefinite length
    Octets content;  // without
};

class BerReader {
  public:
    explicit BerReader(Octets octets) : rest_(octets) {}

    // Whether the next element has this identifier octet.
    bool isNext(BYTE identifier) const { return !failed_ && !rest_.empty() && rest_[0] == identifier; }
    bool atEnd() const { return rest_.empty(); }
    // Whether all was taken and nothing failed.
    bool finished() const { return !failed_ && rest_.empty(); }
    bool failed() const { return failed_; }

    // The next element, which must have this identifier octet; an empty one after a failure.
    Element take(BYTE identifier);
    // The next element, whatever it is.
    Element takeAny();

  private:
    Octets rest_;
    bool failed_ = false;
};

}  // namespace platform

#endif
