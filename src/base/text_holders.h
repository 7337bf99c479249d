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

class MIRVANE_API CStringProxy {
  public:
    // The empty text.
    CStringProxy();
    // A copy of the text up to its terminator; null gives the empty text.
    CStringProxy(char const* text);
    CStringProxy(CStringProxy const& other);
    // Leaves `other` with the empty text.
    CStringProxy(CStringProxy&& other);
    ~CStringProxy();

    CStringProxy& operator=(CStringProxy const& other);
    CStringProxy& operator=(CStringProxy&& other);

    // The text, never null; valid until the object changes or dies.
    char const* c_str() const;

  private:
    std::unique_ptr<std::string> text_;  // never null
};

// The same for wide text.
class MIRVANE_API CWStringProxy {
  public:
    CWStringProxy();
    CWStringProxy(wchar_t const* text);
    CWStringProxy(CWStringProxy const& other);
    CWStringProxy(CWStringProxy&& other);
    ~CWStringProxy();

    CWStringProxy& operator=(CWStringProxy const& other);
    CWStringProxy& operator=(CWStringProxy&& other);

    wchar_t const* c_str() const;

  private:
    std::unique_ptr<std::wstring> text_;
};

}  // namespace Mirvane

#endif
