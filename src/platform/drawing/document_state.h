// Which calls of a document are in order.
#pragma once

#include "runtime/error.h"

namespace platform::drawing {

// Pages are begun and ended by turns until the document is over.
class DocumentState {
public:
    bool betweenPages() const { return state_ == State::betweenPages; }
    bool over() const { return state_ == State::over; }

    // Throw errPrinter where it is not the time for it.
    void mustBeBetweenPages() const { mustBe(State::betweenPages); }
    void mustBeOnPage() const { mustBe(State::onPage); }

    void pageBegun() noexcept { state_ = State::onPage; }
    void pageEnded() noexcept { state_ = State::betweenPages; }
    void ended() noexcept { state_ = State::over; }

private:
    enum class State { betweenPages, onPage, over };

    void mustBe(State state) const {
        if (state_ != state) {
            throw runtime::Error(runtime::errPrinter,
                                 over() ? "Das Dokument ist schon beendet oder abgebrochen."
                                        : "Die Seiten des Dokuments wurden nicht der Reihe nach gedruckt.");
        }
    }

    State state_ = State::betweenPages;
};

}  // namespace platform::drawing
