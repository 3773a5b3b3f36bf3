#include <cups/cups.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/linux/cups/connection.h"
#include "platform/linux/cups/cups_print_jobs.h"
#include "platform/linux/cups/cups_spooler.h"
#include "platform/linux/cups/print_server.h"

namespace platform_linux::cups {

namespace {

// Queues and jobs are asked for over one connection.
class CupsServer final : public PrintServer {
public:
    explicit CupsServer(documents::DocumentFactory makeDocument)
        : spooler_(connection_, std::move(makeDocument)), jobs_(connection_) {}

    bool expected() override {
        // Where nothing is named and the scheduler has no socket either, libcups falls back to this name.
        constexpr const char* nobodySaid = "localhost";
        return std::getenv("CUPS_SERVER") != nullptr || std::string_view(cupsServer()) != nobodySaid ||
               ::access("/usr/sbin/cupsd", F_OK) == 0;
    }
    platform::Spooler& spooler() override { return spooler_; }
    platform::PrintJobs& jobs() override { return jobs_; }

private:
    std::shared_ptr<Connection> connection_ = std::make_shared<Connection>();
    CupsSpooler spooler_;
    CupsPrintJobs jobs_;
};

}  // namespace

}  // namespace platform_linux::cups

extern "C" __attribute__((visibility("default"))) std::unique_ptr<platform_linux::cups::PrintServer> krvwinpr_cups(
    platform_linux::documents::DocumentFactory makeDocument);

std::unique_ptr<platform_linux::cups::PrintServer> krvwinpr_cups(
    platform_linux::documents::DocumentFactory makeDocument) {
    return std::make_unique<platform_linux::cups::CupsServer>(std::move(makeDocument));
}
