// Owning holders of zero-terminated text: they keep standard strings out of exported signatures, so that a
// caller needs no more than the pointer. Text is opaque: nothing is normalised or checked.
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
#ifndef MIRVANE_BASE_TEXT_HOLDERS_H
#define MIRVANE_BASE_TEXT_HOLDERS_H

#include <memory>
#include <string>

#include "asn1rt/export.h"

namespace Mirvane {

// What the two holders are made of.
template <typename Character>
class MIRVANE_API TextHolder {
  public:
    // The empty text.
    TextHolder();
    // A copy of the text up to its terminator; null gives the empty text.
    TextHolder(Character const* text);
    TextHolder(TextHolder const& other);
    // Leaves `other` with the empty text.
    TextHolder(TextHolder&& other);
    ~TextHolder();

    TextHolder& operator=(TextHolder const& other);
    TextHolder& operator=(TextHolder&& other);
    // A copy of the text, which may be a part of the holder's own; null gives the empty text.
    TextHolder& operator=(Character const* text);

    // The text, never null; valid until the object changes or dies.
    Character const* c_str() const;

  private:
    std::unique_ptr<std::basic_string<Character>> text_;  // never null
};

extern template class TextHolder<char>;
extern template class TextHolder<wchar_t>;

// Classes of their own and not names of the template, so that headers can declare them.
class MIRVANE_API CStringProxy : public TextHolder<char> {
  public:
    using TextHolder::TextHolder;
    using TextHolder::operator=;
};

class MIRVANE_API CWStringProxy : public TextHolder<wchar_t> {
  public:
    using TextHolder::TextHolder;
    using TextHolder::operator=;
};

}  // namespace Mirvane

#endif
