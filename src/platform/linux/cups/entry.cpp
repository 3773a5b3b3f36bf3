#include "platform/linux/cups/cups_queues.h"

extern "C" __attribute__((visibility("default"))) std::unique_ptr<platform_linux::PrintQueues> krvwinpr_cups();

std::unique_ptr<platform_linux::PrintQueues> krvwinpr_cups() {
    return std::make_unique<platform_linux::cups::CupsQueues>();
}
