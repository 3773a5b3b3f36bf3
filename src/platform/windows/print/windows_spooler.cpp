#include "platform/windows/print/windows_spooler.h"

#include "platform/windows/print/gdi_document.h"
#include "platform/windows/print/print_handles.h"
#include "platform/windows/print/printer_access.h"
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
    std::vector<BYTE> memory;
    DWORD needed = 0;
    DWORD count = 0;
    while (::EnumPrintersW(localAndConnected, nullptr, quickLevel, memory.data(), static_cast<DWORD>(memory.size()),
                           &needed, &count) == FALSE) {
        if (const DWORD code = lastError(); code != ERROR_INSUFFICIENT_BUFFER || needed <= memory.size()) {
            throw failure(code, {});
        }
        memory.resize(needed);
    }
    std::vector<std::string> names;
    const auto* const printers = reinterpret_cast<const PRINTER_INFO_4W*>(memory.data());
    for (DWORD number = 0; number < count; ++number) {
        if (printers[number].pPrinterName != nullptr) {
            names.push_back(narrow(printers[number].pPrinterName));
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

}  // namespace platform_windows::print
