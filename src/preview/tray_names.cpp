#include "preview/tray_names.h"

#include <algorithm>

namespace preview {

void TrayNames::ask(const std::string& printer) {
    asked_ = printer;
    bins_.clear();
    try {
        bins_ = session_.platform.spooler.paperBins(printer);
    } catch (const platform::SpoolerError&) {
        // Then no bin has a name.
    }
}

std::string TrayNames::nameOf(const std::string& printer, int bin) const {
    const auto found =
        std::find_if(bins_.begin(), bins_.end(), [bin](const auto& known) { return known.number == bin; });
    return known(printer) && found != bins_.end() ? found->name : std::string();
}

}  // namespace preview
