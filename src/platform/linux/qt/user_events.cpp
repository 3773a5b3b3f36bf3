#include "platform/linux/qt/user_events.h"

#include <utility>

namespace platform_linux::qt {

UserEvents::UserEvents(platform::FormEvents& events, Failed failed, std::function<void()> afterwards)
    : events_(events), failed_(std::move(failed)), afterwards_(std::move(afterwards)) {}

template <typename Event>
void UserEvents::tell(Event event) {
    if (!busy()) {
        tellNow(event);
    }
}

template <typename Event>
void UserEvents::tellNow(Event event) {
    try {
        const Call call(*this);
        event();
    } catch (...) {
        failed_(std::current_exception());
    }
    afterwards_();
}

void UserEvents::clicked(const std::string& control) {
    tell([&] { events_.clicked(control); });
}

void UserEvents::doubleClicked(const std::string& control) {
    tell([&] { events_.doubleClicked(control); });
}

void UserEvents::changed(const std::string& control) {
    tell([&] { events_.changed(control); });
}

void UserEvents::focused(const std::string& control) {
    tell([&] { events_.focused(control); });
}

bool UserEvents::accepts(const std::string& control, const std::string& text, char32_t character) {
    bool accepted = true;
    tell([&] { accepted = events_.accepts(control, text, character); });
    return accepted;
}

void UserEvents::paint(const std::string& control, platform::Canvas& canvas) {
    if (!painting_) {
        painting_ = true;
        tellNow([&] { events_.paint(control, canvas); });
        painting_ = false;
    }
}

void UserEvents::resized(const std::string& control) {
    tell([&] { events_.resized(control); });
}

void UserEvents::pointed(const std::string& control, const platform::Pointer& pointer) {
    tell([&] { events_.pointed(control, pointer); });
}

void UserEvents::wheeled(const std::string& control, const platform::Wheel& wheel) {
    tell([&] { events_.wheeled(control, wheel); });
}

void UserEvents::scrolled(const std::string& control, int across, int down) {
    tell([&] { events_.scrolled(control, across, down); });
}

void UserEvents::timer() {
    tell([&] { events_.timer(); });
}

std::string UserEvents::cell(const std::string& table, int row, int column) {
    try {
        const Call call(*this);
        return events_.cell(table, row, column);
    } catch (...) {
        failed_(std::current_exception());
        return {};
    }
}

void UserEvents::idle() {
    tell([&] { events_.idle(); });
}

void UserEvents::closed() {
    tell([&] { events_.closed(); });
}

}  // namespace platform_linux::qt
