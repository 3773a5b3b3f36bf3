// The port XmlFiles on Windows.
#pragma once

#include "platform/xml_files.h"

namespace platform_windows {

// The system's MSXML 6, or 3 where that is all there is. That of Wine does not validate, lets a prefix go without its
// declaration, and has one word for everything that is wrong.
class WindowsXmlFiles : public platform::XmlFiles {
public:
    platform::XmlDocument parse(std::string_view content) override;
};

}  // namespace platform_windows
