// The reader of settings files: any bytes as the file, every name in it asked for.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/linux/profile_text.h"
#include "runtime/utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    platform_linux::ProfileText profile(content);
    for (const std::string section : {"Grafik", "a", ""}) {
        for (const std::string key : {"Grafik1", "k", ""}) {
            const std::string value = profile.text(section, key, "Vorgabe");
            // A byte of Windows-1252 has up to three in UTF-8.
            if (value.size() > std::size_t{3} * 254 || value.find('\0') != std::string::npos ||
                !runtime::isUtf8(value)) {
                std::abort();
            }
            // What was read can be written and read again, where it is short enough for that.
            const bool plain = value.find_first_of("\r\n") == std::string::npos;
            platform_linux::ProfileText again("[a]\nk=\"" + value + "\"");
            if (!plain || (value.size() <= 254 && again.text("A", "K", "") != value)) {
                std::abort();
            }
        }
    }
    return 0;
}
