#include "platform/linux/pdf/object_writer.h"

#include <algorithm>

#include "platform/linux/pdf/number_text.h"

namespace platform_linux::pdf {

namespace {

// Enough for a good compression, few enough for a reader that wants one of them.
constexpr int mostPacked = 128;

// Bytes of the table; with fewer, compressing takes a hundredth of a short document's time and saves next to nothing.
constexpr std::size_t leastCompressed = 512;

void appendBytes(std::string& text, std::uint64_t value, int count) {
    while (count-- > 0) {
        text += static_cast<char>((value >> (8 * count)) & 0xFF);
    }
}

int bytesFor(std::uint64_t value) {
    int count = 1;
    while (value >>= 8) {
        ++count;
    }
    return count;
}

}  // namespace

ObjectWriter::ObjectWriter(FileOutput& output, FileLayout layout) : output_(output), layout_(layout) {
    // 1.6 is the version that knows how to ask a viewer not to scale the page, 1.7 the standard that archives build
    // on. The bytes above 127 say "binary file".
    output_.write(layout == FileLayout::packed ? "%PDF-1.7\n" : "%PDF-1.6\n");
    output_.write("%\xE2\xE3\xCF\xD3\n");
}

int ObjectWriter::allocate() {
    places_.emplace_back();
    return static_cast<int>(places_.size());
}

void ObjectWriter::begin(int number) {
    placeOf(number).at = output_.position();
    line_.clear();
    appendInteger(line_, number);
    line_ += " 0 obj\n";
}

void ObjectWriter::object(int number, std::string_view body) {
    if (layout_ == FileLayout::packed) {
        pack(number, body);
        return;
    }
    begin(number);
    output_.write(line_);
    output_.write(body);
    output_.write("\nendobj\n");
}

void ObjectWriter::stream(int number, std::string_view entries, std::string_view content) {
    compressedStream(number, entries, deflater_.compress(content));
}

void ObjectWriter::compressedStream(int number, std::string_view entries, std::string_view compressed) {
    entries_.assign(entries) += "/Filter/FlateDecode";
    storedStream(number, entries_, compressed);
}

void ObjectWriter::storedStream(int number, std::string_view entries, std::string_view content) {
    // What is compressed ends in a checksum of four bytes (RFC 1950, 2.2).
    fingerprint_.add(content.substr(content.size() - std::min<std::size_t>(content.size(), 4)));
    begin(number);
    line_ += "<<";
    line_ += entries;
    line_ += "/Length ";
    appendInteger(line_, static_cast<std::int64_t>(content.size()));
    line_ += ">>stream\n";
    output_.write(line_);
    output_.write(content);
    output_.write("\nendstream\nendobj\n");
}

void ObjectWriter::pack(int number, std::string_view body) {
    if (packedCount_ == 0) {
        packedIn_ = allocate();
    }
    placeOf(number) = {static_cast<std::uint64_t>(packedIn_), packedCount_};
    appendInteger(packedNumbers_, number);
    packedNumbers_ += ' ';
    appendInteger(packedNumbers_, static_cast<std::int64_t>(packedObjects_.size()));
    packedNumbers_ += ' ';
    packedObjects_.append(body) += '\n';
    if (++packedCount_ == mostPacked) {
        writePacked();
    }
}

void ObjectWriter::writePacked() {
    if (packedCount_ == 0) {
        return;
    }
    std::string entries = "/Type/ObjStm/N ";
    appendInteger(entries, packedCount_);
    entries += "/First ";
    appendInteger(entries, static_cast<std::int64_t>(packedNumbers_.size()));
    stream(packedIn_, entries, packedNumbers_.append(packedObjects_));
    packedNumbers_.clear();
    packedObjects_.clear();
    packedCount_ = 0;
}

void ObjectWriter::finish(int catalog, int info, std::string_view identifier) {
    std::string trailer = "/Root ";
    appendReference(trailer, catalog);
    trailer += "/Info ";
    appendReference(trailer, info);
    if (!identifier.empty()) {
        trailer.append("/ID[<").append(identifier).append("><").append(identifier).append(">]");
    }
    writePacked();
    const bool packed = layout_ == FileLayout::packed;
    const int table = packed ? allocate() : 0;
    const std::uint64_t start = output_.position();
    trailer += "/Size ";
    appendInteger(trailer, static_cast<std::int64_t>(places_.size()) + 1);
    if (packed) {
        placeOf(table).at = start;
        writeTableStream(table, trailer);
    } else {
        writeTable(trailer);
    }
    line_ = "startxref\n";
    appendInteger(line_, static_cast<std::int64_t>(start));
    line_ += "\n%%EOF\n";
    output_.write(line_);
    output_.flush();
}

void ObjectWriter::writeTable(std::string_view trailer) {
    line_ = "xref\n0 ";
    appendInteger(line_, static_cast<std::int64_t>(places_.size()) + 1);
    line_ += "\n0000000000 65535 f \n";
    output_.write(line_);
    for (const Place& place : places_) {
        const std::string digits = std::to_string(place.at);
        line_.assign(10 - digits.size(), '0').append(digits).append(place.at != 0 ? " 00000 n \n" : " 65535 f \n");
        output_.write(line_);
    }
    line_.assign("trailer\n<<").append(trailer).append(">>\n");
    output_.write(line_);
}

// Rows of three columns: the kind of the object, its place, and what is behind the place.
void ObjectWriter::writeTableStream(int number, std::string_view trailer) {
    constexpr unsigned neverUsed = 65535;
    enum Kind : unsigned { free, inFile, inStream };
    const int width = bytesFor(output_.position());
    std::string rows;
    rows.reserve((places_.size() + 1) * static_cast<std::size_t>(width + 3));
    const auto append = [&](Kind kind, std::uint64_t at, unsigned behind) {
        appendBytes(rows, kind, 1);
        appendBytes(rows, at, width);
        appendBytes(rows, behind, 2);
    };
    append(free, 0, neverUsed);
    for (const Place& place : places_) {
        if (place.index >= 0) {
            append(inStream, place.at, static_cast<unsigned>(place.index));
        } else {
            append(place.at != 0 ? inFile : free, place.at, place.at != 0 ? 0 : neverUsed);
        }
    }
    std::string entries = "/Type/XRef/W[1 ";
    appendInteger(entries, width);
    entries.append(" 2]").append(trailer);
    if (rows.size() < leastCompressed) {
        storedStream(number, entries, rows);
    } else {
        stream(number, entries, rows);
    }
}

void appendReference(std::string& text, int number) {
    appendInteger(text, number);
    text += " 0 R";
}

}  // namespace platform_linux::pdf
