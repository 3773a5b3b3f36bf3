// The user's jobs that were not printed: what lies in the folder "Nicht gedruckt".
#pragma once

#include <string>
#include <vector>

#include "report/job_progress.h"
#include "report/kept_text.h"
#include "report/let_events_run.h"
#include "session/session.h"

namespace report {

// Of the user's files; where it is in the current directory, too.
inline constexpr const char* folderOfKeptJobs = "Nicht gedruckt";
// Of the text beside the copy.
inline constexpr const char* endingOfKeptText = ".txt";

struct KeptEntry {
    std::string folder;  // with a separator at its end
    std::string name;    // of the copy of the print file
    KeptText text;

    std::string path() const { return folder + name; }
    bool operator==(const KeptEntry&) const = default;
};

// Those of this user, the last one first. Of one whose text is missing or broken no more is known than it says.
std::vector<KeptEntry> keptJobs(session::Session& session);

// Removes the copy of the print file and what belongs to it.
void removeKeptJob(session::Session& session, const KeptEntry& job) noexcept;

// Prints a job again, from the folder that the host printed it from. Empty where that went well; the job is gone then.
// Otherwise why it did not, and the job is kept. The progress is told how far it is.
std::string printKeptJob(session::Session& session, const KeptEntry& job, JobProgress& progress,
                         const LetEventsRun& letEventsRun);

}  // namespace report
