// Reads a file of printer settings: XML, the element "Korvano-Printer-Settings" with an element "Printer" for each
// printer, whose attributes are named after the properties of clsPrnSetting. What is read is not used for printing yet.
#pragma once

#include <string>

#include "platform/xml_files.h"
#include "session/session.h"
#include "settings/clsPrnSettings.h"

namespace settings {

class clsSettings {
public:
    // The session is borrowed.
    explicit clsSettings(session::Session& session) : session_(session) {}

    // Adds the printers of the file. What is wrong with it is a line of the log, and then nothing is added; a missing
    // or empty file is nothing wrong, nor is another root element.
    void Load(const std::string& path);

    const clsPrnSettings& PrnSettings() const { return settings_; }

private:
    platform::XmlDocument parsed(const std::string& path);
    void InitExportJobs(const platform::XmlNode& root);

    session::Session& session_;
    clsPrnSettings settings_;
};

}  // namespace settings
