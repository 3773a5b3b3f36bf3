#include "platform/windows/forms/filtered_box.h"

#include <exception>

#include "platform/windows/forms/clipboard.h"
#include "platform/windows/forms/kept_pointer.h"

namespace platform_windows::forms {

namespace {

constexpr const wchar_t* filterProperty = L"KRVWinPr.Filter";
constexpr const wchar_t* procedureProperty = L"KRVWinPr.Procedure";
constexpr WPARAM backspace = 8;
constexpr WPARAM firstWritten = 32;

// In place of what is selected, as far as the filter takes it.
void paste(HWND box, const CharacterFilter& filter) {
    DWORD start = 0;
    DWORD end = 0;
    ::SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    std::wstring text = windowText(box);
    text.erase(start, end - start);
    std::wstring taken;
    for (const wchar_t character : clipboardText(box)) {
        if (character >= firstWritten && filter(text + taken, character)) {
            taken += character;
        }
    }
    ::SendMessageW(box, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(taken.c_str()));
}

bool isTaken(HWND box, const CharacterFilter& filter, WPARAM character) {
    return (character < firstWritten && character != backspace) ||
           filter(windowText(box), static_cast<wchar_t>(character));
}

LRESULT CALLBACK handle(HWND box, UINT message, WPARAM first, LPARAM second) noexcept {
    const auto next = reinterpret_cast<WNDPROC>(::GetPropW(box, procedureProperty));
    const auto* filter = static_cast<const CharacterFilter*>(::GetPropW(box, filterProperty));
    try {
        if (message == WM_CHAR && !isTaken(box, *filter, first)) {
            return 0;
        }
        if (message == WM_PASTE) {
            paste(box, *filter);
            return 0;
        }
    } catch (const std::exception&) {
        return 0;  // no memory: nothing is taken
    }
    if (message == WM_NCDESTROY) {
        ::RemovePropW(box, procedureProperty);
        ::RemovePropW(box, filterProperty);
    }
    return ::CallWindowProcW(next, box, message, first, second);
}

}  // namespace

void filterBox(HWND box, CharacterFilter& filter) {
    const auto before = ::GetWindowLongPtrW(box, GWLP_WNDPROC);
    if (::SetPropW(box, filterProperty, &filter) != FALSE &&
        ::SetPropW(box, procedureProperty, keptPointer<HANDLE>(before)) != FALSE) {
        ::SetWindowLongPtrW(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(handle));
    }
}

std::wstring windowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)), L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

}  // namespace platform_windows::forms
