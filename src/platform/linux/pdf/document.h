// A PDF document as it grows, page by page. Its stages: the surface turns drawing into operators, the queue packs
// a page's operators, beside the drawing of further pages, the object writer numbers what is written, the output hands
// it to the system.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/pdf/document_information.h"
#include "platform/linux/pdf/file_output.h"
#include "platform/linux/pdf/font_collection.h"
#include "platform/linux/pdf/object_writer.h"
#include "platform/linux/pdf/page_queue.h"
#include "platform/linux/pdf/page_surface.h"
#include "platform/linux/pdf/page_tree.h"
#include "platform/linux/pdf/pdf_document.h"
#include "platform/linux/pdf/picture_collection.h"

namespace platform_linux::pdf {

// Functions called out of order throw runtime::Error (errInvalidCall). Up to 64 KiB of what is written wait in a
// buffer, so an error of the disk may be thrown some pages after the one it hits, in finish() at the latest.
class Document final : public PdfDocument {
public:
    // The descriptor stays the caller's. Nothing is written to it yet.
    Document(const PdfSettings& settings, int fileDescriptor);

    // While a page is open it is for the next one. Throws errInvalidPropertyValue for a page without size or
    // resolution.
    void setPage(const PdfPage& page) override;
    platform::Surface& surface() override { return surface_; }
    void beginPage() override;
    void endPage() override;
    int pageCount() const override { return pageCount_; }
    void finish() override;
    std::vector<std::string> flaws() const override { return flaws_; }

private:
    void writePage(std::string_view compressed, const PageSize& size);
    void writeResources();
    void appendArchiveEntries(std::string& catalog);

    bool archive_;
    DocumentInformation information_;
    FileOutput output_;
    ObjectWriter writer_;
    PageTree pages_;
    FontCollection fonts_;
    PictureCollection pictures_;
    PageSurface surface_;
    PageQueue queue_;
    std::optional<PdfPage> nextPage_;
    std::vector<std::string> flaws_;
    int pageCount_ = 0;
    bool pageSet_ = false;
    bool pageOpen_ = false;
    bool finished_ = false;
};

}  // namespace platform_linux::pdf
