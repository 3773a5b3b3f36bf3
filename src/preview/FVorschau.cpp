#include "preview/FVorschau.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "preview/vorschau_design.h"
#include "preview/vorschau_settings.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "runtime/whole_number.h"

namespace preview {

namespace {

constexpr const char* canvas = "picSeite";

constexpr const char* othersHint =
    " Die anderen Seiten können angesehen und einzeln gedruckt werden.\n"
    "Ist der Grund behoben, wird die Datei mit F5 noch einmal gelesen.";

constexpr std::size_t lastPage = std::numeric_limits<std::size_t>::max();

// With fewer characters nearly every page has a hit.
constexpr std::size_t liveSearchFrom = 3;

std::size_t charactersOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

}  // namespace

FVorschau::FVorschau(session::Session& session, PreviewOrder order)
    : session_(session), order_(std::move(order)), find_(session), trays_(session) {}

void FVorschau::Show() {
    platform::Platform& platform = session_.platform;
    form_ = platform.forms.create(designOfVorschau(), *this);
    setTitle();
    form_->setItems("cboZoom", zoomChoices());
    const KeptView kept = readKeptView(session_);
    if (kept.window) {
        form_->setWindowPlace(*kept.window);
    }
    pane_.emplace(*form_, platform.system, [this] { return pageShown(); });
    pane_->setZoom(kept.zoom);
    refresh();
    form_->focus(canvas);
    form_->show();
}

void FVorschau::DoVorschau() {
    if (order_.sDateiname.empty()) {
        openFile();
    } else {
        startReading();
    }
}

void FVorschau::setTitle() {
    form_->setTitle(titleOfVorschau + runtime::shown(runtime::fileNameOf(order_.sDateiname)));
}

const PreviewPage* FVorschau::pageShown() { return shown_ == 0 ? nullptr : &pages_->page(shown_); }

void FVorschau::goTo(std::size_t page, Start start) {
    readUpTo(page);
    if (!hasPages()) {
        return;
    }
    const std::size_t wanted = std::clamp<std::size_t>(page, 1, pages_->pageCount());
    revealsHit_ = false;
    start_ = start;
    if (wanted == shown_ && wanted == target_) {
        return;
    }
    target_ = wanted;
    goTowardsTarget();
}

void FVorschau::turn(int pages, Start start) {
    const std::size_t wanted = pages < 0 ? target_ - std::min<std::size_t>(target_, 1) : target_ + 1;
    readUpTo(wanted);
    if (hasPages() && wanted >= 1 && wanted <= pages_->pageCount()) {
        goTo(wanted, start);
    }
}

void FVorschau::goTowardsTarget() {
    if (target_ != shown_ && pages_->goTowards(target_, slice)) {
        showTarget();
    }
}

void FVorschau::showTarget() {
    shown_ = target_;
    const std::string& failure = pages_->page(shown_).failure;
    if (failure.empty()) {
        pane_->say(std::nullopt);
    } else {
        // A page before it may end the print, too.
        const std::string end =
            shown_ == 1 ? "Der Druck endet auf dieser Seite." : "Der Druck endet spätestens auf dieser Seite.";
        pane_->say(
            PageMessage{"Seite " + std::to_string(shown_) + " kann nicht gedruckt werden.", failure, end + othersHint});
    }
    pane_->pageChanged(start_);
    markHits();
    if (std::exchange(revealsHit_, false)) {
        pane_->revealCurrentMark();
    }
}

void FVorschau::clicked(const std::string& control) {
    using Handler = void (*)(FVorschau&);
    struct Row {
        std::string_view control;
        Handler handler;
    };
    static constexpr std::array rows = {
        Row{"cmdErste", [](FVorschau& form) { form.goTo(1, Start::top); }},
        Row{"cmdVorherige", [](FVorschau& form) { form.turn(-1, Start::top); }},
        Row{"cmdNaechste", [](FVorschau& form) { form.turn(1, Start::top); }},
        Row{"cmdLetzte", [](FVorschau& form) { form.goTo(lastPage, Start::top); }},
        Row{"txtSeite", [](FVorschau& form) { form.goToTypedPage(); }},
        Row{"gehe zu",
            [](FVorschau& form) {
                form.form_->focus("txtSeite");
                form.form_->selectText("txtSeite");
            }},
        Row{"cmdKleiner", [](FVorschau& form) { form.setZoom(smaller(form.pane_->percent())); }},
        Row{"cmdGroesser", [](FVorschau& form) { form.setZoom(larger(form.pane_->percent())); }},
        Row{"cmdGanzeSeite", [](FVorschau& form) { form.setZoom(Zoom{Zoom::Mode::wholePage}); }},
        Row{"cmdSeitenbreite", [](FVorschau& form) { form.setZoom(Zoom{Zoom::Mode::pageWidth}); }},
        Row{"cboZoom", [](FVorschau& form) { form.takeTypedZoom(); }},
        Row{"hinauf", [](FVorschau& form) { form.turnByScrolling(form.pane_->moveBy(0, -1)); }},
        Row{"hinunter", [](FVorschau& form) { form.turnByScrolling(form.pane_->moveBy(0, 1)); }},
        Row{"nach links", [](FVorschau& form) { form.turnByScrolling(form.pane_->moveBy(-1, 0)); }},
        Row{"nach rechts", [](FVorschau& form) { form.turnByScrolling(form.pane_->moveBy(1, 0)); }},
        Row{"suchen",
            [](FVorschau& form) {
                form.form_->focus("txtSuchen");
                form.form_->selectText("txtSuchen");
            }},
        Row{"txtSuchen", [](FVorschau& form) { form.find(FindRun::Direction::next); }},
        Row{"cmdWeiter", [](FVorschau& form) { form.find(FindRun::Direction::next); }},
        Row{"cmdZurueck", [](FVorschau& form) { form.find(FindRun::Direction::previous); }},
        Row{"kopieren", [](FVorschau& form) { form.copySelection(); }},
        Row{"alles", [](FVorschau& form) { form.pane_->selectAll(); }},
        Row{"cmdOeffnen", [](FVorschau& form) { form.openFile(); }},
        Row{"cmdDrucken", [](FVorschau& form) { form.print(); }},
        Row{"cmdPDF", [](FVorschau& form) { form.savePdf(); }},
        Row{"neu lesen", [](FVorschau& form) { form.readAgain(); }},
    };
    if (control == "cmdSchliessen") {
        close();
        return;
    }
    const auto* const row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& known) { return known.control == control; });
    if (row != rows.end() && !(drucken_ && drucken_->busy())) {
        row->handler(*this);
        refresh();
    }
}

void FVorschau::goToTypedPage() {
    const std::string typed = form_->text("txtSeite");
    if (const auto page = runtime::wholeNumber<std::size_t>(runtime::trimBlanks(typed))) {
        goTo(*page, Start::top);
    }
    form_->setText("txtSeite", std::to_string(target_));
    form_->focus(canvas);
}

void FVorschau::setZoom(const Zoom& zoom) { pane_->setZoom(zoom); }

void FVorschau::takeTypedZoom() {
    if (const auto zoom = zoomOf(form_->text("cboZoom"), session_.locale())) {
        setZoom(*zoom);
    }
    // What was typed may be written in another way, or be nonsense.
    zoomShown_.clear();
    form_->focus(canvas);
}

void FVorschau::beginSearch(const std::string& text) {
    if (!text.empty()) {
        readAll();
    }
    if (hasPages()) {
        find_.start(*pages_, text, target_);
    }
}

void FVorschau::startSearch(const std::string& text) {
    beginSearch(text);
    find_.go(FindRun::Direction::next, target_);
    workOnSearch();
}

void FVorschau::find(FindRun::Direction direction) {
    const std::string text = form_->text("txtSuchen");
    if (!hasPages()) {
        return;
    }
    if (text.empty()) {
        form_->focus("txtSuchen");
    } else if (text != find_.sought()) {
        startSearch(text);
    } else {
        find_.go(direction, target_);
        workOnSearch();
    }
}

void FVorschau::workOnSearch() {
    if (const auto hit = find_.work(slice)) {
        goTo(hit->page, Start::top);
        revealsHit_ = hit->page != shown_;
        markHits();
        if (!revealsHit_) {
            pane_->revealCurrentMark();
        }
    }
}

void FVorschau::markHits() {
    const PreviewPage* const page = pageShown();
    if (page == nullptr) {
        return;
    }
    std::vector<platform::drawing::Area> all;
    std::vector<platform::drawing::Area> current;
    const auto& chosen = find_.current();
    for (const TextHit& hit : find_.hitsOn(shown_)) {
        const bool isCurrent = chosen && chosen->page == hit.page && chosen->position == hit.position;
        for (const auto& area : page->text.areasOfPlainText(hit.position, hit.length)) {
            (isCurrent ? current : all).push_back(area);
        }
    }
    pane_->mark(std::move(all), std::move(current));
}

// Each line for itself, because the host's characters have a picture for the line end as well.
void FVorschau::copySelection() {
    const std::string bytes = pane_->selectedText();
    std::string text;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        text += session_.platform.system.fromDosCodePage(std::string_view(bytes).substr(start, end - start));
        text += end < bytes.size() ? "\n" : "";
        start = end + 1;
    }
    if (!text.empty()) {
        session_.platform.forms.copyText(text);
    }
}

void FVorschau::print() {
    readAll();
    if (hasPages()) {
        drucken_ = std::make_unique<FDrucken>(session_, *pages_, target_);
        drucken_->Show(*form_, pages_->printer());
    }
}

void FVorschau::savePdf() {
    readAll();
    if (hasPages()) {
        drucken_ = std::make_unique<FDrucken>(session_, *pages_, target_);
        drucken_->SavePdf(*form_);
    }
}

void FVorschau::readAgain() {
    if (pages_) {
        load(target_, Start::unchanged);
    }
}

void FVorschau::close() {
    storeKeptView(session_, pane_->zoom(), form_->windowPlace());
    form_->close();
}

void FVorschau::changed(const std::string& control) {
    if (control != "txtSuchen" || !hasPages()) {
        return;
    }
    const std::string text = form_->text("txtSuchen");
    if (text == find_.sought()) {
        return;
    }
    find_.end();
    if (charactersOf(text) >= liveSearchFrom) {
        startSearch(text);
    }
    markHits();
    refresh();
}

void FVorschau::focused(const std::string& control) {
    if (control == "txtSeite" || control == "cboZoom") {
        form_->selectText(control);
    }
}

bool FVorschau::accepts(const std::string& control, const std::string& /*text*/, char32_t character) {
    constexpr char32_t backspace = 8;
    return control != "txtSeite" || (character >= U'0' && character <= U'9') || character == backspace;
}

void FVorschau::paint(const std::string& /*control*/, platform::Canvas& painted) {
    pane_->paint(painted);
    if (pane_->busy()) {
        form_->wantIdle(true);
    }
}

void FVorschau::resized(const std::string& /*control*/) {
    pane_->resized();
    refresh();
}

void FVorschau::pointed(const std::string& /*control*/, const platform::Pointer& pointer) {
    pane_->pointed(pointer);
    if (pane_->busy()) {
        form_->wantIdle(true);
    }
}

void FVorschau::wheeled(const std::string& /*control*/, const platform::Wheel& wheel) {
    if (const int pages = pane_->wheeled(wheel); pages != 0) {
        turnByScrolling(pages);
    }
    refresh();
}

void FVorschau::scrolled(const std::string& /*control*/, int across, int down) { pane_->scrolled(across, down); }

void FVorschau::idle() {
    pane_->idle();
    if (drucken_ && drucken_->busy()) {
        return;
    }
    if (reading()) {
        readOn();
    } else if (target_ != shown_) {
        goTowardsTarget();
    } else if (find_.busy()) {
        const std::size_t before = find_.hitsOn(shown_).size();
        workOnSearch();
        if (find_.hitsOn(shown_).size() != before) {
            markHits();
        }
    } else if (asksForTray()) {
        trays_.ask(pages_->printer());
    }
    refresh();
}

void FVorschau::closed() { session_.platform.forms.closeAll(); }

}  // namespace preview
