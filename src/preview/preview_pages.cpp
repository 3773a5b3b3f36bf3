#include "preview/preview_pages.h"

#include <algorithm>
#include <map>
#include <optional>

#include "preview/page_cache.h"
#include "preview/page_maker.h"
#include "preview/page_starts.h"
#include "preview/page_text_recorder.h"
#include "preview/print_text.h"
#include "preview/quiet_session.h"
#include "printer/printer_choice.h"
#include "report/background.h"
#include "report/graphic_macro.h"
#include "report/page_cutter.h"
#include "report/page_reader.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace preview {

namespace {

// Whether a job prints such a page where it is the last one and no picture lies behind it: with nothing drawn on it, it
// is never begun.
bool drawsAnything(std::string_view page) {
    using Kind = report::PageToken::Kind;
    report::PageReader reader(page);
    while (const auto token = reader.next()) {
        const bool draws = token->kind == Kind::macro && (token->text == "BC" || report::isGraphicMacro(token->text));
        if (token->kind == Kind::text || draws) {
            return true;
        }
    }
    return false;
}

}  // namespace

struct PreviewPages::Implementation {
    Implementation(session::Session& session, PreviewOrder ofOrder, std::size_t pieceSize)
        : quiet(session), log(session.log), order(std::move(ofOrder)), piece(pieceSize) {}

    void read();
    bool readOn(Milliseconds atMost);
    void countPages();
    void forgetPages();
    void prepare();
    std::string deviceName();
    std::unique_ptr<PageMaker> onPrinter();
    std::unique_ptr<PageMaker> onSheet(const runtime::Error& reason);
    void pass();
    const PreviewPage& page(std::size_t number);
    void requirePage(std::size_t number) const;

    const report::PageCuts& cuts() const { return printText->pages(); }
    platform::Platform& platform() { return quiet.session().platform; }

    QuietSession quiet;
    session::DebugLog& log;
    const PreviewOrder order;
    const std::size_t piece;
    std::unique_ptr<PrintText> printText = std::make_unique<PrintText>();
    std::size_t pageCount = 0;

    std::unique_ptr<PageMaker> maker;
    std::string printer;  // the one chosen
    std::string trouble;
    PageStarts starts;
    report::PageStart next;  // of the page that was reached last
    PageCache cache;
};

void PreviewPages::Implementation::read() {
    log.line(">   Vorschau (sDateiname='", runtime::shown(order.sDateiname), "', sGrafikname='",
             runtime::shown(order.sGrafikname), "', sDruckerTreiber='", runtime::shown(order.sDruckerTreiber), "')");
    quiet.session().activity().printFile = runtime::shown(order.sDateiname);
    auto text = std::make_unique<PrintText>(platform().system, order.sDateiname, piece);
    forgetPages();
    printText = std::move(text);
    countPages();
}

bool PreviewPages::Implementation::readOn(Milliseconds atMost) {
    if (printText->complete()) {
        return true;
    }
    platform::System& system = platform().system;
    const std::int64_t end = system.elapsedMilliseconds() + atMost.count();
    try {
        bool isSame = true;
        do {
            isSame = printText->readOn();
        } while (!printText->complete() && system.elapsedMilliseconds() < end);
        if (!isSame) {
            forgetPages();
        }
        countPages();
        return isSame;
    } catch (const runtime::Error&) {
        forgetPages();
        printText = std::make_unique<PrintText>();
        throw;
    }
}

void PreviewPages::Implementation::forgetPages() {
    maker.reset();
    starts = {};
    cache.clear();
    pageCount = 0;
}

// A page that is known while there is more to be read is not the last one.
void PreviewPages::Implementation::countPages() {
    pageCount = cuts().count();
    if (!printText->complete()) {
        return;
    }
    if (pageCount > 0 && !report::namesPicture(order.sGrafikname) && !drawsAnything(cuts().page(pageCount))) {
        --pageCount;
    }
    log.line(">   ", runtime::shown(order.sDateiname), " gelesen, Seiten: ", std::to_string(pageCount));
}

void PreviewPages::Implementation::prepare() {
    quiet.dialogs().clear();
    maker.reset();
    cache.clear();
    printer.clear();
    trouble.clear();
    try {
        maker = onPrinter();
    } catch (const platform::SpoolerError& error) {
        maker = onSheet(error);
    }
    starts = PageStarts(maker->firstPage());
    next = maker->firstPage();
}

std::unique_ptr<PageMaker> PreviewPages::Implementation::onPrinter() {
    platform::Spooler& spooler = platform().spooler;
    const auto installed = printer::installedPrinter(spooler, order.sDruckerTreiber);
    printer = installed ? *installed : spooler.defaultPrinter();
    if (printer.empty()) {
        return onSheet(runtime::Error(runtime::errPrinter, "es ist kein Drucker eingerichtet"));
    }
    log.line(">   verwendeter Druckertreiber: ", printer);
    quiet.session().activity().printer = printer;
    const std::string title(runtime::fileNameOf(order.sDateiname));
    return std::make_unique<PageMaker>(
        quiet.session(), order,
        PageMaker::Device{printer, [&spooler, name = printer, title] { return spooler.openDocument(name, title); }});
}

// The settings are those of the printer all the same, as far as it is known.
std::unique_ptr<PageMaker> PreviewPages::Implementation::onSheet(const runtime::Error& reason) {
    platform::Spooler& spooler = platform().spooler;
    if (printer.empty()) {
        printer = order.sDruckerTreiber.empty() ? spooler.builtinPrinter() : order.sDruckerTreiber;
    }
    trouble = reason.message();
    log.line(">   Vorschau ohne Drucker: ", trouble);
    const auto open = [&spooler, reason] {
        auto sheet = spooler.openSheet();
        return sheet ? std::move(sheet) : throw runtime::Error(reason);
    };
    return std::make_unique<PageMaker>(quiet.session(), order, PageMaker::Device{printer, open, true});
}

void PreviewPages::Implementation::pass() {
    maker->pass(cuts().page(starts.reached()), next);
    starts.addNext(next);
}

void PreviewPages::Implementation::requirePage(std::size_t number) const {
    if (number < 1 || number > pageCount || !maker) {
        throw runtime::Error(runtime::errSubscript, "Seite " + std::to_string(number));
    }
}

const PreviewPage& PreviewPages::Implementation::page(std::size_t number) {
    requirePage(number);
    while (starts.reached() < number) {
        pass();
    }
    if (const PreviewPage* known = cache.find(number)) {
        return *known;
    }
    cache.makeRoom(number);
    return cache.add(number, maker->make(number, cuts().page(number), starts.of(number)));
}

PreviewPages::PreviewPages(session::Session& session, PreviewOrder order, std::size_t piece)
    : implementation_(std::make_unique<Implementation>(session, std::move(order), piece)) {}

PreviewPages::~PreviewPages() = default;

void PreviewPages::read() { implementation_->read(); }
bool PreviewPages::complete() const { return implementation_->printText->complete(); }
bool PreviewPages::readOn(Milliseconds atMost) { return implementation_->readOn(atMost); }
void PreviewPages::prepare() { implementation_->prepare(); }

const PreviewOrder& PreviewPages::order() const { return implementation_->order; }
std::uint64_t PreviewPages::fileSize() const { return implementation_->printText->fileSize(); }
std::size_t PreviewPages::pageCount() const { return implementation_->pageCount; }
const std::string& PreviewPages::printer() const { return implementation_->printer; }
const std::string& PreviewPages::trouble() const { return implementation_->trouble; }
const std::vector<std::string>& PreviewPages::notices() const { return implementation_->quiet.dialogs().texts(); }

bool PreviewPages::reached(std::size_t page) const { return page <= implementation_->starts.reached(); }

bool PreviewPages::goTowards(std::size_t page, Milliseconds atMost) {
    constexpr std::size_t bytesBetweenLooksAtTheClock = 200'000;
    Implementation& pages = *implementation_;
    pages.requirePage(page);
    platform::System& system = pages.platform().system;
    const std::int64_t end = system.elapsedMilliseconds() + atMost.count();
    std::size_t bytes = 0;
    while (!reached(page)) {
        constexpr std::size_t bytesForTurning = 64;
        bytes += pages.cuts().page(pages.starts.reached()).size() + bytesForTurning;
        pages.pass();
        if (bytes > bytesBetweenLooksAtTheClock) {
            bytes = 0;
            if (system.elapsedMilliseconds() >= end) {
                break;
            }
        }
    }
    return reached(page);
}

const PreviewPage& PreviewPages::page(std::size_t number) { return implementation_->page(number); }

void PreviewPages::plainText(std::size_t page, std::string& text) const {
    text.clear();
    PlainText plain(text);
    report::readText(implementation_->cuts().page(page), plain);
}

std::string_view PreviewPages::pageText(std::size_t page) const { return implementation_->cuts().page(page); }

}  // namespace preview
