#include "report/kept_job.h"

#include <algorithm>
#include <vector>

#include "report/job_end.h"
#include "runtime/datetime.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace report {

namespace {

using Fate = JobEnd::Fate;

constexpr const char* folderName = "Nicht gedruckt";
constexpr const char* textEnding = ".txt";
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

std::string field(std::string label, const std::string& value) {
    constexpr std::size_t column = 20;
    label += ':';
    label.resize(std::max(label.size(), column), ' ');
    return value.empty() ? "" : label + value + "\r\n";
}

}  // namespace

void KeptJob::begin(std::string_view printText) {
    try {
        const std::vector<std::string> folders = session_.platform.userFiles.folders(folderName);
        if (folders.size() > 1) {
            create(folders.front(), printText);
            session_.platform.userFiles.create(
                folder_ + name_ + textEnding,
                description("Dieser Druckauftrag wird gerade gedruckt. Steht das hier noch, wenn nichts mehr gedruckt "
                            "wird, so wurde das Programm vorher beendet.",
                            {}, {}));
        }
    } catch (const runtime::Error&) {
        discard();
    }
}

void KeptJob::discard() noexcept {
    if (!folder_.empty()) {
        platform::UserFiles& files = session_.platform.userFiles;
        files.remove(folder_ + name_ + textEnding);
        files.remove(folder_ + name_);
        folder_.clear();
    }
}

void KeptJob::finish(const JobEnd& end, std::string_view printText, printer::Printer* printer) {
    platform::UserFiles& files = session_.platform.userFiles;
    const std::vector<std::string> folders = files.folders(folderName);
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
    const std::vector<std::string> documents =
        printer != nullptr ? printer->SaveRest(path) : std::vector<std::string>();
    files.replace(path + textEnding, description(headlineOf(end), end, documents));
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
    std::string text = headline + "\r\n\r\n";
    text += field("Zeit", runtime::dateTimeText(system.localTime(), session_.locale()));
    text += field("Druckdatei", runtime::shown(order_.sDateiname));
    text += field("Ordner", folder);
    text += field("Drucker", end.printer.empty() ? order_.sDruckerTreiber : end.printer);
    text += field("Grund", end.reason);
    text += field("Gedruckte Seiten", end.pagesPrinted > 0 ? "die ersten " + std::to_string(end.pagesPrinted) : "");
    for (const std::string& document : documents) {
        text += field("Fertige Seiten", document);
    }
    text += "\r\nSo wird er noch einmal gedruckt:\r\n\r\n" + system.shellCommand(folder, arguments) + "\r\n\r\n";
    text += "Danach können die Dateien „" + name_ + "“ und die gleichnamigen daneben gelöscht werden.\r\n";
    constexpr const char* utf8Mark = "\xEF\xBB\xBF";
    return utf8Mark + text;
}

}  // namespace report
