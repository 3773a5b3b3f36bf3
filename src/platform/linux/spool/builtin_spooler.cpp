#include "platform/linux/spool/builtin_spooler.h"

#include <cerrno>
#include <system_error>

#include "platform/linux/spool/builtin_target.h"

namespace platform_linux::spool {

platform::PrinterRecord BuiltinSpooler::printer(const std::string& /*name*/) {
    constexpr std::uint32_t usualPriority = 50;
    platform::PrinterRecord record;
    record.name = builtinPrinterName;
    record.driverName = builtinPrinterName;
    record.portName = "FILE:";
    record.comment = "Schreibt PDF-Dateien in den aktuellen Ordner";
    record.attributes = platform::printer_attribute::local;
    record.priority = usualPriority;
    record.defaultPriority = usualPriority;
    return record;
}

void BuiltinSpooler::showProperties(const std::string& name) {
    throw platform::SpoolerError(ENOTSUP, "Am Drucker „" + name + "“ lässt sich nichts einstellen.");
}

std::string BuiltinSpooler::errorText(std::uint32_t code) {
    return code == 0 ? std::string() : std::generic_category().message(static_cast<int>(code));
}

std::unique_ptr<platform::PrintDocument> BuiltinSpooler::openDocument(const std::string& /*name*/,
                                                                      const std::string& title) {
    return makeDocument_(std::make_unique<BuiltinTarget>(title), title);
}

std::unique_ptr<platform::PrintDocument> BuiltinSpooler::openSheet() {
    return makeDocument_(BuiltinTarget::sheet(), {});
}

std::unique_ptr<platform::PrintDocument> BuiltinSpooler::openFile(const std::string& path, const std::string& title) {
    return makeDocument_(BuiltinTarget::named(path, Concealment::unnamed), title);
}

}  // namespace platform_linux::spool
