#include "platform/linux/linux_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "runtime/error.h"

namespace platform_linux {

namespace {

struct Meaning {
    int error;
    runtime::ErrorNumber number;
    std::string_view reason;  // and remedy, as a clause behind the path; may be empty
};

constexpr std::string_view noRights = "keine Berechtigung; die Rechte der Datei und ihrer Ordner prüfen";
constexpr std::string_view noSpace = "auf dem Datenträger ist kein Platz mehr; Platz schaffen und erneut drucken";
constexpr std::string_view badName = "so darf eine Datei nicht heißen";
constexpr std::string_view tooManyOpen = "zu viele Dateien sind geöffnet; andere Programme beenden";

constexpr std::array meanings = {
    Meaning{ENOENT, runtime::errFileNotFound, ""},
    Meaning{ENOTDIR, runtime::errPathNotFound, "der Ordner fehlt; den Pfad prüfen oder den Ordner anlegen"},
    Meaning{EACCES, runtime::errPermissionDenied, noRights},
    Meaning{EPERM, runtime::errPermissionDenied, noRights},
    Meaning{EROFS, runtime::errPermissionDenied, "der Datenträger ist schreibgeschützt"},
    Meaning{ETXTBSY, runtime::errPermissionDenied, "die Datei ist ein laufendes Programm"},
    Meaning{EISDIR, runtime::errPathFileAccess, "das ist ein Ordner; eine Datei angeben"},
    Meaning{ENODEV, runtime::errPathFileAccess, "das ist keine gewöhnliche Datei; eine Datei angeben"},
    Meaning{ELOOP, runtime::errPathFileAccess, "die Verweise führen im Kreis"},
    Meaning{ENAMETOOLONG, runtime::errBadFileName, "der Name ist zu lang"},
    Meaning{EINVAL, runtime::errBadFileName, badName},
    Meaning{ENOSPC, runtime::errDiskFull, noSpace},
    Meaning{EDQUOT, runtime::errDiskFull, "das Speicherkontingent ist erschöpft; Platz schaffen und erneut drucken"},
    Meaning{EFBIG, runtime::errDiskFull, "die Datei wird größer als erlaubt"},
    Meaning{EMFILE, runtime::errTooManyFiles, tooManyOpen},
    Meaning{ENFILE, runtime::errTooManyFiles, tooManyOpen},
    Meaning{ENOMEM, runtime::errOutOfMemory, "die Datei ist größer als der freie Speicher"},
};

}  // namespace

void throwFileError(int error, const std::string& path) {
    const auto* found =
        std::find_if(meanings.begin(), meanings.end(), [error](const Meaning& m) { return m.error == error; });
    const bool known = found != meanings.end();
    const std::string reason =
        known ? std::string(found->reason) : std::string("das System meldet: ") + std::strerror(error);
    std::string detail = path;
    if (!reason.empty()) {
        detail += path.empty() ? reason : " (" + reason + ")";
    }
    throw runtime::Error(known ? found->number : runtime::errDeviceIo, detail);
}

}  // namespace platform_linux
