#include "report/hplaser_ini.h"
#include "report/print_run.h"
#include "report/stored_option.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "settings/MRegistry.h"
#include "settings/printer_settings.h"

namespace report {

namespace {

using platform::PageOption;
using namespace runtime::literals;

constexpr std::uint8_t secondSetOffset = 10;  // of the macro numbers of "Grafik_A"
constexpr const char* fontName = "Courier New";
constexpr runtime::Currency baseFontSize = 12_cur;

void loadSettings(PrintRun& run) {
    session::DebugLog& log = run.session.log;
    log.line(">   Registry verarbeiten");
    run.state.settings =
        settings::loadPrinterSettings(run.session, run.printer.DeviceName(), run.printer.Option(PageOption::colorMode));
    log.line(">   Registry verarbeitet");
}

void readGraphicSettings(PrintRun& run) {
    session::DebugLog& log = run.session.log;
    JobState& state = run.state;
    const std::string folder = runtime::AddBackslash(run.session.platform.system.currentDirectory());
    HplaserIni ini(run.session, run.pictures);
    log.line(">   Grafikdaten aus ", folder, "HPLASER.INI verarbeiten");
    ini.AutoScaleDPI();
    log.line(">     Grafik");
    ini.ReadGrafikPositionen(state.colGrafik, "Grafik", 0, state.settings.sngScaleFaktor);
    log.line(">     Grafik_A");
    ini.ReadGrafikPositionen(state.colGrafikA, "Grafik_A", secondSetOffset, state.settings.sngScaleFaktor);
    log.line(">   Grafikdaten aus HPLASER.INI verarbeitet");
    log.line(">   Barcodeeinstellungen aus ", folder, "HPLASER.INI lesen");
    state.dblBarcodeHeight = ini.GetBarcodeHeight();
    log.line(">   Barcodehöhe: ", runtime::doubleText(state.dblBarcodeHeight, run.session.locale()));
}

void logSettings(PrintRun& run) {
    session::DebugLog& log = run.session.log;
    const settings::PrinterSettings& loaded = run.state.settings;
    log.line(">   Zeilenabstand: ", std::to_string(loaded.lngZeilenabstand));
    log.line(">   Kopfabstand: ", std::to_string(loaded.lngKopfabstand));
    log.line(">   Linker Rand: ", std::to_string(loaded.lngLinkerRand));
    log.line(">   ScaleFaktor: ", runtime::singleText(loaded.sngScaleFaktor, run.session.locale()));
    log.line(">   ColorMode (0=Def,1=Mono,2=Color): ", std::to_string(loaded.lngColorMode));
}

void setPaperSize(PrintRun& run) {
    const std::string& deviceName = run.printer.DeviceName();
    const bool ignored = settings::ignoresPaperSize(run.session.platform.settings, deviceName);
    int paperSize = platform::paperA4;
    if (ignored) {
        const int current = run.printer.Option(PageOption::paperSize);
        paperSize = current == 0 ? platform::paperA4 : current;
    }
    setStoredOption(run.printer, PageOption::paperSize, paperSize, [&] {
        return settings::unusableValue(run.session, settings::MRegistry::printerKey(deviceName),
                                       settings::ignorePaperSizeName, ignored ? "1" : "0",
                                       (ignored ? "0, denn der Drucker „" : "1, denn der Drucker „") + deviceName +
                                           "“ nimmt das Papierformat " + std::to_string(paperSize) + " nicht an");
    });
}

void setColorMode(PrintRun& run) {
    session::DebugLog& log = run.session.log;
    const auto logColorMode = [&] {
        log.line(">   Printer.ColorMode (0=Def,1=Mono,2=Color): ",
                 std::to_string(run.printer.Option(PageOption::colorMode)));
    };
    const std::int32_t lngColorMode = run.state.settings.lngColorMode;
    logColorMode();
    if (lngColorMode != 0) {
        log.line(">   Printer.ColorMode setzen: ", std::to_string(lngColorMode));
        setStoredOption(run.printer, PageOption::colorMode, lngColorMode, [&] {
            return settings::unusableValue(run.session, settings::MRegistry::printerKey(run.printer.DeviceName()),
                                           settings::colorModeName, std::to_string(lngColorMode),
                                           "0 (wie der Treiber), 1 (schwarzweiß) oder 2 (farbig)");
        });
        logColorMode();
    }
}

void setFont(PrintRun& run) {
    session::DebugLog& log = run.session.log;
    printer::FontStyle font;
    font.name = fontName;
    font.charset = platform::charsetOem;
    font.size = baseFontSize;
    const platform::FontFace face = run.printer.Font(font);
    if (face.name != fontName || face.charset != platform::charsetOem) {
        const std::string notice = std::string("Hinweis: Der Zeichensatz '") + fontName +
                                   "' ist auf Ihrem System nicht installiert oder unterstützt keinen erweiterten "
                                   "Zeichensatz!";
        log.line(">   ", notice);
        run.session.platform.dialogs.messageBox(notice, platform::Buttons::ok, platform::Icon::critical,
                                                run.session.program.title);
    }
    log.line(">   Druckerzeichensatz: ", face.name);
    log.line(">   Zeichensatz: ", std::to_string(face.charset));
    run.state.type.curFontSize = baseFontSize;
}

}  // namespace

void preparePrinter(PrintRun& run) {
    loadSettings(run);
    readGraphicSettings(run);
    logSettings(run);
    run.progress.during(Stretch::driver, [&] { setPaperSize(run); });
    setColorMode(run);
    setFont(run);
}

}  // namespace report
