#include "platform/linux/messenger/event_queue.h"

#include <sys/epoll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>

#include "platform/linux/linux_error.h"

namespace platform_linux::messenger {

EventQueue::EventQueue() : queue_(::epoll_create1(EPOLL_CLOEXEC)) {
    if (!queue_) {
        throwFileError(errno, "");
    }
}

void EventQueue::add(int descriptor, EventSource& source) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.ptr = &source;
    if (::epoll_ctl(queue_.get(), EPOLL_CTL_ADD, descriptor, &event) != 0) {
        throwFileError(errno, "");
    }
}

void EventQueue::remove(int descriptor) noexcept {
    epoll_event unused{};
    ::epoll_ctl(queue_.get(), EPOLL_CTL_DEL, descriptor, &unused);
}

std::vector<EventSource*> EventQueue::wait(std::chrono::milliseconds atMost) {
    constexpr std::size_t mostAtOnce = 64;
    constexpr std::chrono::milliseconds::rep longest = std::numeric_limits<int>::max();
    std::array<epoll_event, mostAtOnce> events{};
    const auto time = static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(atMost.count(), 0, longest));
    const int count = ::epoll_wait(queue_.get(), events.data(), static_cast<int>(events.size()), time);
    std::vector<EventSource*> sources;
    sources.reserve(events.size());
    for (int i = 0; i < count; ++i) {
        sources.push_back(static_cast<EventSource*>(events[static_cast<std::size_t>(i)].data.ptr));
    }
    return sources;
}

}  // namespace platform_linux::messenger
