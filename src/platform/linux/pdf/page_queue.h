// Finished pages on their way into the file: compressed, beside the drawing of those behind them where that pays, and
// written in their order.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/linux/pdf/compression_workers.h"
#include "platform/linux/pdf/deflater.h"
#include "platform/linux/pdf/page_batch.h"

namespace platform_linux::pdf {

// What is written is the same with any number of workers. A limited number of pages waits, of a limited size. Throws
// what writing throws, and std::bad_alloc, as a runtime::Error that names the page; some pages behind it, in drain() at
// the latest.
class PageQueue {
public:
    using Write = std::function<void(std::string_view compressed, const PageSize& size)>;

    // Threads are started behind the first pages only, because most jobs have no more.
    static constexpr int pagesWithoutWorkers = 12;

    // Workers as in PdfSettings.
    PageQueue(int workers, Write write) : wantedWorkers_(workers), write_(std::move(write)) {}

    void add(std::string_view content, const PageSize& size);

    // Writes all that wait.
    void drain();

private:
    bool compressesBeside(std::size_t contentSize);
    std::unique_ptr<PageBatch> spareBatch();
    void handOver();
    void writeDone();
    void compressOne();
    void writeNow(std::string_view compressed, const PageSize& size);

    int wantedWorkers_;
    Write write_;
    Deflater deflater_;
    int pagesAdded_ = 0;
    int pagesWritten_ = 0;
    std::unique_ptr<PageBatch> filling_;
    std::deque<std::unique_ptr<PageBatch>> underWay_;  // handed over, in the pages' order
    std::vector<std::unique_ptr<PageBatch>> spare_;
    std::unique_ptr<CompressionWorkers> workers_;  // ends before what it works on
};

}  // namespace platform_linux::pdf
