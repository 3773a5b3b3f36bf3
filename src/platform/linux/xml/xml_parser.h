// The module "xml": the port XmlFiles by libxml2.
#pragma once

#include <memory>

#include "platform/xml_files.h"

namespace platform_linux::xml {

// The module's entry function.
using XmlFilesFactory = std::unique_ptr<platform::XmlFiles> (*)();

class XmlParser : public platform::XmlFiles {
public:
    platform::XmlDocument parse(std::string_view content) override;
};

}  // namespace platform_linux::xml
