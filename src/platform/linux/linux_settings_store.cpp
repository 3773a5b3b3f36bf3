#include "platform/linux/linux_settings_store.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <thread>

#include "platform/linux/file_calls.h"
#include "platform/linux/files.h"
#include "platform/linux/user_folders.h"

namespace platform_linux {

namespace {

using platform::SettingsRoot;
using platform::SettingsValue;

constexpr std::string_view explanation =
    R"(# Einstellungen von KRVWinPr. Diese Datei darf von Hand geändert werden, am besten, wenn gerade nichts gedruckt wird.
#
# Unter jedem [Schlüssel] stehen Zeilen der Form Name=Wert; Groß- und Kleinschreibung der Namen ist gleichgültig.
#   Name=Text                  Leerzeichen am Anfang und am Ende zählen nicht
#   Name=" Text "              genau dieser Text; darin \" \\ \n \r \t für Anführungszeichen, \, Zeilenende und Tabulator
#   Name=REG_DWORD:2           Zahl, auch hexadezimal: 0x2
#   Name=REG_SZ:REG_x:         Text, der wie eine Typangabe beginnt
# Zeilen, die mit # oder ; beginnen, sind Kommentare. Was nicht zu verstehen ist, bleibt stehen und wird überlesen.
#
# Zwei Einstellungen eines Druckers lassen sich nur hier eintragen, unter
# [HKCU\Software\Velmora\KRVWinPr\3.0\Drucker\<Name des Druckers, ohne \\ am Anfang>]:
#   ColorMode=0, 1 oder 2      0 = wie der Treiber, 1 = schwarzweiß, 2 = farbig
#   IgnorePaperSize=1          Papiergröße des Druckers nicht umstellen (0 = umstellen)
#
# Unter [HKCU\Software\Velmora\KRVWinPr\3.0]:
#   Wartezeit=60               so viele Sekunden wird auf einen Druckdienst gewartet, der nicht antwortet (0 bis 3600)
#
# Der Bote für Hosts im DOS-Emulator (KRVWinPrBote), unter [HKCU\Software\Velmora\KRVWinPr\3.0\Bote]:
#   Ordner1=/home/korvano/dos/FIRMA   überwachter Ordner; weitere als Ordner2, Ordner3, ...
#   Alter=600                  so viele Sekunden darf ein Auftrag auf den Boten gewartet haben
#
# Laufwerke in den Pfaden von Korvano (Druckdateien, Bilder, Hintergründe), unter
# [HKCU\Software\Velmora\KRVWinPr\3.0\Laufwerke]:
#   C=/home/korvano/dos        C:\BILDER\LOGO.BMP ist /home/korvano/dos/BILDER/LOGO.BMP; ohne Eintrag /BILDER/LOGO.BMP
)";

// The file that a link leads to, which need not exist; the path itself where it is no link.
std::string linkTarget(std::string path) {
    constexpr int deepest = 40;
    for (int i = 0; i < deepest; ++i) {
        std::optional<Link> link = linkAt(path);
        if (!link) {
            break;
        }
        path = std::move(link->target);
    }
    return path;
}

// The lock is gone when the descriptor is closed, however the process ends; the file stays, as removing it would give
// two processes a lock each. What is waited for is taken off the time that may be waited. Where the file system has no
// locks, those who write at once may undo each other's changes, but nobody's file.
FileDescriptor lockedFile(const std::string& path, std::chrono::milliseconds& wait) {
    constexpr std::chrono::milliseconds pause{10};
    FileDescriptor file = openFile(path, O_RDWR);
    if (!file && errno == ENOENT) {
        file = openFile(path, O_RDWR | O_CREAT, privateFile);
        if (file) {
            giveToOwnerOf(folderOf(path), file.get());
        }
    }
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + wait;
    const auto left = [end] { return std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()); };
    while (file && ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && !knowsNoLocks(errno)) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || left().count() <= 0) {
            file.close();
        } else {
            std::this_thread::sleep_for(pause);
        }
    }
    wait = std::max(left(), std::chrono::milliseconds::zero());
    return file;
}

Replacement likeOldFile(const std::string& path) {
    Replacement how{.mode = privateFile, .exactMode = true, .durable = true};
    struct stat old {};
    if (::stat(path.c_str(), &old) == 0) {
        constexpr mode_t permissions = 07777;
        how.mode = old.st_mode & permissions;
        if (old.st_uid != ::geteuid() || old.st_gid != ::getegid()) {
            how.owner = old.st_uid;
            how.group = old.st_gid;
        }
    }
    return how;
}

struct Loaded {
    bool readable = false;
    std::string text;
};

Loaded load(const std::string& path) {
    Loaded result;
    try {
        const int error = path.empty() ? ENOENT : readWholeFile(path, result.text);
        result.readable = error == 0 || error == ENOENT || error == ENOTDIR;
    } catch (const std::exception&) {
        result.text.clear();
    }
    if (result.readable && result.text.empty()) {
        result.text = explanation;
    }
    return result;
}

}  // namespace

LinuxSettingsStore::LinuxSettingsStore(std::string path, std::chrono::milliseconds lockWait)
    : path_(std::move(path)), lockWait_(lockWait) {}

LinuxSettingsStore::~LinuxSettingsStore() { commit(); }

std::string LinuxSettingsStore::usualPath() {
    const std::string folder = userFolder("XDG_CONFIG_HOME", ".config");
    return folder.empty() ? folder : folder + "/settings.ini";
}

SettingsFile& LinuxSettingsStore::file() {
    if (!file_) {
        const Loaded loaded = load(path_);
        readable_ = loaded.readable;
        file_.emplace(loaded.text);
    }
    return *file_;
}

bool LinuxSettingsStore::keyExists(SettingsRoot root, std::string_view key) { return file().keyExists(root, key); }

std::optional<SettingsValue> LinuxSettingsStore::value(SettingsRoot root, std::string_view key, std::string_view name) {
    return file().value(root, key, name);
}

bool LinuxSettingsStore::setText(SettingsRoot root, std::string_view key, std::string_view name,
                                 std::string_view text) {
    const SettingsFile::Change change = file().setText(root, key, name, text);
    if (change == SettingsFile::Change::made) {
        pending_.push_back({root, std::string(key), std::string(name), std::string(text)});
    }
    return readable_ && change != SettingsFile::Change::impossible;
}

bool LinuxSettingsStore::commit() {
    if (pending_.empty()) {
        return true;
    }
    try {
        return !path_.empty() && commitTo(path_);
    } catch (const std::exception&) {
        return false;
    }
}

bool LinuxSettingsStore::commitTo(const std::string& path) {
    makePrivateFolders(path);
    const std::string target = linkTarget(path);
    const FileDescriptor lock = lockedFile(target + ".lock", lockWait_);
    if (!lock) {
        return false;
    }
    const Loaded loaded = load(target);
    if (!loaded.readable) {
        return false;
    }
    SettingsFile fresh(loaded.text);
    for (const Setting& setting : pending_) {
        fresh.setText(setting.root, setting.key, setting.name, setting.text);
    }
    const std::string text = fresh.text();
    if (text != loaded.text && replaceFile(target, text, likeOldFile(target)) != 0) {
        return false;
    }
    file_ = std::move(fresh);
    readable_ = true;
    pending_.clear();
    return true;
}

}  // namespace platform_linux
