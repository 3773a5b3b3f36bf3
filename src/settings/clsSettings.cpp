#include "settings/clsSettings.h"

#include "runtime/error.h"
#include "runtime/utf8.h"
#include "settings/xml_check.h"

namespace settings {

namespace {

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

clsPrnSetting settingOf(const platform::XmlNode& printer) {
    clsPrnSetting setting;
    for (const platform::XmlAttribute& attribute : printer.attributes) {
        setting.set(attribute.name, attribute.value);
    }
    return setting;
}

}  // namespace

void clsSettings::Load(const std::string& path) {
    if (!session_.platform.system.fileExists(path)) {
        return;
    }
    session_.log.line("> ParseValidationOn");
    const platform::XmlDocument document = parsed(path);
    if (!document.error.empty()) {
        session_.log.line("> ValidationError: ", runtime::shown(document.error));
    } else {
        InitExportJobs(document.root);
    }
}

platform::XmlDocument clsSettings::parsed(const std::string& path) {
    platform::System& system = session_.platform.system;
    try {
        if (system.fileSize(path) > largestXmlFile) {
            return {{}, tooLargeForXml};
        }
        const std::string content = system.readFile(path);
        const std::string refusal = xmlRefusal(content);
        return !refusal.empty()   ? platform::XmlDocument{{}, refusal}
               : isBlank(content) ? platform::XmlDocument()
                                  : session_.platform.xmlFiles.parse(content);
    } catch (const runtime::Error& error) {
        return {{}, error.message()};
    }
}

void clsSettings::InitExportJobs(const platform::XmlNode& root) {
    if (root.name != "Korvano-Printer-Settings") {
        return;
    }
    for (const platform::XmlNode& node : root.children) {
        if (node.name == "Printer") {
            settings_.Add(settingOf(node));
        } else if (node.name != "#text" || !isBlank(node.value)) {
            session_.log.line("> InitExportJobs, Unbekannter Node: ", runtime::shown(node.name));
        }
    }
}

}  // namespace settings
