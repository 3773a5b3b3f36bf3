// One folder's side of the messenger: what is written there, and what is told of it.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "messenger/answer.h"
#include "messenger/messenger_settings.h"
#include "platform/messenger_system.h"
#include "platform/order_folder.h"
#include "platform/system.h"

namespace messenger {

class Desk {
public:
    using Severity = platform::MessengerSystem::Severity;

    // The settings may change while it is there.
    Desk(platform::System& deskSystem, platform::MessengerSystem& deskMessengerSystem,
         const MessengerSettings& deskSettings, std::unique_ptr<platform::OrderFolder> deskFolder)
        : system(deskSystem),
          messengerSystem(deskMessengerSystem),
          settings(deskSettings),
          folder_(std::move(deskFolder)) {}

    platform::OrderFolder& folder() const { return *folder_; }

    // Writes over the answer to an order. False where that fails, which is told once until it works again.
    bool answer(const std::string& orderName, const Answer& answer) const;

    // Answers that an order comes to nothing, puts it aside, and tells why; a clause.
    void refuse(const std::string& orderName, const std::string& mark, const std::string& reason) const;

    void log(Severity severity, const std::string& text) const;
    // The same, and to the user's desktop.
    void warn(const std::string& text) const;

    platform::System& system;
    platform::MessengerSystem& messengerSystem;
    const MessengerSettings& settings;

private:
    std::string putAside(const std::string& orderName) const;

    std::unique_ptr<platform::OrderFolder> folder_;
    mutable bool toldUnanswered_ = false;
};

}  // namespace messenger
