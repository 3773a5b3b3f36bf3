#include "preview/preview_print.h"

#include <algorithm>
#include <optional>

#include "preview/quiet_session.h"
#include "printer/Printer.h"
#include "printer/remarks.h"
#include "report/page_cutter.h"
#include "report/page_passing.h"
#include "report/page_printer.h"
#include "report/print_run.h"
#include "report/tray_selection.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "settings/waiting_time.h"

namespace preview {

using runtime::Error;

struct PreviewPrint::Implementation {
    Implementation(session::Session& session, const PreviewPages& ofPages, PrintRequest wanted,
                   const report::LetEventsRun& letEventsRun);

    bool step();
    void prepare();
    void passSome();
    void printPage();
    void handOver();
    void giveUp() noexcept;

    std::unique_ptr<platform::PrintDocument> openFile();
    std::string title() const { return std::string(runtime::fileNameOf(pages.order().sDateiname)); }

    QuietSession quiet;
    platform::Spooler& spooler;
    const PreviewPages& pages;
    const PrintRequest request;

    enum class Next { prepare, pass, print, handOver, nothing };
    Next next = Next::prepare;
    std::size_t page = 1;  // the next one
    std::size_t printed = 0;

    std::unique_ptr<printer::Printer> printer;
    report::JobProgress progress{quiet.session().activity()};
    std::optional<report::PrintRun> run;
    std::optional<report::PagePrinter> press;
    std::optional<report::PagePassing> passing;
    report::PageStart start;
};

PreviewPrint::Implementation::Implementation(session::Session& session, const PreviewPages& ofPages,
                                             PrintRequest wanted, const report::LetEventsRun& letEventsRun)
    : quiet(session), spooler(session.platform.spooler), pages(ofPages), request(std::move(wanted)) {
    if (request.firstPage < 1 || request.lastPage < request.firstPage || request.lastPage > pages.pageCount()) {
        throw Error(runtime::errSubscript,
                    "Seiten " + std::to_string(request.firstPage) + " bis " + std::to_string(request.lastPage));
    }
    printer::Patience patience(spooler, session.platform.system, settings::waitingSeconds(session), letEventsRun);
    printer = request.pdfFile.empty()
                  ? std::make_unique<printer::Printer>(spooler, request.printer, title(), std::move(patience))
                  : std::make_unique<printer::Printer>(
                        spooler.builtinPrinter(), [this] { return openFile(); }, std::move(patience));
    // What the user does is heard between the steps. Within one, where forms take no events, it would be lost.
    run.emplace(quiet.session(), *printer, progress, [] {});
}

std::unique_ptr<platform::PrintDocument> PreviewPrint::Implementation::openFile() {
    auto document = spooler.openFile(request.pdfFile, title());
    if (!document) {
        throw Error(runtime::errPrinter, "PDF-Dateien schreibt auf diesem System nur ein Drucker dafür");
    }
    return document;
}

bool PreviewPrint::Implementation::step() {
    try {
        switch (next) {
            case Next::prepare:
                prepare();
                break;
            case Next::pass:
                passSome();
                break;
            case Next::print:
                printPage();
                break;
            case Next::handOver:
                handOver();
                break;
            case Next::nothing:
                break;
        }
    } catch (const platform::SpoolerError& error) {
        if (error.cancelled()) {
            next = Next::nothing;
            printer.reset();
        } else {
            giveUp();
        }
        throw;
    } catch (...) {
        giveUp();
        throw;
    }
    return next == Next::nothing;
}

void PreviewPrint::Implementation::prepare() {
    quiet.session().log.line(">   Druck aus der Vorschau (Drucker='", runtime::shown(request.printer), "', Datei='",
                             runtime::shown(request.pdfFile), "', Seiten ", std::to_string(request.firstPage), " bis ",
                             std::to_string(request.lastPage), ")");
    preparePrinter(*run);
    press.emplace(*run, pages.order().sGrafikname, pages.order().blnTwoPass);
    passing.emplace(quiet.session(), *printer, pages.order().blnTwoPass);
    start = passing->firstPage(run->state.type);
    next = Next::pass;
}

// The pages before those that are printed leave their type state, tray and orientation.
void PreviewPrint::Implementation::passSome() {
    constexpr std::size_t bytesOfAStep = 5'000'000;
    for (std::size_t bytes = 0; page < request.firstPage && bytes < bytesOfAStep; ++page) {
        const std::string_view text = pages.pageText(page);
        bytes += text.size() + 1;
        passing->pass(text, start);
    }
    if (page < request.firstPage) {
        return;
    }
    press->continueFrom(start);
    next = Next::print;
}

void PreviewPrint::Implementation::printPage() {
    session::Session& session = quiet.session();
    run->state.intSeite = report::pageNumber(page);
    report::requestTray(pages.pageText(page), start.tray);
    report::selectTray(session, *printer, start.tray);
    session.log.line(">     bearbeite Seite: ", std::to_string(page));
    press->begin();
    press->print(pages.pageText(page));
    if (page < pages.pageCount()) {
        printer->NewPage();
    }
    ++printed;
    next = page++ < request.lastPage ? Next::print : Next::handOver;
}

void PreviewPrint::Implementation::handOver() {
    quiet.session().log.line(">   Druckende");
    printer->EndDoc();
    printer::logRemarks(quiet.session(), *printer);
    next = Next::nothing;
}

// Pages that are finished are the user's, whatever became of the others.
void PreviewPrint::Implementation::giveUp() noexcept {
    next = Next::nothing;
    try {
        printer->Release();
    } catch (const std::exception&) {
        // The error that is told is the first one.
    }
}

PreviewPrint::PreviewPrint(session::Session& session, const PreviewPages& pages, PrintRequest request,
                           const report::LetEventsRun& letEventsRun)
    : implementation_(std::make_unique<Implementation>(session, pages, std::move(request), letEventsRun)) {}

PreviewPrint::~PreviewPrint() = default;

bool PreviewPrint::step() { return implementation_->step(); }

std::size_t PreviewPrint::pagesPrinted() const { return implementation_->printed; }

std::size_t PreviewPrint::pageTotal() const {
    return implementation_->request.lastPage - implementation_->request.firstPage + 1;
}

}  // namespace preview
