#include "platform/linux/pdf/document_information.h"

#include <string_view>

#include "platform/linux/pdf/fingerprint.h"
#include "platform/linux/pdf/text_string.h"
#include "runtime/utf8.h"

namespace platform_linux::pdf {

namespace {

// What is no UTF-8, and the characters that XML 1.0 (2.2) knows no way to write, become U+FFFD.
std::string writable(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = runtime::takeCharacter(text).value_or(0);
        if (character >= U' ' && character != 0xFFFE && character != 0xFFFF) {
            result += before.substr(0, before.size() - text.size());
        } else {
            result += "\uFFFD";
        }
    }
    return result;
}

void appendEntry(std::string& text, std::string_view name, const std::string& value) {
    if (!value.empty()) {
        text.append(name).append(textString(value));
    }
}

void appendElement(std::string& text, std::string_view name, std::string_view content) {
    text.append("<").append(name).append(">");
    for (const char byte : content) {
        switch (byte) {
            case '&':
                text += "&amp;";
                break;
            case '<':
                text += "&lt;";
                break;
            case '>':
                text += "&gt;";
                break;
            default:
                text += byte;
        }
    }
    text.append("</").append(name.substr(0, name.find(' '))).append(">");
}

void appendHex(std::string& text, std::uint64_t value) {
    for (int shift = 56; shift >= 0; shift -= 8) {
        appendHexByte(text, static_cast<unsigned>(value >> shift) & 0xFF);
    }
}

}  // namespace

DocumentInformation::DocumentInformation(const PdfSettings& settings)
    : title_(writable(settings.title)),
      creator_(writable(settings.creator)),
      producer_(writable(settings.producer)),
      created_(settings.created),
      archive_(settings.archive) {}

int DocumentInformation::write(ObjectWriter& writer) const {
    std::string text = "<<";
    appendEntry(text, "/Title", title_);
    appendEntry(text, "/Producer", producer_);
    if (archive_) {
        appendEntry(text, "/Creator", creator_);
        text += "/ModDate" + dateString(created_);
    }
    text += "/CreationDate" + dateString(created_) + ">>";
    const int number = writer.allocate();
    writer.object(number, text);
    return number;
}

int DocumentInformation::writeMetadata(ObjectWriter& writer, bool marked) const {
    std::string text =
        "<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
        "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" "
        "xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n";
    if (!title_.empty()) {
        text += "<dc:title><rdf:Alt>";
        appendElement(text, "rdf:li xml:lang=\"x-default\"", title_);
        text += "</rdf:Alt></dc:title>\n";
    }
    const std::string date = dateOfXml(created_);
    appendElement(text, "xmp:CreateDate", date);
    appendElement(text, "xmp:ModifyDate", date);
    if (!creator_.empty()) {
        appendElement(text, "xmp:CreatorTool", creator_);
    }
    if (!producer_.empty()) {
        appendElement(text, "pdf:Producer", producer_);
    }
    if (marked) {
        text += "\n<pdfaid:part>2</pdfaid:part><pdfaid:conformance>U</pdfaid:conformance>";
    }
    text += "\n</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"r\"?>";
    const int number = writer.allocate();
    // As it is, so that programs that know nothing of PDF find it.
    writer.storedStream(number, "/Type/Metadata/Subtype/XML", text);
    return number;
}

std::string DocumentInformation::identifier(const ObjectWriter& writer) const {
    Fingerprint information;
    for (const std::string& text : {title_, creator_, producer_}) {
        information.add(text);
        information.add(text.size());
    }
    information.add(static_cast<std::uint64_t>(created_));
    Fingerprint content = writer.fingerprint();
    content.add(writer.position());
    std::string digits;
    appendHex(digits, information.value());
    appendHex(digits, content.value());
    return digits;
}

}  // namespace platform_linux::pdf
