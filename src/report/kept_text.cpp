#include "report/kept_text.h"

#include <algorithm>
#include <array>

#include "runtime/text.h"
#include "runtime/utf8.h"

namespace report {

namespace {

struct Field {
    std::string_view label;
    std::string KeptText::*value;
};
constexpr std::array fields = {
    Field{"Zeit", &KeptText::time},         Field{"Druckdatei", &KeptText::printFile},
    Field{"Ordner", &KeptText::folder},     Field{"Grafikdatei", &KeptText::graphic},
    Field{"Schalter", &KeptText::switches}, Field{"Drucker", &KeptText::printer},
    Field{"Grund", &KeptText::reason},      Field{"Gedruckte Seiten", &KeptText::pages},
};
constexpr std::string_view document = "Fertige Seiten";

std::string line(std::string_view label, std::string value) {
    constexpr std::size_t column = 20;
    std::string text(label);
    text += ':';
    text.resize(std::max(text.size(), column), ' ');
    std::erase(value, '\r');
    std::replace(value.begin(), value.end(), '\n', ' ');
    return value.empty() ? "" : text + runtime::shown(value) + "\r\n";
}

void take(std::string_view label, std::string value, KeptText& to) {
    if (label == document) {
        to.documents.push_back(std::move(value));
        return;
    }
    for (const Field& field : fields) {
        if (field.label == label && (to.*field.value).empty()) {
            to.*field.value = std::move(value);
            return;
        }
    }
}

}  // namespace

std::string writtenKeptText(const KeptText& text) {
    std::string written;
    for (const Field& field : fields) {
        written += line(field.label, text.*field.value);
    }
    for (const std::string& path : text.documents) {
        written += line(document, path);
    }
    return written;
}

KeptText readKeptText(std::string_view text) {
    KeptText read;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view content = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        content = content.substr(0, content.find('\r'));
        if (const std::size_t colon = content.find(':'); colon != std::string_view::npos) {
            take(content.substr(0, colon), runtime::mended(runtime::trimBlanks(content.substr(colon + 1))), read);
        }
    }
    return read;
}

}  // namespace report
