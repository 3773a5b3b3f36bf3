// Makes the documents of the printers, whichever they are.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/documents/document_target.h"
#include "platform/linux/pdf/pdf_document.h"
#include "platform/print_document.h"

namespace platform_linux::documents {

// A document with that title on its way to a target. Throws runtime::Error where there is no place for it.
using DocumentFactory =
    std::function<std::unique_ptr<platform::PrintDocument>(std::unique_ptr<DocumentTarget>, const std::string& title)>;

using PdfFactory = std::function<std::unique_ptr<pdf::PdfDocument>(const pdf::PdfSettings&, int)>;

// What all documents of one run have in common.
struct PdfOrigin {
    std::function<std::array<char32_t, 256>()> codePage;  // of the documents' texts, asked for when one is made
    std::string producer;                                 // the program as a PDF names it
    std::string creator = "Korvano";                      // whose print files it prints
};

DocumentFactory pdfDocuments(PdfOrigin origin, PdfFactory makePdf);

}  // namespace platform_linux::documents
