#include "report/DoReport.h"

#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "printer/CPrinterInfo.h"
#include "printer/Printer.h"
#include "printer/clsDrucker.h"
#include "report/Completion.h"
#include "report/JobState.h"
#include "report/PageCutter.h"
#include "report/PageInterpreter.h"
#include "report/TraySelection.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "settings/DruckerEinstellungen.h"
#include "settings/MRegistry.h"

namespace MPrint {

namespace {

using platform::Buttons;
using platform::Icon;
using platform::PageOption;
using runtime::Error;
using namespace runtime::literals;

constexpr int spoolerTimeOutSeconds = 10;
constexpr const char* fontName = "Courier New";
constexpr runtime::Currency baseFontSize = 12_cur;
constexpr const char* errorBoxTitle = "KrvWinPr";

std::string numbered(const Error& error) { return std::to_string(error.number()) + " " + error.description(); }

struct JobOrder {
    const std::string& sDateiname;
    const std::string& sGrafikname;
    const std::string& sDruckerTreiber;
    bool blnWait;
    bool blnTwoPass;
};

class ReportJob {
public:
    ReportJob(session::Session& session, const JobOrder& order) : session_(session), log_(session.log), order_(order) {}

    void run();

private:
    // Where an error is reported as; each stretch of the job has its own.
    enum class Handler { general, driver, background, page };

    void printReport();
    void readPrintFile();
    void earlyHandshake();
    void choosePrinter();
    void logGeometry();
    void loadSettings();
    void readGraphicSettings();
    void setPaperSize();
    void setColorMode();
    void setFont();
    void printPages();
    void drawBackground();
    void printPage(std::string_view page);
    void toPageStart();
    void lateHandshake();

    void reportNoPrinters();
    void report(const Error& error);
    void reportGeneral(const Error& error);
    void reportDriver(const Error& error);
    void reportBackground(const Error& error);
    void reportPage(const Error& error);
    void tellShell(const Error& error);
    void releasePages();
    void commonEnd();
    template <typename Step>
    void attempt(Step step);

    std::string single(float value) const { return runtime::singleText(value, session_.locale()); }
    printer::Printer& printer() { return *printer_; }

    session::Session& session_;
    session::DebugLog& log_;
    const JobOrder& order_;
    Handler handler_ = Handler::general;

    std::string printText_;
    std::optional<std::string> namedPrinter_;  // the printer that the order names, where it is installed
    std::unique_ptr<printer::Printer> printer_;
    std::int32_t lngColorMode_ = 0;
    JobState state_;
    bool backgroundNoticeGiven_ = false;
};

void ReportJob::run() {
    try {
        log_.line(">   DoReport (sDateiname='", order_.sDateiname, "', sGrafikname='", order_.sGrafikname,
                  "', sDruckerTreiber='", order_.sDruckerTreiber, "', blnWait='",
                  runtime::booleanText(order_.blnWait, session_.locale()), "')");
        if (!session_.platform.spooler.hasPrinters()) {
            reportNoPrinters();
            commonEnd();
            return;
        }
        printReport();
    } catch (const Error& error) {
        report(error);
    } catch (const std::bad_alloc&) {
        report(Error(runtime::errOutOfMemory, "'" + order_.sDateiname + "' ist zu groß"));
    }
}

void ReportJob::printReport() {
    readPrintFile();
    earlyHandshake();
    choosePrinter();
    logGeometry();
    loadSettings();
    readGraphicSettings();
    setPaperSize();
    setColorMode();
    setFont();
    printPages();
    lateHandshake();
}

void ReportJob::readPrintFile() {
    printText_ = session_.platform.system.readFile(order_.sDateiname);
    log_.line(">   ", order_.sDateiname, " gelesen");
}

// Without "/WAIT" the host goes on as soon as its print file has been read; what it does not wait for comes behind.
void ReportJob::earlyHandshake() {
    if (order_.blnWait) {
        log_.line(">   KRVWINPR.OK übersprungen wegen /WAIT-Parameter");
        return;
    }
    WriteOKFile(session_);
    log_.line(">   KRVWINPR.OK ausgegeben");
    session_.storeSettings();
}

void ReportJob::choosePrinter() {
    platform::Spooler& spooler = session_.platform.spooler;
    if (!order_.sDruckerTreiber.empty()) {
        const std::string wanted = runtime::upperCase(order_.sDruckerTreiber);
        for (const std::string& name : spooler.printerNames()) {
            if (runtime::upperCase(name) == wanted) {
                namedPrinter_ = name;
                break;
            }
        }
    }
    printer_ = std::make_unique<printer::Printer>(spooler, namedPrinter_ ? *namedPrinter_ : spooler.defaultPrinter(),
                                                  std::string(runtime::fileNameOf(order_.sDateiname)));
    log_.line(">   verwendeter Druckertreiber: ", printer().DeviceName());
}

void ReportJob::logGeometry() {
    clsDrucker geometry(session_.platform.dialogs);
    geometry.NewPrinter(printer().Device());
    log_.line(">   Ränder (links;oben; rechts;unten) cm: ", single(geometry.LeftMarginCM()), ";",
              single(geometry.TopMarginCM()), ";", single(geometry.RightMarginCM()), ";",
              single(geometry.BottomMarginCM()));
    const float twipsX = printer().TwipsPerPixelX();
    const float twipsY = printer().TwipsPerPixelY();
    const float pixelsX = runtime::toSingle(printer::twipsPerInch / twipsX);
    const float pixelsY = runtime::toSingle(printer::twipsPerInch / twipsY);
    const std::int32_t width = runtime::roundToLong(printer().ScaleWidth());
    const std::int32_t height = runtime::roundToLong(printer().ScaleHeight());
    log_.line(">   TwipsPerPixel (X,Y): ", single(twipsX), ", ", single(twipsY));
    log_.line(">   Pixel pro mm (X,Y): ", single(pixelsX), ", ", single(pixelsY));
    log_.line(">   Bedruckbarer Bereich (Breite x Höhe): ", std::to_string(width), " x ", std::to_string(height));
    log_.line(">   Bedruckbarer Bereich (Breite x Höhe) in cm: ", single(static_cast<float>(width) / pixelsX), ", ",
              single(static_cast<float>(height) / pixelsY));
    log_.line(">   Physische Größe in cm (X,Y): ", single(geometry.PhysicalWidthCM()), ", ",
              single(geometry.PhysicalHeightCM()));
}

void ReportJob::loadSettings() {
    log_.line(">   Registry verarbeiten");
    const auto settings =
        MRegistry::DruckerEinstellungenLaden(session_, printer().DeviceName(), printer().Option(PageOption::colorMode));
    state_.lngZeilenabstand = settings.lngZeilenabstand;
    state_.lngKopfabstand = settings.lngKopfabstand;
    state_.lngLinkerRand = settings.lngLinkerRand;
    state_.sngScaleFactor = settings.sngScaleFaktor;
    lngColorMode_ = settings.lngColorMode;
    log_.line(">   Registry verarbeitet");
}

void ReportJob::readGraphicSettings() {
    const std::string folder = runtime::AddBackslash(session_.platform.system.currentDirectory());
    log_.line(">   Grafikdaten aus ", folder, "HPLASER.INI verarbeiten");
    log_.line(">     Grafik");
    log_.line(">     Grafik_A");
    log_.line(">   Grafikdaten aus HPLASER.INI verarbeitet");
    log_.line(">   Barcodeeinstellungen aus ", folder, "HPLASER.INI lesen");
    log_.line(">   Barcodehöhe: ", runtime::doubleText(state_.dblBarcodeHeight, session_.locale()));

    log_.line(">   Zeilenabstand: ", std::to_string(state_.lngZeilenabstand));
    log_.line(">   Kopfabstand: ", std::to_string(state_.lngKopfabstand));
    log_.line(">   Linker Rand: ", std::to_string(state_.lngLinkerRand));
    log_.line(">   ScaleFaktor: ", single(state_.sngScaleFactor));
    log_.line(">   ColorMode (0=Def,1=Mono,2=Color): ", std::to_string(lngColorMode_));
}

void ReportJob::setPaperSize() {
    handler_ = Handler::driver;
    const std::string ignore = MRegistry::GetRegistryValue(
        session_.platform.settings, MRegistry::printerKey(printer().DeviceName()), "IgnorePaperSize", "0");
    int paperSize = printer::paperA4;
    if (ignore != "0") {
        const int current = printer().Option(PageOption::paperSize);
        paperSize = current == 0 ? printer::paperA4 : current;
    }
    printer().Option(PageOption::paperSize, paperSize);
    handler_ = Handler::general;
}

void ReportJob::setColorMode() {
    const auto logColorMode = [this] {
        log_.line(">   Printer.ColorMode (0=Def,1=Mono,2=Color): ",
                  std::to_string(printer().Option(PageOption::colorMode)));
    };
    logColorMode();
    if (lngColorMode_ != 0) {
        log_.line(">   Printer.ColorMode setzen: ", std::to_string(lngColorMode_));
        printer().Option(PageOption::colorMode, lngColorMode_);
        logColorMode();
    }
}

void ReportJob::setFont() {
    printer::FontStyle font;
    font.name = fontName;
    font.charset = platform::charsetOem;
    font.size = baseFontSize;
    const platform::FontFace face = printer().Font(font);
    if (face.name != fontName || face.charset != platform::charsetOem) {
        const std::string notice = std::string("Hinweis: Der Zeichensatz '") + fontName +
                                   "' ist auf Ihrem System nicht installiert oder unterstützt keinen erweiterten "
                                   "Zeichensatz!";
        log_.line(">   ", notice);
        session_.platform.dialogs.messageBox(notice, Buttons::ok, Icon::critical, session_.program.title);
    }
    log_.line(">   Druckerzeichensatz: ", face.name);
    log_.line(">   Zeichensatz: ", std::to_string(face.charset));
    state_.curFontSize = baseFontSize;
}

void ReportJob::printPages() {
    log_.line(">   Druckbeginn");
    PageCutter cutter(printText_);
    PageInterpreter interpreter(session_, printer(), state_);
    std::int16_t pageNumber = 1;
    std::optional<std::string_view> page = cutter.nextPage();
    SelectTray(session_, printer(), cutter.requestedTray());
    while (page) {
        log_.line(">     bearbeite Seite: ", std::to_string(pageNumber));
        toPageStart();
        drawBackground();
        state_.blnZeileBegonnen = false;
        log_.line(">     DoPage bearbeitet Seite");
        handler_ = Handler::page;
        const auto pass = [&](bool graphics, bool text) {
            state_.blnGrafikAusgeben = graphics;
            state_.blnTextAusgeben = text;
            interpreter.DoPage(*page);
        };
        if (order_.blnTwoPass) {
            log_.line(">       DoPage Phase 1, nur Grafiken ausgeben");
            pass(true, false);
            log_.line(">       DoPage Phase 2, nur Text ausgeben");
            toPageStart();
            pass(false, true);
        } else {
            pass(true, true);
        }
        handler_ = Handler::general;
        log_.line(">     DoPage hat Seite bearbeitet");
        page = cutter.nextPage();
        if (page) {
            printer().NewPage();
            SelectTray(session_, printer(), cutter.requestedTray());
            pageNumber = runtime::addInteger(pageNumber, 1);
        }
    }
    log_.line(">   Druckende");
    printer().EndDoc();
}

void ReportJob::toPageStart() {
    printer().CurrentY(state_.lngKopfabstand);
    printer().CurrentX(state_.lngLinkerRand);
}

void ReportJob::drawBackground() {
    if (order_.sGrafikname.empty() || runtime::upperCase(order_.sGrafikname) == "KEINEGRAFIK") {
        return;
    }
    log_.line(">     Hintergrundbild laden: ", order_.sGrafikname);
    handler_ = Handler::background;
    if (!session_.platform.system.fileExists(order_.sGrafikname)) {
        throw Error(runtime::errFileNotFound, order_.sGrafikname);
    }
    if (!std::exchange(backgroundNoticeGiven_, true)) {
        session_.platform.dialogs.diagnostic("Hintergrundbilder kann diese Fassung noch nicht drucken; '" +
                                             order_.sGrafikname + "' wird ausgelassen.");
    }
    handler_ = Handler::general;
}

void ReportJob::lateHandshake() {
    if (!order_.blnWait) {
        return;
    }
    log_.line(">   Warte auf leeren Druckerspooler");
    WaitForSpoolerFinished(session_, namedPrinter_ ? &*namedPrinter_ : nullptr, spoolerTimeOutSeconds);
    WriteOKFile(session_);
    log_.line(">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben");
}

void ReportJob::reportNoPrinters() {
    const std::string reason = "Es sind keine Windowsdruckertreiber auf diesem Rechner installiert. Deshalb kann " +
                               session_.program.name + " nicht drucken.";
    const std::string consequence = "Druckauftrag wurde abgebrochen.";
    log_.line(">   ", reason, " ", consequence);
    session_.platform.dialogs.messageBox(reason + "\r\r" + consequence, Buttons::ok, Icon::critical,
                                         session_.program.title);
}

// Each step of a report is tried, whatever becomes of the others: the host must get its file, and the user what has
// been printed, also when the log cannot be written.
template <typename Step>
void ReportJob::attempt(Step step) {
    try {
        step();
    } catch (const Error& error) {
        session_.platform.dialogs.diagnostic(error.message());
    }
}

void ReportJob::report(const Error& error) {
    attempt([&] {
        switch (handler_) {
            case Handler::general:
                reportGeneral(error);
                break;
            case Handler::driver:
                reportDriver(error);
                break;
            case Handler::background:
                reportBackground(error);
                break;
            case Handler::page:
                reportPage(error);
                break;
        }
    });
    attempt([this] { releasePages(); });
    attempt([this] { commonEnd(); });
}

void ReportJob::reportGeneral(const Error& error) {
    tellShell(error);
    log_.line(">     Allgemeiner Fehler in DoReport ", numbered(error));
    if (!session_.platform.spooler.serviceRunning()) {
        log_.line(">     DRUCKWARTESCHLANGE ist nicht gestartet!!! ");
    }
}

void ReportJob::reportDriver(const Error& error) {
    const std::string text = "Fehler beim Ansprechen des Druckertreibers " + numbered(error);
    log_.line(">     ", text);
    session_.platform.dialogs.messageBox(text, Buttons::ok, Icon::critical, errorBoxTitle);
}

void ReportJob::reportBackground(const Error& error) {
    const std::string text = "Fehler beim Laden der Grafikdatei " + order_.sGrafikname +
                             " auf.\r\nNummer: " + std::to_string(error.number()) + ", " + error.description();
    log_.line(">     Hintergrundbild laden ", text);
    session_.platform.dialogs.messageBox("Es trat ein " + text, Buttons::ok, Icon::critical, errorBoxTitle);
}

void ReportJob::reportPage(const Error& error) {
    tellShell(error);
    log_.line(">     DoPage Fehler in DoReport ", numbered(error));
    log_.line(">       Druckerstatus: ", CPrinterInfo(session_.platform.spooler, printer().DeviceName()).StatusText());
}

// These errors go to the log only; whoever typed the command wants to see them all the same.
void ReportJob::tellShell(const Error& error) {
    session_.platform.dialogs.diagnostic("Druckauftrag '" + order_.sDateiname + "' abgebrochen, Fehler " +
                                         std::to_string(error.number()) + ": " + error.message());
}

void ReportJob::releasePages() {
    if (printer_) {
        printer().Release();
    }
}

void ReportJob::commonEnd() {
    if (log_.debugging()) {
        attempt([this] {
            const auto answer = session_.platform.dialogs.messageBox(
                "Es traten Fehler bei " + session_.program.name + " auf, diese anzeigen?", Buttons::yesNo, Icon::none,
                session_.program.title);
            if (answer == platform::Answer::yes) {
                session_.platform.dialogs.showTextFile(session_.program.name + ".log");
            }
        });
    }
    if (order_.blnWait) {
        WriteOKFile(session_);
    }
}

}  // namespace

void DoReport(session::Session& session, const std::string& sDateiname, const std::string& sGrafikname,
              const std::string& sDruckerTreiber, bool blnWait, bool blnTwoPass) {
    ReportJob(session, {sDateiname, sGrafikname, sDruckerTreiber, blnWait, blnTwoPass}).run();
}

}  // namespace MPrint
