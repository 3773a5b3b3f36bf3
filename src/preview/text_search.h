// Finds a text in all pages of a print file.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "preview/preview_pages.h"

namespace preview {

struct TextHit {
    std::size_t page = 0;      // from 1
    std::size_t position = 0;  // in the page's plain text
    std::size_t length = 0;
};

// Upper and lower case are the same, umlauts too; any run of blanks and line ends in the file is as good as one blank
// in what is sought. Works in slices.
class TextSearch {
public:
    // The text is UTF-8. The pages are borrowed. It begins with this page, goes to the end and round.
    TextSearch(const PreviewPages& pages, session::Session& session, const std::string& text, std::size_t fromPage);

    // Searches on for about so long; true where all pages have been searched.
    bool searchOn(PreviewPages::Milliseconds atMost);
    bool done() const;
    std::size_t pagesSearched() const;

    // Sorted by page and position; so far. Not more than a million are kept.
    const std::vector<TextHit>& hits() const;
    // The first at or behind the place, or before it; round the end of the file. Null where there is none so far.
    const TextHit* next(std::size_t page, std::size_t position) const;
    const TextHit* previous(std::size_t page, std::size_t position) const;
    // Whether no page that is not searched yet could hold a hit between that place and the one that next() found.
    bool nextIsSure(std::size_t page, std::size_t position) const;

private:
    // ...
};

}  // namespace preview
