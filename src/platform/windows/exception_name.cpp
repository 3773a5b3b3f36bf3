#include "platform/windows/exception_name.h"

#include <array>

namespace platform_windows {

namespace {

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

}  // namespace

std::string_view exceptionName(DWORD code) noexcept {
    for (const Name& name : names) {
        if (name.code == code) {
            return name.name;
        }
    }
    return {};
}

}  // namespace platform_windows
