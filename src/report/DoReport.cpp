#include "report/DoReport.h"

#include <memory>
#include <new>
#include <optional>

#include "graphics/picture_cache.h"
#include "printer/Printer.h"
#include "printer/PrinterChoice.h"
#include "report/Background.h"
#include "report/Completion.h"
#include "report/HplaserIni.h"
#include "report/JobFailure.h"
#include "report/JobState.h"
#include "report/PageCutter.h"
#include "report/PageInterpreter.h"
#include "report/PrinterGeometry.h"
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
constexpr std::uint8_t secondSetOffset = 10;  // of the macro numbers of "Grafik_A"
constexpr const char* fontName = "Courier New";
constexpr runtime::Currency baseFontSize = 12_cur;

struct JobOrder {
    const std::string& sDateiname;
    const std::string& sGrafikname;
    const std::string& sDruckerTreiber;
    bool blnWait;
    bool blnTwoPass;
};

class ReportJob {
public:
    ReportJob(session::Session& session, const JobOrder& order)
        : session_(session),
          log_(session.log),
          order_(order),
          failure_(session, order.sDateiname, order.sGrafikname),
          pictures_(session.platform.system, session.platform.imageFiles) {}

    void run();

private:
    void printReport();
    void readPrintFile();
    void earlyHandshake();
    void choosePrinter();
    void loadSettings();
    void readGraphicSettings();
    void logSettings();
    void setPaperSize();
    void setColorMode();
    void setFont();
    void printPages();
    void printPage(PageInterpreter& interpreter, std::string_view page);
    void toPageStart();
    void lateHandshake();

    void report(const Error& error);
    void commonEnd();
    template <typename Step>
    void attempt(Step step);

    printer::Printer& printer() { return *printer_; }

    session::Session& session_;
    session::DebugLog& log_;
    const JobOrder& order_;
    JobFailure failure_;
    Stretch stretch_ = Stretch::general;

    std::string printText_;
    std::optional<std::string> namedPrinter_;  // the printer that the order names, where it is installed
    std::unique_ptr<printer::Printer> printer_;
    std::int32_t lngColorMode_ = 0;
    graphics::PictureCache pictures_;
    JobState state_;
};

void ReportJob::run() {
    try {
        log_.line(">   DoReport (sDateiname='", order_.sDateiname, "', sGrafikname='", order_.sGrafikname,
                  "', sDruckerTreiber='", order_.sDruckerTreiber, "', blnWait='",
                  runtime::booleanText(order_.blnWait, session_.locale()), "')");
        if (!session_.platform.spooler.hasPrinters()) {
            failure_.reportNoPrinters();
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
    LogPrinterGeometry(session_, printer());
    loadSettings();
    readGraphicSettings();
    logSettings();
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
    namedPrinter_ = printer::installedPrinter(session_.platform.spooler, order_.sDruckerTreiber);
    printer_ = printer::choosePrinter(session_, namedPrinter_, std::string(runtime::fileNameOf(order_.sDateiname)));
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
    HplaserIni settings(session_, pictures_);
    log_.line(">   Grafikdaten aus ", folder, "HPLASER.INI verarbeiten");
    settings.AutoScaleDPI();
    log_.line(">     Grafik");
    settings.ReadGrafikPositionen(state_.colGrafik, "Grafik", 0, state_.sngScaleFactor);
    log_.line(">     Grafik_A");
    settings.ReadGrafikPositionen(state_.colGrafikA, "Grafik_A", secondSetOffset, state_.sngScaleFactor);
    log_.line(">   Grafikdaten aus HPLASER.INI verarbeitet");
    log_.line(">   Barcodeeinstellungen aus ", folder, "HPLASER.INI lesen");
    state_.dblBarcodeHeight = settings.GetBarcodeHeight();
    log_.line(">   Barcodehöhe: ", runtime::doubleText(state_.dblBarcodeHeight, session_.locale()));
}

void ReportJob::logSettings() {
    log_.line(">   Zeilenabstand: ", std::to_string(state_.lngZeilenabstand));
    log_.line(">   Kopfabstand: ", std::to_string(state_.lngKopfabstand));
    log_.line(">   Linker Rand: ", std::to_string(state_.lngLinkerRand));
    log_.line(">   ScaleFaktor: ", runtime::singleText(state_.sngScaleFactor, session_.locale()));
    log_.line(">   ColorMode (0=Def,1=Mono,2=Color): ", std::to_string(lngColorMode_));
}

void ReportJob::setPaperSize() {
    stretch_ = Stretch::driver;
    const std::string ignore = MRegistry::GetRegistryValue(
        session_.platform.settings, MRegistry::printerKey(printer().DeviceName()), "IgnorePaperSize", "0");
    int paperSize = printer::paperA4;
    if (ignore != "0") {
        const int current = printer().Option(PageOption::paperSize);
        paperSize = current == 0 ? printer::paperA4 : current;
    }
    printer().Option(PageOption::paperSize, paperSize);
    stretch_ = Stretch::general;
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
    Background background(session_, pictures_, order_.sGrafikname);
    std::int16_t pageNumber = 1;
    std::optional<std::string_view> page = cutter.nextPage();
    SelectTray(session_, printer(), cutter.requestedTray());
    while (page) {
        log_.line(">     bearbeite Seite: ", std::to_string(pageNumber));
        toPageStart();
        if (background.wanted()) {
            stretch_ = Stretch::background;
            background.draw(printer());
            stretch_ = Stretch::general;
        }
        state_.blnZeileBegonnen = false;
        log_.line(">     DoPage bearbeitet Seite");
        stretch_ = Stretch::page;
        printPage(interpreter, *page);
        stretch_ = Stretch::general;
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

void ReportJob::printPage(PageInterpreter& interpreter, std::string_view page) {
    const auto pass = [&](bool graphics, bool text) {
        state_.blnGrafikAusgeben = graphics;
        state_.blnTextAusgeben = text;
        interpreter.DoPage(page);
    };
    if (!order_.blnTwoPass) {
        pass(true, true);
        return;
    }
    log_.line(">       DoPage Phase 1, nur Grafiken ausgeben");
    pass(true, false);
    log_.line(">       DoPage Phase 2, nur Text ausgeben");
    toPageStart();
    pass(false, true);
}

void ReportJob::toPageStart() {
    printer().CurrentY(state_.lngKopfabstand);
    printer().CurrentX(state_.lngLinkerRand);
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
    attempt([&] { failure_.report(stretch_, error, printer_ ? printer().DeviceName() : ""); });
    attempt([this] {
        if (printer_) {
            printer().Release();
        }
    });
    attempt([this] { commonEnd(); });
}

void ReportJob::commonEnd() {
    attempt([this] { failure_.offerLog(); });
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
