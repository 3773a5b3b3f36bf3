// What the preview's tool bar and status line say.
#include <algorithm>
#include <tuple>
#include <utility>

#include "preview/FVorschau.h"
#include "preview/page_facts.h"
#include "runtime/numbers.h"
#include "runtime/utf8.h"

namespace preview {

void FVorschau::refresh() {
    enableCommands();
    show("cboZoom", zoomText(pane_->zoom(), session_.locale()), zoomShown_);
    show("lblTreffer", find_.label(), foundShown_);
    show("lblStatus", statusText(), statusShown_);
    form_->wantIdle(reading() || target_ != shown_ || find_.busy() || pane_->busy() || asksForTray());
}

void FVorschau::show(const char* control, std::string text, std::string& shown) {
    if (text != shown) {
        form_->setText(control, text);
        shown = std::move(text);
    }
}

void FVorschau::enableCommands() {
    const std::size_t count = hasPages() ? pages_->pageCount() : 0;
    show("txtSeite", count > 0 ? std::to_string(target_) : "", pageFieldShown_);
    show("lblSeiten", count > 0 ? "von " + std::to_string(count) + (reading() ? " …" : "") : "", countShown_);
    const bool hasNext = target_ < count || (count > 0 && reading());
    const std::tuple state(target_, count > 0, hasNext);
    if (state == enabledFor_) {
        return;
    }
    enabledFor_ = state;
    const auto enable = [this](bool enabled, std::initializer_list<const char*> controls) {
        for (const char* control : controls) {
            form_->setEnabled(control, enabled);
        }
    };
    enable(count > 0, {"txtSeite", "cmdKleiner", "cboZoom", "cmdGroesser", "cmdGanzeSeite", "cmdSeitenbreite",
                       "txtSuchen", "cmdZurueck", "cmdWeiter", "cmdDrucken", "cmdPDF"});
    enable(target_ > 1, {"cmdErste", "cmdVorherige"});
    enable(hasNext, {"cmdNaechste", "cmdLetzte"});
}

bool FVorschau::asksForTray() {
    const PreviewPage* const page = pageShown();
    return page != nullptr && !page->requestedTray.empty() && page->paperBin > 0 && !trays_.known(pages_->printer());
}

std::string FVorschau::printerText() const {
    const std::string& printer = pages_->printer();
    if (pages_->trouble().empty()) {
        return runtime::shown(printer);
    }
    const bool named = !printer.empty() && printer != session_.platform.spooler.builtinPrinter();
    return named ? runtime::shown(printer) + " (antwortet nicht, Ersatzblatt)" : "Kein Drucker antwortet, Ersatzblatt";
}

std::string FVorschau::statusText() {
    constexpr const char* between = "   |   ";
    if (!pages_ && !order_.sDateiname.empty()) {
        return "Die Druckdatei wird gelesen …";
    }
    if (!ready_) {
        return {};
    }
    if (target_ != shown_) {
        return jumpText();
    }
    std::string text = printerText();
    if (const PreviewPage* const page = pageShown(); page != nullptr) {
        text += between + paperText(page->paperSize, page->device);
        if (!page->requestedTray.empty()) {
            const std::string bin = trays_.nameOf(pages_->printer(), page->paperBin);
            text +=
                between + ("Schacht " + page->requestedTray) + (bin.empty() ? "" : " (" + runtime::shown(bin) + ")");
        }
    }
    text += between + runtime::sizeText(pages_->fileSize(), session_.locale());
    return pane_->showsSheet() ? text + between + zoomText(Zoom::of(pane_->percent()), session_.locale()) : text;
}

// Pages are passed one after another, so the way is as long as the pages between.
std::string FVorschau::jumpText() const {
    std::size_t reached = 1;
    for (std::size_t beyond = target_; beyond - reached > 1;) {
        const std::size_t middle = reached + (beyond - reached) / 2;
        (pages_->reached(middle) ? reached : beyond) = middle;
    }
    return "Seite " + std::to_string(target_) + " wird vorbereitet … " +
           std::to_string(reached * 100 / std::max<std::size_t>(target_, 1)) + " %";
}

}  // namespace preview
