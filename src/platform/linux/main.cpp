#include "platform/linux/linux_image_files.h"
#include "platform/linux/linux_platform.h"
#include "platform/linux/spool/linux_spooler.h"
#include "session/version.h"
#include "startup/MMain.h"

int main(int argc, char** argv) {
    platform_linux::LinuxPlatform ports(argc, argv);
    platform_linux::LinuxSpooler spooler([&ports] { return ports.system().codePage(); },
                                         std::string("KRVWinPr ") + session::programVersion);
    platform_linux::LinuxImageFiles imageFiles;
    platform::Platform platform{ports.system(), ports.settings(), spooler, ports.dialogs(), imageFiles};
    MMain::Main(platform);
    return 0;
}
