#include "platform/linux/spool/builtin_target.h"

#include <utility>

#include "platform/drawing/paper_sizes.h"
#include "platform/drawing/plain_printer.h"
#include "platform/linux/documents/document_name.h"

namespace platform_linux::spool {

namespace {

using documents::PageOptions;
using documents::PdfOutput;
using pdf::PdfPage;

constexpr int margin = 100;

}  // namespace

BuiltinTarget::BuiltinTarget(const std::string& title, Concealment concealment)
    : folder_(std::make_shared<const Folder>(Folder::current())),
      name_(documents::documentName(title)),
      concealment_(concealment) {}

bool BuiltinTarget::accepts(platform::PageOption option, int value) {
    return platform::drawing::plainPrinterAccepts(option, value);
}

PdfPage BuiltinTarget::page(const PageOptions& options) const {
    const platform::drawing::PaperSize size = platform::drawing::paperOf(options);
    PdfPage page;
    page.widthPoints = platform::drawing::toPoints(size.width);
    page.heightPoints = platform::drawing::toPoints(size.height);
    page.color = options.colorMode == 2;
    page.device = platform::drawing::plainSheet(options, margin);
    return page;
}

bool BuiltinTarget::separates(const PageOptions& /*previous*/, const PageOptions& /*next*/) const { return false; }

std::unique_ptr<PdfOutput> BuiltinTarget::open() { return std::make_unique<PdfFile>(folder_, name_, concealment_); }

}  // namespace platform_linux::spool
