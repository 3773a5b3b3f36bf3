// The text of a page that the user has selected.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "preview/page_text.h"

namespace preview {

class TextSelection {
public:
    void clear() { ends_.reset(); }
    void begin(TextPosition place) { ends_ = {place, place}; }
    // Where it begins stays.
    void extendTo(TextPosition place) { ends_ = {ends_ ? ends_->first : place, place}; }
    void set(std::pair<TextPosition, TextPosition> ends) { ends_ = ends; }

    bool begun() const { return ends_.has_value(); }
    bool empty() const { return !ends_ || ends_->first == ends_->second; }

    std::string textOf(const PageText& page) const {
        return empty() ? std::string() : page.textBetween(ends_->first, ends_->second);
    }
    std::vector<platform::drawing::Area> areasOf(const PageText& page) const {
        return empty() ? std::vector<platform::drawing::Area>() : page.areasBetween(ends_->first, ends_->second);
    }

private:
    std::optional<std::pair<TextPosition, TextPosition>> ends_;
};

}  // namespace preview
