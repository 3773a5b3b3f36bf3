#include "platform/windows/print/spooler_service.h"

#include "platform/windows/background_question.h"
#include "platform/windows/com_object.h"

#include <windows.h>
// After windows.h, which it needs.
#include <wbemidl.h>

#include <exception>
#include <memory>
#include <utility>

namespace platform_windows::print {

namespace {

using platform::ServiceState;

ComString comString(const wchar_t* text) { return ComString(::SysAllocString(text)); }

// The management service acts for whoever asks, and wants to be allowed to.
bool allow(IUnknown* proxy) noexcept {
    return SUCCEEDED(::CoSetProxyBlanket(proxy, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                                         RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE));
}

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
    return allow(services) ? std::move(connected) : nullptr;
}

ComObject<IEnumWbemClassObject> query(IWbemServices& services) {
    const ComString language = comString(L"WQL");
    const ComString text = comString(L"SELECT Started FROM Win32_Service WHERE Name = 'Spooler'");
    IEnumWbemClassObject* found = nullptr;
    if (FAILED(services.ExecQuery(language.get(), text.get(), WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY,
                                  nullptr, &found))) {
        return nullptr;
    }
    // Where the system needs no permission for it, or has it from the connection, this fails and does no harm.
    allow(found);
    return ComObject<IEnumWbemClassObject>(found);
}

bool isStarted(IWbemClassObject& service) {
    VARIANT started;
    ::VariantInit(&started);
    const bool told = SUCCEEDED(service.Get(L"Started", 0, &started, nullptr, nullptr));
    const bool yes = told && started.vt == VT_BOOL && started.boolVal != VARIANT_FALSE;
    ::VariantClear(&started);
    return yes;
}

ServiceState ask() {
    const ComScope com(COINIT_MULTITHREADED);
    const ComObject<IWbemServices> services = connect();
    const ComObject<IEnumWbemClassObject> answer = services ? query(*services) : nullptr;
    if (!answer) {
        return ServiceState::stopped;
    }
    IWbemClassObject* first = nullptr;
    ULONG count = 0;
    const HRESULT result = answer->Next(static_cast<LONG>(serviceLimit), 1, &first, &count);
    const ComObject<IWbemClassObject> service(first);
    if (result == WBEM_S_TIMEDOUT) {
        return ServiceState::silent;
    }
    return service && isStarted(*service) ? ServiceState::running : ServiceState::stopped;
}

}  // namespace

ServiceState answerWithin(unsigned limit, std::function<ServiceState()> question) {
    const auto answer = std::make_shared<ServiceState>(ServiceState::silent);
    const BackgroundQuestion asked([answer, ask = std::move(question)] { *answer = ask(); });
    return asked.isAnswered(limit) ? *answer : ServiceState::silent;
}

ServiceState spoolerServiceState() noexcept {
    try {
        return answerWithin(serviceLimit, ask);
    } catch (const std::exception&) {
        return ServiceState::silent;
    }
}

}  // namespace platform_windows::print
