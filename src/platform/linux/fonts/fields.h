// Answers as text between processes and from one program to the next: fields, each ended by a zero.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/fonts/font_answers.h"

namespace platform_linux::fonts {

class Fields {
public:
    static constexpr char end = '\0';

    void add(std::string_view field) { text_.append(field) += end; }
    void add(bool flag) { add(std::string_view(flag ? "1" : "")); }
    void add(const std::vector<FontLocation>& fonts);

    const std::string& text() const& { return text_; }
    std::string text() && { return std::move(text_); }

private:
    std::string text_;
};

// Takes them from the front again; behind the last one they are empty.
class TakenFields {
public:
    explicit TakenFields(std::string_view text) : left_(text) {}

    std::string take();
    bool takeFlag() { return !take().empty(); }
    // Never more than there are fields left.
    std::size_t takeCount();
    std::vector<FontLocation> takeFonts();

private:
    std::string_view left_;
};

}  // namespace platform_linux::fonts
