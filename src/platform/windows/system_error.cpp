#include "platform/windows/system_error.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"
#include "runtime/utf8.h"

namespace platform_windows {

namespace {

struct Meaning {
    DWORD code;
    runtime::ErrorNumber number;
    std::string_view remedy;  // a clause behind the path; may be empty
};

constexpr std::string_view noRights = "keine Berechtigung; die Rechte der Datei und ihres Ordners prüfen";
constexpr std::string_view inUse = "ein anderes Programm benutzt die Datei; sie dort schließen";
constexpr std::string_view readOnly =
    "die Datei ist schreibgeschützt; in ihren Eigenschaften den Schreibschutz aufheben";
constexpr std::string_view virus =
    "der Virenscanner lässt die Datei nicht zu; dort für ihren Ordner eine Ausnahme machen";
constexpr std::string_view brokenOff = "die Verbindung zum Server ist abgebrochen; das Netzwerk prüfen";
constexpr std::string_view noFolder = "der Ordner fehlt; den Pfad prüfen oder den Ordner anlegen";
constexpr std::string_view noServer = "der Server ist nicht erreichbar; Netzwerk und Freigabe prüfen";
constexpr std::string_view noSpace = "auf dem Datenträger ist kein Platz mehr; dort Platz schaffen";
constexpr std::string_view badName = "so darf eine Datei nicht heißen";
constexpr std::string_view noMemory = "die Datei ist größer als der freie Speicher";

constexpr std::array meanings = {
    Meaning{ERROR_FILE_NOT_FOUND, runtime::errFileNotFound, ""},
    Meaning{ERROR_PATH_NOT_FOUND, runtime::errPathNotFound, noFolder},
    Meaning{ERROR_DIRECTORY, runtime::errPathNotFound, noFolder},
    Meaning{ERROR_INVALID_DRIVE, runtime::errPathNotFound, "das Laufwerk fehlt; den Pfad prüfen"},
    Meaning{ERROR_BAD_NETPATH, runtime::errPathNotFound, noServer},
    Meaning{ERROR_BAD_NET_NAME, runtime::errPathNotFound, noServer},
    Meaning{ERROR_ACCESS_DENIED, runtime::errPermissionDenied, noRights},
    Meaning{ERROR_WRITE_PROTECT, runtime::errPermissionDenied, "der Datenträger ist schreibgeschützt"},
    Meaning{ERROR_SHARING_VIOLATION, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_LOCK_VIOLATION, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_USER_MAPPED_FILE, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_DELETE_PENDING, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_UNABLE_TO_REMOVE_REPLACED, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_UNABLE_TO_MOVE_REPLACEMENT, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, runtime::errPermissionDenied, inUse},
    Meaning{ERROR_FILE_READ_ONLY, runtime::errPermissionDenied, readOnly},
    Meaning{errorVirusInfected, runtime::errPermissionDenied, virus},
    Meaning{errorVirusDeleted, runtime::errPermissionDenied, virus},
    Meaning{ERROR_NETNAME_DELETED, runtime::errDeviceIo, brokenOff},
    Meaning{ERROR_UNEXP_NET_ERR, runtime::errDeviceIo, brokenOff},
    Meaning{ERROR_VC_DISCONNECTED, runtime::errDeviceIo, brokenOff},
    Meaning{ERROR_FILE_EXISTS, runtime::errFileExists, "eine Datei dieses Namens gibt es schon"},
    Meaning{errorDirectoryNotSupported, runtime::errPathFileAccess, "das ist ein Ordner; eine Datei angeben"},
    Meaning{ERROR_BAD_FILE_TYPE, runtime::errPathFileAccess, "das ist ein Gerät; eine Datei angeben"},
    Meaning{ERROR_INVALID_NAME, runtime::errBadFileName, badName},
    Meaning{ERROR_BAD_PATHNAME, runtime::errBadFileName, badName},
    Meaning{ERROR_FILENAME_EXCED_RANGE, runtime::errBadFileName, "der Name ist zu lang"},
    Meaning{ERROR_DISK_FULL, runtime::errDiskFull, noSpace},
    Meaning{ERROR_HANDLE_DISK_FULL, runtime::errDiskFull, noSpace},
    Meaning{errorDiskQuotaExceeded, runtime::errDiskFull, noSpace},
    Meaning{ERROR_FILE_TOO_LARGE, runtime::errDiskFull, "die Datei wird größer als erlaubt"},
    Meaning{ERROR_TOO_MANY_OPEN_FILES, runtime::errTooManyFiles, "andere Programme beenden"},
    Meaning{ERROR_NOT_ENOUGH_MEMORY, runtime::errOutOfMemory, noMemory},
    Meaning{ERROR_OUTOFMEMORY, runtime::errOutOfMemory, noMemory},
};

}  // namespace

bool isLackOfRoom(DWORD code) noexcept {
    constexpr std::array<DWORD, 4> codes = {ERROR_DISK_FULL, ERROR_HANDLE_DISK_FULL, errorDiskQuotaExceeded,
                                            ERROR_FILE_TOO_LARGE};
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

std::string systemText(DWORD code) {
    wchar_t* allocated = nullptr;
    const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                              FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                                          nullptr, code, 0, reinterpret_cast<wchar_t*>(&allocated), 0, nullptr);
    const LocalMemory owner(allocated);
    std::wstring_view text(allocated, length);
    while (!text.empty() && text.back() <= L' ') {
        text.remove_suffix(1);
    }
    return narrow(text);
}

std::string systemMessage(DWORD code) {
    std::string text = systemText(code);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return "Windows-Fehler " + std::to_string(code) + (text.empty() ? "" : ": " + text);
}

std::string codeOf(HRESULT result) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08lX", static_cast<unsigned long>(result));
    return "Windows-Fehler " + std::string(text.data());
}

bool isOutOfMemory(HRESULT result) {
    return result == E_OUTOFMEMORY || result == HRESULT_FROM_WIN32(ERROR_NOT_ENOUGH_MEMORY) ||
           result == HRESULT_FROM_WIN32(ERROR_COMMITMENT_LIMIT);
}

void throwFileError(DWORD code, const std::string& path, std::string_view remedy) {
    const auto* found =
        std::find_if(meanings.begin(), meanings.end(), [code](const Meaning& m) { return m.code == code; });
    const bool known = found != meanings.end();
    std::string detail = runtime::shown(path) + (path.empty() ? "(" : " (");
    if (known && remedy.empty()) {
        remedy = found->remedy;
    }
    if (!remedy.empty()) {
        detail.append(remedy).append("; ");
    }
    throw runtime::Error(known ? found->number : runtime::errDeviceIo, detail + systemMessage(code) + ")");
}

}  // namespace platform_windows
