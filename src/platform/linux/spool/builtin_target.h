// The built-in printer as the target of a document: a PDF file.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/spool/pdf_file.h"

namespace platform_linux::spool {

// 600 pixels per inch, margins of 100 pixels on all sides, any paper that has a number, colour. It has no bins; unlike
// a printer without any it takes every number of one, because no sheet can come from the wrong place in a file.
class BuiltinTarget : public documents::DocumentTarget {
public:
    // In the current directory, called after the title.
    explicit BuiltinTarget(const std::string& title, Concealment concealment = Concealment::unnamed);
    // Of this name, whatever there is.
    static std::unique_ptr<BuiltinTarget> named(const std::string& path, Concealment concealment);
    // The PDF goes nowhere.
    static std::unique_ptr<BuiltinTarget> sheet();

    documents::PageOptions defaults() const override { return {}; }
    bool accepts(platform::PageOption option, int value) override;
    pdf::PdfPage page(const documents::PageOptions& options) const override;
    bool separates(const documents::PageOptions& previous, const documents::PageOptions& next) const override;
    bool isArchive() const override { return true; }
    std::unique_ptr<documents::PdfOutput> open() override { return makeOutput_(); }

private:
    using MakeOutput = std::function<std::unique_ptr<documents::PdfOutput>()>;

    explicit BuiltinTarget(MakeOutput makeOutput) : makeOutput_(std::move(makeOutput)) {}

    MakeOutput makeOutput_;
};

}  // namespace platform_linux::spool
