#include "platform/linux/cups/printer_state.h"

#include <array>
#include <string_view>

#include "platform/linux/cups/reason.h"
#include "platform/spooler.h"

namespace platform_linux::cups {

namespace {

namespace flag = platform::printer_status;

constexpr std::array reasons = {
    Reason{"media-jam", flag::paperJam},
    Reason{"media-empty", flag::paperOut},
    Reason{"media-needed", flag::paperOut},
    Reason{"input-tray-missing", flag::paperProblem},
    Reason{"input-manual-input-request", flag::manualFeed},
    Reason{"output-area-full", flag::outputBinFull},
    Reason{"output-tray-missing", flag::userIntervention},
    Reason{"toner-low", flag::tonerLow},
    Reason{"marker-supply-low", flag::tonerLow},
    Reason{"developer-low", flag::tonerLow},
    Reason{"toner-empty", flag::noToner},
    Reason{"marker-supply-empty", flag::noToner},
    Reason{"developer-empty", flag::noToner},
    Reason{"marker-waste-full", flag::userIntervention},
    Reason{"door-open", flag::doorOpen},
    Reason{"cover-open", flag::doorOpen},
    Reason{"interlock-open", flag::doorOpen},
    Reason{"offline", flag::offline},
    Reason{"shutdown", flag::offline},
    Reason{"timed-out", flag::offline},
    Reason{"paused", flag::paused},
    Reason{"moving-to-paused", flag::paused},
    Reason{"hold-new-jobs", flag::paused},
    Reason{"deactivated", flag::notAvailable},
    Reason{"warming-up", flag::warmingUp},
    Reason{"fuser-under-temp", flag::warmingUp},
    Reason{"fuser-over-temp", flag::error},
    Reason{"opc-life-over", flag::error},
    Reason{"interpreter-resource-unavailable", flag::error},
    Reason{"spool-area-full", flag::error},
    Reason{"power-saver", flag::powerSave},
    Reason{"standby", flag::powerSave},
    Reason{"hibernate", flag::powerSave},
    Reason{"suspend", flag::powerSave},
};

std::uint32_t flagsOf(std::string_view keyword) {
    constexpr std::string_view errorEnding = "-error";
    const bool isError = keyword.ends_with(errorEnding);
    for (const std::string_view ending : {errorEnding, std::string_view("-warning"), std::string_view("-report")}) {
        if (keyword.ends_with(ending)) {
            keyword.remove_suffix(ending.size());
            break;
        }
    }
    return flagsIn(reasons, keyword).value_or(isError ? flag::error : flag::ready);
}

}  // namespace

std::uint32_t printerStatus(int state, const std::vector<std::string>& keywords, bool acceptsJobs) {
    std::uint32_t status = flag::ready;
    if (state == 4) {
        status |= flag::printing;
    } else if (state == 5) {
        status |= flag::paused;
    }
    if (!acceptsJobs) {
        status |= flag::notAvailable;
    }
    for (const std::string& keyword : keywords) {
        status |= flagsOf(keyword);
    }
    return status;
}

}  // namespace platform_linux::cups
