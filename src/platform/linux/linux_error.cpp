#include "platform/linux/linux_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include "runtime/utf8.h"

namespace platform_linux {

namespace {

struct Meaning {
    int error;
    runtime::ErrorNumber number;
    std::string_view reason;  // and remedy, as a clause
};

constexpr std::string_view noRights = "keine Berechtigung; die Rechte der Datei und ihrer Ordner prüfen";
constexpr std::string_view noSpace = "auf dem Datenträger ist kein Platz mehr; dort Platz schaffen";
constexpr std::string_view badName = "so darf eine Datei nicht heißen";
constexpr std::string_view tooManyOpen = "zu viele Dateien sind geöffnet; andere Programme beenden";

constexpr std::array meanings = {
    Meaning{ENOENT, runtime::errFileNotFound, "die Datei oder ihr Ordner fehlt"},
    Meaning{ENOTDIR, runtime::errPathNotFound, "der Ordner fehlt; den Pfad prüfen oder den Ordner anlegen"},
    Meaning{EACCES, runtime::errPermissionDenied, noRights},
    Meaning{EPERM, runtime::errPermissionDenied, noRights},
    Meaning{EROFS, runtime::errPermissionDenied, "der Datenträger ist schreibgeschützt"},
    Meaning{ETXTBSY, runtime::errPermissionDenied, "die Datei ist ein laufendes Programm"},
    Meaning{EEXIST, runtime::errFileExists, "eine Datei dieses Namens gibt es schon"},
    Meaning{EISDIR, runtime::errPathFileAccess, "das ist ein Ordner; eine Datei angeben"},
    Meaning{ENODEV, runtime::errPathFileAccess, "das ist keine gewöhnliche Datei; eine Datei angeben"},
    Meaning{EMLINK, runtime::errPermissionDenied,
            "das ist ein Verweis, den ein anderer Benutzer angelegt hat; den Verweis löschen"},
    Meaning{ELOOP, runtime::errPathFileAccess, "die Verweise führen im Kreis"},
    Meaning{ENAMETOOLONG, runtime::errBadFileName, "der Name ist zu lang"},
    Meaning{EINVAL, runtime::errBadFileName, badName},
    Meaning{ENOSPC, runtime::errDiskFull, noSpace},
    Meaning{EDQUOT, runtime::errDiskFull, "das Speicherkontingent ist erschöpft; Platz schaffen"},
    Meaning{EFBIG, runtime::errDiskFull, "die Datei wird größer als erlaubt"},
    Meaning{EMFILE, runtime::errTooManyFiles, tooManyOpen},
    Meaning{ENFILE, runtime::errTooManyFiles, tooManyOpen},
    Meaning{ENOMEM, runtime::errOutOfMemory, "die Datei ist größer als der freie Speicher"},
};

const Meaning* meaningOf(int error) {
    const auto* found =
        std::find_if(meanings.begin(), meanings.end(), [error](const Meaning& m) { return m.error == error; });
    return found != meanings.end() ? found : nullptr;
}

}  // namespace

runtime::ErrorNumber errorNumber(int error) {
    const Meaning* meaning = meaningOf(error);
    return meaning != nullptr ? meaning->number : runtime::errDeviceIo;
}

std::string errorReason(int error) {
    const Meaning* meaning = meaningOf(error);
    return meaning != nullptr ? std::string(meaning->reason)
                              : "das System meldet: " + std::generic_category().message(error);
}

void throwFileError(int error, const std::string& path) {
    // That the file is missing is what the error's own description says.
    const std::string reason = error == ENOENT ? std::string() : errorReason(error);
    std::string detail = runtime::shown(path);
    if (!reason.empty()) {
        detail += path.empty() ? reason : " (" + reason + ")";
    }
    throw runtime::Error(errorNumber(error), detail);
}

}  // namespace platform_linux
