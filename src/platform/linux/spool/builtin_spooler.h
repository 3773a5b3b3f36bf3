// The port Spooler for the one printer that is always there: it writes PDF files into the current directory.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/documents/document_factory.h"
#include "platform/spooler.h"

namespace platform_linux::spool {

inline constexpr const char* builtinPrinterName = "Korvano PDF";

// It is asked for its own name only, and its own default.
class BuiltinSpooler final : public platform::Spooler {
public:
    explicit BuiltinSpooler(documents::DocumentFactory makeDocument) : makeDocument_(std::move(makeDocument)) {}

    bool hasPrinters() override { return true; }
    std::vector<std::string> printerNames() override { return {builtinPrinterName}; }
    std::string builtinPrinter() override { return builtinPrinterName; }
    std::optional<std::string> discover(const std::string& /*name*/) override { return std::nullopt; }
    std::string defaultPrinter() override { return builtinPrinterName; }
    void setDefaultPrinter(const std::string& /*name*/) override {}
    platform::PrinterRecord printer(const std::string& name) override;
    std::vector<platform::PaperBin> paperBins(const std::string& /*name*/) override { return {}; }
    bool canAdminister(const std::string& /*name*/) override { return true; }
    void showProperties(const std::string& name) override;
    platform::ServiceState serviceState() override { return platform::ServiceState::running; }
    bool answersAgain() override { return true; }
    std::string errorText(std::uint32_t code) override;
    // A title "FOLDER\NAME.xxx" is printed into "NAME.pdf" in what is the current directory now.
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& name, const std::string& title) override;
    std::unique_ptr<platform::PrintDocument> openSheet() override;
    bool writesFiles() override { return true; }
    std::string pdfPrinter() override { return {}; }
    std::unique_ptr<platform::PrintDocument> openFile(const std::string& path, const std::string& title) override;

private:
    documents::DocumentFactory makeDocument_;
};

}  // namespace platform_linux::spool
