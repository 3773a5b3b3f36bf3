// A PDF that is sent to a queue of CUPS when it is complete.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/cups/queue_access.h"
#include "platform/linux/documents/document_target.h"
#include "platform/linux/file_descriptor.h"

namespace platform_linux::cups {

// Kept in a file without a name in $TMPDIR or /tmp; in memory where there is no room for one.
class QueuedPdf : public documents::PdfOutput {
public:
    // The job for a PDF that begins with such a page.
    using MakeJob = std::function<QueueJob(const documents::PageOptions& firstPage)>;

    QueuedPdf(std::shared_ptr<QueueAccess> queues, std::string queue, MakeJob makeJob);

    int descriptor() const override { return file_.get(); }
    void pageBegins() override {}
    // Where the answer to an earlier attempt was lost, the server is first asked what became of it.
    void deliver(const documents::PageOptions& firstPage) override;
    bool perhapsDelivered() const override { return sent_; }
    runtime::Error failure(const runtime::Error& cause) override;

private:
    bool arrivedBefore();

    std::shared_ptr<QueueAccess> queues_;
    std::string queue_;
    MakeJob makeJob_;
    std::string place_;  // for messages
    FileDescriptor file_;
    int job_ = 0;        // its number at the server
    bool sent_ = false;  // and nobody knows whether it arrived
};

}  // namespace platform_linux::cups
