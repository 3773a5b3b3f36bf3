#include "preview/page_text_recorder.h"

#include <algorithm>
#include <iterator>
#include <variant>

namespace preview {

using platform::drawing::Area;
using platform::drawing::PageRecording;

void PlainText::textRun(std::string_view run) {
    if (returned_ && lineBegun_) {
        *text_ += '\n';
    }
    *text_ += run;
    returned_ = false;
    lineBegun_ = true;
}

void PlainText::lineFeed() {
    *text_ += '\n';
    returned_ = false;
    lineBegun_ = false;
}

void PageTextRecorder::begin(const PreviewDocument& document) {
    document_ = &document;
    plain_.clear();
    plainText_ = PlainText(plain_);
    text_ = {};
    line_.clear();
    returned_ = false;
    cells_ = 0;
}

PageText PageTextRecorder::take() {
    endLine();
    return std::move(text_);
}

// The run itself is drawn last, over its effects.
void PageTextRecorder::textRun(std::string_view run) {
    plainText_.textRun(run);
    const auto& steps = document_->pageSurface().recording().steps();
    if (!steps.empty()) {
        if (const auto* drawn = std::get_if<PageRecording::Text>(&steps.back())) {
            addCells(*drawn, run, plain_.size() - run.size());
        }
    }
}

void PageTextRecorder::lineFeed() {
    plainText_.lineFeed();
    endLine();
}

void PageTextRecorder::carriageReturn() {
    plainText_.carriageReturn();
    endLine();
    returned_ = true;
}

// What is beyond the sheet cannot be seen, nor selected.
void PageTextRecorder::addCells(const PageRecording::Text& drawn, std::string_view run, std::size_t place) {
    constexpr std::size_t mostCells = 200'000;
    const PageSurface& surface = document_->pageSurface();
    const Area sheet = platform::drawing::sheetOf(surface.capabilities());
    const std::int64_t height = surface.textHeight();
    std::int64_t x = drawn.x;
    for (std::size_t i = 0; i < run.size() && x < sheet.across.end && cells_ < mostCells; ++i) {
        const std::int64_t width = surface.textWidth(run.substr(i, 1));
        const Area area{{x, x + width}, {drawn.y, drawn.y + height}};
        if (!intersection(area, sheet).empty()) {
            line_.push_back({static_cast<unsigned char>(run[i]), area, place + i});
            ++cells_;
        }
        x += width;
    }
}

// Blanks alone are no line. Text that is printed twice in the same place, to be bold, is there once.
void PageTextRecorder::endLine() {
    const auto samePlace = [](const TextCell& one, const TextCell& other) {
        return one.byte == other.byte && one.area.across.start == other.area.across.start &&
               one.area.down.start == other.area.down.start;
    };
    const auto inLineBefore = [&](const TextCell& cell) {
        const std::vector<TextCell>& before = text_.lines.back();
        const auto found = std::lower_bound(before.begin(), before.end(), cell, [](const auto& one, const auto& other) {
            return one.area.across.start < other.area.across.start;
        });
        return found != before.end() && samePlace(*found, cell);
    };
    if (returned_ && !text_.lines.empty()) {
        std::erase_if(line_, inLineBefore);
    }
    returned_ = false;
    if (std::any_of(line_.begin(), line_.end(), [](const TextCell& cell) { return !isBlank(cell.byte); })) {
        text_.lines.push_back(line_);
    }
    line_.clear();
}

}  // namespace preview
