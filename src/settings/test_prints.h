// The test prints of the printer selection: print files in the host's own language, run through the job driver.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "session/session.h"
#include "settings/tray_discovery.h"

namespace settings {

// Prints a file on the printer of that name, as the host's jobs are printed; calls the function as often as
// windows want to be painted, and oftener.
using RunReport =
    std::function<void(const std::string& file, const std::string& printer, const std::function<void()>& letEventsRun)>;

// Of a printer, by its device name. The page's own texts are in the DOS code page, which 437 and 850 have in common;
// names and the date are in the system's, as everything that the program writes.
class TestPrints {
public:
    TestPrints(session::Session& session, TrayDiscovery& discovery) : session_(session), trays_(discovery) {}

    static constexpr std::string_view testPageQuestion =
        "Dieser Test druckt 1 Seite aus dem bei Schacht1 hinterlegten Druckerschacht.";
    static constexpr std::string_view trayTestQuestion =
        "Dieser Test druckt insgesamt 6 Seiten, von jedem eingestellten Schacht\r\n"
        " jeweils 2 Blätter. Nutzen Sie nicht alle drei möglichen Schächte, dann\r\n"
        " stellen Sie den Schacht einfach auf automatische Auswahl oder Standard.\r\n"
        "Die siebte Seite druckt eine Auswahl von möglichen Schachtparametern.";
    static constexpr std::string_view graphicTestQuestion =
        "Dieser Test druckt eine Seite und versucht eine hinterlegte Grafik mitauszudrucken.\r\n"
        "Sollte keine Grafik hinterlegt sein, erscheint natürlich auch keine.";

    std::string testPage(const std::string& printer) const { return GetTestSeite(printer, "^TR1"); }
    std::string trayTest(const std::string& printer);
    std::string graphicTest(const std::string& printer) const;

    // Writes the print file and has it printed. It lies in the program's folder or, where that cannot be written, in
    // the user's own. Errors of writing it are runtime::Error.
    void print(const std::string& content, const std::string& printer, const RunReport& runReport,
               const std::function<void()>& letEventsRun);

    // The same with the debug log on, which then holds this run and nothing else.
    void printWithLog(const std::string& content, const std::string& printer, const RunReport& runReport,
                      const std::function<void()>& letEventsRun);

private:
    std::string GetTestSeite(const std::string& printer, std::string_view prefix) const;
    void pClearLogFile();
    bool FileExists(const std::string& path);
    std::string written(const std::string& content);
    std::string inSystemCodePage(const std::string& text) const;
    std::string now() const;

    session::Session& session_;
    TrayDiscovery& trays_;
};

}  // namespace settings
