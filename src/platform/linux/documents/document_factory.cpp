#include "platform/linux/documents/document_factory.h"

#include <utility>

#include "platform/linux/documents/creation_time.h"
#include "platform/linux/documents/document_name.h"
#include "platform/linux/documents/pdf_print_document.h"

namespace platform_linux::documents {

DocumentFactory pdfDocuments(PdfOrigin origin, PdfFactory makePdf) {
    return [origin = std::move(origin), makePdf = std::move(makePdf)](std::unique_ptr<DocumentTarget> target,
                                                                      const std::string& title) {
        pdf::PdfSettings settings;
        settings.title = documentName(title);
        settings.producer = origin.producer;
        settings.creator = origin.creator;
        settings.archive = target->isArchive();
        settings.created = creationTime();
        settings.codePage = origin.codePage();
        return std::make_unique<PdfPrintDocument>(std::move(target), std::move(settings), makePdf);
    };
}

}  // namespace platform_linux::documents
