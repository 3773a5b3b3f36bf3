#include "settings/test_prints.h"

#include <array>
#include <utility>

#include "runtime/datetime.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "settings/MRegistry.h"
#include "settings/printer_settings.h"

namespace settings {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view lineEnd = "\r\n";
constexpr char formFeed = '\f';

// What stands above the table of characters, umlauts as DOS has them: ä 0x84, ö 0x94, ü 0x81, ß 0xE1.
constexpr std::array pageLines = {
    "^10^UE^FE^KETestdruck: Schriftattribute^UA^FA^KA"sv,
    ""sv,
    "Normalschrift"sv,
    "^BEBreitschrift^BA"sv,
    "^FEFettschrift^FA"sv,
    "Schattenschrift"sv,
    "^UEUnterstrichen^UA"sv,
    "^KEKursiv^KA"sv,
    "^HEHochgestellt^HA"sv,
    "^TETiefgestellt^TA"sv,
    "Sch\x94nschrift"sv,
    "Schnellschrift"sv,
    ""sv,
    ""sv,
    ""sv,
    "^UE^FE^KETestdruck: Schriftgr\x94\xE1"
    "en^UA^FA^KA"sv,
    ""sv,
    "^10Schriftgr\x94\xE1"
    "e: 10 CPI (Pica)."sv,
    "^12Schriftgr\x94\xE1"
    "e: 12 CPI (Elite)."sv,
    "^15Schriftgr\x94\xE1"
    "e: 15 CPI."sv,
    "^17Schriftgr\x94\xE1"
    "e: 17 CPI."sv,
    "^20Schriftgr\x94\xE1"
    "e: 20 CPI."sv,
    "^10"sv,
    ""sv,
    ""sv,
    "^UE^FE^KETestdruck: Randeinstellungen^UA^FA^KA"sv,
    ""sv,
    "^LR\0Normaler Rand."sv,
    "^LR\n10 Zeichen (Pica) einger\x81"
    "ckt."sv,
    "^LR\0"sv,
    ""sv,
    ""sv,
    "^UE^FE^KEerweiterte ASCII - Tabelle:^FA^UA^KA"sv,
    ""sv,
};

void addLine(std::string& text, std::string_view line) { text.append(line).append(lineEnd); }

void addCharacterTable(std::string& text) {
    constexpr int first = 128;
    constexpr int last = 255;
    constexpr int inOneLine = 8;
    for (int code = first; code <= last; ++code) {
        text.append(std::to_string(code)).append("='").append(1, static_cast<char>(code)).append("'");
        text.append((code + 1) % inOneLine == 0 ? lineEnd : "   "sv);
    }
}

}  // namespace

std::string TestPrints::GetTestSeite(const std::string& printer, std::string_view prefix) const {
    std::string page(prefix);
    for (const std::string_view line : pageLines) {
        addLine(page, line);
    }
    addCharacterTable(page);
    addLine(page, "");
    addLine(page, "");
    addLine(page, "Treiber: " + inSystemCodePage(printer));
    addLine(page, now());
    addLine(page, "");
    addLine(page, "Ende der Testseite");
    return page + formFeed;
}

std::string TestPrints::trayTest(const std::string& printer) {
    std::string text;
    for (const char* tray : {"1", "2", "3"}) {
        for (const char* sheet : {"1", "2"}) {
            text += GetTestSeite(printer, std::string("^TR") + tray + "Schacht" + tray + " Blatt" + sheet + "\r\n\r\n");
        }
    }
    if (trays_.CountPrinterBins(printer) > 0) {
        BinList cboSchaechte;
        trays_.FillBinList(cboSchaechte, printer);
        addLine(text,
                "m\x94gliche Sch\x84"
                "chte zur Auswahl:");
        for (std::size_t i = 0; i < cboSchaechte.names.size(); ++i) {
            addLine(text,
                    "  " + inSystemCodePage(cboSchaechte.names[i]) + ", " + std::to_string(cboSchaechte.numbers[i]));
        }
    } else {
        addLine(text, "Beim aktuellen Druckertreiber '" + inSystemCodePage(printer) +
                          "' sind keine Sch\x84"
                          "chte definiert!");
    }
    return text;
}

std::string TestPrints::graphicTest(const std::string& printer) const {
    std::string text;
    addLine(text, "^GRGR-Grafikdrucktest");
    addLine(text, "");
    addLine(text, "");
    addLine(text, "");
    addLine(text,
            "Scalefaktor: " + inSystemCodePage(MRegistry::GetRegistryValue(
                                  session_.platform.settings, MRegistry::listedPrinterKey(printer), scaleFactor.name,
                                  runtime::singleText(scaleFactor.byDefault, session_.locale()))));
    addLine(text, "Treiber: " + inSystemCodePage(printer));
    addLine(text, now());
    addLine(text, "");
    return text + formFeed;
}

void TestPrints::print(const std::string& content, const std::string& printer, const RunReport& runReport,
                       const std::function<void()>& letEventsRun) {
    runReport(written(content), printer, letEventsRun);
}

void TestPrints::printWithLog(const std::string& content, const std::string& printer, const RunReport& runReport,
                              const std::function<void()>& letEventsRun) {
    // Also where printing fails in a way that ends the test.
    struct Restored {
        session::DebugLog& log;
        bool before;
        ~Restored() { log.debugging(before); }
    };
    const std::string file = written(content);
    pClearLogFile();
    const Restored restored{session_.log, session_.log.debugging()};
    session_.log.debugging(true);
    runReport(file, printer, letEventsRun);
}

void TestPrints::pClearLogFile() {
    platform::System& system = session_.platform.system;
    const std::string file = system.currentDirectory() + "\\" + session_.program.name + ".log";
    if (FileExists(file)) {
        system.removeFile(file);
    }
}

bool TestPrints::FileExists(const std::string& path) { return session_.platform.system.fileExists(path); }

std::string TestPrints::written(const std::string& content) {
    constexpr std::string_view name = "TESTDRUC.OUT";
    platform::System& system = session_.platform.system;
    std::string file = runtime::AddBackslash(system.programDirectory()).append(name);
    try {
        system.writeFile(file, content);
        return file;
    } catch (const runtime::Error&) {
        // Where the program was installed for everybody its users may not write there.
    }
    platform::UserFiles& own = session_.platform.userFiles;
    std::string ownFile = own.folders("Testdruck").front().append(name);
    own.replace(ownFile, content);
    return ownFile;
}

std::string TestPrints::inSystemCodePage(const std::string& text) const {
    return session_.platform.system.toSystemCodePage(text);
}

std::string TestPrints::now() const {
    const runtime::DateTime time = session_.platform.system.localTime();
    return inSystemCodePage(runtime::dateText(time, session_.locale()) + " " +
                            runtime::timeText(time, session_.locale()));
}

}  // namespace settings
