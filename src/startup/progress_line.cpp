#include "startup/progress_line.h"

#include <algorithm>
#include <cmath>

#include "runtime/numbers.h"

namespace startup {

namespace {

constexpr std::int64_t second = 1000;  // milliseconds

}  // namespace

ProgressLine::ProgressLine(session::Session& session)
    : session_(session), progress_(session.activity()), watched_(session.platform.dialogs.watched()), begun_(now()) {}

void ProgressLine::look() {
    constexpr std::int64_t pause = 100;
    if (!watched_ || !pace_.isDue(progress_)) {
        return;
    }
    const std::int64_t at = now();
    pace_.looked(at);
    if (!firstPageAt_ && progress_.page() > 0) {
        firstPageAt_ = at;
    }
    if (at - begun_ >= second && (!shownAt_ || at - *shownAt_ >= pause)) {
        shownAt_ = at;
        session_.platform.dialogs.statusLine(text(at));
    }
}

// Where no page is under way, a printer is waited for.
std::string ProgressLine::text(std::int64_t at) {
    if (progress_.stretch() != report::Stretch::page) {
        return "Warte auf den Drucker ... (" + std::to_string((at - begun_) / second) + " s)";
    }
    const std::size_t page = progress_.pageOfPages();
    const std::int64_t rate = static_cast<std::int64_t>(page) * second / std::max<std::int64_t>(at - *firstPageAt_, 1);
    return "Seite " + number(page) + " von " + number(progress_.pages()) +
           (at - *firstPageAt_ < second / 2 ? "" : ", " + number(static_cast<std::size_t>(rate)) + " Seiten/s");
}

void ProgressLine::end(bool printed) {
    constexpr double thousandths = 1000;
    constexpr double tenths = 10;
    if (!shownAt_) {
        return;
    }
    const double seconds = std::round(static_cast<double>(now() - begun_) / thousandths * tenths) / tenths;
    const int pages = progress_.pagesHandedOver();
    session_.platform.dialogs.statusLine(printed ? number(static_cast<std::size_t>(pages)) +
                                                       (pages == 1 ? " Seite in " : " Seiten in ") +
                                                       runtime::doubleText(seconds, session_.locale()) + " s\n"
                                                 : "");
}

std::string ProgressLine::number(std::size_t value) const { return runtime::groupedText(value, session_.locale()); }

}  // namespace startup
