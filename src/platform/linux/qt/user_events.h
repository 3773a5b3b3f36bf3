// What the user does, on its way from the controls of a form to its presenter.
#pragma once

#include <exception>
#include <functional>
#include <string>

#include "platform/forms.h"

namespace platform_linux::qt {

// Hands events on one at a time: what a call of the form or another event brings about is no event, as Qt does not tell
// its signals apart by who caused them. No exception gets out, because Qt lets none through.
class UserEvents {
public:
    using Failed = std::function<void(std::exception_ptr)>;

    // Gets every exception; afterwards is called behind each event.
    UserEvents(platform::FormEvents& events, Failed failed, std::function<void()> afterwards);

    void clicked(const std::string& control);
    void doubleClicked(const std::string& control);
    void changed(const std::string& control);
    void focused(const std::string& control);
    // Also while an event or a call is under way, which may let the form be painted.
    void paint(const std::string& control, platform::Canvas& canvas);
    void resized(const std::string& control);
    void pointed(const std::string& control, const platform::Pointer& pointer);
    void wheeled(const std::string& control, const platform::Wheel& wheel);
    void scrolled(const std::string& control, int across, int down);
    void timer();
    void idle();
    // At any time, like paint(), of which it is a part.
    std::string cell(const std::string& table, int row, int column);
    bool accepts(const std::string& control, const std::string& text, char32_t character);
    void closed();

    // Whether an event or a call is under way.
    bool busy() const { return depth_ > 0; }

    // While a call of the form is under way.
    class Call {
    public:
        explicit Call(UserEvents& events) : events_(events) { ++events_.depth_; }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() { --events_.depth_; }

    private:
        UserEvents& events_;
    };

private:
    template <typename Event>
    void tell(Event event);
    template <typename Event>
    void tellNow(Event event);

    platform::FormEvents& events_;
    Failed failed_;
    std::function<void()> afterwards_;
    int depth_ = 0;
    bool painting_ = false;
};

}  // namespace platform_linux::qt
