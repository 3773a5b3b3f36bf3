// The printers of a Linux system: the queues of CUPS in their order, then the built-in printer "Korvano PDF".
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/code_page.h"
#include "platform/linux/spool/loaded_modules.h"
#include "platform/spooler.h"

namespace platform_linux {

// Without CUPS - not installed, or its scheduler is not running - there is the built-in printer alone, and that is no
// error. It is the default printer where CUPS names none, or one that it does not have. Making a spooler, and asking
// whether there are printers, loads nothing.
class LinuxSpooler : public platform::Spooler {
public:
    // The code page is that of the documents' texts, asked for when one is opened; the producer is the program as a PDF
    // names it ("KRVWinPr 3.0.0").
    LinuxSpooler(std::function<CodePage()> codePage, std::string producer,
                 spool::Modules modules = spool::loadedModules());

    bool hasPrinters() override { return true; }
    std::vector<std::string> printerNames() override;
    std::string defaultPrinter() override;
    // Of CUPS's queues, for this user. The built-in printer can only be what it is when CUPS names no default.
    void setDefaultPrinter(const std::string& name) override;
    platform::PrinterRecord printer(const std::string& name) override;
    int jobCount(const std::string& name) override;
    std::vector<platform::PaperBin> paperBins(const std::string& name) override;
    bool canAdminister(const std::string& name) override;
    void purge(const std::string& name) override;
    void showProperties(const std::string& name) override;
    // Whether the scheduler of CUPS answers; the built-in printer needs none.
    bool serviceRunning() override;
    std::string errorText(std::uint32_t code) override;
    // A title "FOLDER\NAME.xxx" is printed by the built-in printer into "NAME.pdf" in what is the current directory
    // now.
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& name, const std::string& title) override;

private:
    // Null where CUPS is not installed.
    std::shared_ptr<PrintQueues> queues();
    // Throws where CUPS is not installed.
    PrintQueues& queuesFor(const std::string& name);

    std::function<CodePage()> codePage_;
    std::string producer_;
    spool::Modules modules_;
    std::shared_ptr<PrintQueues> queues_;
    bool queuesTried_ = false;
};

}  // namespace platform_linux
