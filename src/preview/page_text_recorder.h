// Finds out while a page is drawn where its text lies.
#pragma once

#include <cstddef>
#include <string>

#include "preview/page_text.h"
#include "preview/preview_document.h"
#include "report/page_reader.h"

namespace preview {

// The text that a page prints, a line feed between lines.
class PlainText : public report::TextListener {
public:
    // Appended to; borrowed.
    explicit PlainText(std::string& text) : text_(&text) {}

    void textRun(std::string_view run) override;
    void lineFeed() override;
    // What is printed over a line is a line of its own.
    void carriageReturn() override { returned_ = true; }

private:
    std::string* text_;
    bool returned_ = false;
    bool lineBegun_ = false;
};

class PageTextRecorder : public report::TextListener {
public:
    // The document on which the coming page is drawn; borrowed.
    void begin(const PreviewDocument& document);
    PageText take();

    void textRun(std::string_view run) override;
    void lineFeed() override;
    void carriageReturn() override;

private:
    void endLine();
    void addCells(const platform::drawing::PageRecording::Text& drawn, std::string_view run, std::size_t place);

    const PreviewDocument* document_ = nullptr;
    std::string plain_;
    PlainText plainText_{plain_};
    PageText text_;
    std::vector<TextCell> line_;
    bool returned_ = false;
    std::size_t cells_ = 0;
};

}  // namespace preview
