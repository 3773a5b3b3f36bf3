// Prints one page of a job after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "report/background.h"
#include "report/page_interpreter.h"
#include "report/page_passing.h"
#include "report/print_run.h"

namespace report {

// The number as a job counts it, from 1; errOverflow behind page 32767, where a job ends.
std::int16_t pageNumber(std::size_t number);

// The printer has been prepared, and its tray is chosen. Failures are runtime::Error, and the progress says in which
// stretch. Turning to the next page is the caller's.
class PagePrinter {
public:
    // The run is borrowed. sGrafikname is the background picture's file, empty or "KEINEGRAFIK" for none. With
    // blnTwoPass, on each page all graphics first, then the text.
    PagePrinter(PrintRun& run, const std::string& sGrafikname, bool blnTwoPass);

    // Brings run and printer into the state that the pages before leave to the next one.
    void continueFrom(const PageStart& start);
    // Goes to where a page begins and draws its background.
    void begin();
    // Prints what the page says, in the type state that the run has.
    void print(std::string_view page);

private:
    void toPageStart();
    void pass(std::string_view page, bool graphics, bool text);

    PrintRun& run_;
    const bool blnTwoPass_;
    Background background_;
    PageInterpreter interpreter_;
};

}  // namespace report
