#include "platform/windows/crash/description.h"

#include <array>
#include <string_view>

namespace platform_windows::crash {

namespace {

using platform::crash::FixedText;

struct Name {
    DWORD code;
    std::string_view name;
};

constexpr std::array names = {
    Name{EXCEPTION_ACCESS_VIOLATION, "Zugriffsverletzung"},
    Name{EXCEPTION_IN_PAGE_ERROR, "Speicherseite nicht zu laden"},
    Name{EXCEPTION_STACK_OVERFLOW, "Stapelüberlauf"},
    Name{EXCEPTION_ILLEGAL_INSTRUCTION, "Unzulässiger Befehl"},
    Name{EXCEPTION_PRIV_INSTRUCTION, "Befehl ohne Berechtigung"},
    Name{EXCEPTION_INT_DIVIDE_BY_ZERO, "Ganzzahlige Division durch null"},
    Name{EXCEPTION_INT_OVERFLOW, "Ganzzahliger Überlauf"},
    Name{EXCEPTION_DATATYPE_MISALIGNMENT, "Falsch ausgerichtete Daten"},
    Name{EXCEPTION_NONCONTINUABLE_EXCEPTION, "Nach einem Fehler ohne Fortsetzung weitergemacht"},
    Name{EXCEPTION_BREAKPOINT, "Haltepunkt"},
};

std::string_view nameOf(DWORD code) {
    for (const Name& name : names) {
        if (name.code == code) {
            return name.name;
        }
    }
    return "Ausnahme des Systems";
}

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
    text << nameOf(code) << " (";
    text.address(code) << ")";
    if ((code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_IN_PAGE_ERROR) && exception.NumberParameters > 1) {
        addAccess(text, exception);
    }
}

}  // namespace platform_windows::crash
