#include "platform/linux/cups/queue_target.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/drawing/paper_sizes.h"
#include "platform/linux/cups/queued_pdf.h"

namespace platform_linux::cups {

namespace {

using documents::PageOptions;
using documents::PdfOutput;
using pdf::PdfPage;
using platform::paperA4;
using platform::drawing::paperOwn;

int pixels(double points, int perInch) { return static_cast<int>(std::lround(points * perInch / 72.0)); }

}  // namespace

QueueTarget::QueueTarget(std::shared_ptr<QueueAccess> queues, std::string queue, std::string title, Options saved)
    : queues_(std::move(queues)),
      queue_(std::move(queue)),
      title_(std::move(title)),
      saved_(std::move(saved)),
      device_(queues_->device(queue_)),
      ownNumber_(platform::drawing::paperNumber(device_.own.widthPoints, device_.own.heightPoints)) {
    if (device_.color) {
        device_.defaultColorMode = savedColorMode(saved_).value_or(device_.defaultColorMode);
    }
}

PageOptions QueueTarget::defaults() const {
    return {ownNumber_, 0, device_.defaultOrientation, device_.defaultColorMode};
}

bool QueueTarget::accepts(platform::PageOption option, int value) {
    switch (option) {
        case platform::PageOption::paperSize:
            return value == paperA4 || value == paperOwn || value == ownNumber_;
        case platform::PageOption::paperBin:
            if (value == 0) {
                return true;
            }
            if (!bins_) {
                bins_ = queues_->bins(queue_);
            }
            return std::any_of(bins_->begin(), bins_->end(),
                               [value](const platform::PaperBin& bin) { return bin.number == value; });
        case platform::PageOption::orientation:
        case platform::PageOption::colorMode:
            return value == 1 || value == 2;
    }
    return false;
}

const QueueMedia& QueueTarget::media(const PageOptions& options) const {
    return options.paperSize == paperA4 ? device_.a4 : device_.own;
}

PdfPage QueueTarget::page(const PageOptions& options) const {
    QueueMedia sheet = media(options);
    int resolutionX = device_.resolutionX;
    int resolutionY = device_.resolutionY;
    if (options.orientation == 2) {
        // The page lies on the sheet with its top at the sheet's left edge.
        const QueueMedia upright = sheet;
        std::swap(sheet.widthPoints, sheet.heightPoints);
        std::swap(resolutionX, resolutionY);
        sheet.marginTop = upright.marginLeft;
        sheet.marginRight = upright.marginTop;
        sheet.marginBottom = upright.marginRight;
        sheet.marginLeft = upright.marginBottom;
    }
    PdfPage page;
    page.widthPoints = sheet.widthPoints;
    page.heightPoints = sheet.heightPoints;
    page.color = options.colorMode == 2;
    platform::DeviceCapabilities& device = page.device;
    device.logPixelsX = resolutionX;
    device.logPixelsY = resolutionY;
    device.physicalWidth = pixels(sheet.widthPoints, resolutionX);
    device.physicalHeight = pixels(sheet.heightPoints, resolutionY);
    device.physicalOffsetX = pixels(sheet.marginLeft, resolutionX);
    device.physicalOffsetY = pixels(sheet.marginTop, resolutionY);
    device.horzRes = device.physicalWidth - device.physicalOffsetX - pixels(sheet.marginRight, resolutionX);
    device.vertRes = device.physicalHeight - device.physicalOffsetY - pixels(sheet.marginBottom, resolutionY);
    return page;
}

bool QueueTarget::separates(const PageOptions& previous, const PageOptions& next) const {
    return previous.paperBin != next.paperBin || previous.colorMode != next.colorMode ||
           &media(previous) != &media(next);
}

std::unique_ptr<PdfOutput> QueueTarget::open() {
    auto makeJob = [this](const PageOptions& firstPage) {
        QueueJob job;
        job.queue = queue_;
        job.title = title_;
        job.options = queues_->options(queue_, media(firstPage), firstPage.paperBin, firstPage.orientation,
                                       firstPage.colorMode, saved_);
        return job;
    };
    return std::make_unique<QueuedPdf>(queues_, queue_, std::move(makeJob));
}

}  // namespace platform_linux::cups
