// The pages of a document as a tree of two levels (ISO 32000-1, 7.7.3); of a full branch only its number is kept.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/pdf/object_writer.h"

namespace platform_linux::pdf {

// Whose the resources are that all pages have: the tree's, or each page's own, as archives want it (ISO
// 19005-2, 6.2.2).
enum class ResourcesOf { tree, page };

class PageTree {
public:
    PageTree(ObjectWriter& writer, ResourcesOf owner);

    int root() const noexcept { return root_; }
    // The number of the resources, for whoever writes them.
    int resources() const noexcept { return resources_; }

    // Writes a page object. Most pages of a document share one size: it is written once, at the root.
    void addPage(double widthPoints, double heightPoints, int content);

    // Writes what is left of the tree.
    void finish();

private:
    void writeBranch();

    ObjectWriter& writer_;
    int root_;
    int resources_;
    std::string treeResources_;  // the entry, of the root or of each page
    std::string pageResources_;
    int pageCount_ = 0;
    std::string mediaBox_;       // of the first page
    std::string text_;           // reused
    std::string pageBox_;        // reused
    std::vector<int> branches_;  // object numbers of all branches, the one being filled included
    std::vector<int> leaves_;    // object numbers of the pages of the branch being filled
};

}  // namespace platform_linux::pdf
