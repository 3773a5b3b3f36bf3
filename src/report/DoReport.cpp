#include "report/DoReport.h"

#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "printer/printer_choice.h"
#include "printer/remarks.h"
#include "report/completion.h"
#include "report/job_failure.h"
#include "report/kept_job.h"
#include "report/print_run.h"
#include "report/printer_geometry.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/program.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "settings/clsSettings.h"
#include "settings/waiting_time.h"

namespace report::MPrint {

namespace {

using runtime::Error;

constexpr int spoolerTimeOutSeconds = 10;
constexpr int patienceOfTheHost = 10;  // seconds

class ReportJob {
public:
    ReportJob(session::Session& session, const JobOrder& order, const LetEventsRun& letEventsRun)
        : session_(session),
          log_(session.log),
          order_(order),
          shownFile_(runtime::shown(order.sDateiname)),
          letEventsRun_(letEventsRun),
          failure_(session, order.sDateiname, order.sGrafikname, order.kept != nullptr),
          kept_(session, order),
          progress_(order.progress != nullptr ? *order.progress : ownProgress_) {}

    std::string run() noexcept;

private:
    void begin();
    void refuseWithoutPrinters();
    void printReport();
    void loadPrintFile();
    void readPrintFile();
    void earlyHandshake();
    void choosePrinter();
    void loadUnfinishedSettings();
    void handOver();
    void lateHandshake();

    void report(const Error& error);
    void cancel();
    Error withQuestion(const Error& error) const;
    JobEnd endBy(const Error& error) const;
    std::string keep(const JobEnd& end);
    void commonEnd() noexcept;
    void letHostGo() noexcept;
    template <typename Step>
    bool attempt(Step step) noexcept;

    session::Session& session_;
    session::DebugLog& log_;
    const JobOrder& order_;
    const std::string shownFile_;
    const LetEventsRun& letEventsRun_;
    JobFailure failure_;
    KeptJob kept_;
    JobProgress ownProgress_{session_.activity()};
    JobProgress& progress_;

    bool accepted_ = false;  // the host goes on, or will as soon as the job has ended, and the file has been read
    bool printed_ = false;
    bool ended_ = false;
    std::string whyNot_;  // it was not printed
    std::string printText_;
    bool ofOKFile_ = false;                    // the print file is the completion file: it is there, and stays as it is
    std::optional<std::string> namedPrinter_;  // the printer that the order names, where it is installed
    std::unique_ptr<printer::Printer> printer_;
};

// Whatever fails, be it the report of a failure itself for want of memory: the common end is reached.
std::string ReportJob::run() noexcept {
    attempt([this] {
        try {
            begin();
        } catch (const platform::SpoolerError& error) {
            error.cancelled() ? cancel() : report(error);
        } catch (const Error& error) {
            report(error);
        } catch (const std::bad_alloc&) {
            report(Error(runtime::errOutOfMemory,
                         accepted_ ? "bitte andere Programme beenden" : "'" + shownFile_ + "' ist vielleicht zu groß"));
        } catch (const std::exception& error) {
            report(Error(runtime::errInternal, error.what()));
        }
    });
    if (!ended_) {
        commonEnd();
    }
    return std::move(whyNot_);
}

void ReportJob::begin() {
    session_.activity().printFile = shownFile_;
    log_.line(">   DoReport (sDateiname='", shownFile_, "', sGrafikname='", runtime::shown(order_.sGrafikname),
              "', sDruckerTreiber='", runtime::shown(order_.sDruckerTreiber), "', blnWait='",
              runtime::booleanText(order_.blnWait, session_.locale()), "')");
    if (session_.platform.spooler.hasPrinters()) {
        printReport();
        ended_ = true;
    } else {
        refuseWithoutPrinters();
        commonEnd();
    }
}

// A host that waits is let go all the same, so its job is kept.
void ReportJob::refuseWithoutPrinters() {
    std::string whereabouts;
    whyNot_ = printer::noPrinterReason(session_.program);
    if (order_.blnWait || order_.kept != nullptr) {
        attempt([&] {
            loadPrintFile();
            accepted_ = true;
            JobEnd end;
            end.fate = JobEnd::Fate::notPrinted;
            end.reason = whyNot_;
            whereabouts = keep(end);
        });
    }
    failure_.reportNoPrinters(whereabouts);
}

void ReportJob::printReport() {
    progress_.tell("Druckdatei lesen");
    readPrintFile();
    progress_.tell("Auftrag annehmen");
    earlyHandshake();
    progress_.tell("Drucker wählen");
    choosePrinter();
    logPrinterGeometry(session_, *printer_);
    loadUnfinishedSettings();
    progress_.tell("Drucker vorbereiten");
    PrintRun run(session_, *printer_, progress_, letEventsRun_);
    preparePrinter(run);
    progress_.tell("Seiten drucken");
    printPages(run, printText_, order_.sGrafikname, order_.blnTwoPass);
    progress_.tell("Auftrag abgeben");
    handOver();
    progress_.tell("Fertig melden");
    lateHandshake();
}

void ReportJob::loadPrintFile() {
    platform::System& system = session_.platform.system;
    if (order_.kept != nullptr) {
        accepted_ = true;
        printText_ = session_.platform.userFiles.read(order_.kept->path());
        return;
    }
    printText_ = system.readFile(order_.sDateiname);
    ofOKFile_ = isOKFile(system, order_.sDateiname);
    if (ofOKFile_) {
        session_.activity().hostWaits = false;
        throw Error(
            runtime::errPathFileAccess,
            "'" + shownFile_ +
                "' ist die Datei KRVWINPR.OK selbst, die den Auftrag überschreiben würde; die Druckdatei anders "
                "nennen");
    }
}

void ReportJob::readPrintFile() {
    loadPrintFile();
    accepted_ = accepted_ || order_.blnWait;
    progress_.prints(printText_);
    log_.line(">   ", shownFile_, " gelesen");
}

// Without "/WAIT" the host goes on as soon as its print file has been read; what it does not wait for comes behind.
void ReportJob::earlyHandshake() {
    if (order_.kept != nullptr) {
        log_.line(">   KRVWINPR.OK entfällt, aufbewahrt als ", runtime::shown(order_.kept->path()));
        return;
    }
    if (order_.blnWait) {
        log_.line(">   KRVWINPR.OK übersprungen wegen /WAIT-Parameter");
        kept_.begin(printText_);
        return;
    }
    WriteOKFile(session_);
    accepted_ = true;
    kept_.begin(printText_);
    log_.line(">   KRVWINPR.OK ausgegeben");
    session_.storeSettings();
}

void ReportJob::choosePrinter() {
    platform::Spooler& spooler = session_.platform.spooler;
    const int seconds = order_.blnWait ? patienceOfTheHost : settings::waitingSeconds(session_);
    printer::Patience patience(spooler, session_.platform.system, seconds, letEventsRun_);
    namedPrinter_ = patience.during([&] { return printer::installedPrinter(spooler, order_.sDruckerTreiber); });
    printer_ = printer::choosePrinter(session_, namedPrinter_, std::string(runtime::fileNameOf(order_.sDateiname)),
                                      std::move(patience));
}

// The program that users have never does it.
void ReportJob::loadUnfinishedSettings() {
    if (runtime::developmentBuild && session_.development) {
        session_.platform.dialogs.messageBox("Noch nicht implementiert!", platform::Buttons::ok, platform::Icon::none,
                                             session_.program.title);
        settings::clsSettings(session_).Load("KRVWinPr.CFG");
    }
}

void ReportJob::handOver() {
    log_.line(">   Druckende");
    printer_->EndDoc();
    progress_.handedOver(printer_->PagesHandedOver());
    printed_ = true;
    kept_.discard();
    printer::logRemarks(session_, *printer_);
}

void ReportJob::lateHandshake() {
    if (!order_.blnWait) {
        return;
    }
    log_.line(">   Warte auf leeren Druckerspooler");
    WaitForSpoolerFinished(session_, namedPrinter_ ? &*namedPrinter_ : nullptr, spoolerTimeOutSeconds, letEventsRun_);
    WriteOKFile(session_);
    log_.line(">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben");
}

// Each step of a report is tried, whatever becomes of the others: the host must get its file, and the user what has
// been printed, also when the log cannot be written.
template <typename Step>
bool ReportJob::attempt(Step step) noexcept {
    try {
        step();
        return true;
    } catch (const Error& error) {
        session_.platform.dialogs.diagnostic(error.message());
    } catch (...) {
        session_.platform.dialogs.outOfMemory();
    }
    return false;
}

void ReportJob::report(const Error& error) {
    attempt([this] {
        if (printer_) {
            printer_->Release();
            printer::logRemarks(session_, *printer_);
        }
    });
    attempt([&] {
        const Error told = withQuestion(error);
        const JobEnd end = endBy(told);
        whyNot_ = end.reason;
        const std::string whereabouts = keep(end);
        failure_.report(progress_.stretch(), told, end, whereabouts);
    });
    commonEnd();
}

// Somebody who saw the job in its queue did not want it: nobody is asked anything, and nothing is kept that was not
// kept before.
void ReportJob::cancel() {
    attempt([this] { printer_.reset(); });
    attempt([this] { whyNot_ = "Der Druck wurde abgebrochen."; });
    if (order_.kept == nullptr) {
        kept_.discard();
    }
    attempt([this] { failure_.reportCancel(); });
    letHostGo();
}

// A file that is not there may be a switch that was not written as such.
Error ReportJob::withQuestion(const Error& error) const {
    const std::string& question =
        progress_.stretch() == Stretch::background ? order_.otherThanGraphic : order_.otherThanFile;
    const bool isMissing =
        error.number() == runtime::errFileNotFound && (progress_.stretch() == Stretch::background || !accepted_);
    return isMissing && !question.empty() ? error.at("(" + question + ")") : error;
}

JobEnd ReportJob::endBy(const Error& error) const {
    JobEnd end;
    end.reason = "Fehler " + std::to_string(error.number()) + ": " + error.message();
    end.printer = printer_ ? printer_->DeviceName() : "";
    end.pagesPrinted = printer_ ? printer_->PagesHandedOver() : 0;
    end.fate = !accepted_                                  ? JobEnd::Fate::notAccepted
               : printed_                                  ? JobEnd::Fate::printed
               : printer_ && printer_->PerhapsHandedOver() ? JobEnd::Fate::perhapsPrinted
                                                           : JobEnd::Fate::notPrinted;
    return end;
}

// Says where the job is, or why it is nowhere but with the host.
std::string ReportJob::keep(const JobEnd& end) {
    if (!accepted_ || printed_) {
        return {};
    }
    try {
        kept_.finish(end, printText_, printer_.get());
    } catch (const Error& error) {
        const std::string whereabouts = kept_.whereabouts();
        return whereabouts.empty() ? "Die Druckdatei konnte nicht aufbewahrt werden: " + error.message()
                                   : whereabouts + " Der Text ist unvollständig: " + error.message();
    }
    return kept_.whereabouts();
}

void ReportJob::commonEnd() noexcept {
    attempt([this] { failure_.offerLog(); });
    letHostGo();
}

void ReportJob::letHostGo() noexcept {
    ended_ = true;
    const auto write = [this] { WriteOKFile(session_); };
    if (order_.blnWait && !ofOKFile_ && !attempt(write)) {
        std::string().swap(printText_);
        attempt(write);
    }
}

}  // namespace

std::string DoReport(session::Session& session, const JobOrder& order, const LetEventsRun& letEventsRun) {
    try {
        return ReportJob(session, order, letEventsRun).run();
    } catch (const std::bad_alloc&) {
        session.platform.dialogs.outOfMemory();
        if (order.blnWait) {
            WriteOKFile(session);
        }
        return runtime::describe(runtime::errOutOfMemory);
    }
}

}  // namespace report::MPrint
