#include "platform/windows/print/spooler_service.h"

#include "platform/windows/com_object.h"

#include <windows.h>
// After windows.h, which they need.
#include <oleauto.h>
#include <wbemidl.h>

#include <memory>

namespace platform_windows::print {

namespace {

struct FreeString {
    void operator()(wchar_t* text) const noexcept { ::SysFreeString(text); }
};
using ComString = std::unique_ptr<wchar_t, FreeString>;

ComString comString(const wchar_t* text) { return ComString(::SysAllocString(text)); }

ComObject<IWbemServices> connect() {
    void* created = nullptr;
    if (FAILED(::CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator, &created))) {
        return nullptr;
    }
    const ComObject<IWbemLocator> locator(static_cast<IWbemLocator*>(created));
    const ComString space = comString(L"root\\cimv2");
    IWbemServices* services = nullptr;
    if (FAILED(locator->ConnectServer(space.get(), nullptr, nullptr, nullptr, WBEM_FLAG_CONNECT_USE_MAX_WAIT, nullptr,
                                      nullptr, &services))) {
        return nullptr;
    }
    ComObject<IWbemServices> connected(services);
    const HRESULT allowed =
        ::CoSetProxyBlanket(services, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                            RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE);
    return SUCCEEDED(allowed) ? std::move(connected) : nullptr;
}

bool isStarted(IWbemServices& services) {
    const ComString path = comString(L"Win32_Service.Name='Spooler'");
    IWbemClassObject* found = nullptr;
    if (FAILED(services.GetObject(path.get(), 0, nullptr, &found, nullptr))) {
        return false;
    }
    const ComObject<IWbemClassObject> service(found);
    VARIANT started;
    ::VariantInit(&started);
    const bool told = SUCCEEDED(service->Get(L"Started", 0, &started, nullptr, nullptr));
    const bool yes = told && started.vt == VT_BOOL && started.boolVal != VARIANT_FALSE;
    ::VariantClear(&started);
    return yes;
}

}  // namespace

bool spoolerServiceRunning() noexcept {
    const ComScope com;
    const ComObject<IWbemServices> services = connect();
    return services && isStarted(*services);
}

}  // namespace platform_windows::print
