// What a document says of itself, in its two places: the information dictionary (ISO 32000-1, 14.3.3), and in documents
// for the archive XMP (ISO 16684-1) with the same values.
#pragma once

#include <ctime>
#include <string>

#include "platform/linux/pdf/object_writer.h"
#include "platform/linux/pdf/pdf_document.h"

namespace platform_linux::pdf {

class DocumentInformation {
public:
    explicit DocumentInformation(const PdfSettings& settings);

    // Each returns the number of its object.
    int write(ObjectWriter& writer) const;
    // Marked: with the mark of PDF/A-2u (ISO 19005-2, 6.6.4).
    int writeMetadata(ObjectWriter& writer, bool marked) const;

    // 32 hexadecimal digits that no other document has (ISO 32000-1, 14.4), and the same one again if it is made again.
    std::string identifier(const ObjectWriter& writer) const;

private:
    std::string title_;  // UTF-8 as XML may hold it, here and below
    std::string creator_;
    std::string producer_;
    std::time_t created_;
    bool archive_;
};

}  // namespace platform_linux::pdf
