#include "platform/windows/print/printer_driver.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/windows/print/printer_access.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

using platform::PageOption;

PrinterDriver::PrinterDriver(std::string printer, PrintCalls calls)
    : calls_(std::move(calls)),
      printer_(std::move(printer)),
      wideName_(widen(printer_)),
      handle_(calls_.openPrinter(printer_)),
      own_(ask(nullptr)) {}

PageMode PrinterDriver::ask(const PageMode* wish) const {
    // The functions of the spooler take names and records that they do not change by pointers to what is not constant.
    auto* const name = const_cast<wchar_t*>(wideName_.c_str());
    ::SetLastError(ERROR_SUCCESS);
    const LONG size = calls_.documentProperties(nullptr, handle_.get(), name, nullptr, nullptr, 0);
    if (size <= 0) {
        throw failure(lastError(), printer_);
    }
    constexpr std::size_t spare = 1024;  // some drivers write more than they said
    PageMode mode(static_cast<std::size_t>(size) + spare);
    auto* const input = wish != nullptr ? const_cast<DEVMODEW*>(wish->record()) : nullptr;
    const DWORD flags = DM_OUT_BUFFER | (wish != nullptr ? DM_IN_BUFFER : 0);
    if (calls_.documentProperties(nullptr, handle_.get(), name, mode.record(), input, flags) != IDOK) {
        throw failure(lastError(), printer_);
    }
    return mode;
}

bool PrinterDriver::hasBin(int number) {
    if (!bins_) {
        bins_ = paperBins(printer_);
    }
    return std::any_of(bins_->begin(), bins_->end(),
                       [number](const platform::PaperBin& bin) { return bin.number == number; });
}

PageMode PrinterDriver::changed(const PageMode& mode, PageOption option, int value) {
    constexpr int ownPaperSize = 256;
    const auto refuse = [&] {
        throw runtime::Error(runtime::errInvalidPropertyValue,
                             "Drucker „" + printer_ + "“: Der Treiber nimmt den Wert " + std::to_string(value) +
                                 " nicht an. Bitte die Einstellungen des Druckers prüfen.");
    };
    if (value < INT16_MIN || value > INT16_MAX) {
        refuse();
    }
    PageMode wish = mode;
    int expected = value;
    switch (option) {
        case PageOption::paperSize:
            if (value == ownPaperSize) {
                expected = own_.value(option);
                wish.takePaperSize(own_);
            } else {
                wish.request(option, value);
            }
            break;
        case PageOption::paperBin:
            expected = value == 0 ? own_.value(option) : value;
            if (expected != own_.value(option) && !hasBin(expected)) {
                refuse();
            }
            wish.request(option, expected);
            break;
        case PageOption::orientation:
        case PageOption::colorMode:
            if (value != 1 && value != 2) {
                refuse();
            }
            wish.request(option, value);
            break;
    }
    PageMode agreed = ask(&wish);
    const bool binding = option == PageOption::paperSize || option == PageOption::paperBin;
    if (binding && agreed.value(option) != expected) {
        refuse();
    }
    return agreed;
}

gdi::DeviceContext PrinterDriver::open(const PageMode& mode) const {
    ::SetLastError(ERROR_SUCCESS);
    gdi::DeviceContext context(calls_.createContext(L"WINSPOOL", wideName_.c_str(), nullptr, mode.record()));
    if (!context) {
        throw failure(lastError(), printer_);
    }
    return context;
}

}  // namespace platform_windows::print
