// A text that is sought in pages, and how text is compared with it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system.h"

namespace preview {

// Upper and lower case are the same, umlauts too; a run of blanks and line ends is one blank.
class SearchText {
public:
    // The text is UTF-8.
    SearchText(platform::System& system, std::string_view text);

    // Whether it may be anywhere: not where it is empty, nor where it has a character that no file can have.
    bool possible() const { return !sought_.empty(); }

    struct Place {
        std::size_t position = 0;
        std::size_t length = 0;
    };
    // Where it stands in a page's plain text, one behind the other; appended.
    void find(std::string_view plainText, std::vector<Place>& places);

private:
    void fold(std::string_view plainText);
    void locate(std::string_view plainText, std::vector<Place>& places) const;

    std::array<char, 256> folded_{};  // by byte of the DOS code page; a blank for what separates words
    std::string sought_;              // folded
    std::string page_;                // likewise; kept for its memory
};

}  // namespace preview
