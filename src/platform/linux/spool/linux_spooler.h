// The printers of a Linux system: the queues of CUPS in their order, then the built-in printer "Korvano PDF".
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/spool/builtin_spooler.h"
#include "platform/linux/spool/lazy_print_server.h"
#include "platform/linux/spool/seen_printers.h"
#include "platform/spooler.h"

namespace platform_linux::spool {

// Where there is no CUPS - it is not installed, or never had a queue for this user - there is the built-in printer
// alone, and that is no error; CUPS that does not answer is one. The built-in printer is the default where CUPS names
// none, and where LPDEST or PRINTER name it. Asking whether there are printers loads nothing.
class LinuxSpooler final : public platform::Spooler {
public:
    // Server and settings are borrowed.
    LinuxSpooler(LazyPrintServer& cups, platform::SettingsStore& settings, documents::DocumentFactory makeDocument)
        : cups_(cups), seen_(settings), builtin_(std::move(makeDocument)) {}

    bool hasPrinters() override { return true; }
    std::vector<std::string> printerNames() override;
    std::string builtinPrinter() override { return builtinPrinterName; }
    std::optional<std::string> discover(const std::string& name) override;
    std::string defaultPrinter() override;
    // Of CUPS's queues, for this user. The built-in printer can only be what it is when CUPS names no default.
    void setDefaultPrinter(const std::string& name) override;
    platform::PrinterRecord printer(const std::string& name) override;
    std::vector<platform::PaperBin> paperBins(const std::string& name) override;
    bool canAdminister(const std::string& name) override;
    void showProperties(const std::string& name) override;
    // Whether the scheduler of CUPS answers; the built-in printer needs none.
    platform::ServiceState serviceState() override;
    bool answersAgain() override;
    std::string errorText(std::uint32_t code) override;
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& name, const std::string& title) override;
    std::unique_ptr<platform::PrintDocument> openSheet() override;
    bool writesFiles() override { return true; }
    std::string pdfPrinter() override { return {}; }
    std::unique_ptr<platform::PrintDocument> openFile(const std::string& path, const std::string& title) override;

private:
    // Whose printer it is. Throws where it can only be one of CUPS's and that is not installed.
    platform::Spooler& of(const std::string& name);

    LazyPrintServer& cups_;
    SeenPrinters seen_;
    BuiltinSpooler builtin_;
};

}  // namespace platform_linux::spool
