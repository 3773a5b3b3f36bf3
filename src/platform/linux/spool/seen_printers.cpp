#include "platform/linux/spool/seen_printers.h"

namespace platform_linux::spool {

namespace {

constexpr std::string_view key = R"(Software\Velmora\KRVWinPr\3.0\CUPS)";
constexpr std::string_view defaultName = "Standarddrucker";
constexpr std::string_view queuesName = "Warteschlangen";
constexpr std::string_view yes = "1";

}  // namespace

std::string SeenPrinters::defaultPrinter() const { return value(defaultName); }

void SeenPrinters::defaultPrinter(const std::string& name) { value(defaultName, name); }

bool SeenPrinters::queues() const { return value(queuesName) == yes; }

void SeenPrinters::sawQueues() { value(queuesName, yes); }

std::string SeenPrinters::value(std::string_view name) const {
    const auto found = settings_.value(platform::SettingsRoot::currentUser, key, name);
    const auto* const text = found ? std::get_if<std::string>(&*found) : nullptr;
    return text != nullptr ? *text : std::string();
}

void SeenPrinters::value(std::string_view name, std::string_view text) {
    // Where it cannot be kept, a server that does not answer is one that is not there.
    settings_.setText(platform::SettingsRoot::currentUser, key, name, text);
}

}  // namespace platform_linux::spool
