#include "report/kept_job.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "report/job_end.h"
#include "report/kept_jobs.h"
#include "runtime/datetime.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace report {

namespace {

using Fate = JobEnd::Fate;

constexpr std::size_t longestName = 200;  // bytes, so that number and endings find room

// The print file's own name, without what no name should have.
std::string cleanName(const std::string& path) {
    std::string name = runtime::mended(runtime::fileNameOf(path));
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7F;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return c < firstPrintable || c == deleteCharacter; }, '_');
    return name;
}

// "RECHNUNG (2).OUT"
std::string numberedName(const std::string& fileName, int number) {
    const std::size_t dot = fileName.rfind('.');
    const bool hasEnding = dot != std::string::npos && dot > 0;
    const std::string stem = hasEnding ? fileName.substr(0, dot) : fileName;
    return std::string(runtime::beginningOf(stem, longestName)) + " (" + std::to_string(number) + ")" +
           (hasEnding ? std::string(runtime::beginningOf(fileName.substr(dot), longestName / 4)) : "");
}

std::string headlineOf(const JobEnd& end) {
    if (end.fate == Fate::perhapsPrinted) {
        return "Dieser Druckauftrag wurde vielleicht gedruckt; bitte am Drucker nachsehen.";
    }
    return end.pagesPrinted > 0 ? "Dieser Druckauftrag wurde nicht vollständig gedruckt."
                                : "Dieser Druckauftrag wurde nicht gedruckt.";
}

}  // namespace

KeptJob::KeptJob(session::Session& session, const MPrint::JobOrder& order) : session_(session), order_(order) {
    if (order.kept != nullptr) {
        folder_ = order.kept->folder;
        name_ = order.kept->name;
        session.activity().keptAs = order.kept->path();
    }
}

void KeptJob::begin(std::string_view printText) {
    try {
        const std::vector<std::string> folders = session_.platform.userFiles.folders(folderOfKeptJobs);
        if (folders.size() > 1) {
            create(folders.front(), printText);
            session_.platform.userFiles.create(
                folder_ + name_ + endingOfKeptText,
                description("Dieser Druckauftrag wird gerade gedruckt. Steht das hier noch, wenn nichts mehr gedruckt "
                            "wird, so wurde das Programm vorher beendet.",
                            {}, {}));
        }
    } catch (const runtime::Error&) {
        discard();
    }
}

void KeptJob::discard() noexcept {
    if (order_.kept != nullptr) {
        removeKeptJob(session_, *order_.kept);
    } else if (!folder_.empty()) {
        removeKeptJob(session_, {std::move(folder_), std::move(name_), {}});
    }
    folder_.clear();
    session_.activity().keptAs = "";
}

void KeptJob::finish(const JobEnd& end, std::string_view printText, printer::Printer* printer) {
    platform::UserFiles& files = session_.platform.userFiles;
    const std::vector<std::string> folders = files.folders(folderOfKeptJobs);
    for (auto folder = folders.begin(); folder_.empty() && folder != folders.end(); ++folder) {
        try {
            create(*folder, printText);
        } catch (const runtime::Error&) {
            if (folder + 1 == folders.end()) {
                throw;
            }
        }
    }
    const std::string path = folder_ + name_;
    // The pages that were finished once are the same.
    std::vector<std::string> documents = order_.kept != nullptr ? order_.kept->text.documents : KeptText().documents;
    if (documents.empty() && printer != nullptr) {
        documents = printer->SaveRest(path);
    }
    files.replace(path + endingOfKeptText, description(headlineOf(end), end, documents));
}

std::string KeptJob::whereabouts() const {
    return folder_.empty() ? std::string()
                           : "Die Druckdatei ist aufbewahrt als „" + name_ + "“ im Ordner „" +
                                 folder_.substr(0, folder_.size() - 1) +
                                 "“; ein Text daneben sagt, wie sie noch einmal gedruckt wird.";
}

void KeptJob::create(const std::string& folder, std::string_view printText) {
    constexpr int mostNumbers = 100000;
    const std::string fileName = cleanName(order_.sDateiname);
    for (int number = 1; number <= mostNumbers; ++number) {
        const std::string name = numberedName(fileName, number);
        try {
            session_.platform.userFiles.create(folder + name, printText);
            folder_ = folder;
            name_ = name;
            session_.activity().keptAs = folder + name;
            return;
        } catch (const runtime::Error& error) {
            if (error.number() != runtime::errFileExists || number == mostNumbers) {
                throw;
            }
        }
    }
}

std::string KeptJob::description(const std::string& headline, const JobEnd& end,
                                 const std::vector<std::string>& documents) const {
    platform::System& system = session_.platform.system;
    std::vector<std::string> arguments = {folder_ + name_, order_.sGrafikname, order_.sDruckerTreiber};
    if (order_.blnTwoPass) {
        arguments.emplace_back("/TWOPASS");
    }
    while (arguments.back().empty()) {
        arguments.pop_back();
    }
    const std::string folder = system.currentDirectory();
    KeptText lines;
    lines.time = runtime::dateTimeText(system.localTime(), session_.locale());
    lines.printFile = order_.sDateiname;
    lines.folder = folder;
    lines.graphic = order_.sGrafikname;
    lines.switches = order_.blnTwoPass ? "/TWOPASS" : "";
    lines.printer = end.printer.empty() ? order_.sDruckerTreiber : end.printer;
    lines.reason = end.reason;
    lines.pages = end.pagesPrinted > 0 ? "die ersten " + std::to_string(end.pagesPrinted) : "";
    lines.documents = documents;
    std::string text = headline + "\r\n\r\n" + writtenKeptText(lines);
    text += "\r\nSo wird er noch einmal gedruckt:\r\n\r\n" + system.shellCommand(folder, arguments) + "\r\n\r\n";
    text += "Danach können die Dateien „" + name_ + "“ und die gleichnamigen daneben gelöscht werden.\r\n";
    constexpr const char* utf8Mark = "\xEF\xBB\xBF";
    return utf8Mark + text;
}

}  // namespace report
