// The print server, taken from its module when it is first asked for.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/cups/print_server.h"

namespace platform_linux::spool {

class LazyPrintServer {
public:
    // Called once; throws runtime::Error where CUPS is not installed.
    using Make = std::function<std::unique_ptr<cups::PrintServer>()>;

    explicit LazyPrintServer(Make make) : make_(std::move(make)) {}

    // Null where CUPS is not installed.
    cups::PrintServer* get();

    // Throws platform::SpoolerError, which names the printer, where CUPS is not installed.
    cups::PrintServer& require(const std::string& printer);

private:
    Make make_;
    bool tried_ = false;
    std::unique_ptr<cups::PrintServer> server_;
};

}  // namespace platform_linux::spool
