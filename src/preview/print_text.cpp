#include "preview/print_text.h"

#include <algorithm>
#include <utility>

#include "runtime/error.h"

namespace preview {

PrintText::PrintText(platform::System& system, std::string path, std::size_t piece)
    : system_(&system), path_(std::move(path)), piece_(piece), reader_(system.openToRead(path_)) {
    while (!complete() && (text_.size() < piece_ || pages_.count() == 0)) {
        readOn();
    }
}

bool PrintText::readOn() {
    if (complete() || readPiece()) {
        return true;
    }
    readAnew();
    return false;
}

bool PrintText::readPiece() {
    try {
        const bool isMore = reader_->read(text_, piece_);
        if (!isMore && !reader_->unchanged()) {
            return false;
        }
        pages_.cutOn(text_, !isMore);
        if (!isMore) {
            reader_.reset();
        }
        return true;
    } catch (const runtime::Error&) {
        // Whether it is one that passes, reading anew will tell.
        return false;
    }
}

void PrintText::readAnew() {
    reader_.reset();
    pages_ = {};
    std::string().swap(text_);
    text_ = system_->readFile(path_);
    pages_.cutOn(text_, true);
}

std::uint64_t PrintText::fileSize() const {
    return std::max<std::uint64_t>(text_.size(), reader_ ? reader_->size() : 0);
}

}  // namespace preview
