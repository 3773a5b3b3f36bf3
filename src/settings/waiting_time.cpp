#include "settings/waiting_time.h"

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "settings/MRegistry.h"

namespace settings {

int waitingSeconds(session::Session& session) {
    constexpr int usual = 60;
    constexpr int most = 3600;
    const std::string text = MRegistry::GetRegistryValue(session.platform.settings, MRegistry::productKey, "Wartezeit",
                                                         std::to_string(usual));
    try {
        const int seconds = runtime::roundToLong(runtime::parseNumber(text, session.locale()));
        return seconds >= 0 && seconds <= most ? seconds : usual;
    } catch (const runtime::Error&) {
        return usual;
    }
}

}  // namespace settings
