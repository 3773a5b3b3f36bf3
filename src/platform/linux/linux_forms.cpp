#include "platform/linux/linux_forms.h"

#include "platform/linux/printer_folder.h"
#include "runtime/error.h"

namespace platform_linux {

std::unique_ptr<platform::Form> LinuxForms::create(const platform::FormDesign& design, platform::FormEvents& events,
                                                   platform::Form* owner) {
    if (qt::Desktop* desktop = desktop_.get(Trial::displayOnly)) {
        return desktop->createForm(design, events, owner);
    }
    throw runtime::Error(runtime::errPermissionDenied,
                         "Das Fenster „" + design.title +
                             "“ braucht einen Bildschirm, und hier antwortet keiner. Bitte in einem Fenster der "
                             "Arbeitsoberfläche starten; über SSH mit „ssh -X“, damit DISPLAY gesetzt ist");
}

void LinuxForms::run() {
    if (qt::Desktop* desktop = desktop_.ifLoaded()) {
        desktop->runForms();
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

std::string LinuxForms::showPrinterFolder() { return openPrinterFolder(); }

}  // namespace platform_linux
