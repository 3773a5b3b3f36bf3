// Owners of what the spooler hands out.
#pragma once

#include "platform/windows/handle.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

struct PrinterKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::ClosePrinter(handle); }
};
using PrinterHandle = Owner<PrinterKind>;

}  // namespace platform_windows::print
