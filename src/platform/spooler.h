// Port: the printers of the system.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/print_document.h"
#include "platform/spooler_error.h"

namespace platform {

// Status flags of a printer (published values of the spooler's information record); any number of them together.
namespace printer_status {
inline constexpr std::uint32_t ready = 0;
inline constexpr std::uint32_t paused = 0x1;
inline constexpr std::uint32_t error = 0x2;
inline constexpr std::uint32_t paperJam = 0x8;
inline constexpr std::uint32_t paperOut = 0x10;
inline constexpr std::uint32_t manualFeed = 0x20;
inline constexpr std::uint32_t paperProblem = 0x40;
inline constexpr std::uint32_t offline = 0x80;
inline constexpr std::uint32_t busy = 0x200;
inline constexpr std::uint32_t printing = 0x400;
inline constexpr std::uint32_t outputBinFull = 0x800;
inline constexpr std::uint32_t notAvailable = 0x1000;
inline constexpr std::uint32_t processing = 0x4000;
inline constexpr std::uint32_t warmingUp = 0x10000;
inline constexpr std::uint32_t tonerLow = 0x20000;
inline constexpr std::uint32_t noToner = 0x40000;
inline constexpr std::uint32_t userIntervention = 0x100000;
inline constexpr std::uint32_t doorOpen = 0x400000;
inline constexpr std::uint32_t powerSave = 0x1000000;
}  // namespace printer_status

// Attribute flags of a printer (published values of the spooler's information record).
namespace printer_attribute {
inline constexpr std::uint32_t isDefault = 0x4;
inline constexpr std::uint32_t shared = 0x8;
inline constexpr std::uint32_t network = 0x10;
inline constexpr std::uint32_t local = 0x40;
inline constexpr std::uint32_t workOffline = 0x400;
}  // namespace printer_attribute

// One printer as the spooler describes it (information record of level 2).
struct PrinterRecord {
    std::string name;  // device name
    std::string serverName;
    std::string shareName;
    std::string portName;
    std::string driverName;
    std::string comment;
    std::string location;
    std::string separatorFile;
    std::uint32_t attributes = 0;  // printer_attribute
    std::uint32_t priority = 0;
    std::uint32_t defaultPriority = 0;
    std::uint32_t status = 0;  // printer_status
    std::uint32_t jobs = 0;
    std::uint32_t averagePpm = 0;
};

struct PaperBin {
    int number = 0;  // what PageOption::paperBin takes, from 1
    std::string name;
};

// Of the system's print service; silent where whoever knows does not answer in time.
enum class ServiceState { running, stopped, silent };

// Default printer, rights, bins and properties are for the printer selection and the job list; a job needs the rest.
//
// Names are device names, UTF-8. Every call that names a printer throws SpoolerError when there is none of that name
// or the spooler does not answer. A spooler that has once not answered is not waited for again: calls fail at once
// until answersAgain() finds that it does.
class Spooler {
public:
    virtual ~Spooler() = default;

    // Whether there is any printer; as cheap as the system allows, since the host waits for the answer.
    virtual bool hasPrinters() = 0;

    // Device names in the system's order. Throws SpoolerError where there should be printers and the spooler does not
    // answer.
    virtual std::vector<std::string> printerNames() = 0;

    // Makes a printer usable that the system has discovered by itself and offers in its own dialogs, but has not
    // installed, and gives its device name; nothing where there is none that is called so, in any case of letters.
    // Takes 2 seconds to look, so it is for names that no installed printer has.
    virtual std::optional<std::string> discover(const std::string& name) = 0;

    // The printer that the program brings along, one of printerNames(), whether or not anything answers; empty where
    // there is none.
    virtual std::string builtinPrinter() = 0;

    // The user's default printer; empty where there is none. Throws SpoolerError, which names the printer, where it was
    // one of the spooler's when that last answered, and it does not answer.
    virtual std::string defaultPrinter() = 0;
    virtual void setDefaultPrinter(const std::string& name) = 0;

    virtual PrinterRecord printer(const std::string& name) = 0;

    // The printer's paper bins in the driver's order, be it a single one; none where the driver lists none, and then
    // a document takes no bin but 0.
    virtual std::vector<PaperBin> paperBins(const std::string& name) = 0;

    virtual bool canAdminister(const std::string& name) = 0;

    // Shows the system's dialog for the printer's properties, over the program's topmost window, if one is open;
    // returns when it has been closed.
    virtual void showProperties(const std::string& name) = 0;

    // Takes some seconds where whoever is asked does not answer.
    virtual ServiceState serviceState() = 0;

    // After an error that may pass: asks once more whether the spooler answers.
    virtual bool answersAgain() = 0;

    // The system's text for an error code of the spooler, without a line end; empty where it has none.
    virtual std::string errorText(std::uint32_t code) = 0;

    // Opens a document on a printer. The title is the job's title in the queue and, without its folder and its ending,
    // the name of a file that a printer writes. Nothing reaches the printer before the first page has ended.
    virtual std::unique_ptr<PrintDocument> openDocument(const std::string& name, const std::string& title) = 0;

    // A document that nobody can print, to measure and show pages where no printer answers: A4 in colour, 600
    // pixels per inch; where there is a built-in printer, its sheet, otherwise all of it printable. Asks nobody. Null
    // where there is none.
    virtual std::unique_ptr<PrintDocument> openSheet() = 0;

    // Whether the program writes PDF files itself. Otherwise a printer of the system may do it: its name, or empty.
    virtual bool writesFiles() = 0;
    virtual std::string pdfPrinter() = 0;

    // A document as the built-in printer writes it, into a file of this name: it appears, or replaces what was there,
    // when end() has it whole. Only where the program writes PDF files itself.
    virtual std::unique_ptr<PrintDocument> openFile(const std::string& path, const std::string& title) = 0;
};

}  // namespace platform
