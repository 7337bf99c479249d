// Numbers for objects, so that any number may come in from outside and none is followed unchecked.
//
// A handle holds the index of a slot, the kind of the table and the generation of the slot, which changes
// with every object that the slot has held. One atomic word a slot holds the generation and two counts:
//
//   owners   the references of callers, taken and dropped by handle
//   pins     the calls that work with the object just now
//
// An object dies when both have come to 0, and a handle is good as long as there are owners. All operations
// may be called from all threads; only growing takes a lock. Tables are globals that are never destroyed, so
// that a release at the end of the process is safe.
#ifndef MIRVANE_PLATFORM_OPENSSL_HANDLE_TABLE_H
#define MIRVANE_PLATFORM_OPENSSL_HANDLE_TABLE_H

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

namespace platform {

enum class Lifetime { counted, immortal };

template <typename Object>
class HandleTable {
    struct Slot {
        std::atomic<std::uint64_t> state{0};
        std::atomic<std::uint32_t> nextFree{0};
        std::uint32_t index = 0;
        Object* object = nullptr;
    };

  public:
    using Handle = unsigned long long;

    // Keeps the object of a handle alive during a call. Empty if the handle was none.
    class Pin {
      public:
        Pin() = default;
        Pin(Pin&& other) noexcept
            : table_(std::exchange(other.table_, nullptr)), slot_(std::exchange(other.slot_, nullptr)) {}
        Pin& operator=(Pin&&) = delete;
        ~Pin() {
            if (table_ != nullptr) table_->unpin(*slot_);
        }
        explicit operator bool() const { return slot_ != nullptr; }
        Object& operator*() const { return *slot_->object; }
        Object* operator->() const { return slot_->object; }

      private:
        friend HandleTable;
        // An immortal object needs no table to go back to.
        Pin(HandleTable* table, Slot* slot) : table_(table), slot_(slot) {}

        HandleTable* table_ = nullptr;
        Slot* slot_ = nullptr;
    };

    // `kind` is 1 to 15 and tells the tables apart.
    constexpr explicit HandleTable(unsigned kind) : kind_(kind) {}
    HandleTable(const HandleTable&) = delete;
    HandleTable& operator=(const HandleTable&) = delete;

    // The handle comes with one reference; for an immortal object that one cannot be dropped. Throws
    // std::bad_alloc.
    Handle add(std::unique_ptr<Object> object, Lifetime lifetime = Lifetime::counted) {
        Slot& slot = takeFreeSlot();
        const std::uint64_t generation = generationOf(slot.state.load(std::memory_order_relaxed));
        slot.object = object.release();
        slot.state.store(
            generation << generationShift | oneOwner | (lifetime == Lifetime::immortal ? immortalBit : 0),
            std::memory_order_release);
        return generation << generationShift | std::uint64_t{kind_} << kindShift | slot.index;
    }

    Pin pin(Handle handle) {
        Slot* const slot = find(handle);
        if (slot == nullptr) return {};
        std::uint64_t state = slot->state.load(std::memory_order_acquire);
        do {
            if (!isGood(state, handle) || (state & pinMask) == pinMask) return {};
            if (state & immortalBit) return Pin(nullptr, slot);
        } while (!slot->state.compare_exchange_weak(state, state + onePin, std::memory_order_acquire));
        return Pin(this, slot);
    }

    // False for what is no handle, and at the largest count.
    bool addReference(Handle handle) {
        Slot* const slot = find(handle);
        if (slot == nullptr) return false;
        std::uint64_t state = slot->state.load(std::memory_order_acquire);
        do {
            if (!isGood(state, handle) || (state & ownerMask) == ownerMask) return false;
        } while (!slot->state.compare_exchange_weak(state, state + oneOwner, std::memory_order_acquire));
        return true;
    }

    // False for what is no handle, and for the last reference to an immortal object.
    bool release(Handle handle) {
        Slot* const slot = find(handle);
        if (slot == nullptr) return false;
        std::uint64_t state = slot->state.load(std::memory_order_acquire);
        do {
            if (!isGood(state, handle)) return false;
            if ((state & immortalBit) && (state & ownerMask) == oneOwner) return false;
        } while (!slot->state.compare_exchange_weak(state, state - oneOwner, std::memory_order_acq_rel));
        if (isUnused(state - oneOwner)) reclaim(*slot);
        return true;
    }

  private:
    // The state, from the low end: 15 bits of pins, the mark of an immortal object, 20 bits of owners, 28
    // bits of generation, which thus stand in the same place as in a handle.
    static constexpr std::uint64_t onePin = 1;
    static constexpr std::uint64_t pinMask = (1u << 15) - 1;
    static constexpr std::uint64_t immortalBit = 1u << 15;
    static constexpr std::uint64_t oneOwner = 1u << 16;
    static constexpr std::uint64_t ownerMask = std::uint64_t{(1u << 20) - 1} << 16;
    static constexpr unsigned generationShift = 36;
    static constexpr std::uint64_t lastGeneration = (1u << 28) - 1;
    static constexpr unsigned kindShift = 32;

    static constexpr std::uint32_t chunkSize = 1024;
    static constexpr std::uint32_t chunkCount = 1024;

    static std::uint64_t generationOf(std::uint64_t state) { return state >> generationShift; }
    static bool isGood(std::uint64_t state, Handle handle) {
        return generationOf(state) == generationOf(handle) && (state & ownerMask) != 0;
    }
    static bool isUnused(std::uint64_t state) { return (state & (ownerMask | pinMask)) == 0; }

    Slot& at(std::uint32_t index) {
        return chunks_[index / chunkSize].load(std::memory_order_acquire)[index % chunkSize];
    }

    Slot* find(Handle handle) {
        const auto index = static_cast<std::uint32_t>(handle);
        if ((handle >> kindShift & 0xF) != kind_ || index / chunkSize >= chunkCount) return nullptr;
        Slot* const chunk = chunks_[index / chunkSize].load(std::memory_order_acquire);
        return chunk == nullptr ? nullptr : &chunk[index % chunkSize];
    }

    void unpin(Slot& slot) {
        if (isUnused(slot.state.fetch_sub(onePin, std::memory_order_acq_rel) - onePin)) reclaim(slot);
    }

    // Both counts can come to 0 only once, and then nobody else gets at the slot.
    void reclaim(Slot& slot) {
        delete std::exchange(slot.object, nullptr);
        const std::uint64_t generation = generationOf(slot.state.load(std::memory_order_relaxed)) + 1;
        if (generation > lastGeneration)
            return;  // the slot stays out of use: its handles must not come again
        slot.state.store(generation << generationShift, std::memory_order_release);
        putFreeSlot(slot);
    }

    // The free slots are a stack. Its head holds an index plus 1, and above it a count of changes, by which a
    // head that went and came back is told from one that stayed.
    void putFreeSlot(Slot& slot) {
        std::uint64_t head = freeHead_.load(std::memory_order_relaxed);
        std::uint64_t changed;
        do {
            slot.nextFree.store(static_cast<std::uint32_t>(head), std::memory_order_relaxed);
            changed = (((head >> 32) + 1) << 32) | (slot.index + 1);
        } while (!freeHead_.compare_exchange_weak(head, changed, std::memory_order_release,
                                                  std::memory_order_relaxed));
    }

    Slot* popFreeSlot() {
        std::uint64_t head = freeHead_.load(std::memory_order_acquire);
        while (static_cast<std::uint32_t>(head) != 0) {
            Slot& slot = at(static_cast<std::uint32_t>(head) - 1);
            const std::uint64_t changed =
                (((head >> 32) + 1) << 32) | slot.nextFree.load(std::memory_order_relaxed);
            if (freeHead_.compare_exchange_weak(head, changed, std::memory_order_acquire)) return &slot;
        }
        return nullptr;
    }

    Slot& takeFreeSlot() {
        if (Slot* const slot = popFreeSlot()) return *slot;
        const std::lock_guard lock(growing_);
        if (Slot* const slot = popFreeSlot()) return *slot;
        if (chunksInUse_ == chunkCount) throw std::bad_alloc();
        Slot* const chunk = new Slot[chunkSize];
        for (std::uint32_t i = 0; i < chunkSize; ++i) {
            chunk[i].index = chunksInUse_ * chunkSize + i;
        }
        chunks_[chunksInUse_++].store(chunk, std::memory_order_release);
        for (std::uint32_t i = chunkSize - 1; i > 0; --i) {
            putFreeSlot(chunk[i]);
        }
        return chunk[0];
    }

    const unsigned kind_;
    std::array<std::atomic<Slot*>, chunkCount> chunks_{};
    std::atomic<std::uint64_t> freeHead_{0};
    std::mutex growing_;
    std::uint32_t chunksInUse_ = 0;
};

}  // namespace platform

#endif
