// Owners of what GDI hands out.
#pragma once

#include "platform/windows/gdi/system_headers.h"
#include "platform/windows/handle.h"

namespace platform_windows::gdi {

struct DeviceContextKind {
    using Handle = HDC;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DeleteDC(handle); }
};
using DeviceContext = Owner<DeviceContextKind>;

struct FontKind {
    using Handle = HFONT;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DeleteObject(handle); }
};
using Font = Owner<FontKind>;

struct BrushKind {
    using Handle = HBRUSH;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DeleteObject(handle); }
};
using Brush = Owner<BrushKind>;

// An object selected into a device context for as long as this lives; the one before comes back.
class Selection {
public:
    Selection(HDC context, HGDIOBJ object) noexcept : context_(context), before_(::SelectObject(context, object)) {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection() { ::SelectObject(context_, before_); }

private:
    HDC context_;
    HGDIOBJ before_;
};

}  // namespace platform_windows::gdi
