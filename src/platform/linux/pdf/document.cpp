#include "platform/linux/pdf/document.h"

#include "platform/linux/pdf/text_string.h"
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
    : title_(settings.title),
      producer_(settings.producer),
      created_(settings.created),
      output_(fileDescriptor),
      writer_(output_),
      pages_(writer_),
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
    pages_.finish(writeResources());
    const int catalog = writer_.allocate();
    std::string text = "<</Type/Catalog/Pages ";
    appendReference(text, pages_.root());
    // The page is drawn to the printer's pixel already: a viewer that scaled it to its margins would spoil that.
    text += "/ViewerPreferences<</PrintScaling/None>>>>";
    writer_.object(catalog, text);
    const int information = writer_.allocate();
    writeInformation(information);
    writer_.finish(catalog, information);
}

void Document::writePage(std::string_view compressed, const PageSize& size) {
    const int content = writer_.allocate();
    writer_.compressedStream(content, {}, compressed);
    pages_.addPage(size.widthPoints, size.heightPoints, content);
}

int Document::writeResources() {
    const int number = writer_.allocate();
    std::string text = "<<";
    fonts_.write(writer_, text);
    pictures_.appendResources(text);
    text += ">>";
    writer_.object(number, text);
    return number;
}

void Document::writeInformation(int number) {
    std::string text = "<<";
    if (!title_.empty()) {
        text += "/Title" + textString(title_);
    }
    if (!producer_.empty()) {
        text += "/Producer" + textString(producer_);
    }
    text += "/CreationDate" + dateString(created_) + ">>";
    writer_.object(number, text);
}

}  // namespace platform_linux::pdf
