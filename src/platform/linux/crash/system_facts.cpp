#include "platform/linux/crash/system_facts.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/sysinfo.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>

#include "platform/linux/known_facts.h"

namespace platform_linux::crash {

namespace {

using platform::crash::Fact;
using platform::crash::FixedText;

constexpr std::size_t mostFacts = 16;
constexpr std::size_t longestValue = 512;

struct Facts {
    std::array<std::array<char, longestValue>, mostFacts> rooms{};
    std::array<Fact, mostFacts> facts{};
    std::size_t count = 0;
};
constinit Facts found;

// Has the value written into its room.
template <typename Write>
void add(std::string_view label, Write write) noexcept {
    if (found.count < mostFacts) {
        FixedText text(found.rooms[found.count]);
        write(text);
        found.facts[found.count++] = {label, text.view()};
    }
}

std::string_view variable(const char* name) noexcept {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view() : value;
}

// "LANG=de_DE.UTF-8 LC_ALL=C": those that are set.
template <std::size_t Count>
void addVariables(std::string_view label, const std::array<const char*, Count>& names) noexcept {
    add(label, [&](FixedText& text) {
        for (const char* name : names) {
            if (const std::string_view value = variable(name); !value.empty()) {
                text << (text.view().empty() ? "" : " ") << name << "=" << value;
            }
        }
    });
}

// What the distribution calls itself: PRETTY_NAME="Debian GNU/Linux 12 (bookworm)" (os-release(5)).
std::string_view distribution() noexcept {
    static std::array<char, 4096> room;
    const int file = ::open("/etc/os-release", O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const ssize_t size = file < 0 ? 0 : ::read(file, room.data(), room.size());
    ::close(file);
    std::string_view text(room.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    constexpr std::string_view key = "PRETTY_NAME=";
    const std::size_t place = text.find(key);
    if (place == std::string_view::npos) {
        return {};
    }
    text = text.substr(place + key.size());
    text = text.substr(0, text.find('\n'));
    if (text.size() > 1 && text.front() == '"') {
        text = text.substr(1, text.size() - 2);
    }
    return text;
}

void addMebibytes(FixedText& text, std::uint64_t bytes) noexcept {
    constexpr std::uint64_t mebibyte = 1U << 20;
    text.number(bytes / mebibyte) << " MiB";
}

void addMemory(FixedText& text) noexcept {
    constexpr std::uint64_t kibibyte = 1024;
    struct sysinfo memory {};
    if (::sysinfo(&memory) != 0) {
        return;
    }
    addMebibytes(text, std::uint64_t{memory.totalram} * memory.mem_unit);
    text << ", frei ";
    addMebibytes(text, (std::uint64_t{memory.freeram} + memory.bufferram) * memory.mem_unit);
    rusage used{};
    if (::getrusage(RUSAGE_SELF, &used) == 0) {
        text << ", vom Programm höchstens belegt ";
        addMebibytes(text, static_cast<std::uint64_t>(used.ru_maxrss) * kibibyte);
    }
}

}  // namespace

void findSystem() noexcept {
    add("System", [](FixedText& text) {
        utsname kernel{};
        if (::uname(&kernel) == 0) {
            text << static_cast<const char*>(kernel.sysname) << " " << static_cast<const char*>(kernel.release) << " "
                 << static_cast<const char*>(kernel.machine);
        }
        if (const std::string_view name = distribution(); !name.empty()) {
            text << ", " << name;
        }
    });
    addVariables("Gebietsschema",
                 std::array{"LANG", "LC_ALL", "LC_CTYPE", "LC_NUMERIC", "LC_TIME", "LC_MESSAGES", "LANGUAGE"});
    addVariables("Desktop", std::array{"XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "DISPLAY", "WAYLAND_DISPLAY"});
    addVariables("Umgebung", std::array{"KRVWINPR_CODEPAGE", "KRVWINPR_DEVELOPMENT"});
}

void findMachine() noexcept {
    if (const int codePage = knownFacts().dosCodePage; codePage > 0) {
        add("Codepage", [codePage](FixedText& text) {
            text << "UTF-8, DOS ";
            text.number(static_cast<std::uint64_t>(codePage));
        });
    }
    if (const int dpi = knownFacts().screenDpi; dpi > 0) {
        add("Bildschirm", [dpi](FixedText& text) {
            text.number(static_cast<std::uint64_t>(dpi));
            text << " Pixel je Zoll";
        });
    }
    add("Arbeitsspeicher", addMemory);
    struct statvfs disk {};
    if (::statvfs(".", &disk) == 0) {
        add("Platz im Ordner",
            [&disk](FixedText& text) { addMebibytes(text, std::uint64_t{disk.f_bavail} * disk.f_frsize); });
    }
}

std::span<const Fact> systemFacts() noexcept { return std::span(found.facts).first(found.count); }

void clearFacts() noexcept { found.count = 0; }

}  // namespace platform_linux::crash
