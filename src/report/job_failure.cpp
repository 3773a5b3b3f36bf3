#include "report/job_failure.h"

#include "printer/CPrinterInfo.h"
#include "printer/printer_choice.h"

namespace report {

namespace {

using platform::Buttons;
using platform::Icon;
using runtime::Error;

std::string becomeOf(const JobEnd& end) {
    switch (end.fate) {
        case JobEnd::Fate::notAccepted:
            return "abgebrochen";
        case JobEnd::Fate::notPrinted:
            return end.pagesPrinted > 0 ? "nur bis Seite " + std::to_string(end.pagesPrinted) + " gedruckt"
                                        : "nicht gedruckt";
        case JobEnd::Fate::perhapsPrinted:
            return "vielleicht gedruckt";
        case JobEnd::Fate::printed:
            return "gedruckt, aber";
    }
    return {};
}

std::string numbered(const Error& error) { return std::to_string(error.number()) + " " + error.description(); }

std::string failureOf(const Error& error) {
    return "Fehler " + std::to_string(error.number()) + ": " + error.message();
}

std::string backgroundText(const Error& error, const std::string& shownFile) {
    return "Fehler beim Laden der Grafikdatei " + shownFile + " auf.\r\nNummer: " + std::to_string(error.number()) +
           ", " + error.description();
}

}  // namespace

std::string failureText(Stretch stretch, const Error& error, const std::string& sGrafikname) {
    return stretch == Stretch::background ? "Es trat ein " + backgroundText(error, runtime::shown(sGrafikname))
                                          : failureOf(error);
}

void JobFailure::report(Stretch stretch, const Error& error, const JobEnd& end, const std::string& whereabouts) {
    tellUser(error, end, whereabouts);
    switch (stretch) {
        case Stretch::general:
            logGeneral(error);
            break;
        case Stretch::driver:
            reportDriver(error);
            break;
        case Stretch::background:
            reportBackground(error);
            break;
        case Stretch::page:
            logPage(error, end.printer);
            break;
    }
}

void JobFailure::logGeneral(const Error& error) {
    session_.log.line(">     Allgemeiner Fehler in DoReport ", numbered(error));
    if (session_.log.writes()) {
        logService();
    }
}

// Only for the log, because the answer may take seconds for which the host waits.
void JobFailure::logService() {
    const platform::ServiceState state = session_.platform.spooler.serviceState();
    if (state == platform::ServiceState::silent) {
        session_.log.detail(">     Die Auskunft über die Druckwarteschlange antwortet nicht");
    }
    if (state != platform::ServiceState::running) {
        session_.log.line(">     DRUCKWARTESCHLANGE ist nicht gestartet!!! ");
    }
}

void JobFailure::reportDriver(const Error& error) {
    const std::string text = "Fehler beim Ansprechen des Druckertreibers " + numbered(error);
    session_.log.line(">     ", text);
    showBox(text);
}

void JobFailure::reportBackground(const Error& error) {
    const std::string text = backgroundText(error, sGrafikname_);
    session_.log.line(">     Hintergrundbild laden ", text);
    showBox("Es trat ein " + text);
}

void JobFailure::logPage(const Error& error, const std::string& deviceName) {
    session_.log.line(">     DoPage Fehler in DoReport ", numbered(error));
    const printer::CPrinterInfo info(session_.platform.spooler, session_.platform.printJobs, deviceName);
    info.tell(session_.activity());
    session_.log.line(">       Druckerstatus: ", info.StatusText());
}

void JobFailure::reportCancel() {
    session_.platform.dialogs.diagnostic("Druckauftrag '" + sDateiname_ + "' vom Benutzer abgebrochen.");
    session_.log.line(">     Druckauftrag vom Benutzer abgebrochen");
}

void JobFailure::reportNoPrinters(const std::string& whereabouts) {
    const std::string reason = printer::noPrinterReason(session_.program);
    if (!whereabouts.empty()) {
        const std::string text = "Druckauftrag '" + sDateiname_ + "' nicht gedruckt. " + whereabouts + " " + reason;
        session_.platform.dialogs.diagnostic(text);
        notify(text);
    }
    session_.log.line(">   ", reason, " ", printer::jobCancelled);
    if (!attended_) {
        printer::showNoPrinter(session_);
    }
}

void JobFailure::offerLog() {
    if (!session_.log.debugging()) {
        return;
    }
    const auto answer =
        session_.platform.dialogs.messageBox("Es traten Fehler bei " + session_.program.name + " auf, diese anzeigen?",
                                             Buttons::yesNo, Icon::none, session_.program.title);
    if (answer == platform::Answer::yes) {
        session_.platform.dialogs.showTextFile(session_.program.name + ".log");
    }
}

// Log and boxes have no room for the detail, and say nothing of where the job is.
void JobFailure::tellUser(const Error& error, const JobEnd& end, const std::string& whereabouts) {
    const std::string job = "Druckauftrag '" + sDateiname_ + "' " + becomeOf(end);
    std::string reason = failureOf(error);
    reason += reason.ends_with('.') || whereabouts.empty() ? "" : ".";
    const std::string blank = whereabouts.empty() ? "" : " ";
    const bool printed = end.fate == JobEnd::Fate::printed;
    session_.platform.dialogs.diagnostic(job + (printed ? " " : ", ") + reason + blank + whereabouts);
    if (!printed) {
        // A notification may be cut off: what can be read later, beside the job, comes last.
        notify(job + (whereabouts.empty() ? ", " : ". ") + whereabouts + blank + reason);
    }
}

void JobFailure::showBox(const std::string& text) {
    if (!attended_) {
        session_.platform.dialogs.messageBox(text, Buttons::ok, Icon::critical, "KrvWinPr");
    }
}

void JobFailure::notify(const std::string& text) {
    if (!attended_) {
        session_.platform.dialogs.notify(text);
    }
}

}  // namespace report
