#include "messenger/Main.h"

namespace messenger {

int Main(platform::System&, platform::MessengerSystem&) noexcept { return 1; }

}  // namespace messenger
