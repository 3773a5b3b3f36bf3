#include "platform/linux/pdf/page_batch.h"

namespace platform_linux::pdf {

void PageBatch::add(std::string_view content, const PageSize& size) {
    contents_.append(content);
    pages_.push_back({contents_.size(), 0, size});
}

void PageBatch::clear() {
    contents_.clear();
    result_.clear();
    pages_.clear();
    compressed_ = false;
}

void PageBatch::compress(Deflater& deflater) {
    result_.clear();
    std::size_t begin = 0;
    for (Page& page : pages_) {
        result_.append(deflater.compress(std::string_view(contents_).substr(begin, page.contentEnd - begin)));
        begin = page.contentEnd;
        page.resultEnd = result_.size();
    }
    compressed_ = true;
}

}  // namespace platform_linux::pdf
