// Threads that compress batches of pages while the document's own thread draws the next ones.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/linux/pdf/page_batch.h"

namespace platform_linux::pdf {

// How many pay on this machine: one for each processor that the process may use beside its own, at most four.
int usualWorkers();

// The document's thread hands batches over and gets them back; each belongs to one thread at a time. A worker takes no
// signals, and ends with the object: a batch that it has begun it finishes before.
class CompressionWorkers {
public:
    // As many as can be had of so many; perhaps none.
    explicit CompressionWorkers(int count);
    CompressionWorkers(const CompressionWorkers&) = delete;
    CompressionWorkers& operator=(const CompressionWorkers&) = delete;
    ~CompressionWorkers();

    std::size_t count() const { return threads_.size(); }

    // The batch must stay where it is until it is done.
    void handOver(PageBatch& batch);
    // Takes back the batch that has waited longest and nobody has begun; null where there is none.
    PageBatch* takeBack();
    // Whether nobody works on the batch any more. It is not compressed then where there was no memory for that.
    bool done(const PageBatch& batch) const;
    void waitFor(const PageBatch& batch);

private:
    void work();

    mutable std::mutex mutex_;
    std::condition_variable handedOver_;
    std::condition_variable done_;
    std::deque<PageBatch*> waiting_;
    std::vector<const PageBatch*> begun_;
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace platform_linux::pdf
