#include "platform/linux/xml/xml_parser.h"

extern "C" __attribute__((visibility("default"))) std::unique_ptr<platform::XmlFiles> krvwinpr_xml();

std::unique_ptr<platform::XmlFiles> krvwinpr_xml() { return std::make_unique<platform_linux::xml::XmlParser>(); }
