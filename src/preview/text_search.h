// Finds a text in all pages of a print file.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "preview/preview_pages.h"
#include "preview/search_text.h"

namespace preview {

struct TextHit {
    std::size_t page = 0;      // from 1
    std::size_t position = 0;  // in the page's plain text
    std::size_t length = 0;

    bool operator==(const TextHit&) const = default;
};

// Upper and lower case are the same, umlauts too; any run of blanks and line ends in the file is as good as one blank
// in what is sought. Works in slices. Hits do not overlap.
class TextSearch {
public:
    // The text is UTF-8. The pages are borrowed and must not be read anew meanwhile. It begins with this page, goes to
    // the end and round.
    TextSearch(const PreviewPages& pages, session::Session& session, const std::string& text, std::size_t fromPage);

    // Searches on for about so long; true where all pages have been searched.
    bool searchOn(PreviewPages::Milliseconds atMost);
    bool done() const { return searched_ == pages_.pageCount(); }
    std::size_t pagesSearched() const { return searched_; }

    // Sorted by page and position; so far. Not more than a million are kept, and there may be more where they are full.
    const std::vector<TextHit>& hits() const { return hits_; }
    bool full() const;
    // The first at or behind the place, or before it; round the end of the file. Null where there is none so far.
    const TextHit* next(std::size_t page, std::size_t position) const;
    const TextHit* previous(std::size_t page, std::size_t position) const;
    // Whether no page that is not searched yet could hold a hit between that place and the one that next() found.
    bool nextIsSure(std::size_t page, std::size_t position) const;

private:
    std::size_t searchPage(std::vector<TextHit>& found);
    std::size_t pageAt(std::size_t steps) const;
    std::vector<TextHit>::const_iterator atOrBehind(std::size_t page, std::size_t position) const;

    const PreviewPages& pages_;
    platform::System& system_;
    SearchText sought_;
    const std::size_t fromPage_;
    std::size_t searched_ = 0;
    std::size_t hitsRound_ = 0;  // on the pages before the first one; they come first
    std::vector<TextHit> hits_;
    std::string text_;
    std::vector<SearchText::Place> places_;
};

}  // namespace preview
