// The ports in memory: files, clock, settings and dialogs that a test sets and reads.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "pictures/picture_size.h"
#include "platform/platform.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "unit/support/recording_printer.h"

namespace testing_support {

// A settings file whose sections and keys a test writes exactly as the program asks for them.
class MemoryProfile : public platform::Profile {
public:
    std::map<std::pair<std::string, std::string>, std::string> values;

    std::string text(std::string_view section, std::string_view key, std::string_view fallback) override {
        const auto found = values.find({std::string(section), std::string(key)});
        return found == values.end() ? std::string(fallback) : found->second;
    }
};

// Picture files of the test's own kind: the content names the picture.
class FakeImageFiles : public platform::ImageFiles {
public:
    std::map<std::string, platform::Picture, std::less<>> pictures;

    platform::Picture decode(std::string_view content) override {
        const auto found = pictures.find(content);
        if (found == pictures.end()) {
            throw runtime::Error(runtime::errInvalidPicture, "kein Bild");
        }
        return found->second;
    }
    std::string encode(const platform::Picture& picture, std::string_view original) override {
        const std::string content = std::string(original) + "'";
        pictures[content] = picture;
        return content;
    }
};

class FakeSystem : public platform::System {
public:
    std::string tail;
    std::map<std::string, std::string> files;
    MemoryProfile profile;  // content of whatever settings file exists
    std::set<std::string> unwritable;
    std::map<std::string, int> failures;  // files that cannot be read, and the number of their error
    runtime::DateTime now{2026, 11, 21, 13, 45, 7, 0};
    runtime::Locale userLocale;
    int screenDpi = 96;
    int sleptMilliseconds = 0;

    std::string commandTail() override { return tail; }
    std::string programDirectory() override { return "C:\\Programme"; }
    std::string programFileName() override { return "KRVWinPr.exe"; }
    std::string currentDirectory() override { return "C:\\KORVANO"; }
    std::string readFile(const std::string& path) override {
        if (const auto failure = failures.find(path); failure != failures.end()) {
            throw runtime::Error(failure->second, path);
        }
        const auto file = files.find(path);
        if (file == files.end()) {
            throw runtime::Error(runtime::errFileNotFound, path);
        }
        return file->second;
    }
    void writeFile(const std::string& path, std::string_view content) override {
        checkWritable(path);
        files[path] = content;
    }
    void rewriteFile(const std::string& path, std::string_view content) override {
        readFile(path);
        writeFile(path, content);
    }
    void appendFile(const std::string& path, std::string_view content) override {
        checkWritable(path);
        files[path] += content;
    }
    bool fileExists(const std::string& path) override { return files.contains(path); }
    std::unique_ptr<platform::Profile> openProfile(const std::string& path) override {
        return std::make_unique<MemoryProfile>(files.contains(path) ? profile : MemoryProfile());
    }
    runtime::DateTime localTime() override { return now; }
    const runtime::Locale& locale() override { return userLocale; }
    std::string toSystemCodePage(std::string_view text) override { return std::string(text); }
    std::string fromDosCodePage(std::string_view bytes) override { return std::string(bytes); }
    int screenDpiX() override { return screenDpi; }
    int screenDpiY() override { return screenDpi; }
    void sleep(int milliseconds) override {
        sleptMilliseconds += milliseconds;
        const int total = now.millisecond + milliseconds;
        now.millisecond = total % 1000;
        now.second += total / 1000;
    }

private:
    void checkWritable(const std::string& path) const {
        if (unwritable.contains(path)) {
            throw runtime::Error(runtime::errDiskFull, path);
        }
    }
};

class MemorySettings : public platform::SettingsStore {
public:
    // By key and name, in upper case.
    std::map<std::string, std::map<std::string, platform::SettingsValue>> keys;
    int commits = 0;
    bool writable = true;

    void put(std::string_view key, std::string_view name, platform::SettingsValue value) {
        keys[runtime::upperCase(key)][runtime::upperCase(name)] = std::move(value);
    }

    bool keyExists(platform::SettingsRoot, std::string_view key) override {
        const std::string wanted = runtime::upperCase(key);
        for (const auto& [name, values] : keys) {
            if (name == wanted || name.starts_with(wanted + "\\")) {
                return true;
            }
        }
        return false;
    }
    std::optional<platform::SettingsValue> value(platform::SettingsRoot, std::string_view key,
                                                 std::string_view name) override {
        const auto found = keys.find(runtime::upperCase(key));
        if (found == keys.end()) {
            return std::nullopt;
        }
        const auto value = found->second.find(runtime::upperCase(name));
        return value == found->second.end() ? std::nullopt : std::optional(value->second);
    }
    bool setText(platform::SettingsRoot, std::string_view key, std::string_view name, std::string_view text) override {
        put(key, name, std::string(text));
        return true;
    }
    bool commit() override {
        ++commits;
        return writable;
    }
    std::string place() override { return "settings"; }
};

class RecordingDialogs : public platform::Dialogs {
public:
    struct Box {
        std::string text;
        platform::Buttons buttons;
        platform::Icon icon;
        std::string title;
        bool operator==(const Box&) const = default;
    };
    std::vector<Box> boxes;
    std::vector<std::string> shownFiles;
    std::vector<std::string> diagnostics;
    platform::Answer answer = platform::Answer::yes;

    platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                const std::string& title) override {
        boxes.push_back({text, buttons, icon, title});
        return answer;
    }
    void processEvents() override {}
    void showTextFile(const std::string& path) override { shownFiles.push_back(path); }
    void diagnostic(const std::string& line) override { diagnostics.push_back(line); }
};

struct FakePlatform {
    FakeSystem system;
    MemorySettings settings;
    FakeSpooler spooler;
    FakePrintJobs printJobs{spooler};
    RecordingDialogs dialogs;
    FakeImageFiles imageFiles;
    // Puts a picture of the given size into a file.
    void addPicture(const std::string& path, int width, int height, int bitsPerPixel = 24) {
        system.files[path] = path;
        imageFiles.pictures[path] = pictures::makePicture(width, height, bitsPerPixel);
    }

    platform::Platform ports{system, settings, spooler, printJobs, dialogs, imageFiles};

    // Lines of the debug log without their time stamp; a line that has none is kept whole.
    std::vector<std::string> logLines() const {
        static const std::string stamp = "21.11.2026 13:45:";
        std::vector<std::string> lines;
        const auto log = system.files.find("KRVWinPr.LOG");
        std::istringstream text(log == system.files.end() ? std::string() : log->second);
        for (std::string line; std::getline(text, line);) {
            line.erase(line.find_last_not_of('\r') + 1);
            lines.push_back(line.starts_with(stamp) ? line.substr(stamp.size() + 2) : line);
        }
        return lines;
    }
    bool logged(const std::string& line) const {
        const std::vector<std::string> lines = logLines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
};

}  // namespace testing_support
