// The messenger: all its folders, and what happens there.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "messenger/folder_orders.h"
#include "messenger/messenger_settings.h"
#include "platform/messenger_system.h"
#include "platform/system.h"

namespace messenger {

class Messenger {
public:
    // Without folders those of the settings, which may change while it runs.
    Messenger(platform::System& system, platform::MessengerSystem& messengerSystem, std::vector<std::string> folders);

    // Carries out orders until it is told to end. A host that waits for a completion file then still gets it, if that
    // is a matter of seconds.
    void run();

private:
    struct Place {
        std::string path;
        std::unique_ptr<FolderOrders> orders;  // null as long as there is no such folder
        std::int64_t lookAt = 0;
        bool toldMissing = false;
    };

    std::int64_t now() const { return system_.elapsedMilliseconds(); }
    void readSettingsAgain();
    void setPlaces();
    void look(Place& place);
    void open(Place& place);
    void lose(Place& place, const std::string& why);
    void happened(const platform::MessengerEvent& event);
    std::chrono::milliseconds untilNextLook() const;
    void finish();

    platform::System& system_;
    platform::MessengerSystem& messengerSystem_;
    std::vector<std::string> given_;
    MessengerSettings settings_;
    std::vector<Place> places_;
    std::int64_t settingsReadAt_ = 0;
    bool stopped_ = false;
};

}  // namespace messenger
