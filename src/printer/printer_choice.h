// Which printer a job goes to, and what the user is told where there is none.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "printer/Printer.h"
#include "session/session.h"

namespace printer {

// Whether the name, in any case of letters, is that of the printer that the program brings along.
bool isBuiltinPrinter(platform::Spooler& spooler, const std::string& name);

// The first installed printer, in the system's order, whose name equals the given one but for the case of letters.
// Where none has it, the printer of that name that the system discovers by itself, which may take 2 seconds and more.
// Nothing for an empty name and for one that no printer has. The program's own printer is found without asking anybody.
// Throws platform::SpoolerError, which names the printer, where the spooler should know and does not answer.
std::optional<std::string> installedPrinter(platform::Spooler& spooler, const std::string& name);

// The printer of a job: the one found, otherwise the default printer. Says in the log which.
std::unique_ptr<Printer> choosePrinter(session::Session& session, const std::optional<std::string>& installed,
                                       const std::string& title, Patience patience = {});

// Why nothing is printed where no printer is installed, and what becomes of the job.
std::string noPrinterReason(const session::Program& program);
inline constexpr const char* jobCancelled = "Druckauftrag wurde abgebrochen.";

// Shows both in a message box.
void showNoPrinter(session::Session& session);

}  // namespace printer
