// How far a job is.
#pragma once

namespace report {

// Each stretch of a job has a report of its own where it fails: general; speaking to the printer's driver; loading the
// background picture; printing a page.
enum class Stretch { general, driver, background, page };

class JobProgress {
public:
    Stretch stretch() const { return stretch_; }

    // Does a step as a stretch of its own. Where it fails the stretch stays, and the failure is reported as one of it.
    template <typename Step>
    void during(Stretch stretch, Step step) {
        stretch_ = stretch;
        step();
        stretch_ = Stretch::general;
    }

private:
    Stretch stretch_ = Stretch::general;
};

}  // namespace report
