// The port XmlFiles on Linux.
#pragma once

#include "platform/xml_files.h"

namespace platform_linux {

// By the module "xml", which is loaded with the first file.
class LinuxXmlFiles : public platform::XmlFiles {
public:
    platform::XmlDocument parse(std::string_view content) override;
};

}  // namespace platform_linux
