// Contents of some pages, compressed together: one hand-over to another thread for many of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/pdf/deflater.h"

namespace platform_linux::pdf {

struct PageSize {
    double widthPoints = 0;
    double heightPoints = 0;
};

class PageBatch {
public:
    // Where a hand-over costs little beside the work, and a page does not wait for long.
    static constexpr std::size_t usualBytes = std::size_t{64} << 10;

    void add(std::string_view content, const PageSize& size);
    bool full() const { return contents_.size() >= usualBytes; }
    bool empty() const { return pages_.empty(); }
    void clear();

    // Compresses each content by itself. Throws std::bad_alloc; the batch may then be compressed again.
    void compress(Deflater& deflater);
    bool compressed() const { return compressed_; }

    // The pages in their order: write(compressed content, size), after compress().
    template <typename Write>
    void forEach(const Write& write) const {
        std::size_t begin = 0;
        for (const Page& page : pages_) {
            write(std::string_view(result_).substr(begin, page.resultEnd - begin), page.size);
            begin = page.resultEnd;
        }
    }

private:
    struct Page {
        std::size_t contentEnd = 0;
        std::size_t resultEnd = 0;
        PageSize size;
    };

    std::string contents_;
    std::string result_;
    std::vector<Page> pages_;
    bool compressed_ = false;
};

}  // namespace platform_linux::pdf
