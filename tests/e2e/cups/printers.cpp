// Drives the printers of the Linux adapter from a shell, with the modules beside it: every argument is a call of the
// spooler, its words separated by "|"; the answer is printed as lines of text, an error as "error CODE DETAIL".
//   names   default   running   record|PRINTER   bins|PRINTER   jobs|PRINTER   admin|PRINTER   purge|PRINTER
//   set-default|PRINTER   device|PRINTER   text|CODE   print|PRINTER|TITLE|PAGE|PAGE...
// A page is its text, before it what is set for it: "bin=2,paper=9,turn=2,color=1:Text".
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/linux/spool/linux_spooler.h"

namespace {

using platform::PageOption;
using Words = std::vector<std::string>;

Words split(const std::string& text, char separator) {
    Words words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, separator);) {
        words.push_back(word);
    }
    return words;
}

void describe(platform::PrintDocument& document) {
    const platform::DeviceCapabilities page = document.surface().capabilities();
    std::cout << "page " << page.horzRes << ' ' << page.vertRes << ' ' << page.logPixelsX << ' ' << page.logPixelsY
              << ' ' << page.physicalWidth << ' ' << page.physicalHeight << ' ' << page.physicalOffsetX << ' '
              << page.physicalOffsetY << "\noptions " << document.option(PageOption::paperSize) << ' '
              << document.option(PageOption::paperBin) << ' ' << document.option(PageOption::orientation) << ' '
              << document.option(PageOption::colorMode) << '\n';
}

void printPage(platform::PrintDocument& document, const std::string& page) {
    static const std::map<std::string, PageOption> names = {{"bin", PageOption::paperBin},
                                                            {"paper", PageOption::paperSize},
                                                            {"turn", PageOption::orientation},
                                                            {"color", PageOption::colorMode}};
    const std::size_t colon = page.find(':');
    if (colon != std::string::npos) {
        for (const std::string& setting : split(page.substr(0, colon), ',')) {
            const Words words = split(setting, '=');
            document.setOption(names.at(words.at(0)), std::stoi(words.at(1)));
        }
    }
    document.beginPage();
    const std::string text = colon == std::string::npos ? page : page.substr(colon + 1);
    document.surface().drawText(0, 0, text, {200, 0, 0}, platform::TextRole::content);
    document.endPage();
}

void print(platform::Spooler& spooler, const Words& words) {
    const auto document = spooler.openDocument(words.at(1), words.at(2));
    platform::FontRequest font;
    font.name = "Courier New";
    font.emHeight = document->surface().capabilities().logPixelsY / 6;
    document->surface().setFont(font);
    for (std::size_t i = 3; i < words.size(); ++i) {
        printPage(*document, words[i]);
    }
    document->end();
}

void record(const platform::PrinterRecord& printer) {
    std::cout << "name " << printer.name << "\nserver " << printer.serverName << "\nshare " << printer.shareName
              << "\nport " << printer.portName << "\ndriver " << printer.driverName << "\ncomment " << printer.comment
              << "\nlocation " << printer.location << "\nattributes " << printer.attributes << "\npriority "
              << printer.priority << ' ' << printer.defaultPriority << "\nstatus " << printer.status << "\njobs "
              << printer.jobs << "\nppm " << printer.averagePpm << '\n';
}

void call(platform::Spooler& spooler, const Words& words) {
    const std::string& what = words.at(0);
    if (what == "names") {
        for (const std::string& name : spooler.printerNames()) {
            std::cout << name << '\n';
        }
    } else if (what == "default") {
        std::cout << spooler.defaultPrinter() << '\n';
    } else if (what == "running") {
        std::cout << spooler.serviceRunning() << '\n';
    } else if (what == "record") {
        record(spooler.printer(words.at(1)));
    } else if (what == "bins") {
        for (const platform::PaperBin& bin : spooler.paperBins(words.at(1))) {
            std::cout << bin.number << ' ' << bin.name << '\n';
        }
    } else if (what == "jobs") {
        std::cout << spooler.jobCount(words.at(1)) << '\n';
    } else if (what == "admin") {
        std::cout << spooler.canAdminister(words.at(1)) << '\n';
    } else if (what == "purge") {
        spooler.purge(words.at(1));
    } else if (what == "set-default") {
        spooler.setDefaultPrinter(words.at(1));
    } else if (what == "device") {
        describe(*spooler.openDocument(words.at(1), "Probe"));
    } else if (what == "text") {
        std::cout << spooler.errorText(static_cast<std::uint32_t>(std::stoul(words.at(1)))) << '\n';
    } else if (what == "print") {
        print(spooler, words);
    } else {
        std::cout << "unknown call " << what << '\n';
    }
}

}  // namespace

int main(int count, char** arguments) {
    platform_linux::LinuxSpooler spooler([] { return platform_linux::dosCodePage(850); }, "Test");
    for (int i = 1; i < count; ++i) {
        try {
            call(spooler, split(arguments[i], '|'));
        } catch (const platform::SpoolerError& error) {
            std::cout << "error " << error.code() << ' ' << error.detail() << '\n';
        } catch (const runtime::Error& error) {
            std::cout << "error " << error.number() << ' ' << error.message() << '\n';
        }
        std::cout.flush();
    }
    return 0;
}
