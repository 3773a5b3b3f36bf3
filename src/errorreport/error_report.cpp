#include "errorreport/error_report.h"

#include <string_view>

#include "platform/crash/report_log.h"
#include "platform/crash/report_text.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "settings/MRegistry.h"

namespace errorreport {

namespace {

namespace MRegistry = settings::MRegistry;
namespace label = platform::crash::label;

constexpr const char* seenName = "Fehlerbericht";

}  // namespace

std::optional<ErrorReport> newestUnseen(session::Session& session) {
    platform::Platform& platform = session.platform;
    const std::string path = platform.errorReports.logFile();
    if (path.empty() || platform.system.fileSize(path) == 0) {
        return std::nullopt;
    }
    try {
        const std::string log = platform.system.readFile(path);
        platform::crash::Entry newest;
        std::string_view rest = log;
        for (auto entry = platform::crash::nextEntry(rest); !entry.text.empty();
             entry = platform::crash::nextEntry(rest)) {
            newest = entry;
            rest.remove_prefix(static_cast<std::size_t>(entry.text.data() - rest.data()) + entry.text.size());
        }
        if (newest.text.empty() ||
            newest.mark == MRegistry::GetRegistryValue(platform.settings, MRegistry::productKey, seenName, "")) {
            return std::nullopt;
        }
        return ErrorReport{std::string(newest.text), std::string(newest.mark)};
    } catch (const runtime::Error&) {
        return std::nullopt;
    }
}

void markSeen(session::Session& session, const ErrorReport& report) {
    MRegistry::SetRegistryValue(session.platform.settings, MRegistry::productKey, seenName, report.mark,
                                MRegistry::noDefault);
    session.storeSettings();
}

std::string valueOf(const ErrorReport& report, std::string_view label) {
    const std::string beginning = "\n" + std::string(label) + ":";
    const std::size_t place = report.text.find(beginning);
    if (place == std::string::npos) {
        return {};
    }
    const std::size_t begin = place + beginning.size();
    const std::string_view value = std::string_view(report.text).substr(begin, report.text.find('\r', begin) - begin);
    return std::string(runtime::trimBlanks(value));
}

std::string whatHappened(const ErrorReport& report) {
    const std::string mode = valueOf(report, label::mode);
    const std::string file = valueOf(report, label::printFile);
    const std::string during = !file.empty()   ? "Bei der Arbeit an der Druckdatei „" + file + "“"
                               : !mode.empty() ? "Beim Ausführen von „" + mode + "“"
                                               : std::string("Im Programm");
    return during + " ist ein Fehler aufgetreten, mit dem KRVWinPr nicht gerechnet hat (" +
           valueOf(report, label::error) + "). Das Programm musste beendet werden.";
}

std::string whatBecame(const ErrorReport& report) {
    const std::string kept = valueOf(report, label::keptAs);
    const std::string host = valueOf(report, label::host);
    std::string text;
    if (!kept.empty()) {
        text = "Der Druckauftrag ist nicht vollständig gedruckt. Die Druckdatei ist aufbewahrt als „" + kept +
               "“; ein Text daneben sagt, wie sie noch einmal gedruckt wird.";
    } else if (valueOf(report, label::mode) == "Bericht") {
        text = valueOf(report, label::stretch) == "Fertig melden"
                   ? "Der Druckauftrag war schon an den Drucker übergeben."
                   : "Der Druckauftrag ist nicht gedruckt und nicht aufbewahrt; bitte in Korvano noch einmal drucken.";
    } else {
        text = "Ein Druckauftrag ist nicht betroffen.";
    }
    if (host == platform::crash::fateText(platform::crash::HostFate::released)) {
        text += " Korvano hat gewartet und kann weiterarbeiten.";
    } else if (host == platform::crash::fateText(platform::crash::HostFate::stillWaiting)) {
        text += " Korvano wartet noch: Die Datei KRVWINPR.OK ließ sich nicht schreiben.";
    }
    return text;
}

}  // namespace errorreport
