// The copy of a job that is kept from the moment at which the host goes on until the job is printed.
#pragma once

#include <string>
#include <string_view>

#include "printer/Printer.h"
#include "report/DoReport.h"
#include "report/job_end.h"
#include "session/session.h"

namespace report {

// In the folder "Nicht gedruckt" of the user's files: the print file as it was read, "RECHNUNG (1).OUT", and a text
// beside it, "RECHNUNG (1).OUT.txt"; for a job that failed also its finished document, "RECHNUNG (1).OUT.pdf".
class KeptJob {
public:
    // Both are borrowed. A job that has been kept before stays where it is.
    KeptJob(session::Session& session, const MPrint::JobOrder& order);
    KeptJob(const KeptJob&) = delete;
    KeptJob& operator=(const KeptJob&) = delete;
    ~KeptJob() { session_.activity().keptAs = ""; }

    // Makes the copy in the user's own data. That this is not possible does not matter before the job fails.
    void begin(std::string_view printText);

    // The job has been printed, or was refused: nothing is kept.
    void discard() noexcept;

    // The job failed: says so in the text, and keeps what the printer (may be null) could not hand over. Makes the copy
    // in the current directory where it could not be made before. Throws runtime::Error where it cannot be kept.
    void finish(const JobEnd& end, std::string_view printText, printer::Printer* printer);

    // Where the job is, as a sentence for messages; empty where it is not kept.
    std::string whereabouts() const;

private:
    void create(const std::string& folder, std::string_view printText);
    std::string description(const std::string& headline, const JobEnd& end,
                            const std::vector<std::string>& documents) const;

    session::Session& session_;
    const MPrint::JobOrder& order_;
    std::string folder_;  // with a separator at its end; empty while there is no copy
    std::string name_;
};

}  // namespace report
