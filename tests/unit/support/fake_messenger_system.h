// The system around the messenger, in memory: folders that hosts leave orders in, and programs that a test lets go on.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "fake_platform.h"
#include "messenger/order_names.h"
#include "platform/messenger_system.h"

namespace testing_support {

struct FakeFile {
    std::string content;
    std::int64_t age = 0;
};

struct FakeFolder {
    std::map<std::string, FakeFile> files;
    std::set<std::string> forbidden;  // orders of somebody who may not
    std::string holder;
    bool gone = false;
    bool readOnly = false;
    bool reports = true;
    std::string completion;
};

class FakeOrderFolder : public platform::OrderFolder {
public:
    FakeOrderFolder(std::string path, FakeFolder& folder) : path_(std::move(path)), folder_(folder) {}
    ~FakeOrderFolder() override {
        if (ours_) {
            folder_.holder.clear();
        }
    }
    const std::string& path() const override { return path_; }
    bool reportsChanges() const override { return folder_.reports; }
    Holder hold() override {
        ours_ = ours_ || folder_.holder.empty();
        folder_.holder = ours_ ? "ich" : folder_.holder;
        return ours_ ? Holder::ours : Holder::another;
    }
    std::string holder() override { return folder_.holder; }
    std::vector<platform::OrderFile> files() override {
        check();
        std::vector<platform::OrderFile> files;
        for (const auto& [name, file] : folder_.files) {
            if (messenger::orderFileName(name)) {
                files.push_back({name, file.age});
            }
        }
        return files;
    }
    std::string read(const std::string& name) override {
        if (folder_.forbidden.contains(name)) {
            throw runtime::Error(runtime::errPermissionDenied, "er gehört jemand anderem");
        }
        return file(name).content;
    }
    bool make(const std::string& name, std::string_view content) override {
        check(true);
        return folder_.files.emplace(name, FakeFile{std::string(content)}).second;
    }
    void change(const std::string& name, std::string_view content) override {
        check(true);
        file(name).content = content;
    }
    bool rename(const std::string& name, const std::string& newName) override {
        check(true);
        return folder_.files.emplace(newName, file(name)).second && folder_.files.erase(name) == 1;
    }
    bool remove(const std::string& name) noexcept override { return folder_.files.erase(name) <= 1; }
    std::string completionMark() override { return folder_.completion; }
    bool isAt(const std::string& path) override { return runtime::upperCase(path) == runtime::upperCase(path_); }

private:
    void check(bool writing = false) const {
        if (folder_.gone || (writing && folder_.readOnly)) {
            throw runtime::Error(folder_.gone ? runtime::errPathNotFound : runtime::errPathFileAccess, path_);
        }
    }
    FakeFile& file(const std::string& name) {
        check();
        if (!folder_.files.contains(name)) {
            throw runtime::Error(runtime::errFileNotFound, name);
        }
        return folder_.files[name];
    }

    std::string path_;
    FakeFolder& folder_;
    bool ours_ = false;
};

// What is set is set for everybody at once.
class SharedSettings : public platform::SettingsStore {
public:
    explicit SharedSettings(MemorySettings& all) : all_(all) {}
    bool keyExists(platform::SettingsRoot root, std::string_view key) override { return all_.keyExists(root, key); }
    std::optional<platform::SettingsValue> value(platform::SettingsRoot root, std::string_view key,
                                                 std::string_view name) override {
        return all_.value(root, key, name);
    }
    bool setText(platform::SettingsRoot root, std::string_view key, std::string_view name,
                 std::string_view text) override {
        return all_.setText(root, key, name, text);
    }
    bool commit() override { return all_.commit(); }
    std::string place() override { return all_.place(); }

private:
    MemorySettings& all_;
};

class FakeMessengerSystem : public platform::MessengerSystem {
public:
    using Events = std::vector<platform::MessengerEvent>;
    using Kind = platform::MessengerEvent::Kind;

    explicit FakeMessengerSystem(FakeSystem& system) : system_(system) {}

    std::map<std::string, FakeFolder> folders;
    MemorySettings store;
    std::vector<std::string> started;  // "PROGRAM in FOLDER|TAIL", its number one above its place
    std::vector<std::string> lines, notifications, told;
    std::string cannotStart;
    bool startsWithSession = false;
    // What happens in the moments in which the messenger waits, one behind the other; nothing takes all the time.
    std::vector<std::function<Events()>> moments;

    std::unique_ptr<platform::OrderFolder> open(const std::string& path) override {
        if (!folders.contains(path) || folders[path].gone) {
            throw runtime::Error(runtime::errPathNotFound, path);
        }
        return std::make_unique<FakeOrderFolder>(path, folders[path]);
    }
    std::vector<platform::MessengerEvent> wait(std::chrono::milliseconds atMost) override {
        if (moment_ == moments.size()) {
            system_.sleptMilliseconds += stopped_ ? static_cast<int>(atMost.count()) : 0;
            stopped_ = true;
            return {{.kind = Kind::stop, .folder = nullptr, .program = 0, .how = {}}};
        }
        Events events = moments[moment_++]();
        if (events.empty()) {
            system_.sleptMilliseconds += static_cast<int>(atMost.count());
        }
        return events;
    }
    platform::ProgramId start(const std::string& program, const platform::OrderFolder& folder,
                              const std::string& tail) override {
        if (!cannotStart.empty()) {
            throw runtime::Error(runtime::errFileNotFound, cannotStart);
        }
        started.push_back(program + " in " + folder.path() + "|" + tail);
        return started.size();
    }
    std::uint32_t processNumber(platform::ProgramId program) override { return static_cast<std::uint32_t>(program); }
    std::unique_ptr<platform::SettingsStore> settings() override { return std::make_unique<SharedSettings>(store); }
    void log(Severity, const std::string& line) noexcept override { lines.push_back(line); }
    void notify(const std::string& text) noexcept override { notifications.push_back(text); }
    void tell(const std::string& text) override { told.push_back(text); }
    std::string identity() override { return "ich"; }
    std::string startWithSession(bool on) override {
        startsWithSession = on;
        return {};
    }

private:
    FakeSystem& system_;
    std::size_t moment_ = 0;
    bool stopped_ = false;
};

}  // namespace testing_support
