// A document on a printer, written as PDF: one, or several in a row where the target cannot have all pages in one.
#pragma once

#include <memory>

#include "platform/drawing/document_state.h"
#include "platform/linux/documents/document_factory.h"
#include "platform/linux/documents/document_target.h"
#include "platform/linux/documents/forwarding_surface.h"
#include "platform/print_document.h"

namespace platform_linux::documents {

// A PDF is handed over when a page needs another one, and at the end. After an error nothing more is handed over.
class PdfPrintDocument : public platform::PrintDocument {
public:
    PdfPrintDocument(std::unique_ptr<DocumentTarget> target, pdf::PdfSettings settings, PdfFactory makePdf);

    platform::Surface& surface() override;
    int option(platform::PageOption option) const override;
    void setOption(platform::PageOption option, int value) override;
    void beginPage() override;
    void endPage() override;
    void end() override;
    void abort() noexcept override;

private:
    void startPdf();
    void finishPdf();
    template <typename Step>
    void orGiveUp(Step step);

    std::unique_ptr<DocumentTarget> target_;
    pdf::PdfSettings settings_;
    PdfFactory makePdf_;
    PageOptions next_;   // for the coming page
    PageOptions page_;   // of the page begun last
    PageOptions first_;  // of the first page of the PDF
    std::unique_ptr<PdfOutput> output_;
    std::unique_ptr<pdf::PdfDocument> pdf_;  // writes into output_
    ForwardingSurface surface_;
    platform::drawing::DocumentState state_;
};

}  // namespace platform_linux::documents
