// How far a job is.
#pragma once

#include <array>
#include <cstddef>

#include "platform/activity.h"

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

    // Does a step as a stretch of its own. Where it fails the stretch stays, and the failure is reported as one of it.
    template <typename Step>
    void during(Stretch stretch, Step step) {
        static constexpr std::array names = {"", "Druckertreiber ansprechen", "Hintergrundbild laden", "Seite drucken"};
        const char* before = activity_.stretch.load(std::memory_order_relaxed);
        stretch_ = stretch;
        tell(names[static_cast<std::size_t>(stretch)]);
        step();
        tell(before);
        stretch_ = Stretch::general;
    }

private:
    platform::Activity& activity_;
    Stretch stretch_ = Stretch::general;
};

}  // namespace report
