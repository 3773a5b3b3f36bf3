// The job driver: prints one print file of the host on one printer.
#pragma once

#include <string>

#include "report/job_progress.h"
#include "report/kept_jobs.h"
#include "report/let_events_run.h"
#include "session/session.h"

namespace report::MPrint {

// What a job is asked to do.
struct JobOrder {
    std::string sDateiname;       // the print file
    std::string sGrafikname;      // a picture behind every page, "KEINEGRAFIK" or empty
    std::string sDruckerTreiber;  // device name in any case; empty, or unknown, for the default printer
    bool blnWait = false;         // write the completion file only when the printer's queue is empty
    bool blnTwoPass = false;      // on each page all graphics first, then the text
    // Of a kept job that is printed again: it is read instead of the print file, and goes where it has been printed.
    // The host waits for nothing then, and whoever started the job tells its user.
    const KeptEntry* kept = nullptr;
    // Asked in the message where there is no such file: what else may have been meant. Mostly empty.
    std::string otherThanFile{};
    std::string otherThanGraphic{};
    // Told how far the job is, for whoever shows it while events run; borrowed, may be null.
    JobProgress* progress = nullptr;
};

// Says why the job was not printed; empty where it was. Failures are reported to the log and the user as they belong
// and end the job; only a failing debug log before the job's own error handling is an error for the caller.
std::string DoReport(session::Session& session, const JobOrder& order, const LetEventsRun& letEventsRun);

}  // namespace report::MPrint
