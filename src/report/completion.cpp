#include "report/completion.h"

#include "platform/completion_file.h"
#include "printer/CPrinterInfo.h"
#include "runtime/error.h"
#include "runtime/numbers.h"

namespace report::MPrint {

namespace {

std::string okFile() { return std::string(platform::completionFileName); }
constexpr int pollMilliseconds = 100;

}  // namespace

bool isOKFile(platform::System& system, const std::string& path) { return system.wouldReplace(okFile(), path); }

void WriteOKFile(session::Session& session) {
    platform::System& system = session.platform.system;
    std::atomic<bool>& hostWaits = session.activity().hostWaits;
    try {
        system.writeFile(okFile(), system.toSystemCodePage(platform::completionFileText));
        hostWaits = false;
        system.tellStarter();
    } catch (const runtime::Error& error) {
        hostWaits = false;
        session.platform.dialogs.diagnostic(error.message());
        session.log.line(">     Fehler in WriteOKFile beim Zugriff auf ", okFile(), " ", std::to_string(error.number()),
                         " ", error.description());
    }
}

void WaitForSpoolerFinished(session::Session& session, const std::string* deviceName, int timeOutSeconds,
                            const LetEventsRun& letEventsRun) {
    if (deviceName == nullptr) {
        throw runtime::Error(runtime::errObjectNotSet,
                             "Ohne den Namen des Druckers wird nicht auf seine Warteschlange gewartet");
    }
    platform::System& system = session.platform.system;
    const auto timer = [&system] { return runtime::secondsSinceMidnight(system.localTime()); };

    session.log.line(">     Überprüfe: ", *deviceName);
    const printer::CPrinterInfo info(session.platform.spooler, session.platform.printJobs, *deviceName);
    info.tell(session.activity());
    const printer::CPrinterJobs jobs = info.Jobs();
    session.log.line(">     Anzahl Jobs: ", std::to_string(jobs.Count()));
    const float deadline = timer() + static_cast<float>(timeOutSeconds);
    while (true) {
        if (jobs.Count() < 1) {
            session.log.line(">     Ende durch Jobs.Count = 0");
            break;
        }
        system.sleep(pollMilliseconds);
        letEventsRun();
        const float now = timer();
        session.log.line(">     nach DoEvents, Timer: ", runtime::singleText(now, session.locale()));
        if (now > deadline) {
            session.platform.dialogs.messageBox("Bitte Drucker " + *deviceName + " überprüfen. TimeOut-Fehler",
                                                platform::Buttons::ok, platform::Icon::critical, session.program.title);
            session.log.line(">     Ende nach Drucker-Timeout-Meldung");
            break;
        }
    }
    session.log.line(">     WaitForSpoolerFinished Ende");
}

}  // namespace report::MPrint
