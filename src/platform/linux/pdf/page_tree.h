// The pages of a document as a tree of two levels (ISO 32000-1, 7.7.3); of a full branch only its number is kept.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/pdf/object_writer.h"

namespace platform_linux::pdf {

class PageTree {
public:
    explicit PageTree(ObjectWriter& writer);

    int root() const noexcept { return root_; }

    // Writes a page object. Most pages of a document share one size: it is written once, at the root.
    void addPage(double widthPoints, double heightPoints, int content);

    // Writes what is left of the tree; every page has these resources.
    void finish(int resources);

private:
    void writeBranch();

    ObjectWriter& writer_;
    int root_;
    int pageCount_ = 0;
    std::string mediaBox_;       // of the first page
    std::string text_;           // reused
    std::string pageBox_;        // reused
    std::vector<int> branches_;  // object numbers of all branches, the one being filled included
    std::vector<int> leaves_;    // object numbers of the pages of the branch being filled
};

}  // namespace platform_linux::pdf
