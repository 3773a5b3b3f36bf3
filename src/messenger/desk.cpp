#include "messenger/desk.h"

#include "messenger/order_names.h"
#include "runtime/error.h"
#include "runtime/utf8.h"

namespace messenger {

bool Desk::answer(const std::string& orderName, const Answer& answer) const {
    try {
        folder_->change(withEnding(orderName, answerEnding), answerContent(answer));
        toldUnanswered_ = false;
        return true;
    } catch (const runtime::Error& error) {
        if (!std::exchange(toldUnanswered_, true)) {
            log(Severity::error,
                "Die Antwort auf " + orderName + " konnte nicht geschrieben werden: " + error.message());
        }
        return false;
    }
}

void Desk::refuse(const std::string& orderName, const std::string& mark, const std::string& reason) const {
    answer(orderName, {AnswerState::failed, mark, "Der Auftrag wird nicht ausgeführt: " + reason + "."});
    warn("Der Auftrag " + orderName + " wird nicht ausgeführt: " + reason + ". " + putAside(orderName));
}

// What became of the order, as a sentence.
std::string Desk::putAside(const std::string& orderName) const {
    constexpr int lastDigit = 9;
    try {
        for (int digit = 0; digit <= lastDigit; ++digit) {
            const std::string ending =
                digit == 0 ? std::string(asideEnding) : std::string(furtherAsideEnding) + std::to_string(digit);
            const std::string aside = withEnding(orderName, ending);
            if (folder_->rename(orderName, aside)) {
                return "Er liegt dort jetzt als " + aside + ".";
            }
        }
        return "Er bleibt liegen, weil dort schon zu viele solche Aufträge liegen.";
    } catch (const runtime::Error& error) {
        return "Er bleibt liegen, denn er lässt sich nicht umbenennen: " + error.message();
    }
}

void Desk::log(Severity severity, const std::string& text) const {
    messengerSystem.log(severity, runtime::shown(folder_->path()) + ": " + text);
}

void Desk::warn(const std::string& text) const {
    log(Severity::warning, text);
    messengerSystem.notify("Bote, Ordner " + runtime::shown(folder_->path()) + ": " + text);
}

}  // namespace messenger
