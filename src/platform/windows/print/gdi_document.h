// A document on a printer, drawn with GDI.
#pragma once

#include <exception>
#include <string>

#include "platform/drawing/document_state.h"
#include "platform/drawing/page_recording.h"
#include "platform/print_document.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/print/gdi_surface.h"
#include "platform/windows/print/printer_driver.h"

namespace platform_windows::print {

// The job appears in the printer's queue when the first page ends, and every page goes to it whole. What is open when
// the document is ended, aborted or destroyed has never been there; the job itself never stays unfinished.
//
// A page that cannot be printed ends the document by itself: the pages before are handed over, where the system still
// takes them, and a page that the printer has begun comes out white behind them.
class GdiDocument final : public platform::PrintDocument {
public:
    // Throws platform::SpoolerError, and errPrinter where the printer's port would ask a user whom nobody sees. Names
    // are UTF-8.
    GdiDocument(const std::string& printer, const std::string& title, const PrintCalls& calls = {});
    ~GdiDocument() override { abort(); }

    platform::Surface& surface() override { return recorder_; }
    int option(platform::PageOption option) const override { return mode_.value(option); }
    void setOption(platform::PageOption option, int value) override;
    void beginPage() override;
    void endPage() override;
    void end() override;
    int pagesHandedOver() const override { return pagesHandedOver_; }
    bool perhapsHandedOver() const override { return brokenOff_; }
    void abort() noexcept override;

private:
    // A picture becomes the device's as soon as it is drawn: where the memory does not suffice, that is an error of
    // this page, and the pages ended before are still printed.
    class Recorder final : public platform::drawing::RecordingSurface {
    public:
        explicit Recorder(GdiSurface& device) : RecordingSurface(device), device_(device) {}
        void drawPicture(const std::shared_ptr<const platform::Picture>& picture, int x, int y, int width,
                         int height) override {
            device_.prepare(picture);
            RecordingSurface::drawPicture(picture, x, y, width, height);
        }

    private:
        GdiSurface& device_;
    };

    // Lets the device have the mode; never while it has a page open. A driver that does not change its mode within a
    // job keeps the one it has.
    void apply(const PageMode& mode);
    void startJob();
    std::exception_ptr play() noexcept;
    // Hands over the pages that the job has so far; without any it is dropped. Returns 0 or the system's error code;
    // then the job is gone.
    DWORD finishJob();
    [[noreturn]] void fail(DWORD code);
    [[noreturn]] void failBehindFinishedPages(DWORD code);

    PrintCalls calls_;
    PrinterDriver driver_;
    std::wstring title_;
    PageMode mode_;     // of the coming page
    PageMode applied_;  // the device's
    gdi::DeviceContext device_;
    GdiSurface surface_;
    Recorder recorder_;
    platform::drawing::DocumentState state_;
    bool jobStarted_ = false;
    int pagesEnded_ = 0;  // of the job
    int pagesHandedOver_ = 0;
    bool brokenOff_ = false;    // after pages that the printer may have begun to print
    bool modeChanged_ = false;  // while a page was open
};

}  // namespace platform_windows::print
