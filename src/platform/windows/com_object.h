// COM, and owners of its objects.
#pragma once

#include <windows.h>
// After windows.h, which they need.
#include <objbase.h>
#include <oleauto.h>

#include <memory>

namespace platform_windows {

// COM on this thread for as long as this lives. Where the thread has it already, in whatever way, that is as good.
class ComScope {
public:
    explicit ComScope(DWORD apartment = COINIT_APARTMENTTHREADED) noexcept
        : result_(::CoInitializeEx(nullptr, apartment | COINIT_DISABLE_OLE1DDE)) {}
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope() {
        if (SUCCEEDED(result_)) {
            ::CoUninitialize();
        }
    }

private:
    HRESULT result_;
};

struct ComRelease {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <typename Interface>
using ComObject = std::unique_ptr<Interface, ComRelease>;

// What a call leaves in the pointer that it is given: received([&](Interface** to) { return ...(to); }, check), where
// check is given the call's result and throws for a failure.
template <typename Interface, typename Call, typename Check>
ComObject<Interface> received(const Call& call, const Check& check) {
    Interface* object = nullptr;
    check(call(&object));
    return ComObject<Interface>(object);
}

struct FreeString {
    void operator()(wchar_t* text) const noexcept { ::SysFreeString(text); }
};
using ComString = std::unique_ptr<wchar_t, FreeString>;

}  // namespace platform_windows
