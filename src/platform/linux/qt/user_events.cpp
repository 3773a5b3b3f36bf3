#include "platform/linux/qt/user_events.h"

#include <utility>

namespace platform_linux::qt {

UserEvents::UserEvents(platform::FormEvents& events, Failed failed, std::function<void()> afterwards)
    : events_(events), failed_(std::move(failed)), afterwards_(std::move(afterwards)) {}

template <typename Event>
void UserEvents::tell(Event event) {
    if (busy()) {
        return;
    }
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

void UserEvents::closed() {
    tell([&] { events_.closed(); });
}

}  // namespace platform_linux::qt
