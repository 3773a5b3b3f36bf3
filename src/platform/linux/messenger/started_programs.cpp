#include "platform/linux/messenger/started_programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include "platform/linux/argument_pointers.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/messenger/command_arguments.h"
#include "platform/linux/messenger/spawn_surroundings.h"
#include "platform/linux/starter.h"

namespace platform_linux::messenger {

namespace {

using platform::MessengerEvent;

// The descriptor under which a program finds the end of the pipe that it writes to.
constexpr int wordDescriptor = STDERR_FILENO + 1;

std::vector<std::string> environment() {
    const std::string starter = std::string(starterVariable) + "=";
    std::vector<std::string> result{starter + std::to_string(wordDescriptor)};
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (!std::string_view(*variable).starts_with(starter)) {
            result.emplace_back(*variable);
        }
    }
    return result;
}

std::string how(int status) {
    if (WIFSIGNALED(status)) {
        const char* name = ::sigabbrev_np(WTERMSIG(status));
        return "Signal " + std::to_string(WTERMSIG(status)) +
               (name != nullptr ? std::string(" (SIG") + name + ")" : "");
    }
    return WEXITSTATUS(status) == 0 ? "" : "Rückgabewert " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

StartedPrograms::Program::Program(platform::ProgramId id, FileDescriptor word, EventQueue& queue)
    : id_(id), word_(std::move(word)), queue_(queue) {
    queue_.add(word_.get(), *this);
}

StartedPrograms::Program::~Program() { queue_.remove(word_.get()); }

void StartedPrograms::Program::take(std::vector<MessengerEvent>& events) {
    std::array<char, 16> word{};
    const ssize_t count = word_ ? ::read(word_.get(), word.data(), word.size()) : -1;
    if (count > 0 && !std::exchange(told_, true)) {
        events.push_back({.kind = MessengerEvent::Kind::completionWritten, .program = id_, .how = {}});
    }
    if (count == 0) {
        queue_.remove(word_.get());
        word_.close();
    }
}

// Nothing can fail any more behind the start itself: what is said not to have been started never was.
platform::ProgramId StartedPrograms::start(const std::string& program, const std::string& folder,
                                           const std::string& tail) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throwFileError(errno, program);
    }
    FileDescriptor reading(ends[0]);
    const FileDescriptor writing(ends[1]);
    SpawnSurroundings surroundings;
    surroundings.folder(folder);
    surroundings.descriptor(writing.get(), wordDescriptor);
    surroundings.noneFrom(wordDescriptor + 1);
    std::vector<std::string> arguments = argumentsOf(tail);
    arguments.insert(arguments.begin(), program);
    std::vector<std::string> variables = environment();
    const std::vector<char*> argumentPointers = pointersTo(arguments);
    const std::vector<char*> variablePointers = pointersTo(variables);
    const platform::ProgramId id = ++last_;
    const auto entry = programs_.emplace(id, std::make_unique<Program>(id, std::move(reading), queue_)).first;
    pid_t number = 0;
    const int error = ::posix_spawn(&number, program.c_str(), surroundings.files(), surroundings.attributes(),
                                    argumentPointers.data(), variablePointers.data());
    if (error != 0) {
        programs_.erase(entry);
        const bool folderMissing = error == ENOENT && ::access(folder.c_str(), F_OK) != 0;
        throwFileError(folderMissing ? ENOTDIR : error, folderMissing ? folder : program);
    }
    entry->second->number(number);
    return id;
}

pid_t StartedPrograms::processNumber(platform::ProgramId program) const {
    const auto found = programs_.find(program);
    return found != programs_.end() ? found->second->number() : 0;
}

void StartedPrograms::takeEnded(std::vector<MessengerEvent>& events) {
    for (auto at = programs_.begin(); at != programs_.end();) {
        int status = 0;
        const pid_t ended = ::waitpid(at->second->number(), &status, WNOHANG);
        if (ended == 0 || (ended < 0 && errno == EINTR)) {
            ++at;
            continue;
        }
        at->second->take(events);  // its last word
        events.push_back({.kind = MessengerEvent::Kind::programEnded,
                          .program = at->first,
                          .how = ended > 0 ? how(status) : std::string()});
        at = programs_.erase(at);
    }
}

}  // namespace platform_linux::messenger
