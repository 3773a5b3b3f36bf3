#include "platform/linux/spool/lazy_print_server.h"

#include <cerrno>

#include "platform/linux/spool/builtin_spooler.h"

namespace platform_linux::spool {

cups::PrintServer* LazyPrintServer::get() {
    if (!tried_) {
        tried_ = true;
        try {
            server_ = make_();
        } catch (const runtime::Error&) {
            server_.reset();
        }
    }
    return server_.get();
}

cups::PrintServer& LazyPrintServer::require(const std::string& printer) {
    if (get() == nullptr) {
        throw platform::SpoolerError(ENOENT, "Drucker „" + printer +
                                                 "“: nicht vorhanden, denn CUPS ist nicht installiert. " +
                                                 "Bitte das Paket „libcups2“ installieren oder den Drucker „" +
                                                 builtinPrinterName + "“ wählen.");
    }
    return *server_;
}

}  // namespace platform_linux::spool
