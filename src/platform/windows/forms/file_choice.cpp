#include "platform/windows/forms/file_choice.h"

#include <commdlg.h>

#include <algorithm>
#include <utility>

#include "platform/windows/files.h"
#include "platform/windows/system_library.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

constexpr std::size_t longestPath = 32768;

// Kinds are pairs of a text and a pattern, each ended by a zero, and one more at the end. What is in the name's room is
// suggested.
std::optional<std::string> ask(const char* function, OPENFILENAMEW question, HWND owner, const std::string& title,
                               const std::wstring& kinds, std::wstring name) {
    const auto dialog = functionOf<decltype(&::GetSaveFileNameW)>(systemLibrary(L"comdlg32.dll"), function);
    if (dialog == nullptr) {
        return std::nullopt;
    }
    name.resize(longestPath, L'\0');
    const std::wstring wideTitle = widen(title);
    question.lStructSize = sizeof question;
    question.hwndOwner = owner;
    question.lpstrFilter = kinds.c_str();
    question.lpstrFile = name.data();
    question.nMaxFile = static_cast<DWORD>(longestPath);
    question.lpstrTitle = wideTitle.c_str();
    question.Flags |= OFN_EXPLORER | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return dialog(&question) != FALSE ? std::optional(narrow(name.c_str())) : std::nullopt;
}

}  // namespace

std::optional<std::string> chooseFileToWrite(HWND owner, const std::string& title, const std::string& suggestion,
                                             const std::string& kindOfFile, const std::string& ending) {
    std::wstring name = widen(shownPath(widen(suggestion))).substr(0, longestPath - 1);
    std::replace(name.begin(), name.end(), L'/', L'\\');
    const std::wstring added = widen(ending.substr(std::min<std::size_t>(1, ending.size())));  // without the point
    OPENFILENAMEW question{};
    question.lpstrDefExt = added.c_str();
    question.Flags = OFN_OVERWRITEPROMPT;
    return ask("GetSaveFileNameW", question, owner, title, widen(kindOfFile) + L'\0' + L"*" + widen(ending) + L'\0',
               std::move(name));
}

std::optional<std::string> chooseFileToRead(HWND owner, const std::string& title, const std::string& folder) {
    const std::wstring start = widen(shownPath(widen(folder)));
    OPENFILENAMEW question{};
    question.lpstrInitialDir = start.c_str();
    question.Flags = OFN_FILEMUSTEXIST;
    return ask("GetOpenFileNameW", question, owner, title, std::wstring(L"Alle Dateien\0*.*\0", 17), {});
}

}  // namespace platform_windows::forms
