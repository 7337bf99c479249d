#include "base/text_holders.h"

#include <utility>

namespace Mirvane {

CStringProxy::CStringProxy() : text_(std::make_unique<std::string>()) {}
CStringProxy::CStringProxy(char const* text) : text_(std::make_unique<std::string>(text ? text : "")) {}
CStringProxy::CStringProxy(CStringProxy const& other) : text_(std::make_unique<std::string>(*other.text_)) {}
CStringProxy::CStringProxy(CStringProxy&& other) : CStringProxy() {
    text_.swap(other.text_);
}
CStringProxy::~CStringProxy() = default;

CStringProxy& CStringProxy::operator=(CStringProxy const& other) {
    *text_ = *other.text_;
    return *this;
}

CStringProxy& CStringProxy::operator=(CStringProxy&& other) {
    if (this != &other) *text_ = std::exchange(*other.text_, {});
    return *this;
}

char const* CStringProxy::c_str() const {
    return text_->c_str();
}

CWStringProxy::CWStringProxy() : text_(std::make_unique<std::wstring>()) {}
CWStringProxy::CWStringProxy(wchar_t const* text)
    : text_(std::make_unique<std::wstring>(text ? text : L"")) {}
CWStringProxy::CWStringProxy(CWStringProxy const& other)
    : text_(std::make_unique<std::wstring>(*other.text_)) {}
CWStringProxy::CWStringProxy(CWStringProxy&& other) : CWStringProxy() {
    text_.swap(other.text_);
}
CWStringProxy::~CWStringProxy() = default;

CWStringProxy& CWStringProxy::operator=(CWStringProxy const& other) {
    *text_ = *other.text_;
    return *this;
}

CWStringProxy& CWStringProxy::operator=(CWStringProxy&& other) {
    if (this != &other) *text_ = std::exchange(*other.text_, {});
    return *this;
}

wchar_t const* CWStringProxy::c_str() const {
    return text_->c_str();
}

}  // namespace Mirvane
