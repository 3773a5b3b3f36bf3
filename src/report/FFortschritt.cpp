#include "report/FFortschritt.h"

#include "platform/spooler_error.h"

namespace report {

namespace {

constexpr std::int64_t second = 1000;  // milliseconds

}  // namespace

platform::FormDesign designOfFortschritt(const std::string& title) {
    using enum platform::ControlKind;
    constexpr int left = 7;
    constexpr int inner = 196;
    return {
        .name = "FFortschritt",
        .title = title,
        .width = inner + 2 * left,
        .controls =
            {
                {label, "lblAuftrag", "", "", {left, 7, inner, 8}},
                {label, "lblFortschritt", "", "", {left, 21, inner, 16}},
                {button, "cmdAbbrechen", "Abbrechen", "", {141, 42, 62, 14}},
            },
        .defaultButton = "",
        .cancelButton = "cmdAbbrechen",
        .height = 63,
    };
}

FFortschritt::FFortschritt(session::Session& session, platform::Form& owner)
    : session_(session),
      owner_(owner),
      progress_(session.activity()),
      begun_(session.platform.system.elapsedMilliseconds()),
      servedAt_(begun_) {}

void FFortschritt::look() {
    constexpr std::int64_t pause = 50;
    constexpr std::int64_t delay = second / 2;
    if (!pace_.isDue(progress_)) {
        return;
    }
    const std::int64_t at = session_.platform.system.elapsedMilliseconds();
    pace_.looked(at);
    if (at - servedAt_ < pause) {
        return;
    }
    servedAt_ = at;
    if (at - begun_ < delay) {
        owner_.repaint();
        return;
    }
    show(at);
    session_.platform.forms.serve();
    if (cancelled_) {
        throw platform::SpoolerError(0, "vom Benutzer abgebrochen", platform::Recovery::cancelled);
    }
}

// Where no page is under way, a printer is waited for.
void FFortschritt::show(std::int64_t at) {
    if (!form_) {
        form_ = session_.platform.forms.create(designOfFortschritt("Drucken"), *this, &owner_);
        form_->show();
    }
    form_->setText("lblAuftrag", name_);
    form_->setText("lblFortschritt",
                   progress_.stretch() == Stretch::page
                       ? "Seite " + std::to_string(progress_.pageOfPages()) + " von " +
                             std::to_string(progress_.pages()) + " wird gedruckt …"
                       : "Warte auf den Drucker … (" + std::to_string((at - begun_) / second) + " s)");
}

void FFortschritt::clicked(const std::string& control) { cancelled_ = cancelled_ || control == "cmdAbbrechen"; }

}  // namespace report
