// The paper bins that a printer offers, as a list to choose from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"
#include "settings/printer_settings.h"

namespace settings {

inline constexpr std::string_view noBinText = "Kein Schacht vorhanden!";

// A list of bins; each item has the number under which the driver knows the bin, as settings store it.
struct BinList {
    std::vector<std::string> names;
    std::vector<std::int16_t> numbers;
    int selected = 0;

    // A printer of which no bin is known.
    static BinList withoutBins() { return {{std::string(noBinText)}, {noBin}, 0}; }

    // Selects the first item with that number, or else the first of all.
    void selectNumber(double number);
    std::int16_t selectedNumber() const { return numbers[static_cast<std::size_t>(selected)]; }
};

// Asks the printers. A printer is asked once until forget(): a driver or a server may take its time for an answer.
// Names of printers count in any case of letters. A printer that is unknown or does not answer has no bins.
class TrayDiscovery {
public:
    explicit TrayDiscovery(session::Session& session) : session_(session) {}

    void forget() { known_ = false; }

    std::size_t CountPrinterBins(const std::string& name);
    void FillBinList(BinList& list, const std::string& name);

private:
    const std::vector<platform::PaperBin>& binsOf(const std::string& name);
    void ask();
    bool ask(const std::string& printer);

    session::Session& session_;
    bool known_ = false;           // what follows
    bool printerIsKnown_ = false;  // to the spooler
    std::string name_;
    std::vector<platform::PaperBin> bins_;
};

}  // namespace settings
