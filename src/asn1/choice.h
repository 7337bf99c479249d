// The one mechanism that holds an ASN.1 CHOICE in a value class: the number of the alternative beside a
// pointer to its value, whose type the alternative fixes. Not part of the interface.
//
// A value class holds one std::unique_ptr to an impl, which derives from ChoiceOf with its alternatives, and
// answers to one pattern: a default constructor, constructors from a value, a deep copy, clear(), get_type(),
// and get_X() and put_X() for each alternative X.
//
//   class CTimeChoiceImpl : public ChoiceOf<ChoiceValueTraitsT<CDateTime, 1>,
//                                           ChoiceValueTraitsT<CDateTime, 2>> {};
//
//   impl_->put<CDateTime, 1>(date);              // in put_X
//   return impl_->get<CDateTime, 1>();           // in get_X: null if X is not the alternative
//   CTimeChoice(CTimeChoice const& other) : impl_(copyOfImpl(other.impl_)) {}
//   assignImpl(impl_, other.impl_);              // in operator=
//
// A choice is empty (type 0, no value) or holds one alternative. A cleared value class has no impl: it may
// only be assigned to, copied, or destroyed. Distinct objects may be used from distinct threads; one object
// belongs to one thread while it is changed.
#ifndef MIRVANE_ASN1_CHOICE_H
#define MIRVANE_ASN1_CHOICE_H

#include <memory>
#include <type_traits>

namespace Mirvane::ASN1 {

// What has to be known of one alternative to hold its value behind an untyped pointer. There is one object of
// each kind, constant and without state, which exists before any code runs and after all of it.
class ChoiceValueTraits {
  public:
    constexpr virtual ~ChoiceValueTraits() = default;
    virtual bool isType(unsigned int type) const = 0;
    // Destroys what newValue made; null is let pass.
    virtual void deleteValue(void* value) const = 0;
    // A copy by `new` of the value, and null of null.
    virtual void* newValue(void const* value) const = 0;
    // Assigns to an existing value; nothing happens if both are the same.
    virtual void copyValue(void* target, void const* source) const = 0;
};

// The traits of alternative `N` with values of type `T`.
template <typename T, unsigned int N>
class ChoiceValueTraitsT final : public ChoiceValueTraits {
  public:
    static ChoiceValueTraitsT const instance;

    constexpr ~ChoiceValueTraitsT() override {}
    bool isType(unsigned int type) const override { return type == N; }
    void deleteValue(void* value) const override { delete static_cast<T*>(value); }
    void* newValue(void const* value) const override {
        return value != nullptr ? new T(*static_cast<T const*>(value)) : nullptr;
    }
    void copyValue(void* target, void const* source) const override {
        if (target != source) *static_cast<T*>(target) = *static_cast<T const*>(source);
    }

  private:
    constexpr ChoiceValueTraitsT() = default;
};

template <typename T, unsigned int N>
constexpr ChoiceValueTraitsT<T, N> ChoiceValueTraitsT<T, N>::instance{};

// The traits of no value, and of every alternative that a choice does not support.
using NoChoiceValueTraits = ChoiceValueTraitsT<void*, 0>;

class Choice {
  public:
    Choice() = default;
    Choice(Choice const&) = delete;
    Choice& operator=(Choice const&) = delete;
    virtual ~Choice() = default;

    // The traits of an alternative. Never null: what is not supported has those of no value.
    virtual ChoiceValueTraits const* findTraits(unsigned int type) const = 0;

    // The alternative that is held, 0 for none.
    unsigned int type() const { return type_; }

  protected:
    // Takes a copy of the argument, which may be the present value or a part of it. The copy is made before
    // the present value is deleted, so that a failure changes nothing. Throws 0x80070057 for an alternative
    // without traits.
    void replace(unsigned int type, void const* argument);

    unsigned int type_ = 0;
    void* value_ = nullptr;  // owned; null for type 0
};

// A choice between the alternatives that the traits tell.
template <typename... Alternatives>
class ChoiceOf : public Choice {
  public:
    ChoiceOf() = default;
    // A deep copy; an empty choice gives an empty one.
    ChoiceOf(ChoiceOf const& other) : Choice() { replace(other.type_, other.value_); }
    ~ChoiceOf() override { findTraits(type_)->deleteValue(value_); }

    ChoiceValueTraits const* findTraits(unsigned int type) const final {
        ChoiceValueTraits const* found = &NoChoiceValueTraits::instance;
        ((Alternatives::instance.isType(type) ? void(found = &Alternatives::instance) : void()), ...);
        return found;
    }

    // The value of alternative `N`, or null if another one is held. It is valid until the choice changes.
    template <typename T, unsigned int N>
    T const* get() const {
        static_assert(supports<T, N>);
        return type_ == N ? static_cast<T const*>(value_) : nullptr;
    }

    // Makes `N` the alternative, with a copy of the value. A failure changes nothing.
    template <typename T, unsigned int N>
    void put(std::type_identity_t<T> const& value) {
        static_assert(supports<T, N>);
        replace(N, &value);
    }

  private:
    template <typename T, unsigned int N>
    static constexpr bool supports = (std::is_same_v<Alternatives, ChoiceValueTraitsT<T, N>> || ...);
};

// The copy of a value class's impl: of a cleared object there is none.
template <typename Impl>
std::unique_ptr<Impl> copyOfImpl(std::unique_ptr<Impl> const& impl) {
    return impl != nullptr ? std::make_unique<Impl>(*impl) : nullptr;
}

// The assignment of a value class. The copy is made before the present impl goes, so that a failure changes
// nothing.
template <typename Impl>
void assignImpl(std::unique_ptr<Impl>& impl, std::unique_ptr<Impl> const& other) {
    if (impl != other) impl = copyOfImpl(other);
}

}  // namespace Mirvane::ASN1

#endif
