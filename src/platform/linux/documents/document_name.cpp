#include "platform/linux/documents/document_name.h"

#include <algorithm>

#include "runtime/text.h"

namespace platform_linux::documents {

namespace {

// Bytes; leaves room in a file name of 255 bytes for a number, the ending and the letters of a temporary name.
constexpr std::size_t longest = 220;

}  // namespace

std::string documentName(const std::string& title) {
    std::string name(runtime::fileNameOf(title));
    if (name.size() > 2 && name[1] == ':') {
        name.erase(0, 2);
    }
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos) {
        name.resize(dot);
    }
    std::replace_if(
        name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '_');
    name.resize(runtime::beginningOf(name, longest).size());
    // A name of dots would be a folder or hide the file.
    return name.find_first_not_of(". ") == std::string::npos ? "Druck" : name;
}

std::string numberedName(const std::string& name, int number) {
    return name + (number > 1 ? " (" + std::to_string(number) + ")" : "") + ".pdf";
}

}  // namespace platform_linux::documents
