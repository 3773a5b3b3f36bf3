// How the preview reads its file: the first page at once, the rest while that is looked at or when it is needed.
#include "preview/FVorschau.h"
#include "preview/vorschau_settings.h"
#include "printer/printer_choice.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace preview {

namespace {

constexpr const char* readAgainHint = "Mit F5 wird die Datei noch einmal gelesen.";

std::string unreadable(const PreviewOrder& order) {
    return "Die Druckdatei „" + runtime::shown(order.sDateiname) + "“ kann nicht gelesen werden.";
}

}  // namespace

// Its folder becomes the current one, as the host's is: there lie the graphics.
void FVorschau::openFile() {
    platform::System& system = session_.platform.system;
    const std::string kept = order_.sDateiname.empty() ? readKeptFolder(session_) : "";
    const auto file = session_.platform.forms.askFileToRead(*form_, "Druckdatei öffnen",
                                                            kept.empty() ? system.currentDirectory() : kept);
    if (!file) {
        if (!pages_) {
            pane_->say(PageMessage{"Es ist keine Druckdatei gewählt.", "", "Mit Strg+O wird eine gewählt."});
        }
        refresh();
        return;
    }
    order_.sDateiname = *file;
    const std::string folder = file->substr(0, file->size() - runtime::fileNameOf(*file).size());
    try {
        system.changeDirectory(folder);
        storeKeptFolder(session_, folder);
    } catch (const runtime::Error&) {
        // Then the file cannot be read either, which is said in the place of its page.
    }
    setTitle();
    startReading();
}

void FVorschau::startReading() {
    find_.end();
    drucken_.reset();
    ready_ = false;
    shown_ = 0;
    target_ = 0;
    pages_ = std::make_unique<PreviewPages>(session_, order_);
    load(1, Start::top);
}

void FVorschau::load(std::size_t page, Start start) {
    if (!read()) {
        refresh();
        return;
    }
    showAnew(page, start);
}

void FVorschau::showAnew(std::size_t page, Start start) {
    const std::string sought = find_.sought();
    find_.end();
    shown_ = 0;
    target_ = 0;
    prepare();
    if (hasPages()) {
        goTo(page, start);
        beginSearch(sought);
    } else {
        pane_->pageChanged(Start::top);
    }
    refresh();
}

bool FVorschau::read() {
    const std::string file = unreadable(order_);
    try {
        pages_->read();
        return true;
    } catch (const runtime::Error& error) {
        if (ready_) {
            pane_->notice(file + " " + error.message() + "\nGezeigt wird, was vorher darin stand.");
        } else {
            pane_->say(PageMessage{file, error.message(), readAgainHint});
        }
        return false;
    }
}

void FVorschau::readOn() {
    try {
        if (!pages_->readOn(slice)) {
            showAnew(target_, Start::unchanged);
        }
    } catch (const runtime::Error& error) {
        find_.end();
        ready_ = false;
        shown_ = 0;
        target_ = 0;
        pane_->notice("");
        pane_->say(PageMessage{unreadable(order_), error.message(), readAgainHint});
        pane_->pageChanged(Start::top);
    }
}

// For what needs the whole file; it is a matter of a tenth of a second.
void FVorschau::readAll() {
    while (reading()) {
        readOn();
    }
}

void FVorschau::readUpTo(std::size_t page) {
    if (hasPages() && page > pages_->pageCount()) {
        readAll();
    }
}

void FVorschau::prepare() {
    ready_ = false;
    if (!printer::isBuiltinPrinter(session_.platform.spooler, order_.sDruckerTreiber)) {
        // Others may take their time.
        statusShown_ = "Der Drucker wird gefragt …";
        form_->setText("lblStatus", statusShown_);
        form_->repaint();
    }
    try {
        pages_->prepare();
        ready_ = true;
        pane_->say(std::nullopt);
        if (pages_->pageCount() == 0) {
            pane_->say(PageMessage{"Die Druckdatei hat keine Seiten.", "", readAgainHint});
        }
    } catch (const runtime::Error& error) {
        pane_->say(PageMessage{"Die Seiten können nicht gezeigt werden.", error.message(), readAgainHint});
    }
    std::string notice = pages_->trouble();
    for (const std::string& line : pages_->notices()) {
        notice += (notice.empty() ? "" : "\n") + line;
    }
    pane_->notice(notice);
}

}  // namespace preview
