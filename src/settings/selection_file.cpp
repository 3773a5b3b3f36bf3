#include "settings/selection_file.h"

#include "runtime/error.h"
#include "runtime/text.h"

namespace settings {

namespace {

std::string pathOf(platform::System& system) { return system.currentDirectory() + R"(\KRVWIN.ASW)"; }

// A field as the product's run-time reads one from a file: blanks before it are skipped, and in double quotes a comma
// belongs to it.
std::string firstField(std::string_view content) {
    const std::size_t begin = content.find_first_not_of(" \t");
    content.remove_prefix(begin == std::string_view::npos ? content.size() : begin);
    if (content.starts_with('"')) {
        content.remove_prefix(1);
        return std::string(content.substr(0, content.find_first_of("\"\r\n")));
    }
    return std::string(runtime::trimRight(content.substr(0, content.find_first_of(",\r\n"))));
}

}  // namespace

void writeSelectionFile(platform::System& system, const std::string& deviceName) {
    system.writeFile(pathOf(system), system.toSystemCodePage(deviceName) + "\r\n");
}

std::string readSelectionFile(platform::System& system) {
    try {
        return firstField(system.readFile(pathOf(system)));
    } catch (const runtime::Error&) {
        return {};
    }
}

}  // namespace settings
