// The job list: a printer's queue with what can be done with its jobs, and below it the user's jobs that were not
// printed.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "joblist/job_run.h"
#include "joblist/queue_reading.h"
#include "platform/forms.h"
#include "report/kept_jobs.h"
#include "session/session.h"

namespace joblist {

// Prints a kept job again: why that was not possible, empty where it was. Tells the progress, and calls the function as
// often as windows want to be painted, and oftener.
using PrintAgain = std::function<std::string(const report::KeptEntry& job, report::JobProgress& progress,
                                             const report::LetEventsRun& letEventsRun)>;

// Reads the queue anew by itself. Rows of one of the two tables are selected, never of both; those of the queue stay
// selected by their jobs' numbers.
class FDruckauftraege final : public platform::FormEvents {
public:
    // The session must outlive it.
    FDruckauftraege(session::Session& session, PrintAgain printAgain);

    // Shows the form, with the queue of the printer of that name, in any case of letters, otherwise of the default
    // printer, and does not wait. runtime::Error where there is no desktop.
    void Show(const std::string& sDruckerTreiber);

    void clicked(const std::string& control) override;
    void focused(const std::string& control) override;
    bool accepts(const std::string& control, const std::string& text, char32_t character) override;
    std::string cell(const std::string& table, int row, int column) override;
    void timer() override;
    void idle() override;
    void closed() override;

private:
    using Jobs = std::vector<printer::CPrinterJob>;
    using Kept = std::vector<report::KeptEntry>;

    void fillPrinters(const std::string& wanted);
    std::vector<std::string> printersToShow(const std::string& wanted);
    void cboDrucker_Click();
    void tblAuftraege_Click();
    void tblAufbewahrt_Click();
    void cmdAnhalten_Click();
    void cmdFortsetzen_Click();
    void cmdAbbrechen_Click();
    void cmdNeuStarten_Click();
    void cmdNachVorn_Click();
    void cboPrioritaet_Click();
    void cmdDruckerFortsetzen_Click();
    void cmdAktualisieren_Click();
    void cmdNochEinmal_Click();
    void cmdLoeschen_Click();
    void cmdOrdner_Click();
    void cmdSchliessen_Click();
    void removeSelected();

    Jobs selectedJobs() const;
    bool isOwn(const printer::CPrinterJob& job) const;
    bool mayCancel(const Jobs& jobs);
    void act(JobAction action, Jobs jobs);
    void workOnRun();

    Kept selectedKept() const;
    bool mayPrintAgain(Kept& jobs);
    std::string printAllAgain(const Kept& jobs);
    void readKept();

    // Lets the form show what is the case now.
    void showQueue();
    void showKept();
    void refresh();
    void enableCommands();
    std::string statusText() const;
    void show(const std::string& control, const std::string& text);
    void enable(const std::string& control, bool enabled);
    platform::Answer ask(const std::string& question);
    void tell(const std::string& text);

    session::Session& session_;
    PrintAgain printAgain_;
    QueueReading reading_;
    std::unique_ptr<platform::Form> form_;
    std::vector<std::string> printers_;
    std::string trouble_;                   // why there are not more; may be empty
    std::vector<std::uint32_t> selection_;  // numbers of jobs
    Kept kept_;
    std::vector<std::string> keptSelection_;  // paths
    std::int64_t keptReadAt_ = 0;             // milliseconds
    std::optional<JobRun> run_;
    bool busy_ = false;  // asks the user, or prints
    // What the form shows already.
    std::map<std::string, std::string> texts_;
    std::map<std::string, bool> enabled_;
};

}  // namespace joblist
