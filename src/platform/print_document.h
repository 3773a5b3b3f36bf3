// Port: a document being printed, page by page.
#pragma once

#include <string>
#include <vector>

#include "platform/surface.h"

namespace platform {

// What can be set for the coming page, as the numbers of the printer driver's record.
enum class PageOption {
    paperSize,    // 1 Letter, 5 Legal, 8 A3, 9 A4, 11 A5, ...; 256 the device's own size; 0 unknown
    paperBin,     // the driver's number of a paper source, signed 16-bit; 0 none chosen
    orientation,  // 1 portrait, 2 landscape
    colorMode,    // 1 monochrome, 2 colour
};

inline constexpr int paperA4 = 9;

// Order of calls: any number of setOption(); then, for each page, beginPage(), drawing on surface(), endPage(); then
// end() or abort(). A document that goes out of scope without either is aborted. Errors are runtime::Error; after one
// from beginPage() or endPage() only abort() and the destructor are of use; the finished pages may then have been
// handed over already.
class PrintDocument {
public:
    virtual ~PrintDocument() = default;

    // The page's surface; valid as long as the document, drawn on between beginPage() and endPage() only.
    virtual Surface& surface() = 0;

    virtual int option(PageOption option) const = 0;

    // Takes effect with the next page begun; the capabilities of the surface follow at once where no page is open,
    // otherwise when that page has ended. Throws errInvalidPropertyValue for a value that the device refuses. One that
    // takes no new values once its job has begun keeps the old ones, as option() says.
    virtual void setOption(PageOption option, int value) = 0;

    virtual void beginPage() = 0;
    virtual void endPage() = 0;

    // Hands the pages ended so far to the printer; a page still open is left out. With no page ended the document
    // leaves nothing behind. Throws errPrinter or errDiskFull, with what happened and what to do in the detail, when
    // the document could not be delivered whole; then nothing half-written is left. After a SpoolerError end() may be
    // called again: it tries what was not handed over, and never hands anything over twice.
    virtual void end() = 0;

    // Pages that the printer has taken.
    virtual int pagesHandedOver() const = 0;

    // Whether end() sent pages of which nobody knows whether the printer has taken them.
    virtual bool perhapsHandedOver() const { return false; }

    // Keeps the finished pages that end() could not hand over: files of the user's own (UserFiles) whose names begin
    // with this path, "PATH.pdf". Returns the files; none where pages cannot be kept, and then nothing is left behind.
    virtual std::vector<std::string> saveRest(const std::string& /*path*/) { return {}; }

    // What support should know of the pages handed over, in sentences for the log.
    virtual std::vector<std::string> remarks() const { return {}; }

    // Drops what has not been handed over yet and leaves nothing half-written behind. Never throws.
    virtual void abort() noexcept = 0;
};

}  // namespace platform
