#include "preview/FDrucken.h"

#include <algorithm>
#include <array>

#include "preview/vorschau_design.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "runtime/whole_number.h"

namespace preview {

namespace {

constexpr std::array choice = {"cboDrucker", "optAlle", "optSeite", "optBereich", "txtVon", "txtBis", "cmdDrucken"};

std::optional<std::size_t> numberOf(const std::string& typed) {
    return runtime::wholeNumber<std::size_t>(runtime::trimBlanks(typed));
}

}  // namespace

FDrucken::FDrucken(session::Session& session, const PreviewPages& pages, std::size_t page)
    : session_(session), pages_(pages), page_(page) {}

void FDrucken::create(platform::Form& owner) {
    form_ = session_.platform.forms.create(designOfDrucken(page_), *this, &owner);
    form_->select("optAlle", 0);
    form_->setText("txtVon", "1");
    form_->setText("txtBis", std::to_string(pages_.pageCount()));
}

void FDrucken::Show(platform::Form& owner, const std::string& printer) {
    create(owner);
    fillPrinters(printer);
    form_->show();
}

// The printer shown may be one that the system lists nowhere, and a list may not be had at all.
void FDrucken::fillPrinters(const std::string& printer) {
    platform::Spooler& spooler = session_.platform.spooler;
    try {
        printers_ = spooler.printerNames();
    } catch (const platform::SpoolerError& error) {
        printers_ = {spooler.builtinPrinter()};
        form_->setText("lblFortschritt", error.message());
    }
    if (std::find(printers_.begin(), printers_.end(), printer) == printers_.end()) {
        printers_.insert(printers_.begin(), printer);
    }
    std::erase(printers_, "");
    if (printers_.empty()) {
        form_->setText("lblFortschritt", "Es ist kein Drucker eingerichtet.");
        form_->setEnabled("cmdDrucken", false);
    }
    form_->setItems("cboDrucker", printers_);
    const auto found = std::find(printers_.begin(), printers_.end(), printer);
    form_->select("cboDrucker", found != printers_.end() ? static_cast<int>(found - printers_.begin()) : 0);
}

void FDrucken::SavePdf(platform::Form& owner) {
    platform::Platform& platform = session_.platform;
    if (platform.spooler.writesFiles()) {
        const auto file =
            platform.forms.askFileToWrite(owner, "Als PDF speichern", suggestedFile(), "PDF-Dateien", ".pdf");
        if (file) {
            savePdfAs(owner, *file);
        }
    } else if (const std::string printer = platform.spooler.pdfPrinter(); !printer.empty()) {
        Show(owner, printer);
    } else {
        platform.dialogs.messageBox(
            "Auf diesem Rechner ist kein Drucker eingerichtet, der PDF-Dateien schreibt.\r\n\r\n"
            "Unter Windows 10 und 11 gehört „Microsoft Print to PDF“ zum System: Einstellungen, Optionale Features, "
            "Weitere Windows-Features. Für ältere Fassungen gibt es PDF-Drucker zum Nachinstallieren.",
            platform::Buttons::ok, platform::Icon::information, session_.program.title);
    }
}

// The form appears where that takes longer than one notices.
void FDrucken::savePdfAs(platform::Form& owner, const std::string& file) {
    constexpr std::int64_t delay = 500;  // milliseconds
    platform::System& system = session_.platform.system;
    savesPdf_ = true;
    form_ = session_.platform.forms.create(report::designOfFortschritt("Als PDF speichern"), *this, &owner);
    form_->setText("lblAuftrag", runtime::shown(runtime::fileNameOf(file)));
    const std::int64_t begun = system.elapsedMilliseconds();
    start({"", file, 1, pages_.pageCount()});
    while (print_ && system.elapsedMilliseconds() - begun < delay) {
        idle();
    }
    if (print_) {
        form_->show();
    }
}

// Where the built-in printer's files are, too.
std::string FDrucken::suggestedFile() const {
    const std::string folder = session_.platform.system.currentDirectory();
    const char* const separator = folder.ends_with('/') || folder.ends_with('\\') ? ""
                                  : folder.find('/') != std::string::npos         ? "/"
                                                                                  : "\\";
    const std::string_view name = runtime::fileNameOf(pages_.order().sDateiname);
    return folder + separator + std::string(name.substr(0, name.rfind('.'))) + ".pdf";
}

void FDrucken::clicked(const std::string& control) {
    if (control == "cmdAbbrechen") {
        cancelled_ = true;
        if (!print_) {
            form_->close();
        } else if (!working_) {
            endCancelled();
        }
        return;
    }
    if (control != "cmdDrucken" || busy()) {
        return;
    }
    const int printer = form_->selected("cboDrucker");
    const auto pages = chosenPages();
    if (!pages) {
        form_->setText("lblFortschritt", "Bitte Seiten von 1 bis " + std::to_string(pages_.pageCount()) +
                                             " angeben, die kleinere zuerst.");
        form_->focus("txtVon");
    } else if (printer >= 0 && static_cast<std::size_t>(printer) < printers_.size()) {
        start({printers_[static_cast<std::size_t>(printer)], "", pages->first, pages->second});
    }
}

std::optional<std::pair<std::size_t, std::size_t>> FDrucken::chosenPages() const {
    if (form_->selected("optSeite") == 0) {
        return std::pair(page_, page_);
    }
    if (form_->selected("optBereich") != 0) {
        return std::pair<std::size_t, std::size_t>(1, pages_.pageCount());
    }
    const auto first = numberOf(form_->text("txtVon"));
    const auto last = numberOf(form_->text("txtBis"));
    const bool usable = first && last && *first >= 1 && *first <= *last && *last <= pages_.pageCount();
    return usable ? std::optional(std::pair(*first, *last)) : std::nullopt;
}

// Whoever types a range wants it.
void FDrucken::changed(const std::string& control) {
    if (control == "txtVon" || control == "txtBis") {
        form_->select("optBereich", 0);
    }
}

bool FDrucken::accepts(const std::string& control, const std::string& /*text*/, char32_t character) {
    constexpr char32_t backspace = 8;
    const bool takesNumber = control == "txtVon" || control == "txtBis";
    return !takesNumber || (character >= U'0' && character <= U'9') || character == backspace;
}

void FDrucken::start(PrintRequest request) {
    cancelled_ = false;
    form_->setText("cmdAbbrechen", "Abbrechen");
    try {
        print_ = std::make_unique<PreviewPrint>(session_, pages_, std::move(request), [this] { lookWhileWaiting(); });
        enableChoice(false);
        showProgress();
        form_->wantIdle(true);
    } catch (const runtime::Error& error) {
        fail(error);
    }
}

// Events that come while a step is under way may be those of this form, too.
void FDrucken::idle() {
    if (!print_ || working_) {
        return;
    }
    working_ = true;
    try {
        work();
        working_ = false;
    } catch (const platform::SpoolerError& error) {
        working_ = false;
        error.cancelled() ? endCancelled() : fail(error);
    } catch (const runtime::Error& error) {
        working_ = false;
        fail(error);
    }
    waiting_.reset();
}

// The form itself gets no events while a step of it is under way.
void FDrucken::lookWhileWaiting() {
    if (!waiting_) {
        waiting_.emplace(session_, *form_);
        waiting_->begin("Der Drucker antwortet noch nicht.");
    }
    waiting_->look();
}

void FDrucken::work() {
    constexpr std::int64_t slice = 10;  // milliseconds
    platform::System& system = session_.platform.system;
    const std::int64_t start = system.elapsedMilliseconds();
    bool done = false;
    while (!done && !cancelled_ && system.elapsedMilliseconds() - start < slice) {
        done = print_->step();
        if (!done && print_->pagesPrinted() == print_->pageTotal()) {
            break;  // what is left is to hand the document over: that is said first
        }
    }
    if (cancelled_) {
        endCancelled();
    } else if (done) {
        print_.reset();
        form_->wantIdle(false);
        form_->close();
    } else {
        showProgress();
    }
}

void FDrucken::endCancelled() {
    print_.reset();
    form_->wantIdle(false);
    form_->setText("lblFortschritt",
                   savesPdf_ ? "Abgebrochen. Es wurde keine Datei geschrieben." : "Der Druck wurde abgebrochen.");
    form_->setText("cmdAbbrechen", "Schließen");
    enableChoice(true);
}

void FDrucken::fail(const runtime::Error& error) {
    print_.reset();
    form_->wantIdle(false);
    session_.platform.dialogs.messageBox(
        (savesPdf_ ? "Die PDF-Datei kann nicht geschrieben werden.\r\n\r\n" : "Der Druck ist fehlgeschlagen.\r\n\r\n") +
            error.message(),
        platform::Buttons::ok, platform::Icon::critical, session_.program.title);
    if (savesPdf_ || cancelled_) {
        form_->close();
        return;
    }
    // Another printer may do.
    form_->setText("lblFortschritt", "");
    enableChoice(true);
}

void FDrucken::showProgress() {
    const std::size_t total = print_->pageTotal();
    const std::size_t printed = print_->pagesPrinted();
    form_->setText("lblFortschritt", printed < total
                                         ? "Seite " + std::to_string(printed + 1) + " von " + std::to_string(total) +
                                               (savesPdf_ ? " wird geschrieben …" : " wird gedruckt …")
                                         : std::string(savesPdf_ ? "Die Datei wird gespeichert …"
                                                                 : "Der Drucker übernimmt den Auftrag …"));
}

void FDrucken::enableChoice(bool enabled) {
    if (savesPdf_) {
        return;
    }
    for (const char* control : choice) {
        form_->setEnabled(control, enabled);
    }
}

void FDrucken::closed() {
    cancelled_ = true;
    if (!working_) {
        print_.reset();
    }
}

}  // namespace preview
