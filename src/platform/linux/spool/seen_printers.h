// What the user's print server had when it last answered, so that its silence is not taken for its absence.
#pragma once

#include <string>

#include "platform/settings_store.h"

namespace platform_linux::spool {

// Kept in the settings, below the product's key in "CUPS".
class SeenPrinters {
public:
    // The settings are borrowed.
    explicit SeenPrinters(platform::SettingsStore& settings) : settings_(settings) {}

    // The default printer, be it a queue or not; empty where it was never known.
    std::string defaultPrinter() const;
    void defaultPrinter(const std::string& name);

    // Whether the server has ever had a queue.
    bool queues() const;
    void sawQueues();

private:
    std::string value(std::string_view name) const;
    void value(std::string_view name, std::string_view text);

    platform::SettingsStore& settings_;
};

}  // namespace platform_linux::spool
