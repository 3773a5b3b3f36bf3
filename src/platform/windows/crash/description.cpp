#include "platform/windows/crash/description.h"

#include "platform/windows/exception_name.h"

namespace platform_windows::crash {

namespace {

using platform::crash::FixedText;

void addAccess(FixedText& text, const EXCEPTION_RECORD& exception) {
    constexpr ULONG_PTR writing = 1;
    constexpr ULONG_PTR executing = 8;
    const ULONG_PTR kind = exception.ExceptionInformation[0];
    text << (kind == writing     ? " beim Schreiben nach "
             : kind == executing ? " beim Ausführen von "
                                 : " beim Lesen von ");
    text.address(exception.ExceptionInformation[1]);
    if (exception.NumberParameters > 2) {
        text << ", Status ";
        text.address(static_cast<DWORD>(exception.ExceptionInformation[2]));
    }
}

}  // namespace

void describeException(FixedText& text, const EXCEPTION_RECORD& exception) noexcept {
    const DWORD code = exception.ExceptionCode;
    const std::string_view name = exceptionName(code);
    text << (name.empty() ? std::string_view("Ausnahme des Systems") : name) << " (";
    text.address(code) << ")";
    if ((code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_IN_PAGE_ERROR) && exception.NumberParameters > 1) {
        addAccess(text, exception);
    }
}

}  // namespace platform_windows::crash
