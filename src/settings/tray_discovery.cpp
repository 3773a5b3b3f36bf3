#include "settings/tray_discovery.h"

#include <algorithm>
#include <iterator>

#include "runtime/text.h"
#include "runtime/utf8.h"

namespace settings {

namespace {

// The room that a driver has for a name; what it does not need of it is null characters.
constexpr std::size_t nameRoom = 24;

std::size_t charactersOf(std::string_view name) {
    return static_cast<std::size_t>(
        std::count_if(name.begin(), name.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string allNames(const std::vector<platform::PaperBin>& bins) {
    std::string buffer;
    for (const platform::PaperBin& bin : bins) {
        buffer += bin.name;
        buffer.append(nameRoom - std::min(nameRoom, charactersOf(bin.name)), '\0');
    }
    return runtime::shown(buffer);
}

}  // namespace

void BinList::selectNumber(double number) {
    const auto found = std::find(numbers.begin(), numbers.end(), number);
    selected = found == numbers.end() ? 0 : static_cast<int>(std::distance(numbers.begin(), found));
}

std::size_t TrayDiscovery::CountPrinterBins(const std::string& name) {
    const std::string shown = runtime::shown(name);
    session_.log.line(">   vorhandene Schächte bei Treiber '", shown, "' ermitteln");
    session_.activity().printer = name;
    const std::size_t count = binsOf(name).size();
    session_.log.line(">   vorhandene Schächte bei Treiber '", shown, "' ermittelt: ", std::to_string(count));
    return count;
}

void TrayDiscovery::FillBinList(BinList& list, const std::string& name) {
    session::DebugLog& log = session_.log;
    const std::string shown = runtime::shown(name);
    list = BinList();
    log.line(">   ermitteln der Schachtnamen bei Treiber '", shown, "'");
    const std::vector<platform::PaperBin>& bins = binsOf(name);
    if (printerIsKnown_) {
        log.line(">     Schächte: ", std::to_string(bins.size()));
        log.line(">     Platz für Schachtnamen reserviert");
        log.line(">     Schachtnamen von API anfordern");
        log.line(">     Schachtnamen von API ermittelt");
    }
    for (const platform::PaperBin& bin : bins) {
        const auto number = static_cast<std::int16_t>(bin.number);
        log.line(">     Schachtnamen zusammensetzen, NamesList: '", allNames(bins), "'");
        log.line(">     Schachtnamen auf eigentliche Länge begrenzen");
        log.line(">     Schachtnamen: '", runtime::shown(bin.name), "' Nr: ", std::to_string(number));
        list.names.push_back(bin.name);
        list.numbers.push_back(number);
        log.line(">     Schachtnamen für Combobox gesetzt");
    }
    if (list.names.empty()) {
        list = BinList::withoutBins();
        log.line(">     es konnte kein Schachtname ermittelt werden");
    }
    log.line(">   Schachtnamen bei Treiber '", shown, "' ermittelt");
}

const std::vector<platform::PaperBin>& TrayDiscovery::binsOf(const std::string& name) {
    if (!known_ || name != name_) {
        name_ = name;
        bins_.clear();
        printerIsKnown_ = false;
        ask();
        known_ = true;
    }
    return bins_;
}

void TrayDiscovery::ask() {
    if (name_.empty() || ask(name_)) {
        return;
    }
    const std::string wanted = runtime::upperCase(name_);
    try {
        const std::vector<std::string> printers = session_.platform.spooler.printerNames();
        const auto found = std::find_if(printers.begin(), printers.end(), [&](const std::string& printer) {
            return runtime::upperCase(printer) == wanted;
        });
        if (found != printers.end()) {
            ask(*found);
        }
    } catch (const platform::SpoolerError&) {
        // Then no bin is known.
    }
}

// Whether it need not be asked by another name: an answer came, or none within the time that the user waits.
bool TrayDiscovery::ask(const std::string& printer) {
    try {
        bins_ = session_.platform.spooler.paperBins(printer);
        printerIsKnown_ = true;
        return true;
    } catch (const platform::SpoolerError& error) {
        return error.mayPass();
    }
}

}  // namespace settings
