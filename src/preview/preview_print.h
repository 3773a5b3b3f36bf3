// Prints pages of a print file from its preview, by the same code as a host's job.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "preview/preview_pages.h"
#include "report/let_events_run.h"

namespace preview {

struct PrintRequest {
    std::string printer;  // device name; not used where a file is named
    std::string pdfFile;  // full path of a PDF file to write as the built-in printer does; otherwise empty
    std::size_t firstPage = 1;
    std::size_t lastPage = 1;  // included
};

// A job in steps. No completion file is written, and nothing of the print file is changed. Destroyed before the end,
// nothing reaches the printer that has not yet been handed over, and no file appears.
class PreviewPrint {
public:
    // Session and pages are borrowed; the pages must not be read anew meanwhile.
    PreviewPrint(session::Session& session, const PreviewPages& pages, PrintRequest request,
                 const report::LetEventsRun& letEventsRun);
    ~PreviewPrint();

    // Prepares, prints a page, or hands the document over. True when all is done. Throws runtime::Error, with the page
    // and macro; finished pages have then been handed over as in a host's job.
    bool step();

    // Of the pages to be printed.
    std::size_t pagesPrinted() const;
    std::size_t pageTotal() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace preview
