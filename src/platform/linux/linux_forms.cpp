#include "platform/linux/linux_forms.h"

#include "platform/linux/desktop.h"
#include "platform/linux/detached_start.h"
#include "platform/linux/mail_program.h"
#include "platform/linux/module.h"
#include "platform/linux/printer_folder.h"
#include "runtime/error.h"

namespace platform_linux {

std::unique_ptr<platform::Form> LinuxForms::create(const platform::FormDesign& design, platform::FormEvents& events,
                                                   platform::Form* owner) {
    if (qt::Desktop* desktop = desktop_.get(Trial::displayOnly)) {
        return desktop->createForm(design, events, owner);
    }
    const std::string package = packageToInstall("qt");
    const std::string install = package.empty() ? "" : "Bitte das Paket " + package + " installieren";
    if (!package.empty() && desktopNamed()) {
        throw runtime::Error(runtime::errPermissionDenied,
                             install + "; es enthält, was das Fenster „" + design.title + "“ braucht");
    }
    throw runtime::Error(
        runtime::errPermissionDenied,
        "Das Fenster „" + design.title +
            "“ braucht einen Bildschirm, und hier antwortet keiner. Bitte in einem Fenster der Arbeitsoberfläche "
            "starten; über SSH mit „ssh -X“, damit DISPLAY gesetzt ist" +
            (install.empty() ? "" : ". " + install));
}

void LinuxForms::run() {
    if (qt::Desktop* desktop = desktop_.ifLoaded()) {
        desktop->runForms();
    }
}

void LinuxForms::serve() {
    if (qt::Desktop* desktop = desktop_.ifLoaded()) {
        desktop->processEvents();
    }
}

void LinuxForms::closeAll() {
    if (qt::Desktop* desktop = desktop_.ifLoaded()) {
        desktop->closeForms();
    }
}

void LinuxForms::copyText(const std::string& text) {
    if (qt::Desktop* desktop = desktop_.ifLoaded()) {
        desktop->copyText(text);
    }
}

std::optional<std::string> LinuxForms::askFileToWrite(platform::Form& owner, const std::string& title,
                                                      const std::string& suggestion, const std::string& kindOfFile,
                                                      const std::string& ending) {
    qt::Desktop* desktop = desktop_.ifLoaded();
    return desktop != nullptr ? desktop->askFileToWrite(owner, title, suggestion, kindOfFile, ending) : std::nullopt;
}

std::optional<std::string> LinuxForms::askFileToRead(platform::Form& owner, const std::string& title,
                                                     const std::string& folder) {
    qt::Desktop* desktop = desktop_.ifLoaded();
    return desktop != nullptr ? desktop->askFileToRead(owner, title, folder) : std::nullopt;
}

// Where no file manager says on the message bus that it is there, the folder alone is opened, without the file marked.
bool LinuxForms::showInFolder(const std::string& path) {
    const auto openFolder = [folder = path.substr(0, path.rfind('/') + 1)] {
        return DetachedStart().start({"xdg-open", folder.empty() ? "." : folder});
    };
    qt::Desktop* desktop = desktop_.ifLoaded();
    return (desktop != nullptr && desktop->markInFileManager(path, openFolder)) || openFolder();
}

bool LinuxForms::composeMail(const std::string& subject, const std::string& text) { return openMail(subject, text); }

std::string LinuxForms::showPrinterFolder() { return openPrinterFolder(); }

}  // namespace platform_linux
