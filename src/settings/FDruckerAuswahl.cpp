#include "settings/FDruckerAuswahl.h"

#include <algorithm>
#include <utility>

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "settings/MRegistry.h"
#include "settings/druckerauswahl_design.h"
#include "settings/printer_settings.h"
#include "settings/selection_file.h"

namespace settings {

namespace {

struct TextSetting {
    const char* control;
    std::string_view value;
};

constexpr std::array textSettings = {
    TextSetting{"txtLinkerRand", leftMargin.name},
    TextSetting{"txtObererRand", topMargin.name},
    TextSetting{"txtZeilenabstand", lineSpacing.name},
    TextSetting{"txtScaleFaktor", scaleFactor.name},
};

constexpr std::array trayLists = {"cboSchacht1", "cboSchacht2", "cboSchacht3"};

// What only the unfolded form shows; the graphic test stays in the tab order, where the fold hides it as well.
constexpr std::array unfoldedControls = {"txtLinkerRand",    "txtObererRand", "txtZeilenabstand", "txtScaleFaktor",
                                         "cmdStandardwerte", "cboSchacht1",   "cboSchacht2",      "cboSchacht3",
                                         "cmdTestseite",     "cmdSchachtTest"};

const TextSetting* textSettingOf(std::string_view control) {
    const auto* const found = std::find_if(textSettings.begin(), textSettings.end(),
                                           [&](const TextSetting& setting) { return setting.control == control; });
    return found != textSettings.end() ? found : nullptr;
}

// Empty where the printer has gone meanwhile.
platform::PrinterRecord recordOf(platform::Spooler& spooler, const std::string& name) {
    try {
        return spooler.printer(name);
    } catch (const platform::SpoolerError&) {
        return {};
    }
}

}  // namespace

FDruckerAuswahl::FDruckerAuswahl(session::Session& session, RunReport runReport)
    : session_(session), runReport_(std::move(runReport)), trays_(session), testPrints_(session, trays_) {}

void FDruckerAuswahl::Show() {
    form_ = session_.platform.forms.create(designOfDruckerAuswahl(), *this);
    Form_Load();
    form_->show();
    if (!trouble_.empty()) {
        session_.platform.dialogs.messageBox(
            trouble_ +
                "\r\n\r\nEs werden nicht alle Drucker gezeigt; bitte die Druckerauswahl später noch einmal öffnen.",
            platform::Buttons::ok, platform::Icon::critical, session_.program.title);
    }
}

void FDruckerAuswahl::Form_Load() {
    form_->setHeight(heightAtFirst);
    session_.log.line(">   Vorgabeauswahl setzen");
    std::string remembered = readSelectionFile(session_.platform.system);
    fillPrinterList(remembered);
    preselect(std::move(remembered));
    if (printers_.empty() || trays_.CountPrinterBins(printer()) == 0) {
        return;
    }
    session_.log.line(">   vorhandene Schächte ermitteln");
    loading_ = true;
    fillTrayLists();
    session_.log.line(">   Schachtauswahl aus Registrierung lesen");
    selectStoredBins();
    loading_ = false;
    session_.log.line(">   Schächte gesetzt");
}

// Where the printers cannot be asked for, those that are known all the same: so that OK leaves the choice as it is.
std::vector<std::string> FDruckerAuswahl::printersToShow(const std::string& remembered) {
    platform::Spooler& spooler = session_.platform.spooler;
    try {
        return spooler.printerNames();
    } catch (const platform::SpoolerError& error) {
        std::vector<std::string> known;
        for (const std::string& name : {remembered, spooler.builtinPrinter()}) {
            if (!runtime::trimBlanks(name).empty() && std::find(known.begin(), known.end(), name) == known.end()) {
                known.push_back(name);
            }
        }
        if (known.empty()) {
            throw;
        }
        trouble_ = error.message();
        return known;
    }
}

void FDruckerAuswahl::fillPrinterList(const std::string& remembered) {
    session::DebugLog& log = session_.log;
    log.line(">   vorhandene Druckertreiber Liste hinzufügen");
    platform::Spooler& spooler = session_.platform.spooler;
    printers_ = printersToShow(remembered);
    for (const std::string& name : log.writes() ? printers_ : std::vector<std::string>()) {
        const platform::PrinterRecord record = recordOf(spooler, name);
        log.line(">     '", runtime::shown(name), "'  '", runtime::shown(record.driverName), "'  '",
                 runtime::shown(record.portName), "'");
    }
    form_->setItems("List1", printers_);
    log.line(">   Liste zugewiesene Druckertreiber: ", std::to_string(printers_.size()));
}

void FDruckerAuswahl::preselect(std::string remembered) {
    constexpr std::string_view found = "GEFUNDEN";
    session::DebugLog& log = session_.log;
    log.line(">   Vorgabeauswahl in Liste aktivieren '", runtime::shown(remembered), "'");
    const auto select = [this](std::size_t index) {
        form_->select("List1", static_cast<int>(index));
        List1_Click();
    };
    for (std::size_t i = 0; !runtime::trimBlanks(remembered).empty() && i < printers_.size(); ++i) {
        if (printers_[i] == remembered) {
            select(i);
            log.line(">   Vorgabeauswahldrucker gefunden ", std::to_string(i));
            remembered = found;
        }
    }
    // A file that holds the marker itself leaves the list without a selection.
    if (remembered != found) {
        log.line(">   kein Vorgabedrucker gefunden");
        select(0);
        log.line(">   Index auf ersten Eintrag gesetzt");
    }
}

void FDruckerAuswahl::List1_Click() {
    session::DebugLog& log = session_.log;
    log.line(">   Index setzen ", std::to_string(form_->selected("List1")), " von ", std::to_string(printers_.size()));
    trays_.forget();
    const bool hasBins = trays_.CountPrinterBins(printer()) != 0;
    if (hasBins) {
        fillTrayLists();
    } else {
        for (std::size_t tray = 0; tray < trayCount; ++tray) {
            binLists_[tray] = BinList::withoutBins();
            showTrayList(tray);
        }
    }
    showSettings();
    if (trays_.CountPrinterBins(printer()) != 0) {
        log.line(">   Schachtzuordnungen aus Registrierung lesen");
        selectStoredBins();
    }
}

void FDruckerAuswahl::fillTrayLists() {
    for (std::size_t tray = 0; tray < trayCount; ++tray) {
        trays_.FillBinList(binLists_[tray], printer());
        showTrayList(tray);
    }
}

void FDruckerAuswahl::selectStoredBins() {
    for (std::size_t tray = 0; tray < trayCount; ++tray) {
        const std::string stored = MRegistry::GetRegistryValue(session_.platform.settings, printerKey(),
                                                               settings::trays[tray].name, std::to_string(noBin));
        const double number = runtime::numberPrefix(stored, '.');
        if (number != 0) {
            binLists_[tray].selectNumber(number);
            form_->select(trayLists[tray], binLists_[tray].selected);
        }
    }
}

void FDruckerAuswahl::showTrayList(std::size_t tray) {
    form_->setItems(trayLists[tray], binLists_[tray].names);
    form_->select(trayLists[tray], binLists_[tray].selected);
}

void FDruckerAuswahl::showSettings() {
    for (const TextSetting& setting : textSettings) {
        form_->setText(setting.control, MRegistry::GetRegistryValue(session_.platform.settings, printerKey(),
                                                                    setting.value, defaultOf(setting.control)));
        changed(setting.control);
    }
}

void FDruckerAuswahl::clicked(const std::string& control) {
    using Handler = void (FDruckerAuswahl::*)();
    struct Row {
        std::string_view control;
        Handler handler;
    };
    static constexpr std::array rows = {
        Row{"List1", &FDruckerAuswahl::List1_Click},
        Row{"cmdOK", &FDruckerAuswahl::cmdOK_Click},
        Row{"cmdAbbruch", &FDruckerAuswahl::cmdAbbruch_Click},
        Row{"cmdDruckerordner", &FDruckerAuswahl::cmdDruckerordner_Click},
        Row{"cmdErweitert", &FDruckerAuswahl::cmdErweitert_Click},
        Row{"cmdStandardwerte", &FDruckerAuswahl::cmdStandardwerte_Click},
        Row{"cmdTestseite", &FDruckerAuswahl::DoTestdruck},
        Row{"cmdSchachtTest", &FDruckerAuswahl::DoSchachtTest},
        Row{"cmdGrafikseite", &FDruckerAuswahl::DoGrafikTest},
    };
    if (busy_) {
        return;
    }
    const auto* const row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& known) { return known.control == control; });
    if (row != rows.end()) {
        (this->*row->handler)();
        return;
    }
    for (std::size_t tray = 0; tray < trayCount; ++tray) {
        if (control == trayLists[tray]) {
            binLists_[tray].selected = std::max(0, form_->selected(control));
            storeTray(tray);
        }
    }
}

void FDruckerAuswahl::doubleClicked(const std::string& control) {
    if (control == "List1") {
        clicked("cmdOK");
    }
}

void FDruckerAuswahl::changed(const std::string& control) {
    if (!loading_ && textSettingOf(control) != nullptr) {
        storeText(control, defaultOf(control));
    }
}

void FDruckerAuswahl::focused(const std::string& control) {
    if (textSettingOf(control) != nullptr) {
        form_->selectText(control);
    }
}

bool FDruckerAuswahl::accepts(const std::string& control, const std::string& text, char32_t character) {
    constexpr char32_t backspace = 8;
    if (control != "txtScaleFaktor") {
        // A filter stood here that no character failed; what was accepted stays accepted.
        return true;
    }
    const bool digit = character >= U'0' && character <= U'9';
    const bool firstComma = character == U',' && text.find(',') == std::string::npos;
    return digit || firstComma || character == backspace;
}

void FDruckerAuswahl::closed() { session_.platform.forms.closeAll(); }

void FDruckerAuswahl::cmdOK_Click() {
    try {
        writeSelectionFile(session_.platform.system, printer());
        form_->close();
    } catch (const runtime::Error& error) {
        session_.platform.dialogs.messageBox(
            "Die Auswahl kann nicht gespeichert werden; der Host druckt weiter über den bisherigen Drucker.\r\n\r\n" +
                error.message(),
            platform::Buttons::ok, platform::Icon::critical, session_.program.title);
    }
}

void FDruckerAuswahl::cmdAbbruch_Click() { form_->close(); }

void FDruckerAuswahl::cmdDruckerordner_Click() {
    if (const std::string remedy = session_.platform.forms.showPrinterFolder(); !remedy.empty()) {
        session_.platform.dialogs.messageBox(remedy, platform::Buttons::ok, platform::Icon::information,
                                             session_.program.title);
    }
}

void FDruckerAuswahl::cmdErweitert_Click() {
    form_->setText("cmdErweitert", expanded_ ? captionUnfold : captionFold);
    for (const char* control : unfoldedControls) {
        form_->setTabStop(control, !expanded_);
    }
    form_->setHeight(expanded_ ? heightFolded : heightUnfolded);
    expanded_ = !expanded_;
}

void FDruckerAuswahl::cmdStandardwerte_Click() {
    for (const TextSetting& setting : textSettings) {
        form_->setText(setting.control, defaultOf(setting.control));
        storeText(setting.control, MRegistry::noDefault);
    }
    for (std::size_t tray = 0; tray < trayCount; ++tray) {
        binLists_[tray].selected = 0;
        form_->select(trayLists[tray], 0);
        storeTray(tray);
    }
}

void FDruckerAuswahl::DoTestdruck() {
    test("cmdTestseite", TestPrints::testPageQuestion,
         [this] { testPrints_.print(testPrints_.testPage(printer()), printer(), runReport_, progress()); });
}

void FDruckerAuswahl::DoSchachtTest() {
    test("cmdSchachtTest", TestPrints::trayTestQuestion,
         [this] { testPrints_.print(testPrints_.trayTest(printer()), printer(), runReport_, progress()); });
}

void FDruckerAuswahl::DoGrafikTest() {
    test("cmdGrafikseite", TestPrints::graphicTestQuestion,
         [this] { testPrints_.printWithLog(testPrints_.graphicTest(printer()), printer(), runReport_, progress()); });
}

void FDruckerAuswahl::test(const std::string& button, std::string_view question, const std::function<void()>& print) {
    platform::Dialogs& dialogs = session_.platform.dialogs;
    busy_ = true;
    form_->setEnabled(button, false);
    try {
        if (dialogs.messageBox(std::string(question), platform::Buttons::okCancel, platform::Icon::none,
                               session_.program.title) == platform::Answer::ok) {
            print();
        }
    } catch (const runtime::Error& error) {
        dialogs.messageBox("Der Test kann nicht gedruckt werden.\r\n\r\n" + error.message(), platform::Buttons::ok,
                           platform::Icon::critical, session_.program.title);
    }
    form_->setTitle(titleOfDruckerAuswahl);
    form_->setEnabled(button, true);
    busy_ = false;
}

std::function<void()> FDruckerAuswahl::progress() {
    constexpr std::int64_t pause = 100;  // milliseconds
    constexpr std::int64_t second = 1000;
    const std::int64_t start = session_.platform.system.elapsedMilliseconds();
    return [this, start, painted = start]() mutable {
        const std::int64_t now = session_.platform.system.elapsedMilliseconds();
        if (now - painted < pause) {
            return;
        }
        painted = now;
        if (const std::int64_t seconds = (now - start) / second; seconds > 0) {
            form_->setTitle(std::string(titleOfDruckerAuswahl) + " - Testdruck läuft (" + std::to_string(seconds) +
                            " s)");
        }
        form_->repaint();
    };
}

std::string FDruckerAuswahl::printer() const {
    const int index = form_->selected("List1");
    return index < 0 ? std::string() : printers_[static_cast<std::size_t>(index)];
}

std::string FDruckerAuswahl::printerKey() const { return MRegistry::listedPrinterKey(printer()); }

std::string FDruckerAuswahl::defaultOf(const std::string& control) const {
    if (control == "txtScaleFaktor") {
        return runtime::singleText(scaleFactor.byDefault, session_.locale());
    }
    const Setting<std::int32_t>& setting = control == "txtObererRand"      ? topMargin
                                           : control == "txtZeilenabstand" ? lineSpacing
                                                                           : leftMargin;
    return std::to_string(setting.byDefault);
}

void FDruckerAuswahl::storeText(const std::string& control, std::string_view byDefault) {
    store(textSettingOf(control)->value, std::string(runtime::trimBlanks(form_->text(control))), byDefault);
}

void FDruckerAuswahl::storeTray(std::size_t tray) {
    if (!loading_) {
        store(settings::trays[tray].name, std::to_string(binLists_[tray].selectedNumber()), std::to_string(noBin));
    }
}

// What the store does not take is not told: the edit stays to be seen, and the next one tries again.
void FDruckerAuswahl::store(std::string_view name, const std::string& text, std::string_view byDefault) {
    if (printer().empty()) {
        return;
    }
    platform::SettingsStore& settings = session_.platform.settings;
    MRegistry::SetRegistryValue(settings, printerKey(), name, text, byDefault);
    settings.commit();
}

}  // namespace settings
