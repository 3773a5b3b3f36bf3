#include "printer/clsDrucker.h"

#include "runtime/numbers.h"

namespace printer {

using platform::DeviceCapabilities;
using runtime::divide;
using runtime::subtractLong;

template <typename Formula>
float clsDrucker::value(Formula formula) const {
    if (device_ == nullptr) {
        dialogs_->messageBox("Bitte Klasse mit NewPrinter Methode initilialisieren!", platform::Buttons::ok,
                             platform::Icon::none, "");
        return 0;
    }
    return runtime::toSingle(formula(device_->capabilities()));
}

float clsDrucker::TopMarginInch() const {
    return value([](const DeviceCapabilities& caps) { return divide(caps.physicalOffsetY, caps.logPixelsY); });
}

float clsDrucker::LeftMarginInch() const {
    return value([](const DeviceCapabilities& caps) { return divide(caps.physicalOffsetX, caps.logPixelsX); });
}

float clsDrucker::TopMarginCM() const {
    return value([](const DeviceCapabilities& caps) { return divide(caps.physicalOffsetY * 2.54, caps.logPixelsY); });
}

float clsDrucker::LeftMarginCM() const {
    return value([](const DeviceCapabilities& caps) { return divide(caps.physicalOffsetX * 2.54, caps.logPixelsX); });
}

float clsDrucker::RightMarginCM() const {
    return value([](const DeviceCapabilities& caps) {
        const auto margin = subtractLong(subtractLong(caps.physicalWidth, caps.horzRes), caps.physicalOffsetX);
        return divide(margin * 2.54, caps.logPixelsX);
    });
}

float clsDrucker::BottomMarginCM() const {
    return value([](const DeviceCapabilities& caps) {
        const auto margin = subtractLong(subtractLong(caps.physicalHeight, caps.vertRes), caps.physicalOffsetY);
        return divide(margin * 2.54, caps.logPixelsY);
    });
}

float clsDrucker::PhysicalWidthCM() const {
    return value([](const DeviceCapabilities& caps) { return divide(caps.physicalWidth * 2.54, caps.logPixelsX); });
}

float clsDrucker::PhysicalHeightCM() const {
    return value([](const DeviceCapabilities& caps) { return divide(caps.physicalHeight * 2.54, caps.logPixelsY); });
}

}  // namespace printer
