#include "platform/linux/spool/builtin_target.h"

#include <utility>

#include "platform/drawing/paper_sizes.h"
#include "platform/drawing/plain_printer.h"
#include "platform/linux/documents/document_name.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/spool/named_pdf_file.h"

namespace platform_linux::spool {

namespace {

using documents::PageOptions;
using pdf::PdfPage;

constexpr int margin = 100;

class Nowhere final : public documents::PdfOutput {
public:
    int descriptor() const override { return file_.get(); }
    void pageBegins() override {}
    void deliver(const PageOptions& /*firstPage*/) override {}
    runtime::Error failure(const runtime::Error& cause) override { return cause; }

private:
    FileDescriptor file_ = openFile("/dev/null", O_WRONLY);
};

}  // namespace

BuiltinTarget::BuiltinTarget(const std::string& title, Concealment concealment)
    : BuiltinTarget([folder = std::make_shared<const Folder>(Folder::current()), name = documents::documentName(title),
                     concealment] { return std::make_unique<PdfFile>(folder, name, concealment); }) {}

std::unique_ptr<BuiltinTarget> BuiltinTarget::named(const std::string& path, Concealment concealment) {
    return std::unique_ptr<BuiltinTarget>(
        new BuiltinTarget([path, concealment] { return std::make_unique<NamedPdfFile>(path, concealment); }));
}

std::unique_ptr<BuiltinTarget> BuiltinTarget::sheet() {
    return std::unique_ptr<BuiltinTarget>(new BuiltinTarget([] { return std::make_unique<Nowhere>(); }));
}

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

}  // namespace platform_linux::spool
