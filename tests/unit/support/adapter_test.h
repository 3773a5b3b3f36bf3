// What the tests of every system's adapter share, and what those of the ports (ports_test.cpp) need of each system.
// Paths are UTF-8, as the ports have them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/settings_store.h"
#include "platform/system.h"
#include "platform/user_files.h"
#include "platform/xml_files.h"
#include "runtime/error.h"

namespace support {

inline std::filesystem::path pathOf(std::string_view path) { return std::u8string(path.begin(), path.end()); }

inline void put(const std::string& path, std::string_view content) {
    std::ofstream(pathOf(path), std::ios::binary) << content;
}

inline std::string get(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(pathOf(path), std::ios::binary).rdbuf();
    return content.str();
}

// A new folder below the one for temporary files; removed with what lies in it.
class TemporaryFolder {
public:
    TemporaryFolder() { std::filesystem::create_directory(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string operator/(std::string_view name) const {
        const std::u8string path = (path_ / pathOf(name)).u8string();
        return {path.begin(), path.end()};
    }
    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            result.insert(entry.path().filename().string());
        }
        return result;
    }

private:
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("krv-test-" + std::to_string(std::random_device()()));
};

// Number of the run-time error that the function throws; 0 for none.
inline int errorOf(const std::function<void()>& function, std::string* detail = nullptr) {
    try {
        function();
    } catch (const runtime::Error& error) {
        if (detail != nullptr) {
            *detail = error.detail();
        }
        return error.number();
    }
    return 0;
}

// The system's own, for a German user whose DOS code page is 850.
platform::System& systemPort();

// The system's own, wherever the environment says that the user's data is.
std::unique_ptr<platform::UserFiles> userFilesPort();

// The system's own, and whether it goes by type declarations and finds whatever is wrong; Wine's does not.
std::unique_ptr<platform::XmlFiles> xmlFilesPort();
bool parsesByTheBook();

// A path, in that folder or anywhere, at which there is something other than a file or a folder.
std::string deviceIn(const TemporaryFolder& folder);

// Opens the settings, which are gone at the end of the program, or with that folder.
std::unique_ptr<platform::SettingsStore> openSettings(const TemporaryFolder& folder);

// What the system's dialogs write to standard error where nobody sees a window; UTF-8, lines end with "\n".
std::string writtenBy(const std::function<void(platform::Dialogs&)>& function);

}  // namespace support
