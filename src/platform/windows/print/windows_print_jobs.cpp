#include "platform/windows/print/windows_print_jobs.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/windows/print/printer_access.h"
#include "platform/windows/print/spooler_error.h"

namespace platform_windows::print {

namespace {

// False where the spooler cannot list them.
bool countJobs(HANDLE printer, DWORD& count) {
    constexpr DWORD all = 0xFFFF;
    std::vector<BYTE> memory;
    DWORD needed = 0;
    while (::EnumJobsW(printer, 0, all, 1, memory.data(), static_cast<DWORD>(memory.size()), &needed, &count) ==
           FALSE) {
        if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER || needed <= memory.size()) {
            return false;
        }
        memory.resize(needed);
    }
    return true;
}

}  // namespace

int WindowsPrintJobs::count(const std::string& printer) {
    DWORD count = 0;
    if (!countJobs(openPrinter(printer).get(), count)) {
        count = printerRecord(printer).jobs;
    }
    return static_cast<int>(std::min<DWORD>(count, INT32_MAX));
}

void WindowsPrintJobs::purge(const std::string& printer) {
    const PrinterHandle opened = openPrinter(printer, PRINTER_ACCESS_ADMINISTER);
    ::SetLastError(ERROR_SUCCESS);
    if (::SetPrinterW(opened.get(), 0, nullptr, PRINTER_CONTROL_PURGE) == FALSE) {
        throw failure(lastError(), printer);
    }
}

}  // namespace platform_windows::print
