// A PDF that is sent to a queue of CUPS when it is complete.
#pragma once

#include <functional>
#include <string>

#include "platform/linux/documents/document_target.h"
#include "platform/linux/file_descriptor.h"

namespace platform_linux::cups {

// Kept in a file without a name in $TMPDIR or /tmp; in memory where there is no room for one.
class QueuedPdf : public documents::PdfOutput {
public:
    // Sends the content of a descriptor, from its start.
    using Send = std::function<void(const documents::PageOptions& firstPage, int descriptor)>;

    QueuedPdf(std::string queue, Send send);

    int descriptor() const override { return file_.get(); }
    void pageBegins() override {}
    void deliver(const documents::PageOptions& firstPage) override { send_(firstPage, file_.get()); }
    runtime::Error failure(const runtime::Error& cause) override;

private:
    std::string queue_;
    Send send_;
    std::string place_;  // for messages
    FileDescriptor file_;
};

}  // namespace platform_linux::cups
