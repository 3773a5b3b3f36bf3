// XML that the check lets pass, in the parser: it has to end soon, and what comes of it is not deeper than allowed.
#include "settings/xml_check.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "platform/linux/xml/xml_parser.h"
#include "runtime/utf8.h"

namespace {

std::size_t levelsOf(const platform::XmlNode& node) {
    std::size_t levels = 0;
    for (const platform::XmlNode& child : node.children) {
        levels = std::max(levels, levelsOf(child));
    }
    return node.name.starts_with('#') ? 0 : levels + 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    if (!settings::xmlRefusal(content).empty()) {
        return 0;
    }
    const platform::XmlDocument document = platform_linux::xml::XmlParser().parse(content);
    // A processing instruction counts as a level here.
    if (levelsOf(document.root) > 17 || document.root.name.empty() == document.error.empty() ||
        document.error.find('\n') != std::string::npos) {
        std::abort();
    }
    return 0;
}
