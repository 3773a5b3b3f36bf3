#include "platform/linux/linux_xml_files.h"

#include "platform/linux/module.h"
#include "platform/linux/xml/xml_parser.h"
#include "runtime/error.h"

namespace platform_linux {

platform::XmlDocument LinuxXmlFiles::parse(std::string_view content) {
    xml::XmlFilesFactory parser = nullptr;
    try {
        parser = reinterpret_cast<xml::XmlFilesFactory>(moduleEntry("xml"));
    } catch (const runtime::Error& error) {
        return {{}, "XML ist nicht lesbar: " + error.detail()};
    }
    return parser()->parse(content);
}

}  // namespace platform_linux
