// The spooler's calls for a queue and its jobs: a test can stand in for a spooler.
#pragma once

#include <functional>
#include <string>

#include "platform/windows/print/print_handles.h"
#include "platform/windows/print/printer_access.h"

namespace platform_windows::print {

struct JobCalls {
    std::function<PrinterHandle(const std::string&, ACCESS_MASK)> openPrinter = print::openPrinter;
    std::function<BOOL(HANDLE, DWORD, DWORD, DWORD, BYTE*, DWORD, DWORD*, DWORD*)> enumJobs = ::EnumJobsW;
    std::function<BOOL(HANDLE, DWORD, DWORD, BYTE*, DWORD, DWORD*)> getJob = ::GetJobW;
    std::function<BOOL(HANDLE, DWORD, DWORD, BYTE*, DWORD)> setJob = ::SetJobW;
    std::function<BOOL(HANDLE, DWORD, BYTE*, DWORD)> setPrinter = ::SetPrinterW;
    std::function<HANDLE(HANDLE, DWORD, DWORD, void*)> firstChange = ::FindFirstPrinterChangeNotification;
    std::function<BOOL(HANDLE, DWORD*, void*, void**)> nextChange = ::FindNextPrinterChangeNotification;
    std::function<BOOL(HANDLE)> closeChanges = ::FindClosePrinterChangeNotification;
};

}  // namespace platform_windows::print
