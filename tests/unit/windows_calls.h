// Stands in the way of the program's calls of the system: a program keeps the address of each function that it imports,
// and a test puts another one there.
#pragma once

#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <functional>
#include <type_traits>
#include <utility>

namespace windows_support {

// While it lives, the program's own calls of a function that it imports go to another one.
template <typename Function>
class Detour {
public:
    Detour(Function function, Function other) : function_(function) {
        auto* const image = reinterpret_cast<unsigned char*>(::GetModuleHandleW(nullptr));
        const auto* headers =
            reinterpret_cast<IMAGE_NT_HEADERS*>(image + reinterpret_cast<IMAGE_DOS_HEADER*>(image)->e_lfanew);
        const IMAGE_DATA_DIRECTORY& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
        auto** const first = reinterpret_cast<Function*>(image + table.VirtualAddress);
        place_ = std::find(first, first + table.Size / sizeof(Function), function);
        put(other);
    }
    Detour(const Detour&) = delete;
    Detour& operator=(const Detour&) = delete;
    ~Detour() { put(function_); }

private:
    void put(Function function) {
        DWORD protection = 0;
        ::VirtualProtect(place_, sizeof(Function), PAGE_READWRITE, &protection);
        *place_ = function;
        ::VirtualProtect(place_, sizeof(Function), protection, &protection);
    }

    // Not to be read anew from the table, which the compiler takes for constant.
    volatile Function function_;
    Function* place_;
};

// A function of the system, whose calls fail with the code that is returned for their arguments; 0 lets them through.
template <typename Function, int number = 0>
class Calls;
template <typename Result, typename... Arguments, int number>
class Calls<Result(WINAPI*)(Arguments...), number> {
public:
    explicit Calls(Result(WINAPI* function)(Arguments...)) : detour_(function, call) { real_ = function; }
    ~Calls() { refuse(nullptr); }
    void refuse(std::function<DWORD(Arguments...)> reason) const { reason_ = std::move(reason); }

private:
    static Result WINAPI call(Arguments... arguments) {
        const DWORD code = reason_ ? reason_(arguments...) : 0;
        ::SetLastError(code);
        if (code == 0) {
            return real_(arguments...);
        }
        if constexpr (std::is_same_v<Result, HANDLE>) {
            return INVALID_HANDLE_VALUE;
        } else {
            return std::is_same_v<Result, NTSTATUS> ? static_cast<Result>(0xC0070000U | code) : Result{};
        }
    }
    static inline Result(WINAPI* real_)(Arguments...) = nullptr;
    static inline std::function<DWORD(Arguments...)> reason_;
    Detour<Result(WINAPI*)(Arguments...)> detour_;
};

// While it lives, no time passes in the program's pauses; what others do meanwhile happens in the third one.
class Pauses {
public:
    Pauses() { begin(nullptr); }
    static void begin(std::function<void()> meanwhile) {
        count = 0;
        meanwhile_ = std::move(meanwhile);
    }
    static inline int count = 0;

private:
    static void WINAPI pass(DWORD) {
        if (++count == 3 && meanwhile_) {
            meanwhile_();
        }
    }
    static inline std::function<void()> meanwhile_;
    Detour<decltype(&::Sleep)> sleep_{&::Sleep, pass};
};

}  // namespace windows_support
