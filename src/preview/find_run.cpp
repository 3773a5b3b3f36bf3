#include "preview/find_run.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace preview {

namespace {

constexpr std::size_t pageEnd = std::numeric_limits<std::size_t>::max();

bool before(const TextHit& one, const TextHit& other) {
    return std::pair(one.page, one.position) < std::pair(other.page, other.position);
}

}  // namespace

void FindRun::start(const PreviewPages& pages, const std::string& text, std::size_t page) {
    end();
    text_ = text;
    if (!text.empty()) {
        firstPage_ = page;
        search_.emplace(pages, session_, text, page);
    }
}

void FindRun::end() {
    search_.reset();
    wanted_.reset();
    current_.reset();
    text_.clear();
}

void FindRun::go(Direction direction, std::size_t page) {
    if (!search_) {
        return;
    }
    const bool forward = direction == Direction::next;
    wanted_ = Wanted{direction, page, forward ? 0 : pageEnd};
    // Whoever has paged on since goes on from there.
    if (current_ && current_->page == page) {
        wanted_->position = forward ? current_->position + 1 : current_->position;
    }
}

std::optional<TextHit> FindRun::work(PreviewPages::Milliseconds atMost) {
    if (!search_) {
        return std::nullopt;
    }
    if (!search_->done() && !(wanted_ && wantedHit() != nullptr)) {
        search_->searchOn(atMost);
    }
    if (!wanted_) {
        return std::nullopt;
    }
    if (const TextHit* const hit = wantedHit(); hit != nullptr) {
        wanted_.reset();
        current_ = *hit;
        return current_;
    }
    if (search_->done()) {
        wanted_.reset();
    }
    return std::nullopt;
}

const TextHit* FindRun::wantedHit() const {
    const bool forward = wanted_->direction == Direction::next;
    const TextHit* const hit =
        forward ? search_->next(wanted_->page, wanted_->position) : search_->previous(wanted_->page, wanted_->position);
    return hit != nullptr && isSure(*hit) ? hit : nullptr;
}

bool FindRun::isSure(const TextHit& hit) const {
    if (search_->done()) {
        return true;
    }
    if (wanted_->direction == Direction::next) {
        return search_->nextIsSure(wanted_->page, wanted_->position);
    }
    // The pages searched follow each other from the first one.
    return hit.page >= firstPage_ && hit.page <= wanted_->page && wanted_->page < firstPage_ + search_->pagesSearched();
}

std::vector<TextHit> FindRun::hitsOn(std::size_t page) const {
    if (!search_) {
        return {};
    }
    const auto& hits = search_->hits();
    const auto first = std::lower_bound(hits.begin(), hits.end(), TextHit{page, 0, 0}, before);
    const auto last = std::lower_bound(first, hits.end(), TextHit{page + 1, 0, 0}, before);
    return {first, last};
}

std::string FindRun::label() const {
    if (!search_) {
        return {};
    }
    const auto& hits = search_->hits();
    const std::string more = search_->done() ? "" : " …";
    if (hits.empty()) {
        return search_->done() ? "nicht gefunden" : "wird gesucht …";
    }
    const std::string count = (search_->full() ? "über " : "") + std::to_string(hits.size());
    if (!current_) {
        return count + " Treffer" + more;
    }
    const auto place = std::lower_bound(hits.begin(), hits.end(), *current_, before);
    return std::to_string(place - hits.begin() + 1) + " von " + count + more;
}

}  // namespace preview
