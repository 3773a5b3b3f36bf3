#include "platform/linux/pdf/page_queue.h"

#include <new>
#include <string>
#include <utility>

#include "runtime/error.h"

namespace platform_linux::pdf {

namespace {

// A page larger than this is compressed where it was drawn: no memory for several of its kind.
constexpr std::size_t largePage = std::size_t{1} << 20;

template <typename Compress>
auto orTellPage(int page, const Compress& compress) {
    try {
        return compress();
    } catch (const std::bad_alloc&) {
        throw runtime::Error(runtime::errOutOfMemory, "Der Speicher reicht nicht, um Seite " + std::to_string(page) +
                                                          " in die PDF-Datei zu schreiben.");
    }
}

}  // namespace

void PageQueue::add(std::string_view content, const PageSize& size) {
    ++pagesAdded_;
    if (!compressesBeside(content.size())) {
        drain();
        writeNow(orTellPage(pagesAdded_, [&] { return deflater_.compress(content); }), size);
        return;
    }
    orTellPage(pagesAdded_, [&] {
        if (!filling_) {
            filling_ = spareBatch();
        }
        filling_->add(content, size);
        if (filling_->full()) {
            handOver();
        }
    });
    writeDone();
    while (underWay_.size() > workers_->count() + 2) {
        compressOne();
    }
}

bool PageQueue::compressesBeside(std::size_t contentSize) {
    if (wantedWorkers_ == 0 || pagesAdded_ <= pagesWithoutWorkers || contentSize > largePage) {
        return false;
    }
    if (workers_ == nullptr) {
        workers_ = std::make_unique<CompressionWorkers>(wantedWorkers_ < 0 ? usualWorkers() : wantedWorkers_);
    }
    return workers_->count() > 0;
}

std::unique_ptr<PageBatch> PageQueue::spareBatch() {
    if (spare_.empty()) {
        return std::make_unique<PageBatch>();
    }
    std::unique_ptr<PageBatch> batch = std::move(spare_.back());
    spare_.pop_back();
    return batch;
}

void PageQueue::handOver() {
    underWay_.push_back(std::move(filling_));
    workers_->handOver(*underWay_.back());
}

// One that nobody has begun, here; where there is none, the first one is waited for.
void PageQueue::compressOne() {
    PageBatch* batch = workers_->takeBack();
    if (batch == nullptr) {
        workers_->waitFor(*underWay_.front());
    } else {
        orTellPage(pagesWritten_ + 1, [&] { batch->compress(deflater_); });
    }
    writeDone();
}

void PageQueue::writeDone() {
    while (!underWay_.empty() && workers_->done(*underWay_.front())) {
        PageBatch& batch = *underWay_.front();
        if (!batch.compressed()) {
            orTellPage(pagesWritten_ + 1, [&] { batch.compress(deflater_); });
        }
        batch.forEach([this](std::string_view compressed, const PageSize& size) { writeNow(compressed, size); });
        batch.clear();
        spare_.push_back(std::move(underWay_.front()));
        underWay_.pop_front();
    }
}

void PageQueue::drain() {
    if (filling_ && !filling_->empty()) {
        handOver();
    }
    while (!underWay_.empty()) {
        compressOne();
    }
}

void PageQueue::writeNow(std::string_view compressed, const PageSize& size) {
    ++pagesWritten_;
    write_(compressed, size);
}

}  // namespace platform_linux::pdf
