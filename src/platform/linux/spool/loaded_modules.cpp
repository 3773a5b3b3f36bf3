#include "platform/linux/spool/loaded_modules.h"

#include "platform/linux/module.h"

namespace platform_linux::spool {

Modules loadedModules() {
    return {[] { return reinterpret_cast<PrintQueuesFactory>(moduleEntry("cups"))(); },
            [](const PdfSettings& settings, int descriptor) {
                return reinterpret_cast<PdfDocumentFactory>(moduleEntry("pdf"))(settings, descriptor);
            }};
}

}  // namespace platform_linux::spool
