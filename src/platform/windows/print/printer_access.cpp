#include "platform/windows/print/printer_access.h"

#include "platform/windows/print/listed_bins.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

std::string textOf(const wchar_t* text) { return text != nullptr ? narrow(text) : std::string(); }

// Level 2 of the information record, which holds its texts behind it.
class PrinterInfo {
public:
    explicit PrinterInfo(const std::string& name) {
        const PrinterHandle printer = openPrinter(name);
        DWORD needed = 0;
        while (::GetPrinterW(printer.get(), 2, memory_.data(), static_cast<DWORD>(memory_.size()), &needed) == FALSE) {
            const DWORD code = lastError();
            if (code != ERROR_INSUFFICIENT_BUFFER || needed <= memory_.size()) {
                throw failure(code, name);
            }
            memory_.resize(needed);
        }
        if (memory_.size() < sizeof(PRINTER_INFO_2W)) {
            throw failure(ERROR_INVALID_DATA, name);
        }
    }

    const PRINTER_INFO_2W* operator->() const noexcept {
        return reinterpret_cast<const PRINTER_INFO_2W*>(memory_.data());
    }

private:
    std::vector<BYTE> memory_;
};

}  // namespace

PrinterHandle openPrinter(const std::string& name, ACCESS_MASK rights) {
    if (name.empty()) {
        // The system would open the print server.
        throw failure(ERROR_INVALID_PRINTER_NAME, name);
    }
    PRINTER_DEFAULTSW defaults{};
    defaults.DesiredAccess = rights;
    std::wstring wideName = widen(name);
    PrinterHandle printer;
    ::SetLastError(ERROR_SUCCESS);
    if (::OpenPrinterW(wideName.data(), printer.receive(), &defaults) == FALSE) {
        const DWORD code = ::GetLastError();
        throw failure(code != ERROR_SUCCESS ? code : ERROR_INVALID_PRINTER_NAME, name);
    }
    return printer;
}

platform::PrinterRecord printerRecord(const std::string& name) {
    const PrinterInfo info(name);
    platform::PrinterRecord record;
    record.name = textOf(info->pPrinterName);
    record.serverName = textOf(info->pServerName);
    record.shareName = textOf(info->pShareName);
    record.portName = textOf(info->pPortName);
    record.driverName = textOf(info->pDriverName);
    record.comment = textOf(info->pComment);
    record.location = textOf(info->pLocation);
    record.separatorFile = textOf(info->pSepFile);
    record.attributes = info->Attributes;
    record.priority = info->Priority;
    record.defaultPriority = info->DefaultPriority;
    record.status = info->Status;
    record.jobs = info->cJobs;
    record.averagePpm = info->AveragePPM;
    return record;
}

std::vector<platform::PaperBin> paperBins(const std::string& name) {
    const std::wstring port = widen(printerRecord(name).portName);
    const std::wstring printer = widen(name);
    return listedBins([&](WORD what, wchar_t* into) {
        return ::DeviceCapabilitiesW(printer.c_str(), port.c_str(), what, into, nullptr);
    });
}

}  // namespace platform_windows::print
