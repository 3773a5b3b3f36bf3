// Port: the parser of XML that the system or a library has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct XmlAttribute {
    std::string name;
    std::string value;
};

// A node of a document and what is below it, as the Document Object Model has them: an element under its name as it is
// written, with its prefix; else "#text", "#cdata-section", "#comment" or a processing instruction's target. Text of
// nothing but blanks is a node as well. UTF-8.
struct XmlNode {
    std::string name;
    std::string value;                     // the text of what is no element
    std::vector<XmlAttribute> attributes;  // but for declarations of namespaces
    std::vector<XmlNode> children;
};

struct XmlDocument {
    XmlNode root;
    // Where it is not empty, there is no document: what the parser found first, and where, in one line; the parser's
    // own language.
    std::string error;
};

class XmlFiles {
public:
    virtual ~XmlFiles() = default;

    // The content of a file, which the caller has checked: small, not deep, without entities of its own, and in one of
    // the encodings that XML wants to be read, windows-1252 or ISO-8859-1. Prefixes must be declared. A document with a
    // document type declaration is validated by it where the parser can do that, and its attributes have the defaults
    // from there. Nothing outside the content is ever read. A parser that cannot be had is an error like any other.
    // Throws std::bad_alloc only.
    virtual XmlDocument parse(std::string_view content) = 0;
};

}  // namespace platform
