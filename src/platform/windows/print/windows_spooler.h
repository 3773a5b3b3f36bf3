// The printers of a Windows system.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/spooler.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

// Asks the spooler anew every time and keeps nothing; a printer of another machine has its full name
// ("\\server\printer").
class WindowsSpooler final : public platform::Spooler {
public:
    bool hasPrinters() override;
    // Those of this machine and those that the user is connected to.
    std::vector<std::string> printerNames() override;
    std::string builtinPrinter() override { return {}; }
    // Windows installs what it discovers.
    std::optional<std::string> discover(const std::string& /*name*/) override { return std::nullopt; }
    std::string defaultPrinter() override;
    void setDefaultPrinter(const std::string& name) override;
    platform::PrinterRecord printer(const std::string& name) override;
    std::vector<platform::PaperBin> paperBins(const std::string& name) override;
    bool canAdminister(const std::string& name) override;
    void showProperties(const std::string& name) override;
    platform::ServiceState serviceState() override;
    bool answersAgain() override;
    std::string errorText(std::uint32_t code) override;
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& name, const std::string& title) override;
    std::unique_ptr<platform::PrintDocument> openSheet() override;
    bool writesFiles() override { return false; }
    // The one that the system brings along, under whatever name it is installed.
    std::string pdfPrinter() override;
    std::unique_ptr<platform::PrintDocument> openFile(const std::string& /*path*/,
                                                      const std::string& /*title*/) override {
        return nullptr;
    }
};

// Whose driver is the system's own one for PDF files; empty where it is none's.
std::string pdfPrinterAmong(std::span<const PRINTER_INFO_2W> printers);

}  // namespace platform_windows::print
