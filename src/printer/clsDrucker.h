// Geometry of a printer's page: the unprintable margins and the size of the sheet.
#pragma once

#include "platform/dialogs.h"
#include "platform/surface.h"

namespace printer {

// Every value is computed afresh from the device's capabilities, in double precision, and rounded to single precision.
// A value asked for before NewPrinter() shows a message and is 0. A device that reports 0 pixels per inch is a
// runtime::Error (errDivisionByZero).
class clsDrucker {
public:
    explicit clsDrucker(platform::Dialogs& dialogs) : dialogs_(&dialogs) {}

    // The device is borrowed and must outlive the last value asked for.
    void NewPrinter(const platform::Surface& device) { device_ = &device; }

    float TopMarginInch() const;
    float LeftMarginInch() const;
    float TopMarginCM() const;
    float LeftMarginCM() const;
    float RightMarginCM() const;
    float BottomMarginCM() const;
    float PhysicalWidthCM() const;
    float PhysicalHeightCM() const;

private:
    template <typename Formula>
    float value(Formula formula) const;

    platform::Dialogs* dialogs_;
    const platform::Surface* device_ = nullptr;
};

}  // namespace printer
