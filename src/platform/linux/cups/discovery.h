// Printers that the system has discovered by itself and that have no queue yet.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace platform_linux::cups {

struct DiscoveredPrinter {
    std::string queue;  // what CUPS calls it and a queue for it
    std::string info;   // what the printer calls itself
    std::string uri;    // of the device
};

// Looks for a printer whose queue would have that name, or that calls itself so, in any case of letters. Nothing where
// none is there within the limit, however long the services take that are asked.
std::optional<DiscoveredPrinter> discoveredPrinter(const std::string& name, std::chrono::milliseconds limit);

}  // namespace platform_linux::cups
