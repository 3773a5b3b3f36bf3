// The printer that is always there: it writes PDF files into the current directory.
#pragma once

#include <string>

#include "platform/linux/spool/pdf_file.h"
#include "platform/spooler.h"

namespace platform_linux::spool {

inline constexpr const char* builtinPrinterName = "Korvano PDF";

platform::PrinterRecord builtinPrinterRecord(bool isDefault);

// 600 pixels per inch, margins of 100 pixels on all sides, any paper that has a number, colour. It has no bins, so any
// number of one will do.
class BuiltinPrinter : public DocumentTarget {
public:
    explicit BuiltinPrinter(const std::string& title, Concealment concealment = Concealment::unnamed);

    PageOptions defaults() const override { return {}; }
    bool accepts(platform::PageOption option, int value) override;
    PdfPage page(const PageOptions& options) const override;
    bool separates(const PageOptions& previous, const PageOptions& next) const override;
    std::unique_ptr<PdfOutput> open() override;

private:
    std::shared_ptr<const Folder> folder_;
    std::string name_;
    Concealment concealment_;
};

}  // namespace platform_linux::spool
