#include "platform/linux/messenger/session.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string_view>

#include "platform/linux/c_string.h"
#include "platform/linux/desktop.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/files.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/messenger/command_output.h"
#include "platform/linux/user_folders.h"
#include "platform/messages/unseen_box.h"

namespace platform_linux::messenger {

namespace {

constexpr const char* unitName = "krvwinpr-messenger.service";

bool systemdRuns() {
    const char* folder = ::getenv("XDG_RUNTIME_DIR");
    return folder != nullptr && ::access((std::string(folder) + "/systemd/private").c_str(), F_OK) == 0;
}

CommandOutput systemctl(std::vector<std::string> arguments, std::chrono::milliseconds limit) {
    arguments.insert(arguments.begin(), {"systemctl", "--user"});
    return outputOf(std::move(arguments), limit);
}

void change(const std::string& verb, const std::string& unit) {
    constexpr std::chrono::seconds limit{30};
    const CommandOutput output = systemctl({verb, "--now", unit}, limit);
    if (!output.done) {
        throw runtime::Error(runtime::errInvalidCall, "systemctl --user " + verb + " --now " + unit +
                                                          " meldet: " + platform::messages::oneLine(output.text));
    }
}

std::string entryPath() {
    const std::string own = userFolder("XDG_CONFIG_HOME", ".config");
    return own.empty() ? own : folderOf(own) + "autostart/krvwinpr-messenger.desktop";
}

// As the key Exec wants it (Desktop Entry 1.5): in double quotes, with the escapes of a string as well.
std::string quoted(std::string_view program) {
    std::string result = "\"";
    for (const char c : program) {
        const bool special = std::string_view("\"`$").find(c) != std::string_view::npos;
        result += c == '\\' ? R"(\\\\)" : special ? std::string(R"(\\)") + c : c == '%' ? "%%" : std::string(1, c);
    }
    return result + "\"";
}

void writeEntry(const std::string& program) {
    const std::string path = entryPath();
    makePrivateFolders(path);
    const std::string entry =
        "[Desktop Entry]\nType=Application\nName=KRVWinPrBote\n"
        "Comment=Druckt für Korvano in einem DOS-Emulator\nExec=" +
        quoted(program) + "\nTerminal=false\nNoDisplay=true\n";
    if (const int error = replaceFile(path, entry, {}); error != 0) {
        throwFileError(error == ENOENT ? ENOTDIR : error, path);
    }
}

void removeEntry() {
    const std::string path = entryPath();
    if (::unlink(path.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
        throwFileError(errno, path);
    }
}

}  // namespace

std::string startWithSession(bool on, const std::string& program) {
    const CString unit(::realpath((folderOf(program) + "../lib/systemd/user/" + unitName).c_str(), nullptr));
    const bool known = unit && systemdRuns();
    if (on && !known) {
        writeEntry(program);
        return "Der Bote beginnt, wenn Sie sich das nächste Mal anmelden. Damit er gleich beginnt, starten Sie jetzt " +
               program + ".";
    }
    if (known) {
        change(on ? "enable" : "disable", on ? unit.get() : unitName);
    }
    removeEntry();
    return known ? "" : "Ein Bote, der gerade läuft, endet mit der Sitzung.";
}

void joinDesktop() {
    constexpr std::chrono::milliseconds limit{500};
    if (desktopNamed() || !systemdRuns()) {
        return;
    }
    constexpr std::array<std::string_view, 6> names{"DISPLAY",          "WAYLAND_DISPLAY",
                                                    "XAUTHORITY",       "XDG_CURRENT_DESKTOP",
                                                    "XDG_SESSION_TYPE", "DBUS_SESSION_BUS_ADDRESS"};
    const std::string text = systemctl({"show-environment"}, limit).text;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string line(rest.substr(0, rest.find('\n')));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        const std::size_t sign = std::min(line.find('='), line.size());
        // What has blanks or the like stands in quotes, and none of these has any.
        if (std::ranges::count(names, line.substr(0, sign)) > 0 && line.find('\'') == std::string::npos &&
            sign < line.size()) {
            ::setenv(line.substr(0, sign).c_str(), line.c_str() + sign + 1, 0);
        }
    }
}

}  // namespace platform_linux::messenger
