#include "platform/windows/print/spooler_error.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/windows/system_error.h"

namespace platform_windows::print {

namespace {

struct Advice {
    DWORD code;
    std::string_view text;
};

constexpr std::string_view checkName = "Bitte den Namen prüfen; „Geräte und Drucker“ zeigt alle Drucker.";
constexpr std::string_view checkPrinter = "Bitte den Drucker unter „Geräte und Drucker“ prüfen.";
constexpr std::string_view askForRights = "Bitte den Verwalter des Druckers um die Berechtigung bitten.";
constexpr std::string_view startService = "Bitte den Dienst „Druckwarteschlange“ starten („net start spooler“).";
constexpr std::string_view canceled = "Der Auftrag wurde abgebrochen.";
constexpr std::string_view installDriver = "Bitte den Treiber des Druckers neu installieren.";
constexpr std::string_view makeRoom = "Bitte auf dem Datenträger der Druckwarteschlange Platz schaffen.";

constexpr std::array advices = {
    Advice{ERROR_INVALID_PRINTER_NAME, checkName},
    Advice{ERROR_PRINTER_DELETED, checkName},
    Advice{ERROR_FILE_NOT_FOUND, checkName},
    Advice{ERROR_BAD_NETPATH, "Bitte prüfen, ob der Druckserver erreichbar ist."},
    Advice{ERROR_ACCESS_DENIED, askForRights},
    Advice{RPC_S_SERVER_UNAVAILABLE, startService},
    Advice{RPC_S_CALL_FAILED, startService},
    Advice{ERROR_SERVICE_NOT_ACTIVE, startService},
    Advice{ERROR_PRINT_CANCELLED, canceled},
    Advice{ERROR_CANCELLED, canceled},
    Advice{ERROR_UNKNOWN_PRINTER_DRIVER, installDriver},
    Advice{ERROR_MOD_NOT_FOUND, installDriver},
    Advice{ERROR_DISK_FULL, makeRoom},
    Advice{ERROR_HANDLE_DISK_FULL, makeRoom},
    Advice{ERROR_NOT_ENOUGH_MEMORY, "Bitte andere Programme beenden."},
};

// The service is starting or restarting, or its server is not there at the moment.
constexpr std::array<DWORD, 7> passing = {
    RPC_S_SERVER_UNAVAILABLE, RPC_S_SERVER_TOO_BUSY, RPC_S_CALL_FAILED, RPC_S_CALL_FAILED_DNE,
    ERROR_SERVICE_NOT_ACTIVE, ERROR_BAD_NETPATH,     ERROR_NOT_READY,
};

std::string describe(DWORD code, const std::string& printer) {
    const auto* found =
        std::find_if(advices.begin(), advices.end(), [code](const Advice& entry) { return entry.code == code; });
    const std::string_view advice = found != advices.end() ? found->text : checkPrinter;
    const std::string where = printer.empty() ? "Die Druckwarteschlange" : "Drucker „" + printer + "“";
    return where + ": " + systemMessage(code) + ". " + std::string(advice);
}

}  // namespace

DWORD lastError() noexcept {
    const DWORD code = ::GetLastError();
    return code != ERROR_SUCCESS ? code : ERROR_GEN_FAILURE;
}

platform::SpoolerError failure(DWORD code, const std::string& printer) {
    const bool mayPass = std::find(passing.begin(), passing.end(), code) != passing.end();
    return {code, describe(code, printer), mayPass ? platform::Recovery::possible : platform::Recovery::none};
}

bool isCancel(DWORD code) noexcept { return code == ERROR_PRINT_CANCELLED || code == ERROR_CANCELLED; }

void throwDocumentFailure(DWORD code, const std::string& printer) {
    if (code == ERROR_DISK_FULL || code == ERROR_HANDLE_DISK_FULL) {
        throw runtime::Error(runtime::errDiskFull, describe(code, printer));
    }
    if (isCancel(code)) {
        throw platform::SpoolerError(code, describe(code, printer), platform::Recovery::cancelled);
    }
    throw failure(code, printer);
}

}  // namespace platform_windows::print
