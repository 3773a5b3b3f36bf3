// A PDF that becomes a file of a certain name.
#pragma once

#include <string>

#include "platform/linux/spool/pdf_file.h"

namespace platform_linux::spool {

// What has that name is replaced in one step, and stays as it is until then; a link is replaced, not followed. Refuses
// at once what it could not replace in the end: a file that the user may not write, even where the folder would allow
// to replace it, and what is no file.
class NamedPdfFile final : public PdfFile {
public:
    // Throws runtime::Error (errPrinter).
    NamedPdfFile(const std::string& path, Concealment concealment);

private:
    bool putInPlace() override;
    std::string fileName() const override { return name_; }
    std::string advice() const override { return " Sonst einen anderen Namen oder Ordner wählen."; }
    // An errno value, and what mode there is already.
    int check(mode_t& mode) const;

    std::string name_;
};

}  // namespace platform_linux::spool
