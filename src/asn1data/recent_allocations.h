// What a decoder allocates for a value that it does not keep; not part of the interface.
#ifndef MIRVANE_ASN1DATA_RECENT_ALLOCATIONS_H
#define MIRVANE_ASN1DATA_RECENT_ALLOCATIONS_H

#include "asn1rt/context.h"

namespace asn1data {

// Gives back what has been allocated since its construction: the blocks of a heap stand in the order of their
// allocation.
class RecentAllocations {
  public:
    explicit RecentAllocations(ASN1CTXT* ctxt) : mContext(ctxt), mBefore(newest()) {}

    void release() {
        while (newest() != mBefore)
            rtMemHeapFreePtr(&mContext->typeMemHeap, newest() + 1);
    }

  private:
    rtMemBlock* newest() const { return mContext->typeMemHeap ? mContext->typeMemHeap->blockList : nullptr; }

    ASN1CTXT* mContext;
    rtMemBlock* mBefore;
};

}  // namespace asn1data

#endif
