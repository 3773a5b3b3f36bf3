#include "platform/linux/pdf/document.h"

extern "C" __attribute__((visibility("default"))) std::unique_ptr<platform_linux::pdf::PdfDocument> krvwinpr_pdf(
    const platform_linux::pdf::PdfSettings& settings, int fileDescriptor);

std::unique_ptr<platform_linux::pdf::PdfDocument> krvwinpr_pdf(const platform_linux::pdf::PdfSettings& settings,
                                                               int fileDescriptor) {
    return std::make_unique<platform_linux::pdf::Document>(settings, fileDescriptor);
}
