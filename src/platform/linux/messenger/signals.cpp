#include "platform/linux/messenger/signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/linux_error.h"

namespace platform_linux::messenger {

namespace {

bool isIgnored(int number) {
    struct sigaction action {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

Signals::Signals(EventQueue& queue) : queue_(queue) {
    ::signal(SIGCHLD, SIG_DFL);  // whoever lets it be ignored never hears how a program ended
    sigset_t wanted;
    ::sigemptyset(&wanted);
    ::sigaddset(&wanted, SIGCHLD);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        if (!isIgnored(number)) {
            ::sigaddset(&wanted, number);
        }
    }
    signals_ = FileDescriptor(::signalfd(-1, &wanted, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!signals_) {
        throwFileError(errno, "");
    }
    queue_.add(signals_.get(), *this);
    ::sigprocmask(SIG_BLOCK, &wanted, &before_);
}

Signals::~Signals() {
    queue_.remove(signals_.get());
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void Signals::take(std::vector<platform::MessengerEvent>& events) {
    signalfd_siginfo signal{};
    while (::read(signals_.get(), &signal, sizeof(signal)) == sizeof(signal)) {
        if (signal.ssi_signo == SIGCHLD) {
            childEnded_ = true;
        } else {
            events.push_back({.kind = platform::MessengerEvent::Kind::stop, .how = {}});
        }
    }
}

}  // namespace platform_linux::messenger
