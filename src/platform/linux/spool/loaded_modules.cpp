#include "platform/linux/spool/loaded_modules.h"

#include <utility>

#include "platform/linux/module.h"

namespace platform_linux::spool {

Modules loadedModules() {
    return {[](documents::DocumentFactory makeDocument) {
                return reinterpret_cast<cups::PrintServerFactory>(moduleEntry("cups"))(std::move(makeDocument));
            },
            [](const pdf::PdfSettings& settings, int descriptor) {
                return reinterpret_cast<pdf::PdfDocumentFactory>(moduleEntry("pdf"))(settings, descriptor);
            }};
}

}  // namespace platform_linux::spool
