#include "platform/linux/pdf/document.h"

#include "platform/linux/pdf/output_intent.h"
#include "runtime/crash_on_purpose.h"
#include "runtime/error.h"

namespace platform_linux::pdf {

namespace {

void require(bool condition) {
    if (!condition) {
        throw runtime::Error(runtime::errInvalidCall, "Die PDF-Datei ist dafür nicht im richtigen Zustand.");
    }
}

}  // namespace

Document::Document(const PdfSettings& settings, int fileDescriptor)
    : archive_(settings.archive),
      information_(settings),
      output_(fileDescriptor),
      writer_(output_, archive_ ? FileLayout::packed : FileLayout::plain),
      pages_(writer_, archive_ ? ResourcesOf::page : ResourcesOf::tree),
      fonts_(settings.codePage),
      surface_(fonts_, pictures_),
      queue_(settings.workers, [this](std::string_view content, const PageSize& size) { writePage(content, size); }) {}

void Document::setPage(const PdfPage& page) {
    PageSurface::check(page);
    pageSet_ = true;
    if (pageOpen_) {
        nextPage_ = page;
    } else {
        surface_.setPage(page);
    }
}

void Document::beginPage() {
    require(pageSet_ && !pageOpen_ && !finished_);
    pageOpen_ = true;
    surface_.begin();
}

void Document::endPage() {
    require(pageOpen_);
    runtime::crashOnPurpose("module");
    pageOpen_ = false;
    if (pictures_.anyUnwritten()) {
        queue_.drain();
        pictures_.write(writer_);
    }
    ++pageCount_;
    queue_.add(surface_.finish(), {surface_.page().widthPoints, surface_.page().heightPoints});
    if (nextPage_) {
        surface_.setPage(*nextPage_);
        nextPage_.reset();
    }
}

void Document::finish() {
    require(!finished_);
    finished_ = true;
    queue_.drain();
    writeResources();
    pages_.finish();
    std::string text = "<</Type/Catalog/Pages ";
    appendReference(text, pages_.root());
    if (archive_) {
        appendArchiveEntries(text);
    }
    // The page is drawn to the printer's pixel already: a viewer that scaled it to its margins would spoil that.
    text.append("/ViewerPreferences<</PrintScaling/None").append(archive_ ? "/DisplayDocTitle true>>>>" : ">>>>");
    const int catalog = writer_.allocate();
    writer_.object(catalog, text);
    const int information = information_.write(writer_);
    writer_.finish(catalog, information, archive_ ? information_.identifier(writer_) : std::string());
}

// What makes a document PDF/A-2u besides what every document has. One whose fonts do not allow it lacks the mark only.
void Document::appendArchiveEntries(std::string& catalog) {
    flaws_ = fonts_.flaws();
    catalog += "/Metadata ";
    appendReference(catalog, information_.writeMetadata(writer_, flaws_.empty()));
    appendOutputIntent(writer_, catalog);
}

void Document::writePage(std::string_view compressed, const PageSize& size) {
    const int content = writer_.allocate();
    writer_.compressedStream(content, {}, compressed);
    pages_.addPage(size.widthPoints, size.heightPoints, content);
}

void Document::writeResources() {
    std::string text = "<<";
    fonts_.write(writer_, text);
    pictures_.appendResources(text);
    text += ">>";
    writer_.object(pages_.resources(), text);
}

}  // namespace platform_linux::pdf
