#include "preview/page_starts.h"

#include <algorithm>
#include <iterator>

namespace preview {

const report::PageStart& PageStarts::of(std::size_t page) const {
    const auto behind = std::upper_bound(changes_.begin(), changes_.end(), page,
                                         [](std::size_t number, const Change& change) { return number < change.page; });
    return std::prev(behind)->start;
}

void PageStarts::addNext(const report::PageStart& start) {
    ++reached_;
    if (changes_.back().start != start) {
        changes_.push_back({reached_, start});
    }
}

}  // namespace preview
