#include "platform/linux/pdf/compression_workers.h"

#include <sched.h>

#include <algorithm>
#include <csignal>
#include <new>
#include <optional>
#include <system_error>

namespace platform_linux::pdf {

namespace {

// Signals are for the thread that the program began with; a thread has the mask of the one that starts it. Those of its
// own faults come nevertheless.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
            ::sigdelset(&all, fault);
        }
        ::pthread_sigmask(SIG_BLOCK, &all, &before_);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_{};
};

}  // namespace

int usualWorkers() {
    constexpr int most = 4;
    cpu_set_t processors;
    CPU_ZERO(&processors);
    const bool known = ::sched_getaffinity(0, sizeof processors, &processors) == 0;
    return known ? std::clamp(CPU_COUNT(&processors) - 1, 0, most) : 0;
}

CompressionWorkers::CompressionWorkers(int count) {
    const SignalsBlocked blocked;
    try {
        begun_.reserve(static_cast<std::size_t>(count));
        for (int number = 0; number < count; ++number) {
            threads_.emplace_back([this] { work(); });
        }
    } catch (const std::system_error&) {  // those that there are have to do
    } catch (const std::bad_alloc&) {
    }
}

CompressionWorkers::~CompressionWorkers() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    handedOver_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

void CompressionWorkers::handOver(PageBatch& batch) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(&batch);
    }
    handedOver_.notify_one();
}

PageBatch* CompressionWorkers::takeBack() {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty()) {
        return nullptr;
    }
    PageBatch* batch = waiting_.front();
    waiting_.pop_front();
    return batch;
}

bool CompressionWorkers::done(const PageBatch& batch) const {
    const std::lock_guard lock(mutex_);
    return std::ranges::find(waiting_, &batch) == waiting_.end() && std::ranges::find(begun_, &batch) == begun_.end();
}

void CompressionWorkers::waitFor(const PageBatch& batch) {
    std::unique_lock lock(mutex_);
    done_.wait(lock, [&] { return std::ranges::find(begun_, &batch) == begun_.end(); });
}

void CompressionWorkers::work() {
    std::optional<Deflater> deflater;
    std::unique_lock lock(mutex_);
    while (true) {
        handedOver_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        if (ending_) {
            return;
        }
        PageBatch* batch = waiting_.front();
        begun_.push_back(batch);
        waiting_.pop_front();
        lock.unlock();
        try {
            if (!deflater) {
                deflater.emplace();
            }
            batch->compress(*deflater);
        } catch (const std::bad_alloc&) {  // the document's thread tries it again, and tells
        }
        lock.lock();
        std::erase(begun_, batch);
        done_.notify_one();
    }
}

}  // namespace platform_linux::pdf
