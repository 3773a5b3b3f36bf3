// The system's calls that print, as far as drivers make them fail in ways of their own: a test can stand in for a
// driver.
#pragma once

#include <functional>
#include <string>

#include "platform/windows/gdi/device_bitmap.h"
#include "platform/windows/print/print_handles.h"
#include "platform/windows/print/printer_access.h"
#include "platform/windows/visible_desktop.h"

namespace platform_windows::print {

struct PrintCalls {
    std::function<PrinterHandle(const std::string&)> openPrinter = [](const std::string& name) {
        return print::openPrinter(name);
    };
    std::function<std::string(const std::string&)> portsOf = [](const std::string& name) {
        return printerRecord(name).portName;
    };
    std::function<bool()> hasVisibleDesktop = platform_windows::hasVisibleDesktop;
    std::function<LONG(HWND, HANDLE, wchar_t*, DEVMODEW*, DEVMODEW*, DWORD)> documentProperties = ::DocumentPropertiesW;
    std::function<HDC(const wchar_t*, const wchar_t*, const wchar_t*, const DEVMODEW*)> createContext = ::CreateDCW;
    std::function<int(HDC, int)> capability = ::GetDeviceCaps;
    std::function<HDC(HDC, const DEVMODEW*)> resetContext = ::ResetDCW;
    std::function<int(HDC, const DOCINFOW*)> startDocument = ::StartDocW;
    std::function<int(HDC)> startPage = ::StartPage;
    gdi::StretchPicture stretchPicture = ::StretchDIBits;
    std::function<int(HDC)> endPage = ::EndPage;
    std::function<int(HDC)> endDocument = ::EndDoc;
    std::function<int(HDC)> abortDocument = ::AbortDoc;
};

}  // namespace platform_windows::print
