// How far a job is.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/activity.h"
#include "report/page_cutter.h"

namespace report {

// Each stretch of a job has a report of its own where it fails: general; speaking to the printer's driver; loading the
// background picture; printing a page.
enum class Stretch { general, driver, background, page };

class JobProgress {
public:
    // Tells the activity, which is borrowed.
    explicit JobProgress(platform::Activity& activity) : activity_(activity) {}

    Stretch stretch() const { return stretch_; }
    void reset() { stretch_ = Stretch::general; }

    // Names what is done from now on; the text lives as long as the program.
    void tell(const char* step) { activity_.stretch.store(step, std::memory_order_relaxed); }

    // What is printed; it lives as long as somebody asks how far that is.
    void prints(std::string_view printText) {
        printText_ = printText;
        activity_.page.store(0, std::memory_order_relaxed);
        pages_.reset();
    }

    // The page that is being printed, from 1; 0 before.
    std::uint32_t page() const { return activity_.page.load(std::memory_order_relaxed); }
    // How many there are, at least one; counted when it is first asked for.
    std::size_t pages() {
        if (!pages_) {
            pages_ = std::max<std::size_t>(pagesIn(printText_), 1);
        }
        return *pages_;
    }
    // The page as users count them: what is left behind the last one is none.
    std::size_t pageOfPages() { return std::min<std::size_t>(page(), pages()); }

    // The pages that the printer has taken, when all is done.
    void handedOver(int pages) { handedOver_ = pages; }
    int pagesHandedOver() const { return handedOver_; }

    // Does a step as a stretch of its own. Where it fails the stretch stays, and the failure is reported as one of it.
    template <typename Work>
    void during(Stretch stretch, Work work) {
        static constexpr std::array names = {"", "Druckertreiber ansprechen", "Hintergrundbild laden", "Seite drucken"};
        const char* before = activity_.stretch.load(std::memory_order_relaxed);
        stretch_ = stretch;
        tell(names[static_cast<std::size_t>(stretch)]);
        work();
        tell(before);
        stretch_ = Stretch::general;
    }

private:
    platform::Activity& activity_;
    std::string_view printText_;
    std::optional<std::size_t> pages_;
    int handedOver_ = 0;
    Stretch stretch_ = Stretch::general;
};

}  // namespace report
