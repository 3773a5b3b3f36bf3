// The file structure of a PDF document (ISO 32000-1, 7.5): numbered objects, cross-reference table, trailer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/pdf/deflater.h"
#include "platform/linux/pdf/file_output.h"

namespace platform_linux::pdf {

// Objects may be numbered long before they are written, and written in any order. Throws what FileOutput throws.
class ObjectWriter {
public:
    // Writes the header.
    explicit ObjectWriter(FileOutput& output);

    // A number for an object to be written later.
    int allocate();

    void object(int number, std::string_view body);
    // A stream, compressed; the entries of its dictionary are given without those that compression needs.
    void stream(int number, std::string_view entries, std::string_view content);
    // The same of content that Deflater has compressed.
    void compressedStream(int number, std::string_view entries, std::string_view compressed);
    // A stream as it is; of the entries only the length is missing.
    void storedStream(int number, std::string_view entries, std::string_view content);

    // Cross-reference table and trailer, through to the descriptor. Numbers never written count as free.
    void finish(int catalog, int info);

private:
    void begin(int number);

    FileOutput& output_;
    Deflater deflater_;
    std::string line_;                    // reused
    std::string entries_;                 // reused
    std::vector<std::uint64_t> offsets_;  // of object n at n - 1; 0 while it is not written
};

// "12 0 R"
void appendReference(std::string& text, int number);

}  // namespace platform_linux::pdf
