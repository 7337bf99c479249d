// Memory for values that a decoder does not keep; not part of the interface.
#ifndef MIRVANE_ASN1DATA_PASSING_MEMORY_H
#define MIRVANE_ASN1DATA_PASSING_MEMORY_H

#include <cstdint>
#include <cstring>

#include "asn1rt/context.h"

#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(begin, size) ((void)(begin), (void)(size))
#define ASAN_UNPOISON_MEMORY_REGION(begin, size) ((void)(begin), (void)(size))
#endif

namespace asn1data {

// A little room on the stack, taken piece by piece and given back in the other order. The address sanitizer
// sees the ends of the pieces as it does those of blocks.
class PassingRoom {
  public:
    PassingRoom() { close(0); }
    ~PassingRoom() { ASAN_UNPOISON_MEMORY_REGION(mOctets, sizeof mOctets); }
    PassingRoom(const PassingRoom&) = delete;
    PassingRoom& operator=(const PassingRoom&) = delete;

    // `size` octets of no certain value, aligned to 16; null if there is too little left.
    void* take(std::uint64_t size) {
        if (size > sizeof mOctets - mUsed) return nullptr;
        void* const piece = mOctets + mUsed;
        ASAN_UNPOISON_MEMORY_REGION(piece, size);
        // A whole step more, so that two pieces never touch.
        mUsed += static_cast<std::uint32_t>(size / kStep + 1) * kStep;
        if (mUsed > sizeof mOctets) mUsed = sizeof mOctets;
        return piece;
    }

    std::uint32_t used() const { return mUsed; }
    void giveBackTo(std::uint32_t used) {
        mUsed = used;
        close(used);
    }

  private:
    static constexpr std::uint32_t kStep = 16;

    void close(std::uint32_t used) { ASAN_POISON_MEMORY_REGION(mOctets + used, sizeof mOctets - used); }

    std::uint32_t mUsed = 0;
    alignas(16) unsigned char mOctets[2048];
};

// Which values are not kept, and their room.
struct Passing {
    bool applies() const { return tried + taken > 0; }

    int tried = 0;  // values being decoded that nobody will see, one inside the other
    int taken = 0;  // elements being decoded that are looked at once
    PassingRoom room;
};

// Gives back what has been allocated or taken since its construction: the blocks of a heap stand in the order
// of their allocation.
class RecentAllocations {
  public:
    RecentAllocations(ASN1CTXT* ctxt, PassingRoom& room)
        : mContext(ctxt), mRoom(room), mNewest(newest()), mUsed(room.used()) {}

    void release() {
        while (newest() != mNewest)
            rtMemHeapFreePtr(&mContext->typeMemHeap, newest() + 1);
        mRoom.giveBackTo(mUsed);
    }

  private:
    rtMemBlock* newest() const { return mContext->typeMemHeap ? mContext->typeMemHeap->blockList : nullptr; }

    ASN1CTXT* mContext;
    PassingRoom& mRoom;
    rtMemBlock* mNewest;
    std::uint32_t mUsed;
};

}  // namespace asn1data

#endif
