// How each page begins that was passed.
#pragma once

#include <cstddef>
#include <vector>

#include "report/page_passing.h"

namespace preview {

// Takes room for what changes from page to page only.
class PageStarts {
public:
    PageStarts() = default;
    explicit PageStarts(const report::PageStart& first) : reached_(1), changes_{{1, first}} {}

    // The last page that is known, from 1; 0 for none.
    std::size_t reached() const { return reached_; }
    // Of a page that is not beyond it.
    const report::PageStart& of(std::size_t page) const;
    void addNext(const report::PageStart& start);

private:
    struct Change {
        std::size_t page = 0;
        report::PageStart start;
    };

    std::size_t reached_ = 0;
    std::vector<Change> changes_;
};

}  // namespace preview
