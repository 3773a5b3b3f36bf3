// Interface of the module "pdf": writes one PDF file page by page into a file descriptor.
#pragma once

#include <array>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "platform/surface.h"

namespace platform_linux::pdf {

struct PdfSettings {
    std::string title;     // UTF-8
    std::string producer;  // UTF-8
    std::time_t created = 0;
    // A document to be kept, not printed: PDF/A-2u (ISO 19005-2) where its fonts allow it. Otherwise a PDF as lean as
    // can be, for a printer.
    bool archive = false;
    std::string creator;  // UTF-8: who made what is shown; of documents for the archive
    // The Unicode character of each byte of the DOS code page, control codes as their glyphs; 0 for none.
    std::array<char32_t, 256> codePage{};
    // Threads that may compress pages beside the caller's; the document is the same with any number. Negative: as many
    // as pay on this machine.
    int workers = -1;
};

// Sheet and device of the coming page. Pixels of the device map to points as 72 / pixels per inch, the sheet's top
// left corner being exact.
struct PdfPage {
    double widthPoints = 0;  // of the sheet as it is read, orientation applied
    double heightPoints = 0;
    platform::DeviceCapabilities device;
    bool color = true;  // false: everything drawn is turned into shades of grey
};

class PdfDocument {
public:
    virtual ~PdfDocument() = default;

    // Also sets the capabilities of the surface before the first page.
    virtual void setPage(const PdfPage& page) = 0;
    virtual platform::Surface& surface() = 0;
    virtual void beginPage() = 0;
    // Writes the page out; its memory is used for the next one. Throws runtime::Error: errDiskFull, errDeviceIo.
    virtual void endPage() = 0;
    // Pages ended.
    virtual int pageCount() const = 0;
    // Writes fonts, page tree and trailer of the pages ended. The descriptor stays open and belongs to the caller.
    virtual void finish() = 0;
    // Why a document for the archive does not bear the mark of one, in sentences for the log; after finish().
    virtual std::vector<std::string> flaws() const { return {}; }
};

// The module's entry function.
using PdfDocumentFactory = std::unique_ptr<PdfDocument> (*)(const PdfSettings& settings, int fileDescriptor);

}  // namespace platform_linux::pdf
