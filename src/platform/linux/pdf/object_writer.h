// The file structure of a PDF document (ISO 32000-1, 7.5): numbered objects, cross-reference table, trailer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/pdf/deflater.h"
#include "platform/linux/pdf/file_output.h"
#include "platform/linux/pdf/fingerprint.h"

namespace platform_linux::pdf {

enum class FileLayout {
    plain,   // each object by itself and a table of them, which the oldest readers know, those in printers too
    packed,  // objects without a stream in streams of many (7.5.7), and the table a stream, too (7.5.8)
};

// Objects may be numbered long before they are written, and written in any order. Throws what FileOutput throws.
class ObjectWriter {
public:
    // Writes the header.
    ObjectWriter(FileOutput& output, FileLayout layout);

    // A number for an object to be written later.
    int allocate();

    void object(int number, std::string_view body);
    // A stream, compressed; the entries of its dictionary are given without those that compression needs.
    void stream(int number, std::string_view entries, std::string_view content);
    // The same of content that Deflater has compressed.
    void compressedStream(int number, std::string_view entries, std::string_view compressed);
    // A stream as it is; of the entries only the length is missing.
    void storedStream(int number, std::string_view entries, std::string_view content);

    // Tells documents apart: of all that streams hold so far.
    const Fingerprint& fingerprint() const noexcept { return fingerprint_; }
    // Bytes written so far.
    std::uint64_t position() const noexcept { return output_.position(); }

    // Cross-reference table and trailer, through to the descriptor. Numbers never written count as free. The
    // identifier is in hexadecimal digits; empty for none.
    void finish(int catalog, int info, std::string_view identifier);

private:
    // Where an object is: at a byte of the file, or in the stream of that number.
    struct Place {
        std::uint64_t at = 0;  // 0 while it is not written
        int index = -1;        // in the stream
    };

    Place& placeOf(int number) { return places_.at(static_cast<std::size_t>(number) - 1); }
    void begin(int number);
    void pack(int number, std::string_view body);
    void writePacked();
    void writeTable(std::string_view trailer);
    void writeTableStream(int number, std::string_view trailer);

    FileOutput& output_;
    FileLayout layout_;
    Deflater deflater_;
    std::string line_;           // reused
    std::string entries_;        // reused
    std::vector<Place> places_;  // of object n at n - 1
    Fingerprint fingerprint_;
    int packedIn_ = 0;  // the stream being gathered
    int packedCount_ = 0;
    std::string packedNumbers_;  // and where each begins
    std::string packedObjects_;
};

// "12 0 R"
void appendReference(std::string& text, int number);

}  // namespace platform_linux::pdf
