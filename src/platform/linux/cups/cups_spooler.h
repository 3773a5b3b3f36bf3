// The port Spooler on CUPS: its queues, in the order in which it lists them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/cups/connection.h"
#include "platform/linux/cups/discovery.h"
#include "platform/linux/cups/queue_access.h"
#include "platform/linux/documents/document_factory.h"
#include "platform/spooler.h"

namespace platform_linux::cups {

class CupsSpooler final : public platform::Spooler {
public:
    CupsSpooler(const std::shared_ptr<Connection>& connection, documents::DocumentFactory makeDocument);

    bool hasPrinters() override { return !printerNames().empty(); }
    std::vector<std::string> printerNames() override;
    std::string builtinPrinter() override { return {}; }
    // The printers that speak IPP Everywhere; the queue is one that the server removes by itself some time after use.
    std::optional<std::string> discover(const std::string& name) override;
    // The queue that LPDEST or PRINTER or the user's lpoptions name; where they name none that there is, the server's
    // default. Where it is an instance of a queue, a document opened on it from then on has that instance's options.
    std::string defaultPrinter() override;
    void setDefaultPrinter(const std::string& queue) override;
    platform::PrinterRecord printer(const std::string& queue) override;
    std::vector<platform::PaperBin> paperBins(const std::string& queue) override;
    // Whether the server would let the user cancel other people's jobs.
    bool canAdminister(const std::string& queue) override;
    void showProperties(const std::string& queue) override;
    // Whether the scheduler answers.
    platform::ServiceState serviceState() override;
    bool answersAgain() override;
    std::string errorText(std::uint32_t code) override;
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& queue, const std::string& title) override;
    // Files are the built-in printer's.
    std::unique_ptr<platform::PrintDocument> openSheet() override { return nullptr; }
    bool writesFiles() override { return false; }
    std::string pdfPrinter() override { return {}; }
    std::unique_ptr<platform::PrintDocument> openFile(const std::string& /*path*/,
                                                      const std::string& /*title*/) override {
        return nullptr;
    }

private:
    http_t* answering();
    void makeQueue(const DiscoveredPrinter& printer);
    bool acceptsJobs(const std::string& queue);

    std::shared_ptr<Connection> connection_;
    std::shared_ptr<QueueAccess> queues_;
    documents::DocumentFactory makeDocument_;
    std::string defaultQueue_;  // as defaultPrinter() gave it last
    std::string defaultInstance_;
};

}  // namespace platform_linux::cups
