// The queue of one printer as the job list shows it, read anew when it may have changed.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "printer/CPrinterInfo.h"
#include "session/session.h"

namespace joblist {

// Never throws but for std::bad_alloc: what the spooler does not tell is a trouble, and the jobs stay those of before.
// Reading takes at most a twentieth of the time: the longer a queue takes, the more seldom it is read.
class QueueReading {
public:
    // How often look() is to be called.
    static constexpr int lookMilliseconds = 250;

    explicit QueueReading(session::Session& session) : session_(session) {}

    // Of no printer where the name is empty.
    void choose(const std::string& printer);
    const std::string& printer() const { return printer_; }

    // Reads where it is time: when the system says that something has changed, and every few seconds; where it says
    // nothing, every second; where the spooler does not answer, every ten. Whether it has read.
    bool look();
    // Reads now, whenever it was read before.
    void read();

    const std::vector<printer::CPrinterJob>& jobs() const { return jobs_; }
    std::string printerStatus() const { return info_ ? info_->StatusText() : std::string(); }
    // Whether the printer is stopped, and the user may let it go on.
    bool mayResumePrinter() const { return mayResume_; }
    // Why the jobs are those of an earlier time; empty where they are not.
    const std::string& trouble() const { return trouble_; }

private:
    bool isTime();
    void readJobs();
    void readPrinter();

    session::Session& session_;
    std::string printer_;
    std::vector<printer::CPrinterJob> jobs_;
    std::optional<printer::CPrinterInfo> info_;
    std::unique_ptr<platform::QueueWatch> watch_;
    bool watchAsked_ = false;
    bool changed_ = false;  // as the watch has said
    bool mayResume_ = false;
    bool silent_ = false;  // the spooler did not answer
    std::string trouble_;
    std::int64_t readAt_ = 0;  // milliseconds
    std::int64_t took_ = 0;
};

}  // namespace joblist
