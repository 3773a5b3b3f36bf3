#include "platform/windows/forms/file_choice.h"

#include <commdlg.h>

#include <algorithm>

#include "platform/windows/files.h"
#include "platform/windows/system_library.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

std::optional<std::string> chooseFileToWrite(HWND owner, const std::string& title, const std::string& suggestion,
                                             const std::string& kindOfFile, const std::string& ending) {
    const auto ask = functionOf<decltype(&::GetSaveFileNameW)>(systemLibrary(L"comdlg32.dll"), "GetSaveFileNameW");
    if (ask == nullptr) {
        return std::nullopt;
    }
    constexpr std::size_t longest = 32768;
    std::wstring name = widen(shownPath(widen(suggestion))).substr(0, longest - 1);
    std::replace(name.begin(), name.end(), L'/', L'\\');
    name.resize(longest, L'\0');
    const std::wstring wideTitle = widen(title);
    // Pairs of a text and a pattern, each ended by a zero, and one more at the end.
    const std::wstring kinds = widen(kindOfFile) + L'\0' + L"*" + widen(ending) + L'\0';
    const std::wstring added = widen(ending.substr(std::min<std::size_t>(1, ending.size())));  // without the point
    OPENFILENAMEW question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = owner;
    question.lpstrFilter = kinds.c_str();
    question.lpstrFile = name.data();
    question.nMaxFile = static_cast<DWORD>(longest);
    question.lpstrTitle = wideTitle.c_str();
    question.lpstrDefExt = added.c_str();
    question.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (ask(&question) == FALSE) {
        return std::nullopt;
    }
    return narrow(name.c_str());
}

}  // namespace platform_windows::forms
