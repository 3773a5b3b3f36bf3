// Makes single pages of a print file, in any order, as a job would print them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "preview/page_text_recorder.h"
#include "preview/preview_document.h"
#include "preview/preview_pages.h"
#include "printer/Printer.h"
#include "report/page_passing.h"
#include "report/page_printer.h"
#include "report/print_run.h"

namespace preview {

class PageMaker {
public:
    // The device's document, and whether it is a sheet without a printer.
    struct Device {
        std::string name;  // whose settings count
        std::function<std::unique_ptr<platform::PrintDocument>()> open;
        bool sheetOnly = false;
    };

    // Opens the device and prepares the job on it. Session and order are borrowed. Throws what a job throws there.
    PageMaker(session::Session& session, const PreviewOrder& order, const Device& device);
    PageMaker(const PageMaker&) = delete;
    PageMaker& operator=(const PageMaker&) = delete;

    const std::string& printer() const { return printer_.DeviceName(); }

    // How the first page begins, and passing the others.
    const report::PageStart& firstPage() const { return first_; }
    void pass(std::string_view page, report::PageStart& start) { passing_.pass(page, start); }

    // A page that fails is one with a failure.
    PreviewPage make(std::size_t number, std::string_view page, const report::PageStart& start);

private:
    std::unique_ptr<platform::PrintDocument> open(const Device& device);
    void print(std::size_t number, std::string_view page, report::PageStart start);
    template <typename Step>
    std::string failureOf(std::size_t number, Step step);

    session::Session& session_;
    const PreviewOrder& order_;
    PreviewDocument* document_ = nullptr;  // the printer's
    printer::Printer printer_;
    PageTextRecorder text_;
    report::JobProgress progress_{session_.activity()};
    report::PrintRun run_;
    report::PagePrinter pages_;
    report::PagePassing passing_;
    report::PageStart first_;
};

}  // namespace preview
