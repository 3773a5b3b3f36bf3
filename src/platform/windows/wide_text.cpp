#include "platform/windows/wide_text.h"

#include <windows.h>

#include <climits>

#include "runtime/error.h"

namespace platform_windows {

namespace {

int lengthOf(std::size_t length) {
    if (length > INT_MAX) {
        throw runtime::Error(runtime::errOutOfMemory, "der Text ist zu lang");
    }
    return static_cast<int>(length);
}

}  // namespace

std::wstring widen(std::string_view text) { return decode(text, CP_UTF8, 0); }

std::string narrow(std::wstring_view text) { return encode(text, CP_UTF8); }

std::wstring decode(std::string_view bytes, unsigned codePage, unsigned long flags) {
    const int size = lengthOf(bytes.size());
    int length = ::MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
    if (length == 0 && flags != 0) {
        flags = 0;
        length = ::MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
    }
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), length);
    return text;
}

std::string encode(std::wstring_view text, unsigned codePage) {
    // UTF-8 can do without a replacement and refuses to be given one.
    const bool complete = codePage == CP_UTF8 || (codePage == CP_ACP && ::GetACP() == CP_UTF8);
    const DWORD flags = complete ? 0 : WC_NO_BEST_FIT_CHARS;
    const char* replacement = complete ? nullptr : "?";
    const int size = lengthOf(text.size());
    const int length = ::WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, replacement, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(codePage, flags, text.data(), size, bytes.data(), length, replacement, nullptr);
    return bytes;
}

std::string withLineEnds(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') {
            result += text[i];
            continue;
        }
        result += "\r\n";
        i += text.substr(i).starts_with("\r\n") ? 1 : 0;
    }
    return result;
}

}  // namespace platform_windows
