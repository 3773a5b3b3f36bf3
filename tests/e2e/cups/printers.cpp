// Asks the printers of the Linux adapter what no print file asks: every argument is a call of the spooler, "CALL" or
// "CALL|PRINTER"; the answer is lines of text, an error is "error CODE DETAIL". "turned" prints a page that lies.
#include <algorithm>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <string>

#include "platform/linux/code_page.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/spool/linux_printing.h"

namespace {

void printTurned(platform::Spooler& spooler, const std::string& printer) {
    const auto document = spooler.openDocument(printer, "auftrag\\quer");
    document->setOption(platform::PageOption::orientation, 2);
    platform::FontRequest font;
    font.name = "Courier New";
    font.emHeight = document->surface().capabilities().logPixelsY / 6;
    document->beginPage();
    document->surface().setFont(font);
    document->surface().drawText(0, 0, "turned", {}, platform::TextRole::content);
    document->endPage();
    document->end();
}

void printRecord(const platform::PrinterRecord& record) {
    std::cout << record.driverName << '\n' << record.comment << '\n' << record.location << '\n';
    std::cout << record.portName.substr(0, record.portName.find('/')) << '\n' << record.attributes << '\n';
    std::cout << record.status << ' ' << record.jobs << ' ' << record.averagePpm << ' ' << record.priority << '\n';
}

}  // namespace

int main(int count, char** arguments) {
    platform_linux::LinuxSettingsStore settings("");
    platform_linux::spool::LinuxPrinting printing({[] { return platform_linux::dosCodePage(850); }, "Test"}, settings);
    platform::Spooler& spooler = printing.spooler();
    std::string name;
    const std::ostream_iterator<std::string> lines(std::cout, "\n");
    const auto binText = [](const platform::PaperBin& bin) { return std::to_string(bin.number) + ' ' + bin.name; };
    const std::map<std::string, std::function<void()>> calls = {
        {"names", [&] { std::ranges::copy(spooler.printerNames(), lines); }},
        {"default", [&] { std::cout << spooler.defaultPrinter() << '\n'; }},
        {"discover", [&] { std::cout << spooler.discover(name).value_or("(none)") << '\n'; }},
        {"set-default", [&] { spooler.setDefaultPrinter(name); }},
        {"record", [&] { printRecord(spooler.printer(name)); }},
        {"bins", [&] { std::ranges::transform(spooler.paperBins(name), lines, binText); }},
        {"jobs", [&] { std::cout << printing.jobs().count(name) << '\n'; }},
        {"admin", [&] { std::cout << spooler.canAdminister(name) << '\n'; }},
        {"purge", [&] { printing.jobs().purge(name); }},
        {"turned", [&] { printTurned(spooler, name); }},
    };
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        const std::size_t bar = std::min(argument.find('|'), argument.size());
        name = argument.substr(std::min(bar + 1, argument.size()));
        try {
            calls.at(argument.substr(0, bar))();
        } catch (const platform::SpoolerError& error) {
            std::cout << "error " << error.code() << ' ' << error.detail() << '\n';
        }
    }
}
