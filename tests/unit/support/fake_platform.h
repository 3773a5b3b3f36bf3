// The ports in memory: files, clock, settings and dialogs that a test sets and reads.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "pictures/picture_file.h"
#include "pictures/picture_size.h"
#include "platform/platform.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "unit/support/recording_forms.h"
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
    std::string unreadable;
    std::string failure() override { return unreadable; }
};

// Picture files of the test's own kind: the content names the picture.
class FakeImageFiles : public platform::ImageFiles {
public:
    std::map<std::string, platform::Picture, std::less<>> pictures;

    int decoded = 0;  // how often

    platform::PictureInfo inspect(std::string_view content) override { return find(content); }
    platform::Picture decode(std::string_view content) override {
        ++decoded;
        return find(content);
    }
    std::string inverted(std::string_view content) override {
        platform::Picture picture = decode(content);
        ::pictures::invert(picture);
        const std::string result = std::string(content) + "'";
        pictures[result] = picture;
        return result;
    }

private:
    const platform::Picture& find(std::string_view content) const {
        const auto found = pictures.find(content);
        if (found == pictures.end()) {
            throw runtime::Error(runtime::errInvalidPicture, "kein Bild");
        }
        return found->second;
    }
};

class FakeSystem : public platform::System {
public:
    std::string tail;
    std::map<std::string, std::string> files;
    MemoryProfile profile;  // content of whatever settings file exists
    std::set<std::string> unwritable;
    std::map<std::string, std::uint64_t> sizes;  // of files whose content does not say it
    std::map<std::string, int> failures;         // files that cannot be read, and the number of their error
    runtime::DateTime now{2026, 11, 21, 13, 45, 7, 0};
    runtime::Locale userLocale;
    int screenDpi = 96;
    int screenDpiDown = 96;
    int sleptMilliseconds = 0;
    int looksTake = 0;    // milliseconds that pass from one look at the clock to the next
    int toldStarter = 0;  // how often the starter was told of the completion file

    std::string commandTail() override { return tail; }
    std::string programDirectory() override { return "C:\\Programme"; }
    std::string programFileName() override { return "KRVWinPr.exe"; }
    std::string directory = "C:\\KORVANO";
    std::set<std::string> missingFolders;
    std::string user = "meier";
    std::string currentDirectory() override { return directory; }
    void changeDirectory(const std::string& folder) override {
        if (missingFolders.contains(folder)) {
            throw runtime::Error(runtime::errPathNotFound, folder);
        }
        directory = folder;
    }
    std::string userName() override { return user; }
    std::string readFile(const std::string& path) override {
        const auto failure = failures.find(path);
        if (failure != failures.end() || !files.contains(path)) {
            throw runtime::Error(failure == failures.end() ? runtime::errFileNotFound : failure->second, path);
        }
        return files[path];
    }
    std::unique_ptr<platform::FileReader> openToRead(const std::string& path) override {
        return std::make_unique<Reader>(*this, path);
    }
    std::uint64_t fileSize(const std::string& path) override {
        return sizes.contains(path) ? sizes[path] : files.contains(path) ? files[path].size() : 0;
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
    void removeFile(const std::string& path) override { files.erase(path); }
    bool wouldReplace(const std::string& written, const std::string& path) override {
        return files.contains(path) && runtime::upperCase(written) == runtime::upperCase(path);
    }
    std::unique_ptr<platform::Profile> openProfile(const std::string& path) override {
        return std::make_unique<MemoryProfile>(files.contains(path) ? profile : MemoryProfile());
    }
    std::string fileNamed(const std::string& name) override { return name; }
    runtime::DateTime localTime() override { return now; }
    const runtime::Locale& locale() override { return userLocale; }
    std::string toSystemCodePage(std::string_view text) override { return std::string(text); }
    std::map<char, std::string> dosCharacters;  // what a byte is, where not itself
    std::string fromDosCodePage(std::string_view bytes) override {
        std::string text;
        for (const char byte : bytes) {
            text += dosCharacters.contains(byte) ? dosCharacters[byte] : std::string(1, byte);
        }
        return text;
    }
    int screenDpiX() override { return screenDpi; }
    int screenDpiY() override { return screenDpiDown; }
    bool screenAnswers() override { return true; }
    void sleep(int milliseconds) override {
        sleptMilliseconds += milliseconds;
        now.millisecond += milliseconds;
    }
    std::int64_t elapsedMilliseconds() override { return sleptMilliseconds += looksTake; }
    void tellStarter() noexcept override { ++toldStarter; }
    std::string shellCommand(const std::string& folder, const std::vector<std::string>& arguments) override {
        std::string command = "in " + folder;
        for (const std::string& argument : arguments) {
            command += "|" + argument;
        }
        return command;
    }

private:
    // A file that goes is still there for whoever reads it.
    class Reader : public platform::FileReader {
    public:
        Reader(FakeSystem& system, const std::string& path)
            : system_(system), path_(path), opened_(system.readFile(path)) {}
        std::uint64_t size() const override { return opened_.size(); }
        bool read(std::string& to, std::size_t atMost) override {
            if (system_.failures.contains(path_)) {
                system_.readFile(path_);
            }
            const std::string& content = system_.files.contains(path_) ? system_.files[path_] : opened_;
            const std::string piece = content.substr(std::min(done_, content.size()), atMost);
            to += piece;
            done_ += piece.size();
            return !piece.empty();
        }
        bool unchanged() const override { return !system_.files.contains(path_) || system_.files[path_] == opened_; }

    private:
        FakeSystem& system_;
        const std::string path_;
        const std::string opened_;
        std::size_t done_ = 0;
    };

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

    void put(std::string_view key, std::string_view name, platform::SettingsValue value) {
        keys[runtime::upperCase(key)][runtime::upperCase(name)] = std::move(value);
    }

    bool keyExists(platform::SettingsRoot, std::string_view key) override {
        const std::string wanted = runtime::upperCase(key) + "\\";
        return std::ranges::any_of(keys, [&](const auto& entry) { return (entry.first + "\\").starts_with(wanted); });
    }
    std::optional<platform::SettingsValue> value(platform::SettingsRoot, std::string_view key,
                                                 std::string_view name) override {
        const std::pair place(runtime::upperCase(key), runtime::upperCase(name));
        const bool known = keys.contains(place.first) && keys[place.first].contains(place.second);
        return known ? std::optional(keys[place.first][place.second]) : std::nullopt;
    }
    bool setText(platform::SettingsRoot, std::string_view key, std::string_view name, std::string_view text) override {
        put(key, name, std::string(text));
        return true;
    }
    bool commit() override {
        ++commits;
        return true;
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
    };
    std::vector<Box> boxes;
    std::vector<std::string> shownFiles;
    std::vector<std::string> diagnostics;
    std::vector<std::string> notifications;
    int timesOutOfMemory = 0;
    platform::Answer answer = platform::Answer::yes;

    platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                const std::string& title) override {
        boxes.push_back({text, buttons, icon, title});
        return answer;
    }
    void processEvents() override {}
    void showTextFile(const std::string& path) override { shownFiles.push_back(path); }
    void diagnostic(const std::string& line) override { diagnostics.push_back(line); }
    bool atShell = false;
    std::string answered;
    bool answerCaller(const std::string& text) override {
        answered = atShell ? text : "";
        return atShell;
    }
    bool isWatched = false;
    std::vector<std::string> statusLines;
    bool watched() override { return isWatched; }
    void statusLine(const std::string& line) override { statusLines.push_back(line); }
    void notify(const std::string& text) override { notifications.push_back(text); }
    void outOfMemory() noexcept override { ++timesOutOfMemory; }
};

class MemoryUserFiles : public platform::UserFiles {
public:
    std::map<std::string, std::string> files;
    std::set<std::string> unwritable;  // folders

    std::vector<std::string> folders(const std::string& name) override {
        return {"C:\\Daten\\" + name + "\\", "C:\\KORVANO\\" + name + "\\"};
    }
    void create(const std::string& path, std::string_view content) override {
        if (files.contains(path)) {
            throw runtime::Error(runtime::errFileExists, path);
        }
        replace(path, content);
    }
    void replace(const std::string& path, std::string_view content) override {
        if (unwritable.contains(path.substr(0, path.rfind('\\') + 1))) {
            throw runtime::Error(runtime::errPermissionDenied, path);
        }
        files[path] = content;
    }
    // In the order of their names, which is as good as any.
    std::vector<std::string> names(const std::string& folder) override {
        std::vector<std::string> names;
        for (const auto& [path, content] : files) {
            if (path.starts_with(folder)) {
                names.push_back(path.substr(folder.size()));
            }
        }
        return names;
    }
    std::string read(const std::string& path) override {
        if (!files.contains(path)) {
            throw runtime::Error(runtime::errFileNotFound, path);
        }
        return files[path];
    }
    void remove(const std::string& path) noexcept override { files.erase(path); }
};

// Finds the same document in every file.
class FakeXmlFiles : public platform::XmlFiles {
public:
    platform::XmlDocument document;
    std::string parsed;  // the content last given

    platform::XmlDocument parse(std::string_view content) override {
        parsed = content;
        return document;
    }
};

class RecordingErrorReports : public platform::ErrorReports {
public:
    platform::Activity now;
    std::vector<std::string> reports;  // number and description
    std::string log;                   // path
    bool offers = false;

    platform::Activity& activity() noexcept override { return now; }
    void untrapped(std::int32_t number, const std::string& description) noexcept override {
        reports.push_back(std::to_string(number) + " " + description);
    }
    std::string logFile() override { return log; }
    bool startedToOffer() noexcept override { return offers; }
};

struct FakePlatform {
    FakeSystem system;
    MemorySettings settings;
    FakeSpooler spooler;
    FakePrintJobs printJobs{spooler};
    RecordingDialogs dialogs;
    FakeImageFiles imageFiles;
    MemoryUserFiles userFiles;
    RecordingForms forms;
    FakeXmlFiles xmlFiles;
    RecordingErrorReports errorReports;
    // Puts a picture of the given size into a file.
    void addPicture(const std::string& path, int width, int height) {
        system.files[path] = path;
        imageFiles.pictures[path] = pictures::makePicture(width, height, 24);
    }

    platform::Platform ports{system,     settings,  spooler, printJobs, dialogs,
                             imageFiles, userFiles, forms,   xmlFiles,  errorReports};

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
    bool logged(const std::string& line) const { return std::ranges::count(logLines(), line) > 0; }
};

}  // namespace testing_support
