// The reader of settings files: any bytes as the file, every name in it asked for.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/linux/profile_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    platform_linux::ProfileText profile(content);
    for (const std::string section : {"Grafik", "a", ""}) {
        for (const std::string key : {"Grafik1", "k", ""}) {
            const std::string value = profile.text(section, key, "Vorgabe");
            if (value.size() > 254 || value.find('\0') != std::string::npos) {
                std::abort();
            }
            // What was read can be written and read again.
            const bool plain = value.find_first_of("\r\n") == std::string::npos;
            platform_linux::ProfileText again("[a]\nk=\"" + value + "\"");
            if (!plain || again.text("A", "K", "") != value) {
                std::abort();
            }
        }
    }
    return 0;
}
