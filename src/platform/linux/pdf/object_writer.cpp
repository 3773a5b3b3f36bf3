#include "platform/linux/pdf/object_writer.h"

#include "platform/linux/pdf/number_text.h"

namespace platform_linux::pdf {

ObjectWriter::ObjectWriter(FileOutput& output) : output_(output) {
    // 1.6 is the version that knows how to ask a viewer not to scale the page. The bytes above 127 say "binary file".
    output_.write("%PDF-1.6\n%\xE2\xE3\xCF\xD3\n");
}

int ObjectWriter::allocate() {
    offsets_.push_back(0);
    return static_cast<int>(offsets_.size());
}

void ObjectWriter::begin(int number) {
    offsets_.at(static_cast<std::size_t>(number) - 1) = output_.position();
    line_.clear();
    appendInteger(line_, number);
    line_ += " 0 obj\n";
}

void ObjectWriter::object(int number, std::string_view body) {
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

void ObjectWriter::finish(int catalog, int info) {
    const std::uint64_t table = output_.position();
    const auto size = static_cast<std::int64_t>(offsets_.size()) + 1;
    line_ = "xref\n0 ";
    appendInteger(line_, size);
    line_ += "\n0000000000 65535 f \n";
    output_.write(line_);
    for (const std::uint64_t offset : offsets_) {
        const std::string digits = std::to_string(offset);
        line_.assign(10 - digits.size(), '0').append(digits).append(offset != 0 ? " 00000 n \n" : " 65535 f \n");
        output_.write(line_);
    }
    line_ = "trailer\n<</Size ";
    appendInteger(line_, size);
    line_ += "/Root ";
    appendReference(line_, catalog);
    line_ += "/Info ";
    appendReference(line_, info);
    line_ += ">>\nstartxref\n";
    appendInteger(line_, static_cast<std::int64_t>(table));
    line_ += "\n%%EOF\n";
    output_.write(line_);
    output_.flush();
}

void appendReference(std::string& text, int number) {
    appendInteger(text, number);
    text += " 0 R";
}

}  // namespace platform_linux::pdf
