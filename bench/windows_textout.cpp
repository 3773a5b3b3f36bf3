// The least a Windows program can do to print lines: what KRVWinPr's speed is compared with.
//
//     textout-bench PRINTER FILE      prints the file's lines, form feeds ending pages, with nothing but TextOut
//     textout-bench PRINTER FILE dx   the same, each character at its place, as KRVWinPr has it
//     textout-bench                   does nothing: how long a start takes

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int lineHeight = 92;
constexpr int letterWidth = 60;

int printFile(const wchar_t* printer, const wchar_t* path, bool places) {
    HANDLE file = ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    HDC device = ::CreateDCW(L"WINSPOOL", printer, nullptr, nullptr);
    if (file == INVALID_HANDLE_VALUE || device == nullptr) {
        return 1;
    }
    std::string text(::GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ::ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
    ::CloseHandle(file);

    DOCINFOW info{};
    info.cbSize = sizeof info;
    info.lpszDocName = L"bench";
    ::StartDocW(device, &info);
    ::SelectObject(device, ::CreateFontW(-100, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0,
                                         FIXED_PITCH | FF_MODERN, L"Courier New"));
    std::wstring line;
    const std::vector<int> advances(1000, letterWidth);
    int y = 0;
    bool open = false;
    for (const char c : text) {
        if (!open && c != '\f') {
            ::StartPage(device);
            open = true;
            y = 0;
        }
        if (c == '\n') {
            const auto length = static_cast<UINT>(std::min(line.size(), advances.size()));
            ::ExtTextOutW(device, 0, y, 0, nullptr, line.c_str(), length, places ? advances.data() : nullptr);
            line.clear();
            y += lineHeight;
        } else if (c == '\f') {
            ::EndPage(device);
            open = false;
        } else if (c != '\r') {
            line += static_cast<wchar_t>(static_cast<unsigned char>(c));
        }
    }
    ::EndDoc(device);
    ::DeleteDC(device);
    return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    return __argc >= 3 ? printFile(__wargv[1], __wargv[2], __argc == 4) : 0;
}
