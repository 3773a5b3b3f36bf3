#include "platform/windows/crash/modules.h"

#include <windows.h>

#include <winternl.h>

#include <array>

#include "platform/windows/crash/utf8_text.h"

// The start of the program's file in memory; the linker makes it.
extern "C" const IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier): the name is the linker's

// The compiler's headers keep it for drivers; every Windows has it in ntdll.dll.
extern "C" NTSTATUS NTAPI NtQueryVirtualMemory(HANDLE process, void* address, int what, void* information, SIZE_T size,
                                               SIZE_T* needed);

namespace platform_windows::crash {

namespace {

using platform::crash::FixedText;
using platform::crash::Module;
using platform::crash::SymbolTable;

constinit SymbolTable ownRoutines = nullptr;

// The file's name without its folder; empty where there is none.
std::string_view fileNameAt(void* address) noexcept {
    constexpr int mappedFileName = 2;
    constexpr std::size_t longest = 2048;
    constexpr std::size_t longestName = 256;
    alignas(UNICODE_STRING) static std::array<char, longest> answer;
    static std::array<char, longestName> room;
    if (::NtQueryVirtualMemory(::GetCurrentProcess(), address, mappedFileName, answer.data(), longest, nullptr) != 0) {
        return {};
    }
    const auto* const path = reinterpret_cast<const UNICODE_STRING*>(answer.data());
    const std::wstring_view whole(path->Buffer, path->Length / sizeof(wchar_t));
    FixedText name(room);
    addUtf8(name, whole.substr(whole.rfind(L'\\') + 1));
    return name.view();
}

}  // namespace

void setOwnRoutines(SymbolTable routines) noexcept { ownRoutines = routines; }

Module ownModule() noexcept { return {"KRVWinPr.exe", reinterpret_cast<std::uintptr_t>(&__ImageBase), ownRoutines}; }

Module moduleAt(std::uintptr_t address) noexcept {
    MEMORY_BASIC_INFORMATION pages{};
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it comes from a register or a stack
    const bool known = ::VirtualQuery(reinterpret_cast<const void*>(address), &pages, sizeof(pages)) != 0;
    if (!known || pages.Type != MEM_IMAGE) {
        return {};
    }
    const Module own = ownModule();
    const auto base = reinterpret_cast<std::uintptr_t>(pages.AllocationBase);
    return base == own.base ? own : Module{fileNameAt(pages.AllocationBase), base, nullptr};
}

}  // namespace platform_windows::crash
