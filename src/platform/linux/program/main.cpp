#include "platform/linux/program/linux_platform.h"
#include "startup/MMain.h"

int main(int argc, char** argv) {
    platform_linux::program::LinuxPlatform platform(argc, argv);
    startup::MMain::Main(platform.ports());
    return 0;
}
