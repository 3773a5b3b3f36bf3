#include "platform/linux/cups/discovery.h"

#include <cups/cups.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <sstream>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/forked_call.h"
#include "runtime/text.h"

namespace platform_linux::cups {

namespace {

struct Search {
    std::string name;  // in capitals
    std::optional<DiscoveredPrinter> found;
};

int look(void* user, unsigned /*flags*/, cups_dest_t* destination) {
    auto& search = *static_cast<Search*>(user);
    const auto option = [destination](const char* name) {
        const char* value = cupsGetOption(name, destination->num_options, destination->options);
        return std::string(value != nullptr ? value : "");
    };
    const DiscoveredPrinter printer{destination->name, option("printer-info"), option("device-uri")};
    if (printer.uri.empty() ||
        (runtime::upperCase(printer.queue) != search.name && runtime::upperCase(printer.info) != search.name)) {
        return 1;  // goes on
    }
    search.found = printer;
    return 0;
}

}  // namespace

// The services of the system are asked in another process, since some of them answer in half a minute only.
std::optional<DiscoveredPrinter> discoveredPrinter(const std::string& name, std::chrono::milliseconds limit) {
    const FileDescriptor answer(::memfd_create("krvwinpr-discovery", MFD_CLOEXEC));
    const auto search = [&] {
        Search wanted{runtime::upperCase(name), {}};
        cupsEnumDests(CUPS_DEST_FLAGS_NONE, static_cast<int>(limit.count()), nullptr, CUPS_PRINTER_DISCOVERED,
                      CUPS_PRINTER_DISCOVERED, look, &wanted);
        if (!wanted.found) {
            return 0;
        }
        const std::string text = wanted.found->queue + '\n' + wanted.found->info + '\n' + wanted.found->uri;
        return static_cast<int>(::write(answer.get(), text.data(), text.size()));
    };
    const int length = forkedCall(search, limit).value_or(0);
    if (length <= 0) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    if (::pread(answer.get(), text.data(), text.size(), 0) != length) {
        return std::nullopt;
    }
    DiscoveredPrinter printer;
    std::istringstream lines(text);
    std::getline(lines, printer.queue);
    std::getline(lines, printer.info);
    std::getline(lines, printer.uri);
    return printer;
}

}  // namespace platform_linux::cups
