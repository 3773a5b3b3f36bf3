#include "messenger/messenger.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "runtime/error.h"
#include "runtime/utf8.h"

namespace messenger {

namespace {

using Severity = platform::MessengerSystem::Severity;

constexpr std::int64_t betweenSettings = 10'000;  // milliseconds
constexpr std::int64_t betweenTries = 2'000;
constexpr std::int64_t atTheEnd = 10'000;

}  // namespace

Messenger::Messenger(platform::System& system, platform::MessengerSystem& messengerSystem,
                     std::vector<std::string> folders)
    : system_(system), messengerSystem_(messengerSystem), given_(std::move(folders)) {}

void Messenger::run() {
    readSettingsAgain();
    if (places_.empty()) {
        messengerSystem_.log(
            Severity::warning,
            "Es ist kein Ordner genannt. Mit KRVWinPrBote /EIN und dem Ordner des Hosts wird einer überwacht.");
    }
    while (!stopped_) {
        if (now() - settingsReadAt_ >= betweenSettings) {
            readSettingsAgain();
        }
        for (Place& place : places_) {
            if (place.lookAt <= now()) {
                look(place);
            }
        }
        for (const platform::MessengerEvent& event : messengerSystem_.wait(untilNextLook())) {
            happened(event);
        }
    }
    finish();
}

void Messenger::readSettingsAgain() {
    settingsReadAt_ = now();
    settings_ = readSettings(*messengerSystem_.settings());
    if (!given_.empty()) {
        settings_.folders = given_;
    }
    setPlaces();
}

void Messenger::setPlaces() {
    std::erase_if(places_, [this](const Place& place) {
        const bool named = std::ranges::find(settings_.folders, place.path) != settings_.folders.end();
        if (!named) {
            messengerSystem_.log(Severity::information, runtime::shown(place.path) + ": wird nicht mehr überwacht");
        }
        return !named;
    });
    for (const std::string& path : settings_.folders) {
        if (std::ranges::find(places_, path, &Place::path) == places_.end()) {
            places_.emplace_back().path = path;
        }
    }
}

// Whatever fails here, the other folders go on, and this one when it can be had again.
void Messenger::look(Place& place) {
    try {
        if (place.orders == nullptr) {
            open(place);
        }
        place.orders->look();
        place.toldMissing = false;
        place.lookAt = now() + place.orders->nextLook().count();
    } catch (const runtime::Error& error) {
        lose(place, error.message());
    } catch (const std::exception& error) {
        lose(place, error.what());
    }
}

void Messenger::open(Place& place) {
    place.orders =
        std::make_unique<FolderOrders>(Desk(system_, messengerSystem_, settings_, messengerSystem_.open(place.path)));
}

void Messenger::lose(Place& place, const std::string& why) {
    place.orders.reset();
    place.lookAt = now() + betweenTries;
    if (!std::exchange(place.toldMissing, true)) {
        messengerSystem_.log(Severity::warning,
                             runtime::shown(place.path) + ": wird nicht überwacht, bis das wieder geht: " + why);
    }
}

void Messenger::happened(const platform::MessengerEvent& event) {
    using Kind = platform::MessengerEvent::Kind;
    if (event.kind == Kind::stop) {
        stopped_ = true;
        return;
    }
    for (Place& place : places_) {
        if (place.orders == nullptr) {
            continue;
        }
        if (event.kind != Kind::folderChanged) {
            place.orders->happened(event);
            place.lookAt = std::min(place.lookAt, now() + place.orders->nextLook().count());
        } else if (&place.orders->folder() == event.folder) {
            place.lookAt = now();
        }
    }
}

std::chrono::milliseconds Messenger::untilNextLook() const {
    std::int64_t next = settingsReadAt_ + betweenSettings;
    for (const Place& place : places_) {
        next = std::min(next, place.lookAt);
    }
    return std::chrono::milliseconds(std::max<std::int64_t>(next - now(), 0));
}

void Messenger::finish() {
    const auto awaits = [](const Place& place) { return place.orders != nullptr && place.orders->awaitsCompletion(); };
    for (Place& place : places_) {
        if (place.orders != nullptr) {
            place.orders->close();
        }
    }
    const std::int64_t end = now() + atTheEnd;
    while (now() < end && std::ranges::any_of(places_, awaits)) {
        for (const platform::MessengerEvent& event : messengerSystem_.wait(std::chrono::milliseconds(end - now()))) {
            happened(event);
        }
    }
}

}  // namespace messenger
