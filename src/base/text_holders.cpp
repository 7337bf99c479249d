#include "base/text_holders.h"

#include <utility>

namespace Mirvane {

template <typename Character>
TextHolder<Character>::TextHolder() : text_(std::make_unique<std::basic_string<Character>>()) {}

template <typename Character>
TextHolder<Character>::TextHolder(Character const* text) : TextHolder() {
    if (text != nullptr) *text_ = text;
}

template <typename Character>
TextHolder<Character>::TextHolder(TextHolder const& other) : TextHolder(other.c_str()) {}

template <typename Character>
TextHolder<Character>::TextHolder(TextHolder&& other) : TextHolder() {
    text_.swap(other.text_);
}

template <typename Character>
TextHolder<Character>::~TextHolder() = default;

template <typename Character>
TextHolder<Character>& TextHolder<Character>::operator=(TextHolder const& other) {
    *text_ = *other.text_;
    return *this;
}

template <typename Character>
TextHolder<Character>& TextHolder<Character>::operator=(TextHolder&& other) {
    if (this != &other) *text_ = std::exchange(*other.text_, {});
    return *this;
}

template <typename Character>
TextHolder<Character>& TextHolder<Character>::operator=(Character const* text) {
    if (text != nullptr) {
        text_->assign(text);
    } else {
        text_->clear();
    }
    return *this;
}

template <typename Character>
Character const* TextHolder<Character>::c_str() const {
    return text_->c_str();
}

template class TextHolder<char>;
template class TextHolder<wchar_t>;

}  // namespace Mirvane
