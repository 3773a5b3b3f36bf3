#include "startup/MMain.h"

#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "errorreport/FFehlerbericht.h"
#include "graphics/MGrafikdruck.h"
#include "graphics/MInverser.h"
#include "joblist/FDruckauftraege.h"
#include "preview/FVorschau.h"
#include "report/DoReport.h"
#include "report/completion.h"
#include "report/kept_jobs.h"
#include "runtime/crash_on_purpose.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "session/session.h"
#include "settings/FDruckerAuswahl.h"
#include "settings/MRegistry.h"
#include "startup/arguments/command_line.h"
#include "startup/arguments/suggestion.h"
#include "startup/help_text.h"
#include "startup/progress_line.h"

namespace startup::MMain {

namespace {

using platform::Buttons;
using platform::Icon;

void startLog(session::DebugLog& log, const Switches& switches) {
    if (switches.blnDebug || switches.blnDebug2) {
        log.debugging(true);
    }
    if (switches.blnDebug2) {
        log.level(session::DebugLog::details);
    }
}

// Whether somebody does not go on before there is a completion file.
bool hostWaits(Mode mode, const Switches& switches) { return switches.blnWait && mode == Mode::report; }

class StartUp {
public:
    explicit StartUp(platform::Platform& platform) : session_(platform), log_(session_.log) {}

    // Says by the flag when a report is about to begin, which lets the host go itself from then on.
    void run(bool& reportBegun);

    // Lets a host go that waits for a report which could not even begin.
    void giveUpReport();

private:
    void writeHeader();
    void recordProgram();
    void logEnvironment(const Switches& switches);
    Mode modeFor(const clsArguments& arguments);
    void dispatch(Mode mode, const clsArguments& arguments, const Switches& switches, bool& reportBegun);
    void printReport(const clsArguments& arguments, const Switches& switches);
    void offerReport();
    void answer(const std::string& atShell, const std::string& inBox);
    std::string twoOfOneName();
    void selectPrinter();
    void showPreview(const clsArguments& arguments, const Switches& switches);
    void showJobList(const std::string& sDruckerTreiber);
    bool refusesWithoutPrinters();
    void show(const std::string& text);

    platform::System& system() { return session_.platform.system; }

    session::Session session_;
    session::DebugLog& log_;
    std::string exePath_;
    std::unique_ptr<settings::FDruckerAuswahl> druckerAuswahl_;
    std::unique_ptr<preview::FVorschau> vorschau_;
    std::unique_ptr<joblist::FDruckauftraege> druckauftraege_;
    std::unique_ptr<errorreport::FFehlerbericht> fehlerbericht_;
};

void StartUp::run(bool& reportBegun) {
    // Nobody's job is taken for it, whatever a host has in its environment.
    if (session_.platform.errorReports.startedToOffer() && runtime::trimBlanks(system().commandTail()).empty()) {
        session_.activity().mode = "Fehlerbericht";
        offerReport();
        session_.platform.forms.run();
        return;
    }
    clsArguments arguments(system().commandTail());
    const Switches switches = takeSwitches(arguments);
    startLog(log_, switches);
    const Mode mode = modeFor(arguments);
    session_.activity().hostWaits = hostWaits(mode, switches);
    runtime::crashOnPurpose("start");
    writeHeader();
    recordProgram();
    logEnvironment(switches);
    dispatch(mode, arguments, switches, reportBegun);
    session_.storeSettings();
    log_.line("> Programm regulär beendet!");
    log_.write("");
    session_.platform.forms.run();
}

void StartUp::giveUpReport() {
    clsArguments arguments(system().commandTail());
    const Switches switches = takeSwitches(arguments);
    startLog(log_, switches);
    if (hostWaits(modeFor(arguments), switches)) {
        report::MPrint::WriteOKFile(session_);
    }
}

void StartUp::writeHeader() {
    log_.write("");
    log_.write("======= NEUER START ========");
    log_.line("> ", runtime::hexText(56456523), runtime::hexText(34123453), runtime::hexText(23232545));
    log_.line("> App.StartMode: ", "0", "  // 0=EXE, 1=ActiveX-EXE");
}

void StartUp::recordProgram() {
    exePath_ = runtime::AddBackslash(system().programDirectory()) + session_.program.name;
    const auto record = [this](std::string_view name, std::string_view value) {
        settings::MRegistry::SetRegistryValue(session_.platform.settings, settings::MRegistry::productKey, name, value,
                                              settings::MRegistry::noDefault);
    };
    record("RunPath", system().currentDirectory());
    record("EXEPath", exePath_);
    record("EXEVersion", session_.program.version);
}

void StartUp::logEnvironment(const Switches& switches) {
    if (!log_.writes()) {
        return;
    }
    log_.line("> Debuglevel: ", std::to_string(log_.level()));
    if (log_.level() == 1) {
        log_.line("> für weitere Details /DEBUG2 verwenden ");
    }
    log_.line("> Registrydaten gesetzt");
    log_.line("> RunPath: ", runtime::shown(system().currentDirectory()));
    log_.line("> EXEPath: ", runtime::shown(exePath_));
    log_.line("> EXEVersion: ", session_.program.version);
    // A host waits for its completion file behind this, so the log does without a screen that keeps it waiting.
    constexpr int usualDpi = 96;
    const bool known = system().screenAnswers();
    log_.line("> LOGPixelsX: ", std::to_string(known ? system().screenDpiX() : usualDpi));
    log_.line("> LOGPixelsY: ", std::to_string(known ? system().screenDpiY() : usualDpi));
    log_.line("> TwoPass: ", switches.blnTwoPass ? "Ja" : "Nein");
}

Mode StartUp::modeFor(const clsArguments& arguments) {
    return modeOf(arguments, [this](const std::string& name) { return system().fileExists(name); });
}

void StartUp::dispatch(Mode mode, const clsArguments& arguments, const Switches& switches, bool& reportBegun) {
    switch (mode) {
        case Mode::usage:
            log_.line("> keine Argumente");
            show(usageText(session_.program));
            break;
        case Mode::help:
            log_.line("> Hilfe");
            answer(helpText(session_), usageText(session_.program));
            break;
        case Mode::version:
            log_.line("> Versionsangabe");
            answer(versionText(session_.program) + "\n", versionText(session_.program));
            break;
        case Mode::printerSelection:
            session_.activity().mode = "Druckerauswahl";
            selectPrinter();
            break;
        case Mode::preview:
            session_.activity().mode = "Vorschau";
            showPreview(arguments, switches);
            break;
        case Mode::jobList:
            session_.activity().mode = "Druckaufträge";
            showJobList(arguments.Item(2));
            break;
        case Mode::invert:
            session_.activity().mode = "Grafik invertieren";
            log_.line("> Invertierungbeginn");
            session_.storeSettings();
            graphics::MInverser::InvertGraphic(session_, arguments.Item(2));
            log_.line("> Invertierungende");
            break;
        case Mode::printGraphic:
            session_.activity().mode = "Grafik drucken";
            log_.line("> Grafikdruckbeginn");
            session_.storeSettings();
            graphics::MGrafikdruck::PrintGraphic(session_, "GRAFIK.PCX", arguments.Item(2));
            log_.line("> Grafikdruckende");
            break;
        case Mode::report:
            session_.activity().mode = "Bericht";
            log_.line("> Reportbeginn");
            reportBegun = true;
            printReport(arguments, switches);
            log_.line("> Reportende");
            if (const std::string warning = twoOfOneName(); !warning.empty()) {
                session_.platform.dialogs.diagnostic(warning);
            }
            break;
    }
}

// That of a crash before, in front of the form that was asked for.
void StartUp::offerReport() { fehlerbericht_ = errorreport::offerReport(session_); }

void StartUp::answer(const std::string& atShell, const std::string& inBox) {
    if (!session_.platform.dialogs.answerCaller(atShell)) {
        show(inBox);
    }
}

void StartUp::printReport(const clsArguments& arguments, const Switches& switches) {
    ProgressLine line(session_);
    report::MPrint::JobOrder order{arguments.Item(1), arguments.Item(2), arguments.Item(3), switches.blnWait,
                                   switches.blnTwoPass};
    order.otherThanFile = askWhatWasMeant(order.sDateiname, 1);
    order.otherThanGraphic = askWhatWasMeant(order.sGrafikname, 2);
    order.progress = &line.progress();
    const std::string whyNot = report::MPrint::DoReport(session_, order, [&] {
        session_.platform.dialogs.processEvents();
        line.look();
    });
    line.end(whyNot.empty());
}

// What is wrong where the host's program for an emulator lies beside this one, of which Windows then takes the other.
std::string StartUp::twoOfOneName() {
    const std::string folder = runtime::AddBackslash(system().programDirectory());
    if (!runtime::upperCase(system().programFileName()).ends_with(".EXE") ||
        !system().fileExists(folder + "KRVWINPR.COM")) {
        return {};
    }
    return "In " + runtime::shown(folder) + " liegt neben " + system().programFileName() +
           " die Datei KRVWINPR.COM, die nur für Hosts in einem DOS-Emulator ist. Windows startet dort diese, wenn ein "
           "Host KRVWINPR aufruft. Bitte legen Sie eine von beiden in einen anderen Ordner.";
}

void StartUp::selectPrinter() {
    log_.line("> Druckertreiberauswahlbeginn");
    if (const std::string warning = twoOfOneName(); !warning.empty()) {
        show(warning);
    }
    if (!refusesWithoutPrinters()) {
        log_.line("> Windowsdruckertreiber Auswahlformbeginn");
        druckerAuswahl_ = std::make_unique<settings::FDruckerAuswahl>(
            session_, [this](const std::string& file, const std::string& printer, const auto& letEventsRun) {
                report::MPrint::DoReport(session_, {file, "", printer, false, false}, letEventsRun);
            });
        druckerAuswahl_->Show();
        offerReport();
        log_.line("> Windowsdruckertreiber Auswahlformende");
    }
    log_.line("> Druckertreiberauswahlende");
}

// The form comes first, so that a printer that takes its time keeps nobody waiting in front of nothing. Which printer
// is the default one is asked where the pages are prepared.
void StartUp::showPreview(const clsArguments& arguments, const Switches& switches) {
    log_.line("> Vorschaubeginn");
    vorschau_ = std::make_unique<preview::FVorschau>(
        session_, preview::PreviewOrder{arguments.Item(2), arguments.Item(3), arguments.Item(4), switches.blnTwoPass});
    vorschau_->Show();
    log_.line("> Form angezeigt");
    vorschau_->DoVorschau();
    offerReport();
    log_.line("> Vorschauende");
}

// Kept jobs are there without any printer, too.
void StartUp::showJobList(const std::string& sDruckerTreiber) {
    log_.line("> Auftragslistebeginn");
    if (!refusesWithoutPrinters() || !report::keptJobs(session_).empty()) {
        druckauftraege_ = std::make_unique<joblist::FDruckauftraege>(
            session_, [this](const report::KeptEntry& job, report::JobProgress& progress, const auto& letEventsRun) {
                return report::printKeptJob(session_, job, progress, letEventsRun);
            });
        druckauftraege_->Show(sDruckerTreiber);
        offerReport();
    }
    log_.line("> Auftragslisteende");
}

bool StartUp::refusesWithoutPrinters() {
    if (session_.platform.spooler.hasPrinters()) {
        return false;
    }
    log_.line("> keine Windowsdruckertreiber eingerichtet");
    show("Es sind keine Druckertreiber unter Windows eingerichtet!");
    return true;
}

void StartUp::show(const std::string& text) {
    session_.platform.dialogs.messageBox(text, Buttons::ok, Icon::none, session_.program.title);
}

void tellUntrapped(platform::Platform& platform, const runtime::Error& error) {
    platform.dialogs.messageBox("Laufzeitfehler '" + std::to_string(error.number()) + "':\r\n\r\n" + error.message(),
                                Buttons::ok, Icon::critical, session::Program{}.title);
    platform.errorReports.untrapped(error.number(), error.message());
}

// Whether the program ran to its end, or to an error of its own, which is shown; otherwise there was no memory for
// that, or something failed that nobody thought of, which has been told as far as it can be.
bool ran(platform::Platform& platform, bool& reportBegun) {
    try {
        StartUp(platform).run(reportBegun);
        return true;
    } catch (const runtime::Error& error) {
        tellUntrapped(platform, error);
        return error.number() != runtime::errOutOfMemory;
    } catch (const std::bad_alloc&) {
        platform.dialogs.outOfMemory();
        platform.errorReports.untrapped(runtime::errOutOfMemory, runtime::describe(runtime::errOutOfMemory));
    } catch (const std::exception& error) {
        tellUntrapped(platform, runtime::Error(runtime::errInternal, error.what()));
    } catch (...) {
        tellUntrapped(platform, runtime::Error(runtime::errInternal));
    }
    return false;
}

}  // namespace

void Main(platform::Platform& platform) noexcept {
    bool reportBegun = false;
    bool whole = false;
    try {
        whole = ran(platform, reportBegun);
    } catch (...) {
        platform.dialogs.outOfMemory();
    }
    if ((!whole && !reportBegun) || platform.errorReports.activity().hostWaits) {
        giveUp(platform);
    }
}

void giveUp(platform::Platform& platform) noexcept {
    try {
        StartUp(platform).giveUpReport();
    } catch (...) {
        platform.dialogs.outOfMemory();
    }
}

}  // namespace startup::MMain
