#include <new>

#include "messenger/Main.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/linux_system.h"
#include "platform/linux/messenger/linux_messenger_system.h"
#include "platform/linux/process_start.h"
#include "platform/linux/standard_error.h"
#include "runtime/error.h"

int main(int argc, char** argv) {
    using namespace platform_linux;
    prepareProcess();
    try {
        LinuxSettingsStore settings(LinuxSettingsStore::usualPath());
        LinuxSystem system(argc, argv, settings);
        platform_linux::messenger::LinuxMessengerSystem messengerSystem;
        return ::messenger::Main(system, messengerSystem);
    } catch (const std::bad_alloc&) {
        writeToStandardError("KRVWinPrBote: Nicht genügend Speicher\n");
    } catch (const runtime::Error& error) {
        writeToStandardError("KRVWinPrBote: " + error.message() + "\n");
    }
    return 1;
}
