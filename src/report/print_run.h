// Preparing a printer for a report, and turning its pages: what a job does once it has its text and its printer.
#pragma once

#include <string>
#include <string_view>

#include "graphics/picture_cache.h"
#include "printer/Printer.h"
#include "report/job_progress.h"
#include "report/job_state.h"
#include "report/let_events_run.h"
#include "report/page_reader.h"
#include "session/session.h"

namespace report {

// What all of it works on.
struct PrintRun {
    // All but the function are borrowed.
    PrintRun(session::Session& ofSession, printer::Printer& onPrinter, JobProgress& toldTo, LetEventsRun letRun,
             TextListener* listens = nullptr)
        : session(ofSession),
          printer(onPrinter),
          progress(toldTo),
          letEventsRun(std::move(letRun)),
          listener(listens) {}

    session::Session& session;
    printer::Printer& printer;
    JobProgress& progress;
    LetEventsRun letEventsRun;
    TextListener* listener;  // hears what text is printed; may be null
    graphics::PictureCache pictures{session.platform.system, session.platform.imageFiles};
    JobState state;
};

// Loads the printer's settings and what HPLASER.INI says, and sets paper size, colour mode and font. Failures are
// runtime::Error, and the progress says in which stretch.
void preparePrinter(PrintRun& run);

// Cuts the text into pages and prints each, with its tray and the background picture (a file's name; empty or
// "KEINEGRAFIK" for none). With blnTwoPass, on each page all graphics first, then the text. Ending the document is the
// caller's. Failures as above; the pages ended so far are then still the printer's.
void printPages(PrintRun& run, std::string_view printText, const std::string& sGrafikname, bool blnTwoPass);

}  // namespace report
