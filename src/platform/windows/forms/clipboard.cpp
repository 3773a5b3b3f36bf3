#include "platform/windows/forms/clipboard.h"

#include <algorithm>
#include <cstddef>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

struct ClipboardKind {
    using Handle = bool;
    static Handle none() noexcept { return false; }
    static void close(Handle) noexcept { ::CloseClipboard(); }
};
using Clipboard = Owner<ClipboardKind>;

// Others, such as a remote screen, have it open for a moment after each change.
Clipboard openPatiently(HWND owner) {
    constexpr int attempts = 10;
    constexpr DWORD milliseconds = 20;
    for (int count = 1; ::OpenClipboard(owner) == FALSE; ++count) {
        if (count == attempts) {
            return {};
        }
        ::Sleep(milliseconds);
    }
    return Clipboard(true);
}

// Memory that the clipboard takes over; null where there is none.
HGLOBAL inMemory(const std::wstring& text) {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    auto* const place = memory != nullptr ? static_cast<wchar_t*>(::GlobalLock(memory)) : nullptr;
    if (place == nullptr) {
        return nullptr;
    }
    std::copy_n(text.c_str(), text.size() + 1, place);
    ::GlobalUnlock(memory);
    return memory;
}

}  // namespace

std::wstring clipboardText(HWND owner) {
    const Clipboard open(::OpenClipboard(owner) != FALSE);
    const HANDLE memory = open ? ::GetClipboardData(CF_UNICODETEXT) : nullptr;
    const auto* text = memory != nullptr ? static_cast<const wchar_t*>(::GlobalLock(memory)) : nullptr;
    if (text == nullptr) {
        return {};
    }
    std::wstring copy(text);
    ::GlobalUnlock(memory);
    return copy;
}

void setClipboardText(HWND owner, const std::string& text) {
    const std::wstring content = widen(withLineEnds(text));
    const Clipboard open = openPatiently(owner);
    if (!open || ::EmptyClipboard() == FALSE) {
        return;
    }
    const HGLOBAL memory = inMemory(content);
    if (memory != nullptr && ::SetClipboardData(CF_UNICODETEXT, memory) == nullptr) {
        ::GlobalFree(memory);
    }
}

}  // namespace platform_windows::forms
