// One printer as the spooler describes it: attributes, status text, the jobs in its queue, the default printer. A job
// asks for the status text and counts the queue; the rest is for the printer selection and the job list.
#pragma once

#include <cstdint>
#include <string>

#include "platform/activity.h"
#include "platform/print_jobs.h"
#include "platform/spooler.h"
#include "printer/CPrinterJobs.h"

namespace printer {

// A failed call of the spooler throws nothing: its code is kept, and its text is the status text until a call succeeds.
class CPrinterInfo {
public:
    // Reads the printer's information record.
    CPrinterInfo(platform::Spooler& spooler, platform::PrintJobs& jobs, std::string printerName);

    // Reads the record again.
    void Refresh();

    const std::string& PrinterName() const { return name_; }
    // "Laser auf srv" for a network name such as "\\srv\Laser", otherwise the name itself.
    std::string DisplayName() const;
    const std::string& ServerName() const { return record_.serverName; }
    const std::string& ShareName() const { return record_.shareName; }
    const std::string& PortName() const { return record_.portName; }
    const std::string& Location() const { return record_.location; }
    const std::string& SeparatorPageFile() const { return record_.separatorFile; }
    std::uint32_t DefaultPriority() const { return record_.defaultPriority; }
    std::uint32_t Attributes() const { return record_.attributes; }
    std::uint32_t AveragePPM() const { return record_.averagePpm; }
    std::uint32_t Status() const { return record_.status; }

    // The text of the last failure, or that of the status; a status that combines several flags is the number in
    // upper-case hexadecimal.
    std::string StatusText() const;

    // Notes driver and status for the reports of errors.
    void tell(platform::Activity& activity) const;

    CPrinterJobs Jobs() const { return {*jobs_, name_}; }

    bool IsDefault() const;
    bool CanAdminister();
    bool IsOffline() const;
    bool IsShared() const;
    bool IsToFile() const;
    bool IsLocal() const;
    bool IsNetwork() const;

    // Removes all jobs from the queue.
    void ControlPurge();
    void ShowPropertiesDialog();
    // Makes this printer the user's default printer.
    void SetAsDefault();

private:
    template <typename Call>
    void attempt(Call call);
    bool has(std::uint32_t attribute) const { return (record_.attributes & attribute) != 0; }

    platform::Spooler* spooler_;
    platform::PrintJobs* jobs_;
    std::string name_;
    platform::PrinterRecord record_;
    std::uint32_t lastError_ = 0;
};

// The spooler's text for one of its error codes, or "Error (<code>) not defined.".
std::string errorText(platform::Spooler& spooler, std::uint32_t code);

// The text of a status value of the information record.
std::string statusText(std::uint32_t status);

}  // namespace printer
