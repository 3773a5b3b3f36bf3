// A search in the preview: what is sought, where the user has come to, and what is said of it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "preview/preview_pages.h"
#include "preview/text_search.h"

namespace preview {

class FindRun {
public:
    enum class Direction { next, previous };

    // The session is borrowed.
    explicit FindRun(session::Session& session) : session_(session) {}

    const std::string& sought() const { return text_; }
    // Begins anew, on this page; an empty text ends it. The pages are borrowed until the next start() or end().
    void start(const PreviewPages& pages, const std::string& text, std::size_t page);
    void end();

    // Goes on from the hit that is shown, or else from the beginning (the end) of the page.
    void go(Direction direction, std::size_t page);

    bool busy() const { return search_ && (wanted_ || !search_->done()); }
    // Searches on for about so long. A hit to be gone to, where one was wanted and is known now.
    std::optional<TextHit> work(PreviewPages::Milliseconds atMost);

    const std::optional<TextHit>& current() const { return current_; }
    // Of one page, from its beginning.
    std::vector<TextHit> hitsOn(std::size_t page) const;
    // "3 von 17", "keine Treffer"; empty where nothing is sought.
    std::string label() const;

private:
    const TextHit* wantedHit() const;
    bool isSure(const TextHit& hit) const;

    session::Session& session_;
    std::string text_;
    std::optional<TextSearch> search_;
    std::size_t firstPage_ = 1;  // where the search began
    struct Wanted {
        Direction direction = Direction::next;
        std::size_t page = 1;
        std::size_t position = 0;
    };
    std::optional<Wanted> wanted_;
    std::optional<TextHit> current_;
};

}  // namespace preview
