#include "platform/windows/crash/system_facts.h"

#include <windows.h>

#include <array>

#include "platform/windows/code_page.h"
#include "platform/windows/crash/utf8_text.h"
#include "platform/windows/screen_resolution.h"
#include "platform/windows/visible_desktop.h"

// The compiler's headers keep it for drivers; every Windows has it in ntdll.dll. Unlike GetVersionEx() it tells every
// program the truth.
extern "C" LONG NTAPI RtlGetVersion(OSVERSIONINFOW* version);

namespace platform_windows::crash {

namespace {

using platform::crash::Fact;
using platform::crash::FixedText;

constexpr std::size_t mostFacts = 12;
constexpr std::size_t roomForAll = 2048;

constinit std::array<Fact, mostFacts> facts{};
constinit std::size_t factCount = 0;
constinit std::array<char, roomForAll> room{};
constinit std::size_t roomTaken = 0;

// The value is what write() puts into the text; a step that fails meanwhile leaves no fact.
template <typename Write>
void addFact(std::string_view label, const Write& write) noexcept {
    FixedText value(std::span<char>(room).subspan(roomTaken));
    write(value);
    if (factCount < facts.size()) {
        facts[factCount] = {label, value.view()};
        roomTaken += value.view().size();
        ++factCount;
    }
}

FixedText& addMebibytes(FixedText& text, std::uint64_t bytes) noexcept {
    constexpr unsigned mebibyte = 20;  // bits
    return text.number(bytes >> mebibyte) << " MiB";
}

void addSystem() noexcept {
    addFact("System", [](FixedText& text) {
        OSVERSIONINFOEXW version{};
        version.dwOSVersionInfoSize = sizeof(version);
        ::RtlGetVersion(reinterpret_cast<OSVERSIONINFOW*>(&version));
        SYSTEM_INFO machine{};
        ::GetNativeSystemInfo(&machine);
        text << (version.wProductType == VER_NT_WORKSTATION ? "Windows " : "Windows Server ");
        text.number(version.dwMajorVersion) << ".";
        text.number(version.dwMinorVersion) << ".";
        text.number(version.dwBuildNumber) << (version.szCSDVersion[0] != 0 ? " " : "");
        addUtf8(text, &version.szCSDVersion[0]);
        text << (machine.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_INTEL ? " (32 Bit" : " (64 Bit");
        text << (sizeof(void*) == 4 ? ", Programm mit 32 Bit, " : ", Programm mit 64 Bit, ");
        text.number(machine.dwNumberOfProcessors) << " Prozessoren)";
    });
}

void addPart(FixedText& text, LCID language, LCTYPE part) noexcept {
    constexpr int longest = 16;
    std::array<wchar_t, longest> name{};
    ::GetLocaleInfoW(language, part, name.data(), longest);
    addUtf8(text, name.data());
}

void addLanguage(FixedText& text, LCID language) noexcept {
    addPart(text, language, LOCALE_SISO639LANGNAME);
    text << "-";
    addPart(text, language, LOCALE_SISO3166CTRYNAME);
}

void addLanguages() noexcept {
    addFact("Gebietsschema", [](FixedText& text) {
        addLanguage(text, ::GetUserDefaultLCID());
        text << " (System ";
        addLanguage(text, ::GetSystemDefaultLCID());
        text << ")";
    });
}

void addCodePages() noexcept {
    addFact("Codepage", [](FixedText& text) {
        text << "Windows ";
        text.number(::GetACP()) << ", DOS ";
        text.number(::GetOEMCP()) << ", Druckdatei ";
        text.number(dosCodePage());
    });
}

void addMemory() noexcept {
    addFact("Arbeitsspeicher", [](FixedText& text) {
        MEMORYSTATUSEX memory{};
        memory.dwLength = sizeof(memory);
        ::GlobalMemoryStatusEx(&memory);
        addMebibytes(text, memory.ullAvailPhys) << " frei von ";
        addMebibytes(text, memory.ullTotalPhys) << ", mit Auslagerung ";
        addMebibytes(text, memory.ullAvailPageFile) << ", Adressraum ";
        addMebibytes(text, memory.ullAvailVirtual);
    });
}

void addScreen() noexcept {
    addFact("Bildschirm", [](FixedText& text) {
        text.number(static_cast<std::uint64_t>(::GetSystemMetrics(SM_CXSCREEN))) << " x ";
        text.number(static_cast<std::uint64_t>(::GetSystemMetrics(SM_CYSCREEN))) << ", ";
        text.number(static_cast<std::uint64_t>(screenResolution(LOGPIXELSX))) << " dpi";
    });
}

void addDesktop() noexcept {
    addFact("Desktop", [](FixedText& text) {
        text << (hasVisibleDesktop() ? "sichtbar" : "keiner");
        text << (::GetSystemMetrics(SM_REMOTESESSION) != 0 ? ", Remotedesktop" : "");
    });
}

void addDisk() noexcept {
    addFact("Platz im Ordner", [](FixedText& text) {
        ULARGE_INTEGER available{};
        if (::GetDiskFreeSpaceExW(nullptr, &available, nullptr, nullptr) != 0) {
            addMebibytes(text, available.QuadPart);
        }
    });
}

constexpr std::array<FactStep, 7> steps = {addSystem,  addLanguages, addCodePages, addMemory,
                                           addDesktop, addScreen,    addDisk};

}  // namespace

std::span<const FactStep> factSteps() noexcept { return steps; }

std::span<const Fact> systemFacts() noexcept { return std::span<const Fact>(facts).first(factCount); }

void clearFacts() noexcept {
    factCount = 0;
    roomTaken = 0;
}

}  // namespace platform_windows::crash
