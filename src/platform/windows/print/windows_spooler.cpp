#include "platform/windows/print/windows_spooler.h"

#include <algorithm>

#include "platform/windows/newer_functions.h"
#include "platform/windows/print/gdi_document.h"
#include "platform/windows/print/print_handles.h"
#include "platform/windows/print/printer_access.h"
#include "platform/windows/print/sheet_document.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/print/spooler_service.h"
#include "platform/windows/system_error.h"
#include "platform/windows/topmost_window.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

constexpr DWORD localAndConnected = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
// Of the information records the one that asks no printer of another machine.
constexpr DWORD quickLevel = 4;

// Information records of a level, with the texts that they point to.
template <typename Record>
class Listing {
public:
    Listing(DWORD which, DWORD level) {
        DWORD needed = 0;
        while (::EnumPrintersW(which, nullptr, level, memory_.data(), static_cast<DWORD>(memory_.size()), &needed,
                               &count_) == FALSE) {
            if (const DWORD code = lastError(); code != ERROR_INSUFFICIENT_BUFFER || needed <= memory_.size()) {
                throw failure(code, {});
            }
            memory_.resize(needed);
        }
    }

    std::span<const Record> records() const noexcept {
        return {reinterpret_cast<const Record*>(memory_.data()), count_};
    }

private:
    std::vector<BYTE> memory_;
    DWORD count_ = 0;
};

}  // namespace

bool WindowsSpooler::hasPrinters() {
    // Where there is a default printer there are printers, and this question costs next to nothing.
    DWORD length = 0;
    ::GetDefaultPrinterW(nullptr, &length);
    if (length > 0) {
        return true;
    }
    DWORD needed = 0;
    DWORD count = 0;
    const BOOL done = ::EnumPrintersW(localAndConnected, nullptr, quickLevel, nullptr, 0, &needed, &count);
    return done == FALSE && ::GetLastError() == ERROR_INSUFFICIENT_BUFFER && needed > 0;
}

std::vector<std::string> WindowsSpooler::printerNames() {
    const Listing<PRINTER_INFO_4W> printers(localAndConnected, quickLevel);
    std::vector<std::string> names;
    for (const PRINTER_INFO_4W& printer : printers.records()) {
        if (printer.pPrinterName != nullptr) {
            names.push_back(narrow(printer.pPrinterName));
        }
    }
    return names;
}

std::string WindowsSpooler::defaultPrinter() {
    DWORD length = 0;
    ::GetDefaultPrinterW(nullptr, &length);
    std::wstring name(length, L'\0');
    if (length == 0 || ::GetDefaultPrinterW(name.data(), &length) == FALSE) {
        return {};
    }
    return narrow(name.c_str());
}

void WindowsSpooler::setDefaultPrinter(const std::string& name) {
    // Without this an empty name would mean any printer.
    openPrinter(name);
    ::SetLastError(ERROR_SUCCESS);
    if (::SetDefaultPrinterW(widen(name).c_str()) == FALSE) {
        throw failure(lastError(), name);
    }
}

platform::PrinterRecord WindowsSpooler::printer(const std::string& name) { return printerRecord(name); }

std::vector<platform::PaperBin> WindowsSpooler::paperBins(const std::string& name) { return print::paperBins(name); }

bool WindowsSpooler::canAdminister(const std::string& name) {
    try {
        openPrinter(name, PRINTER_ACCESS_ADMINISTER);
        return true;
    } catch (const platform::SpoolerError& error) {
        if (error.code() != ERROR_ACCESS_DENIED) {
            throw;
        }
        return false;
    }
}

void WindowsSpooler::showProperties(const std::string& name) {
    const PrinterHandle printer = openPrinter(name);
    ::SetLastError(ERROR_SUCCESS);
    if (::PrinterProperties(topmostWindow(), printer.get()) == FALSE) {
        const DWORD code = ::GetLastError();
        if (code != ERROR_SUCCESS && code != ERROR_CANCELLED) {
            throw failure(code, name);
        }
    }
}

platform::ServiceState WindowsSpooler::serviceState() { return spoolerServiceState(); }

bool WindowsSpooler::answersAgain() {
    try {
        printerNames();
        return true;
    } catch (const platform::SpoolerError&) {
        return false;
    }
}

std::string WindowsSpooler::errorText(std::uint32_t code) { return code == ERROR_SUCCESS ? "" : systemText(code); }

std::unique_ptr<platform::PrintDocument> WindowsSpooler::openDocument(const std::string& name,
                                                                      const std::string& title) {
    return std::make_unique<GdiDocument>(name, title);
}

std::unique_ptr<platform::PrintDocument> WindowsSpooler::openSheet() { return std::make_unique<SheetDocument>(); }

// It is a printer of this machine; those of others are not asked for their drivers, which could take minutes.
std::string WindowsSpooler::pdfPrinter() {
    constexpr DWORD levelWithDrivers = 2;
    try {
        const Listing<PRINTER_INFO_2W> printers(PRINTER_ENUM_LOCAL, levelWithDrivers);
        return pdfPrinterAmong(printers.records());
    } catch (const platform::SpoolerError&) {
        return {};
    }
}

std::string pdfPrinterAmong(std::span<const PRINTER_INFO_2W> printers) {
    const auto found = std::find_if(printers.begin(), printers.end(), [](const PRINTER_INFO_2W& printer) {
        return printer.pPrinterName != nullptr && printer.pDriverName != nullptr &&
               isSameName(printer.pDriverName, L"Microsoft Print To PDF");
    });
    return found != printers.end() ? narrow(found->pPrinterName) : std::string();
}

}  // namespace platform_windows::print
