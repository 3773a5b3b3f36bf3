// A document that nobody can print.
#pragma once

#include "platform/drawing/document_state.h"
#include "platform/drawing/plain_printer.h"
#include "platform/print_document.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/print/gdi_surface.h"

namespace platform_windows::print {

// To measure by, in memory: no printer, driver or service is asked. Its pages go nowhere.
class SheetDocument final : public platform::PrintDocument {
public:
    SheetDocument() { takePage(); }

    platform::Surface& surface() override { return surface_; }
    int option(platform::PageOption option) const override;
    void setOption(platform::PageOption option, int value) override;
    void beginPage() override;
    void endPage() override;
    void end() override { state_.ended(); }
    int pagesHandedOver() const override { return 0; }
    void abort() noexcept override { state_.ended(); }

private:
    void takePage();

    platform::drawing::PageOptions options_;
    gdi::DeviceContext device_{::CreateCompatibleDC(nullptr)};
    GdiSurface surface_{device_.get()};
    platform::drawing::DocumentState state_;
};

}  // namespace platform_windows::print
