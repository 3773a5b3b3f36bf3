#include "platform/linux/linux_system.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/linux/c_string.h"
#include "platform/linux/desktop.h"
#include "platform/linux/drives.h"
#include "platform/linux/files.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/known_facts.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/linux_locale.h"
#include "platform/linux/local_time.h"
#include "platform/linux/module.h"
#include "platform/linux/paths.h"
#include "platform/linux/profile_text.h"
#include "platform/linux/screen/screen.h"
#include "runtime/text.h"
#include "runtime/whole_number.h"

namespace platform_linux {

namespace {

constexpr int usualDpi = 96;

const char* environment(const char* name) { return ::getenv(name); }

int codePageOfSettings(platform::SettingsStore& settings) {
    const auto value = settings.value(platform::SettingsRoot::localMachine,
                                      R"(SYSTEM\CurrentControlSet\Control\Nls\CodePage)", "OEMCP");
    if (!value) {
        return 0;
    }
    if (const auto* text = std::get_if<std::string>(&*value)) {
        return runtime::wholeNumber<int>(*text).value_or(0);
    }
    constexpr std::uint32_t largest = 0xFFFF;
    const std::uint32_t number = std::get<std::uint32_t>(*value);
    return number <= largest ? static_cast<int>(number) : 0;
}

std::string orThrow(ResolvedPath file) {
    if (file.error != 0) {
        throwFileError(file.error, file.path);
    }
    return std::move(file.path);
}

// What a call about the file gives; memory that there is not is an error of the file.
template <typename Call>
void orThrow(const ResolvedPath& file, const Call& call) {
    int error = file.error;
    try {
        error = error != 0 ? error : call();
    } catch (const std::bad_alloc&) {
        error = ENOMEM;
    } catch (const std::length_error&) {
        error = ENOMEM;
    }
    if (error != 0) {
        throwFileError(error, file.path);
    }
}

class LinuxFileReader : public platform::FileReader {
public:
    explicit LinuxFileReader(ResolvedPath path) : path_(std::move(path)) {
        orThrow(path_, [this] { return file_.open(path_.path); });
    }
    std::uint64_t size() const override { return file_.size(); }
    bool read(std::string& to, std::size_t atMost) override {
        const std::size_t before = to.size();
        orThrow(path_, [&] {
            if (!std::exchange(begun_, true)) {
                file_.makeRoom(to);
            }
            return file_.read(to, atMost);
        });
        return to.size() > before;
    }
    bool unchanged() const override { return file_.unchanged(); }

private:
    ResolvedPath path_;
    ReadableFile file_;
    bool begun_ = false;
};

// As a shell takes it for one word, whatever it holds (POSIX.1-2017, Shell Command Language, section 2.2.2).
std::string inQuotes(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string(R"('\'')") : std::string(1, c);
    }
    return result + "'";
}

// A folder on the way that went away, or never was one, is no missing file.
int writeError(int error) { return error == ENOENT ? ENOTDIR : error; }

}  // namespace

LinuxSystem::LinuxSystem(int argumentCount, const char* const* arguments, platform::SettingsStore& settings)
    : argumentCount_(argumentCount), arguments_(arguments), settings_(settings) {}

std::string LinuxSystem::commandTail() {
    std::string tail;
    for (int i = 1; i < argumentCount_; ++i) {
        const std::string_view argument = arguments_[i];
        const bool quoted = argument.find('"') != std::string_view::npos;
        const bool needsQuotes = !quoted && (argument.empty() || argument.find(' ') != std::string_view::npos);
        const std::string_view quote = needsQuotes ? "\"" : "";
        tail += i > 1 ? " " : "";
        tail.append(quote).append(argument).append(quote);
    }
    return tail;
}

std::string LinuxSystem::programDirectory() {
    const std::string file = programFile();
    const std::size_t slash = file.rfind('/');
    return slash == 0 ? "/" : file.substr(0, slash == std::string::npos ? 0 : slash);
}

std::string LinuxSystem::programFileName() {
    const std::string file = programFile();
    return file.substr(file.rfind('/') + 1);
}

std::string LinuxSystem::currentDirectory() {
    const CString folder(::getcwd(nullptr, 0));
    if (!folder) {
        throwFileError(errno == ENOENT ? ENOTDIR : errno, ".");
    }
    return folder.get();
}

void LinuxSystem::changeDirectory(const std::string& folder) {
    if (::chdir(folder.c_str()) != 0) {
        throwFileError(errno == ENOENT ? ENOTDIR : errno, folder);
    }
}

std::string LinuxSystem::userName() {
    const passwd* user = ::getpwuid(::geteuid());
    return user != nullptr && user->pw_name != nullptr ? user->pw_name : "";
}

std::string LinuxSystem::readFile(const std::string& path) {
    const ResolvedPath file = findPath(nativePath(path));
    std::string content;
    orThrow(file, [&] { return readWholeFile(file.path, content); });
    return content;
}

std::unique_ptr<platform::FileReader> LinuxSystem::openToRead(const std::string& path) {
    return std::make_unique<LinuxFileReader>(findPath(nativePath(path)));
}

std::uint64_t LinuxSystem::fileSize(const std::string& path) {
    const ResolvedPath file = findPath(nativePath(path));
    struct stat status {};
    const bool known = file.error == 0 && ::stat(file.path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return known ? static_cast<std::uint64_t>(status.st_size) : 0;
}

void LinuxSystem::writeFile(const std::string& path, std::string_view content) {
    const std::string file = orThrow(findFileToReplace(nativePath(path)));
    if (const int error = replaceFile(file, content, {.orInPlace = true}); error != 0) {
        throwFileError(writeError(error), file);
    }
}

void LinuxSystem::rewriteFile(const std::string& path, std::string_view content) {
    const ResolvedPath file = findPath(nativePath(path));
    if (const int error = file.error != 0 ? file.error : platform_linux::rewriteFile(file.path, content); error != 0) {
        throwFileError(error, file.path);
    }
}

void LinuxSystem::appendFile(const std::string& path, std::string_view content) {
    const std::string file = orThrow(findFolderOf(nativePath(path)));
    if (const int error = appendToFile(file, content); error != 0) {
        throwFileError(writeError(error), file);
    }
}

std::unique_ptr<platform::Profile> LinuxSystem::openProfile(const std::string& path) {
    constexpr std::size_t most = std::size_t{1} << 20;
    std::string content;
    const ResolvedPath file = findPath(nativePath(path));
    const int error = file.error != 0 ? file.error : readStartOfFile(file.path, most, content);
    const bool missing = error == ENOENT || error == ENOTDIR;
    return std::make_unique<ProfileText>(
        std::move(content), error == 0 || missing ? std::string() : file.path + " (" + errorReason(error) + ")");
}

bool LinuxSystem::fileExists(const std::string& path) {
    const ResolvedPath file = findPath(nativePath(path));
    struct stat status {};
    return file.error == 0 && ::stat(file.path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

void LinuxSystem::removeFile(const std::string& path) {
    const ResolvedPath file = findPath(nativePath(path));
    int error = file.error;
    if (error == 0 && ::unlink(file.path.c_str()) != 0) {
        error = errno;
    }
    if (error != 0 && error != ENOENT && error != ENOTDIR) {
        throwFileError(error, file.path);
    }
}

bool LinuxSystem::wouldReplace(const std::string& written, const std::string& path) {
    const ResolvedPath reached = findPath(nativePath(path));
    const CString file(reached.error == 0 ? ::realpath(reached.path.c_str(), nullptr) : nullptr);
    // Most files have other names, and the folder need not be read for them.
    if (!file ||
        runtime::upperCase(runtime::fileNameOf(file.get())) != runtime::upperCase(runtime::fileNameOf(written))) {
        return false;
    }
    struct stat one {};
    struct stat other {};
    return ::stat(file.get(), &one) == 0 && ::lstat(findFileToReplace(nativePath(written)).path.c_str(), &other) == 0 &&
           one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

std::string LinuxSystem::fileNamed(const std::string& name) {
    const std::optional<std::string> bytes = toWindows1252(name);
    if (!bytes || *bytes == name || fileExists(name)) {
        return name;
    }
    std::string ofHost = textOf(*bytes, codePage());
    if (fileExists(ofHost)) {
        return ofHost;
    }
    return fileExists(*bytes) ? *bytes : name;  // the disk may be the host's, too
}

std::string LinuxSystem::nativePath(const std::string& path) { return withoutDrive(path, settings_); }

runtime::DateTime LinuxSystem::localTime() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return localTimeOf(now);
}

const runtime::Locale& LinuxSystem::locale() {
    if (!locale_) {
        locale_ = localeOf(localeNames(environment));
    }
    return *locale_;
}

std::string LinuxSystem::toSystemCodePage(std::string_view text) { return std::string(text); }

std::string LinuxSystem::fromDosCodePage(std::string_view bytes) { return textOf(bytes, codePage()); }

void LinuxSystem::sleep(int milliseconds) {
    constexpr int perSecond = 1000;
    constexpr long nanosecondsPerMillisecond = 1'000'000;
    if (milliseconds <= 0) {
        return;
    }
    timespec left{milliseconds / perSecond, (milliseconds % perSecond) * nanosecondsPerMillisecond};
    while (::nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

std::int64_t LinuxSystem::elapsedMilliseconds() {
    using std::chrono::steady_clock;
    return std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
}

std::string LinuxSystem::shellCommand(const std::string& folder, const std::vector<std::string>& arguments) {
    std::string command = "cd " + inQuotes(folder) + " && " + inQuotes(programFile());
    for (const std::string& argument : arguments) {
        command += ' ' + inQuotes(argument);
    }
    return command;
}

int LinuxSystem::dosCodePageNumber() {
    if (!codePageNumber_) {
        const char* variable = environment("KRVWINPR_CODEPAGE");
        int number = variable != nullptr ? runtime::wholeNumber<int>(variable).value_or(0) : 0;
        if (!isDosCodePage(number)) {
            number = codePageOfSettings(settings_);
        }
        codePageNumber_ = isDosCodePage(number) ? number : dosCodePageOf(localeNames(environment).characters);
        knownFacts().dosCodePage = *codePageNumber_;
    }
    return *codePageNumber_;
}

const CodePage& LinuxSystem::codePage() {
    if (!codePage_) {
        codePage_ = dosCodePage(dosCodePageNumber());
    }
    return *codePage_;
}

// An answer that is of no use is one all the same.
void LinuxSystem::askScreen(std::chrono::milliseconds limit) {
    constexpr int least = 24;
    constexpr int most = 2400;
    std::optional<int> answer = usualDpi;
    if (isSet("DISPLAY")) {
        const auto ask = [] { return reinterpret_cast<screen::ScreenDpi>(moduleEntry("screen"))(); };
        answer = forkedCall(ask, limit);
    }
    if (answer) {
        screenDpi_ = *answer >= least && *answer <= most ? *answer : usualDpi;
        knownFacts().screenDpi = *screenDpi_;
    }
}

bool LinuxSystem::screenAnswers() {
    constexpr std::chrono::milliseconds limit{100};
    if (!screenDpi_) {
        askScreen(limit);
    }
    return screenDpi_.has_value();
}

int LinuxSystem::screenDpi() {
    constexpr std::chrono::seconds limit{2};
    if (!screenDpi_) {
        askScreen(limit);
    }
    if (!screenDpi_) {
        screenDpi_ = usualDpi;
    }
    return *screenDpi_;
}

}  // namespace platform_linux
