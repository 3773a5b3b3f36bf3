#include "errorreport/FFehlerbericht.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "errorreport/fehlerbericht_design.h"
#include "runtime/error.h"
#include "runtime/text.h"

namespace errorreport {

namespace {

constexpr const char* subject = "Fehlerbericht von KRVWinPr";

}  // namespace

FFehlerbericht::FFehlerbericht(session::Session& session, ErrorReport report)
    : session_(session), report_(std::move(report)) {}

void FFehlerbericht::Show() {
    form_ = session_.platform.forms.create(designOfFehlerbericht(), *this);
    form_->setText("lblFehler", whatHappened(report_));
    form_->setText("lblAuftrag", whatBecame(report_));
    form_->setText("txtBericht", report_.text);
    form_->focus("cmdSchliessen");
    form_->show();
    markSeen(session_, report_);
}

void FFehlerbericht::clicked(const std::string& control) {
    if (control == "cmdKopieren") {
        session_.platform.forms.copyText(report_.text);
    } else if (control == "cmdSpeichern") {
        save();
    } else if (control == "cmdOrdner") {
        showFolder();
    } else if (control == "cmdSenden") {
        send();
    } else if (control == "cmdSchliessen") {
        form_->close();
    }
}

void FFehlerbericht::save() {
    platform::Platform& platform = session_.platform;
    const std::string suggestion =
        runtime::AddBackslash(platform.system.currentDirectory()) + "KRVWinPr-Fehlerbericht.txt";
    const std::optional<std::string> file =
        platform.forms.askFileToWrite(*form_, "Fehlerbericht speichern", suggestion, "Textdateien", ".txt");
    if (!file) {
        return;
    }
    try {
        constexpr const char* utf8Mark = "\xEF\xBB\xBF";
        platform.system.writeFile(*file, utf8Mark + report_.text + "\r\n");
    } catch (const runtime::Error& error) {
        tell("Der Bericht konnte nicht gespeichert werden.\r\n\r\n" + error.message());
    }
}

void FFehlerbericht::showFolder() {
    const std::string path = session_.platform.errorReports.logFile();
    if (!session_.platform.forms.showInFolder(path)) {
        tell(
            "Auf diesem Rechner ist kein Programm eingerichtet, das Ordner zeigt.\r\n\r\nDer Bericht steht in der "
            "Datei " +
            path);
    }
}

void FFehlerbericht::send() {
    if (!session_.platform.forms.composeMail(subject, report_.text)) {
        tell(
            "Auf diesem Rechner ist kein E-Mail-Programm eingerichtet.\r\n\r\nDer Bericht lässt sich mit „Kopieren“ "
            "oder „Speichern unter“ weitergeben.");
    }
}

void FFehlerbericht::tell(const std::string& text) {
    session_.platform.dialogs.messageBox(text, platform::Buttons::ok, platform::Icon::information,
                                         session_.program.title);
}

std::unique_ptr<FFehlerbericht> offerReport(session::Session& session) {
    std::optional<ErrorReport> report = newestUnseen(session);
    if (!report) {
        return nullptr;
    }
    auto form = std::make_unique<FFehlerbericht>(session, std::move(*report));
    try {
        form->Show();
    } catch (const runtime::Error& error) {
        session.platform.dialogs.diagnostic(error.message());
        return nullptr;
    }
    return form;
}

}  // namespace errorreport
