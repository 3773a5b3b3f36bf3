#include "preview/page_text.h"

#include <algorithm>
#include <utility>

namespace preview {

namespace {

using platform::drawing::Area;
using platform::drawing::Point;
using platform::drawing::Span;

std::int64_t distance(const Span& span, std::int64_t value) {
    return value < span.start ? span.start - value : value >= span.end ? value - span.end + 1 : 0;
}

Span downOf(const std::vector<TextCell>& line) {
    Span span = line.front().area.down;
    for (const TextCell& cell : line) {
        span = {std::min(span.start, cell.area.down.start), std::max(span.end, cell.area.down.end)};
    }
    return span;
}

bool holds(const Area& area, Point point) {
    return distance(area.across, point.x) == 0 && distance(area.down, point.y) == 0;
}

Area joined(const Area& one, const Area& other) {
    const auto both = [](const Span& a, const Span& b) {
        return Span{std::min(a.start, b.start), std::max(a.end, b.end)};
    };
    return {both(one.across, other.across), both(one.down, other.down)};
}

void join(std::vector<Area>& areas, const TextCell& cell, bool begun) {
    if (begun) {
        areas.back() = joined(areas.back(), cell.area);
    } else {
        areas.push_back(cell.area);
    }
}

// A line as it is copied: what is between two of its cells.
std::string copied(const std::vector<TextCell>& line, std::size_t first, std::size_t end) {
    std::string text;
    bool blank = false;
    for (std::size_t i = first; i < end; ++i) {
        const bool apart = i > first && line[i].area.across.start - line[i - 1].area.across.end >
                                            line[i].area.across.end - line[i].area.across.start;
        blank = blank || apart;
        if (isBlank(line[i].byte)) {
            blank = true;
            continue;
        }
        text += blank && !text.empty() ? " " : "";
        text += static_cast<char>(line[i].byte);
        blank = false;
    }
    return text;
}

}  // namespace

std::size_t PageText::bytes() const {
    std::size_t sum = 0;
    for (const std::vector<TextCell>& line : lines) {
        sum += line.capacity() * sizeof(TextCell);
    }
    return sum;
}

TextPosition PageText::positionAt(Point point) const {
    if (lines.empty()) {
        return {};
    }
    const auto nearest = std::min_element(lines.begin(), lines.end(), [&](const auto& one, const auto& other) {
        return distance(downOf(one), point.y) < distance(downOf(other), point.y);
    });
    const auto cell = std::find_if(nearest->begin(), nearest->end(), [&](const TextCell& candidate) {
        return point.x < (candidate.area.across.start + candidate.area.across.end) / 2;
    });
    return {static_cast<std::size_t>(nearest - lines.begin()), static_cast<std::size_t>(cell - nearest->begin())};
}

bool PageText::hasTextAt(Point point) const {
    return std::any_of(lines.begin(), lines.end(), [&](const auto& line) {
        return std::any_of(line.begin(), line.end(), [&](const TextCell& cell) { return holds(cell.area, point); });
    });
}

std::pair<TextPosition, TextPosition> PageText::wordAt(TextPosition position) const {
    if (position.line >= lines.size()) {
        return {position, position};
    }
    const std::vector<TextCell>& line = lines[position.line];
    std::size_t first = std::min(position.cell, line.size());
    std::size_t last = first;
    while (first > 0 && !isBlank(line[first - 1].byte)) {
        --first;
    }
    while (last < line.size() && !isBlank(line[last].byte)) {
        ++last;
    }
    return {{position.line, first}, {position.line, last}};
}

TextPosition PageText::end() const {
    return lines.empty() ? begin() : TextPosition{lines.size() - 1, lines.back().size()};
}

template <typename Step>
void PageText::eachLine(TextPosition one, TextPosition other, Step step) const {
    const auto [from, to] = std::minmax(one, other);
    for (std::size_t i = from.line; i < lines.size() && i <= to.line; ++i) {
        const std::size_t first = i == from.line ? std::min(from.cell, lines[i].size()) : 0;
        const std::size_t end = i == to.line ? std::min(to.cell, lines[i].size()) : lines[i].size();
        step(lines[i], first, end, i > from.line);
    }
}

std::string PageText::textBetween(TextPosition one, TextPosition other) const {
    std::string text;
    eachLine(one, other, [&](const auto& line, std::size_t first, std::size_t end, bool further) {
        text += (further ? "\n" : "") + copied(line, first, end);
    });
    return text;
}

std::vector<Area> PageText::areasBetween(TextPosition one, TextPosition other) const {
    std::vector<Area> areas;
    eachLine(one, other, [&](const auto& line, std::size_t first, std::size_t end, bool) {
        for (std::size_t i = first; i < end; ++i) {
            join(areas, line[i], i > first);
        }
    });
    return areas;
}

std::vector<Area> PageText::areasOfPlainText(std::size_t first, std::size_t length) const {
    std::vector<Area> areas;
    for (const std::vector<TextCell>& line : lines) {
        bool begun = false;
        for (const TextCell& cell : line) {
            if (cell.inPlainText >= first && cell.inPlainText - first < length) {
                join(areas, cell, begun);
                begun = true;
            }
        }
    }
    return areas;
}

}  // namespace preview
