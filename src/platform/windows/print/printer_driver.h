// The driver of one printer, as far as it decides about the pages of a document.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/print_document.h"
#include "platform/spooler.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/print/page_mode.h"
#include "platform/windows/print/print_calls.h"
#include "platform/windows/print/print_handles.h"

namespace platform_windows::print {

// Errors are platform::SpoolerError, where nothing else is said.
class PrinterDriver {
public:
    explicit PrinterDriver(std::string printer, PrintCalls calls = {});

    const std::string& printer() const noexcept { return printer_; }

    // What the user has set for the printer.
    const PageMode& own() const noexcept { return own_; }

    // A mode with one value changed, and whatever the driver changes along with it. The size 256 and the bin 0 stand
    // for the printer's own. A size or a bin that the driver does not have is errInvalidPropertyValue; orientation and
    // colour are wishes, a monochrome device stays what it is.
    PageMode changed(const PageMode& mode, platform::PageOption option, int value);

    // A device context for a document.
    gdi::DeviceContext open(const PageMode& mode) const;

private:
    PageMode ask(const PageMode* wish) const;
    bool hasBin(int number);

    PrintCalls calls_;
    std::string printer_;
    std::wstring wideName_;
    PrinterHandle handle_;
    PageMode own_;
    std::optional<std::vector<platform::PaperBin>> bins_;
};

}  // namespace platform_windows::print
