// Asks the printers of the Linux adapter what no print file asks: every argument is a call of the spooler, "CALL",
// "CALL|PRINTER", "CALL|PRINTER|JOB" or "CALL|PRINTER|JOB|PRIORITY"; the answer is lines of text, an error is "error
// CODE DETAIL". "turned" prints a page that lies; "watch" tells changes until its input ends.
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
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

void printJobs(const std::vector<platform::PrintJob>& jobs) {
    for (const platform::PrintJob& job : jobs) {
        std::cout << job.position << '|' << job.number << '|' << job.document << '|' << job.user << '|' << job.priority
                  << '|' << job.pagesPrinted << '|' << job.size << '|' << std::hex << job.status << std::dec << '|'
                  << job.statusText << '\n';
    }
}

void printChanges(const std::unique_ptr<platform::QueueWatch>& watch) {
    if (watch == nullptr) {
        std::cout << "no events\n";
        return;
    }
    constexpr int milliseconds = 50;
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    while (::poll(&input, 1, milliseconds) == 0) {
        if (watch->changed()) {
            std::cout << "changed" << std::endl;
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    platform_linux::LinuxSettingsStore settings("");
    platform_linux::spool::LinuxPrinting printing({[] { return platform_linux::dosCodePage(850); }, "Test"}, settings);
    platform::Spooler& spooler = printing.spooler();
    platform::PrintJobs& jobs = printing.jobs();
    std::string name;
    std::uint32_t job = 0;
    std::uint32_t priority = 0;
    const auto control = [&](platform::JobOperation operation) {
        return [&, operation] { jobs.control(name, job, operation); };
    };
    using platform::JobOperation;
    const std::ostream_iterator<std::string> lines(std::cout, "\n");
    const auto binText = [](const platform::PaperBin& bin) { return std::to_string(bin.number) + ' ' + bin.name; };
    const std::map<std::string, std::function<void()>> calls = {
        {"names", [&] { std::ranges::copy(spooler.printerNames(), lines); }},
        {"default", [&] { std::cout << spooler.defaultPrinter() << '\n'; }},
        {"discover", [&] { std::cout << spooler.discover(name).value_or("(none)") << '\n'; }},
        {"set-default", [&] { spooler.setDefaultPrinter(name); }},
        {"record", [&] { printRecord(spooler.printer(name)); }},
        {"bins", [&] { std::ranges::transform(spooler.paperBins(name), lines, binText); }},
        {"jobs", [&] { std::cout << jobs.count(name) << '\n'; }},
        {"admin", [&] { std::cout << spooler.canAdminister(name) << '\n'; }},
        {"purge", [&] { jobs.purge(name); }},
        {"list", [&] { printJobs(jobs.list(name)); }},
        {"pause", control(JobOperation::pause)},
        {"resume", control(JobOperation::resume)},
        {"cancel", control(JobOperation::cancel)},
        {"restart", control(JobOperation::restart)},
        {"to-front", control(JobOperation::toFront)},
        {"priority", [&] { jobs.setPriority(name, job, priority); }},
        {"resume-printer", [&] { jobs.resumePrinter(name); }},
        {"watch", [&] { printChanges(jobs.watch(name)); }},
        {"turned", [&] { printTurned(spooler, name); }},
    };
    for (int i = 1; i < count; ++i) {
        std::istringstream argument(arguments[i]);
        std::string call;
        std::getline(argument, call, '|');
        std::getline(argument, name, '|');
        char bar = 0;
        argument >> job >> bar >> priority;
        try {
            calls.at(call)();
        } catch (const platform::SpoolerError& error) {
            std::cout << "error " << error.code() << ' ' << error.detail() << '\n';
        }
    }
}
