// A document on a printer, written as PDF: one, or several in a row where the target cannot have all pages in one.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/drawing/document_state.h"
#include "platform/linux/documents/document_factory.h"
#include "platform/linux/documents/document_target.h"
#include "platform/linux/documents/forwarding_surface.h"
#include "platform/print_document.h"

namespace platform_linux::documents {

// A PDF is handed over when a page needs another one, and at the end. One that the target does not take then is tried
// again at the end; none overtakes another.
class PdfPrintDocument : public platform::PrintDocument {
public:
    PdfPrintDocument(std::unique_ptr<DocumentTarget> target, pdf::PdfSettings settings, PdfFactory makePdf);

    platform::Surface& surface() override;
    int option(platform::PageOption option) const override;
    void setOption(platform::PageOption option, int value) override;
    void beginPage() override;
    void endPage() override;
    void end() override;
    int pagesHandedOver() const override { return pagesHandedOver_; }
    bool perhapsHandedOver() const override;
    std::vector<std::string> remarks() const override { return remarks_; }
    std::vector<std::string> saveRest(const std::string& path) override;
    void abort() noexcept override;

private:
    struct Finished {
        std::unique_ptr<PdfOutput> output;
        PageOptions firstPage;
        int pages = 0;
    };

    void startPdf();
    void finishPdf();
    void deliver();
    template <typename Step>
    void orGiveUp(Step step);

    std::unique_ptr<DocumentTarget> target_;
    pdf::PdfSettings settings_;
    PdfFactory makePdf_;
    PageOptions next_;                       // for the coming page
    PageOptions page_;                       // of the page begun last
    PageOptions first_;                      // of the first page of the PDF
    std::unique_ptr<PdfOutput> output_;      // of the PDF being written
    std::vector<Finished> finished_;         // in page order
    std::unique_ptr<pdf::PdfDocument> pdf_;  // writes into output_
    ForwardingSurface surface_;
    platform::drawing::DocumentState state_;
    int pagesHandedOver_ = 0;
    std::vector<std::string> remarks_;
};

}  // namespace platform_linux::documents
