// A queue of CUPS as the target of a document.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/cups/queue_access.h"
#include "platform/linux/documents/document_target.h"

namespace platform_linux::cups {

// Pages are A4 or the queue's own size, in pixels of the queue's resolution with the queue's margins. Bin, paper
// and colour mode are options of a whole job, so a page that changes one of them starts a further job of that title.
class QueueTarget : public documents::DocumentTarget {
public:
    // The options are what the user saved for the queue. Throws platform::SpoolerError where the queue cannot be asked.
    QueueTarget(std::shared_ptr<QueueAccess> queues, std::string queue, std::string title, Options saved = {});

    documents::PageOptions defaults() const override;
    bool accepts(platform::PageOption option, int value) override;
    pdf::PdfPage page(const documents::PageOptions& options) const override;
    bool separates(const documents::PageOptions& previous, const documents::PageOptions& next) const override;
    std::unique_ptr<documents::PdfOutput> open() override;

private:
    const QueueMedia& media(const documents::PageOptions& options) const;

    std::shared_ptr<QueueAccess> queues_;
    std::string queue_;
    std::string title_;
    Options saved_;
    QueueDevice device_;
    int ownNumber_;
    std::optional<std::vector<platform::PaperBin>> bins_;  // asked for when first needed
};

}  // namespace platform_linux::cups
