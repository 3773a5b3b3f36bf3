// The pages made last, a few around the one that is looked at.
#pragma once

#include <cstddef>
#include <map>

#include "preview/preview_pages.h"

namespace preview {

class PageCache {
public:
    const PreviewPage* find(std::size_t number) const {
        const auto found = pages_.find(number);
        return found != pages_.end() ? &found->second : nullptr;
    }

    // Forgets the pages farthest from this one until it has room.
    void makeRoom(std::size_t number) {
        while (!pages_.empty() && (pages_.size() >= most || bytes() > mostBytes)) {
            const auto first = pages_.begin();
            const auto last = std::prev(pages_.end());
            pages_.erase(away(first->first, number) > away(last->first, number) ? first : last);
        }
    }
    const PreviewPage& add(std::size_t number, PreviewPage page) {
        return pages_.insert_or_assign(number, std::move(page)).first->second;
    }
    void clear() { pages_.clear(); }

private:
    static constexpr std::size_t most = 6;
    static constexpr std::size_t mostBytes = 16'000'000;

    static std::size_t away(std::size_t one, std::size_t other) { return one > other ? one - other : other - one; }
    // Pictures are shared, and counted where they are loaded.
    std::size_t bytes() const {
        std::size_t sum = 0;
        for (const auto& [number, page] : pages_) {
            sum += page.recording.bytes() + page.text.bytes();
        }
        return sum;
    }

    std::map<std::size_t, PreviewPage> pages_;
};

}  // namespace preview
