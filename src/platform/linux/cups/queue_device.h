// The device behind a queue, from the queue's attributes.
#pragma once

#include <vector>

#include "platform/linux/cups/ipp_message.h"
#include "platform/linux/cups/queue_access.h"

namespace platform_linux::cups {

// The attributes that queueDevice() reads.
std::vector<const char*> deviceAttributes();

// A queue that does not say (one without a driver) has A4 without margins, 600 pixels per inch, and prints in colour:
// what it gets goes to the printer as it is.
QueueDevice queueDevice(ipp_t* attributes);

}  // namespace platform_linux::cups
