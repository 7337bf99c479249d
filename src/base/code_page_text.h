// Narrow text of the platform's code page to wide text and back, with the buffers taken care of. Not part of
// the interface.
#ifndef MIRVANE_BASE_CODE_PAGE_TEXT_H
#define MIRVANE_BASE_CODE_PAGE_TEXT_H

#include <optional>
#include <string>

namespace Mirvane {

// Converts up to the terminator; `text` must not be null. Nothing if the platform refuses: the reason is then
// in its last-error slot.
std::optional<std::string> narrowed(wchar_t const* text);
std::optional<std::wstring> widened(char const* text);

}  // namespace Mirvane

#endif
