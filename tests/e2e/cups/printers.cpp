// Asks the printers of the Linux adapter what no print file asks: every argument is a call of the spooler, its words
// separated by "|"; the answer is lines of text, an error is "error CODE DETAIL".
//   names   default   set-default|PRINTER   record|PRINTER   bins|PRINTER   jobs|PRINTER   admin|PRINTER purge|PRINTER
//   print|PRINTER|TITLE|PAGE|PAGE...
// A page is "BIN PAPER ORIENTATION COLOUR TEXT".
#include <iostream>
#include <sstream>
#include <string>

#include "platform/linux/code_page.h"
#include "platform/linux/spool/linux_printing.h"

namespace {

std::string nextWord(std::istream& words) {
    std::string word;
    std::getline(words, word, '|');
    return word;
}

void print(platform::PrintDocument& document, std::istream& pages) {
    using platform::PageOption;
    platform::FontRequest font;
    font.name = "Courier New";
    font.emHeight = document.surface().capabilities().logPixelsY / 6;
    document.surface().setFont(font);
    while (pages.good()) {
        std::istringstream page(nextWord(pages));
        for (const PageOption option :
             {PageOption::paperBin, PageOption::paperSize, PageOption::orientation, PageOption::colorMode}) {
            int value = 0;
            page >> value;
            document.setOption(option, value);
        }
        std::string text;
        page >> text;
        document.beginPage();
        document.surface().drawText(0, 0, text, {200, 0, 0}, platform::TextRole::content);
        document.endPage();
    }
    document.end();
}

void call(platform::Spooler& spooler, platform::PrintJobs& jobs, const std::string& what, const std::string& name,
          std::istream& words) {
    if (what == "names") {
        for (const std::string& printer : spooler.printerNames()) {
            std::cout << printer << '\n';
        }
    } else if (what == "default") {
        std::cout << spooler.defaultPrinter() << '\n';
    } else if (what == "set-default") {
        spooler.setDefaultPrinter(name);
    } else if (what == "record") {
        const platform::PrinterRecord record = spooler.printer(name);
        std::cout << record.driverName << '\n' << record.comment << '\n' << record.location << '\n';
        std::cout << record.portName.substr(0, record.portName.find('/')) << '\n' << record.attributes << '\n';
        std::cout << record.status << ' ' << record.jobs << ' ' << record.averagePpm << ' ' << record.priority << '\n';
    } else if (what == "bins") {
        for (const platform::PaperBin& bin : spooler.paperBins(name)) {
            std::cout << bin.number << ' ' << bin.name << '\n';
        }
    } else if (what == "jobs") {
        std::cout << jobs.count(name) << '\n';
    } else if (what == "admin") {
        std::cout << spooler.canAdminister(name) << '\n';
    } else if (what == "purge") {
        jobs.purge(name);
    } else {
        const std::string title = nextWord(words);
        print(*spooler.openDocument(name, title), words);
    }
}

}  // namespace

int main(int count, char** arguments) {
    platform_linux::spool::LinuxPrinting printing({[] { return platform_linux::dosCodePage(850); }, "Test"});
    for (int i = 1; i < count; ++i) {
        std::istringstream words(arguments[i]);
        const std::string what = nextWord(words);
        try {
            call(printing.spooler(), printing.jobs(), what, nextWord(words), words);
        } catch (const platform::SpoolerError& error) {
            std::cout << "error " << error.code() << ' ' << error.detail() << '\n';
        } catch (const runtime::Error& error) {
            std::cout << "error " << error.number() << ' ' << error.message() << '\n';
        }
    }
    return 0;
}
