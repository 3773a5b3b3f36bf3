// Tells a form's events, and keeps quiet about what the program does itself.
#pragma once

#include <utility>

#include "platform/forms.h"
#include "platform/windows/forms/form_keeper.h"

namespace platform_windows::forms {

// For as long as it lives a flag is set; what it was before comes back.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = before_; }

private:
    bool& flag_;
    bool before_;
};

class EventTeller {
public:
    EventTeller(platform::FormEvents& events, FormKeeper& keeper) : events_(events), keeper_(keeper) {}

    // As long as the result lives the program does something, and no user: no event comes of it.
    [[nodiscard]] Raised silence() { return Raised(silent_); }

    bool isSilent() const { return silent_; }

    // The form is gone.
    void end() {
        ended_ = true;
        silent_ = true;
    }

    // Calls a function of the events. Whether it did; it does not while the program does something, nor while another
    // event is under way.
    template <typename Event>
    bool tell(const Event& event) noexcept {
        if (silent_) {
            return false;
        }
        call(event);
        return true;
    }

    // Asks for something to be shown, which a box or another window may want while an event is under way.
    template <typename Question>
    void ask(const Question& question) noexcept {
        if (!ended_) {
            call(question);
        }
    }

private:
    template <typename Event>
    void call(const Event& event) noexcept {
        const Raised quiet(silent_);
        try {
            event(events_);
        } catch (...) {
            keeper_.failed();
        }
    }

    platform::FormEvents& events_;
    FormKeeper& keeper_;
    bool silent_ = false;
    bool ended_ = false;
};

}  // namespace platform_windows::forms
