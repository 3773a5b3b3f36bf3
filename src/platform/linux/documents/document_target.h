// Where a document goes: what can be set for its pages, how large they are, and who takes the finished PDF.
#pragma once

#include <memory>

#include "platform/drawing/page_options.h"
#include "platform/linux/pdf/pdf_document.h"
#include "runtime/error.h"

namespace platform_linux::documents {

using platform::drawing::PageOptions;

// One PDF on its way. Destroyed before it was delivered it leaves nothing behind.
class PdfOutput {
public:
    virtual ~PdfOutput() = default;

    // What the PDF is written into; the same number as long as the object lives.
    virtual int descriptor() const = 0;

    // Before each page. Throws runtime::Error (errPrinter, errDiskFull) where the PDF has no place.
    virtual void pageBegins() = 0;

    // The PDF is complete: hands it over, once. Throws runtime::Error or platform::SpoolerError; after the latter it
    // may be called again.
    virtual void deliver(const PageOptions& firstPage) = 0;

    // Whether deliver() failed in a way that lets nobody know what arrived.
    virtual bool perhapsDelivered() const { return false; }

    // The error to throw for one that happened while the PDF was written; the PDF is dropped.
    virtual runtime::Error failure(const runtime::Error& cause) = 0;
};

class DocumentTarget {
public:
    virtual ~DocumentTarget() = default;

    virtual PageOptions defaults() const = 0;
    virtual bool accepts(platform::PageOption option, int value) = 0;
    virtual pdf::PdfPage page(const PageOptions& options) const = 0;
    // Whether a page needs a PDF of its own because of what was set for it and for the page before.
    virtual bool separates(const PageOptions& previous, const PageOptions& next) const = 0;
    // Whether its PDFs are kept, not printed.
    virtual bool isArchive() const { return false; }
    virtual std::unique_ptr<PdfOutput> open() = 0;
};

}  // namespace platform_linux::documents
