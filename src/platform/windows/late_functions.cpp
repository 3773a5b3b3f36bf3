// Functions of libraries that are not loaded before the first call of one of them; see krv_late_library() in
// CMakeLists.txt.
#include <windows.h>
// After windows.h, which it needs.
#include <delayimp.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/windows/system_library.h"

namespace {

// In the program's memory, so far from its beginning.
template <typename Type>
const Type* at(std::size_t distance) noexcept {
    return reinterpret_cast<const Type*>(reinterpret_cast<const BYTE*>(::GetModuleHandleW(nullptr)) + distance);
}

FARPROC found(const char* libraryName, const char* name) {
    const std::string_view letters = libraryName;
    return platform_windows::functionOf<FARPROC>(platform_windows::systemLibrary({letters.begin(), letters.end()}),
                                                 name);
}

}  // namespace

// What the linker has called in place of a function that was not looked up yet: puts it into its place in the table of
// the library's functions and gives it to be called. No Windows is without them.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is the linker's
extern "C" FARPROC WINAPI __delayLoadHelper2(PCImgDelayDescr library, PImgThunkData place) {
    const DWORD before = ::GetLastError();
    const auto number = static_cast<std::size_t>(place - at<IMAGE_THUNK_DATA>(library->rvaIAT));
    const auto nameAt = static_cast<std::size_t>(at<IMAGE_THUNK_DATA>(library->rvaINT)[number].u1.AddressOfData);
    const FARPROC function = found(at<char>(library->rvaDLLName), at<IMAGE_IMPORT_BY_NAME>(nameAt)->Name);
    if (function == nullptr) {
        ::RaiseException(VcppException(ERROR_SEVERITY_ERROR, ERROR_PROC_NOT_FOUND), 0, 0, nullptr);
    }
    place->u1.Function = reinterpret_cast<ULONG_PTR>(function);
    // The caller may have set it, to see what the function makes of it.
    ::SetLastError(before);
    return function;
}
