#include "report/kept_jobs.h"

#include <algorithm>
#include <set>

#include "report/DoReport.h"
#include "runtime/error.h"

namespace report {

namespace {

using Names = std::set<std::string, std::less<>>;

// Whether a name is that of a text, or of finished pages beside another file of these.
bool isBeside(const std::string& name, const Names& names) {
    if (name.ends_with(endingOfKeptText) && !names.contains(name + endingOfKeptText)) {
        return true;
    }
    constexpr std::string_view document = ".pdf";
    const std::string_view stem =
        std::string_view(name).substr(0, name.size() - std::min(name.size(), document.size()));
    return name.ends_with(document) && (names.contains(stem) || names.contains(stem.substr(0, stem.rfind(" ("))));
}

KeptText textBeside(platform::UserFiles& files, const std::string& path) {
    try {
        return readKeptText(files.read(path + endingOfKeptText));
    } catch (const runtime::Error&) {
        return {};
    }
}

// The current directory for as long as a job is printed.
class From {
public:
    From(platform::System& system, const std::string& folder) : system_(system), before_(system.currentDirectory()) {
        system.changeDirectory(folder);
    }
    From(const From&) = delete;
    From& operator=(const From&) = delete;
    ~From() {
        try {
            system_.changeDirectory(before_);
        } catch (const runtime::Error&) {
            return;  // it has gone meanwhile
        }
    }

private:
    platform::System& system_;
    const std::string before_;
};

}  // namespace

std::vector<KeptEntry> keptJobs(session::Session& session) {
    platform::UserFiles& files = session.platform.userFiles;
    std::vector<KeptEntry> jobs;
    for (const std::string& folder : files.folders(folderOfKeptJobs)) {
        const std::vector<std::string> found = files.names(folder);
        const Names names(found.begin(), found.end());
        for (const std::string& name : found) {
            if (!isBeside(name, names)) {
                jobs.push_back({folder, name, textBeside(files, folder + name)});
            }
        }
    }
    return jobs;
}

void removeKeptJob(session::Session& session, const KeptEntry& job) noexcept {
    platform::UserFiles& files = session.platform.userFiles;
    try {
        for (const std::string& document : job.text.documents) {
            // Whatever somebody wrote into the text: what lies elsewhere is not the job's.
            if (document.starts_with(job.path()) &&
                document.find_first_of("/\\", job.folder.size()) == std::string::npos) {
                files.remove(document);
            }
        }
        files.remove(job.path() + endingOfKeptText);
        files.remove(job.path());
    } catch (const std::bad_alloc&) {
        session.platform.dialogs.outOfMemory();
    }
}

std::string printKeptJob(session::Session& session, const KeptEntry& job, JobProgress& progress,
                         const LetEventsRun& letEventsRun) {
    if (job.text.folder.empty()) {
        return "Der Text neben der Druckdatei sagt nicht, aus welchem Ordner sie gedruckt wurde.";
    }
    try {
        const From folder(session.platform.system, job.text.folder);
        MPrint::JobOrder order;
        order.sDateiname = job.text.printFile.empty() ? job.name : job.text.printFile;
        order.sGrafikname = job.text.graphic;
        order.sDruckerTreiber = job.text.printer;
        order.blnTwoPass = job.text.switches == "/TWOPASS";
        order.kept = &job;
        order.progress = &progress;
        return MPrint::DoReport(session, order, letEventsRun);
    } catch (const runtime::Error& error) {
        return "Der Ordner, aus dem der Auftrag gedruckt wurde, ist nicht zu erreichen: " + error.message();
    }
}

}  // namespace report
