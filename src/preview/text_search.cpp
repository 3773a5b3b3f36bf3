#include "preview/text_search.h"

#include <algorithm>
#include <tuple>

namespace preview {

namespace {

constexpr std::size_t mostHits = 1'000'000;

bool comesBefore(const TextHit& hit, std::size_t page, std::size_t position) {
    return std::tuple(hit.page, hit.position) < std::tuple(page, position);
}

}  // namespace

TextSearch::TextSearch(const PreviewPages& pages, session::Session& session, const std::string& text,
                       std::size_t fromPage)
    : pages_(pages),
      system_(session.platform.system),
      sought_(session.platform.system, text),
      fromPage_(std::clamp<std::size_t>(fromPage, 1, std::max<std::size_t>(pages.pageCount(), 1))) {
    if (!sought_.possible()) {
        searched_ = pages.pageCount();
    }
}

std::size_t TextSearch::pageAt(std::size_t steps) const { return (fromPage_ - 1 + steps) % pages_.pageCount() + 1; }

bool TextSearch::searchOn(PreviewPages::Milliseconds atMost) {
    constexpr std::size_t bytesBetweenLooksAtTheClock = 100'000;
    const std::int64_t end = system_.elapsedMilliseconds() + atMost.count();
    std::vector<TextHit> found;
    std::vector<TextHit> foundRound;
    std::size_t bytes = 0;
    while (!done()) {
        bytes += searchPage(pageAt(searched_) < fromPage_ ? foundRound : found);
        ++searched_;
        if (bytes > bytesBetweenLooksAtTheClock) {
            bytes = 0;
            if (system_.elapsedMilliseconds() >= end) {
                break;
            }
        }
    }
    hits_.insert(hits_.end(), found.begin(), found.end());
    hits_.insert(hits_.begin() + static_cast<std::ptrdiff_t>(hitsRound_), foundRound.begin(), foundRound.end());
    hitsRound_ += foundRound.size();
    return done();
}

bool TextSearch::full() const { return hits_.size() >= mostHits; }

// Says what the page was worth in work.
std::size_t TextSearch::searchPage(std::vector<TextHit>& found) {
    constexpr std::size_t bytesForTurning = 64;
    const std::size_t page = pageAt(searched_);
    pages_.plainText(page, text_);
    places_.clear();
    sought_.find(text_, places_);
    for (const SearchText::Place& place : places_) {
        if (hits_.size() + found.size() < mostHits) {
            found.push_back({page, place.position, place.length});
        }
    }
    return text_.size() + bytesForTurning;
}

std::vector<TextHit>::const_iterator TextSearch::atOrBehind(std::size_t page, std::size_t position) const {
    return std::partition_point(hits_.begin(), hits_.end(),
                                [&](const TextHit& hit) { return comesBefore(hit, page, position); });
}

const TextHit* TextSearch::next(std::size_t page, std::size_t position) const {
    if (hits_.empty()) {
        return nullptr;
    }
    const auto hit = atOrBehind(page, position);
    return hit != hits_.end() ? &*hit : &hits_.front();
}

const TextHit* TextSearch::previous(std::size_t page, std::size_t position) const {
    if (hits_.empty()) {
        return nullptr;
    }
    const auto hit = atOrBehind(page, position);
    return hit != hits_.begin() ? &*(hit - 1) : &hits_.back();
}

bool TextSearch::nextIsSure(std::size_t page, std::size_t position) const {
    if (done()) {
        return true;
    }
    const TextHit* const hit = next(page, position);
    if (hit == nullptr || page < 1 || page > pages_.pageCount()) {
        return false;
    }
    const std::size_t count = pages_.pageCount();
    const bool wholeRound = hit->page == page && hit->position < position;
    const std::size_t away = wholeRound ? count : (hit->page + count - page) % count;
    const std::size_t searchedBefore = (page + count - fromPage_) % count;
    return searchedBefore + away < searched_;
}

}  // namespace preview
