#include "platform/linux/pdf/page_tree.h"

#include "platform/linux/pdf/number_text.h"

namespace platform_linux::pdf {

namespace {

constexpr std::size_t pagesPerBranch = 128;

void appendKids(std::string& text, const std::vector<int>& kids) {
    text += "/Kids[";
    for (const int kid : kids) {
        appendReference(text, kid);
        text += ' ';
    }
    if (!kids.empty()) {
        text.pop_back();
    }
    text += ']';
}

}  // namespace

PageTree::PageTree(ObjectWriter& writer, ResourcesOf owner)
    : writer_(writer), root_(writer.allocate()), resources_(writer.allocate()) {
    std::string& entry = owner == ResourcesOf::page ? pageResources_ : treeResources_;
    entry = "/Resources ";
    appendReference(entry, resources_);
}

void PageTree::addPage(double widthPoints, double heightPoints, int content) {
    pageBox_ = "/MediaBox[0 0 ";
    appendReal(pageBox_, widthPoints, 3);
    pageBox_ += ' ';
    appendReal(pageBox_, heightPoints, 3);
    pageBox_ += ']';
    if (mediaBox_.empty()) {
        mediaBox_ = pageBox_;
    }
    if (leaves_.empty()) {
        branches_.push_back(writer_.allocate());
    }
    text_ = "<</Type/Page/Parent ";
    appendReference(text_, branches_.back());
    if (pageBox_ != mediaBox_) {
        text_ += pageBox_;
    }
    text_ += pageResources_;
    text_ += "/Contents ";
    appendReference(text_, content);
    text_ += ">>";
    leaves_.push_back(writer_.allocate());
    writer_.object(leaves_.back(), text_);
    ++pageCount_;
    if (leaves_.size() == pagesPerBranch) {
        writeBranch();
    }
}

void PageTree::writeBranch() {
    text_ = "<</Type/Pages/Parent ";
    appendReference(text_, root_);
    text_ += "/Count ";
    appendInteger(text_, static_cast<std::int64_t>(leaves_.size()));
    appendKids(text_, leaves_);
    text_ += ">>";
    writer_.object(branches_.back(), text_);
    leaves_.clear();
}

void PageTree::finish() {
    if (!leaves_.empty()) {
        writeBranch();
    }
    text_ = "<</Type/Pages/Count ";
    appendInteger(text_, pageCount_);
    text_ += mediaBox_ + treeResources_;
    appendKids(text_, branches_);
    text_ += ">>";
    writer_.object(root_, text_);
}

}  // namespace platform_linux::pdf
