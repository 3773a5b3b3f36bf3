#include "platform/linux/xml/xml_parser.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <new>
#include <string>
#include <utility>

#include "platform/messages/unseen_box.h"

namespace platform_linux::xml {

namespace {

using platform::XmlDocument;
using platform::XmlNode;

struct FreeContext {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};
struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

xmlParserInput* nothingOutside(const char* /*url*/, const char* /*id*/, xmlParserCtxt* /*context*/) { return nullptr; }

// While it lives, the library reads nothing but what it is given, and tells errors here instead of on standard error.
class Guard {
public:
    Guard() : loader_(xmlGetExternalEntityLoader()) {
        xmlSetExternalEntityLoader(nothingOutside);
        // The library's versions differ in whether the error is constant.
        xmlSetStructuredErrorFunc(this, [](void* guard, auto* error) { static_cast<Guard*>(guard)->take(*error); });
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() {
        xmlSetStructuredErrorFunc(nullptr, nullptr);
        xmlSetExternalEntityLoader(loader_);
    }

    // Nothing where the content is not well-formed or not valid.
    Document read(std::string_view content, int options) const {
        const std::unique_ptr<xmlParserCtxt, FreeContext> context(xmlNewParserCtxt());
        Document document(context ? xmlCtxtReadMemory(context.get(), content.data(), static_cast<int>(content.size()),
                                                      nullptr, nullptr, options)
                                  : nullptr);
        if (!context || outOfMemory_) {
            throw std::bad_alloc();
        }
        const bool good = context->wellFormed != 0 && context->nsWellFormed != 0 && context->valid != 0;
        return good ? std::move(document) : nullptr;
    }

    std::string firstError() const { return firstError_.empty() ? "Das XML ist fehlerhaft" : firstError_; }

private:
    void take(const xmlError& error) {
        outOfMemory_ = outOfMemory_ || error.code == XML_ERR_NO_MEMORY;
        if (firstError_.empty() && error.level >= XML_ERR_ERROR && error.message != nullptr) {
            firstError_ = platform::messages::oneLine(error.message) + " (Zeile " + std::to_string(error.line) + ")";
        }
    }

    xmlExternalEntityLoader loader_;
    std::string firstError_;
    bool outOfMemory_ = false;
};

std::string textOf(const xmlChar* text) { return text != nullptr ? reinterpret_cast<const char*>(text) : ""; }

std::string qualified(const xmlNs* space, const xmlChar* name) {
    return (space != nullptr && space->prefix != nullptr ? textOf(space->prefix) + ":" : "") + textOf(name);
}

std::string nameOf(const xmlNode& node) {
    switch (node.type) {
        case XML_TEXT_NODE:
            return "#text";
        case XML_CDATA_SECTION_NODE:
            return "#cdata-section";
        case XML_COMMENT_NODE:
            return "#comment";
        case XML_ELEMENT_NODE:
            return qualified(node.ns, node.name);
        default:
            return textOf(node.name);
    }
}

XmlNode converted(const xmlNode& node) {
    XmlNode result;
    result.name = nameOf(node);
    if (node.type != XML_ELEMENT_NODE) {
        result.value = textOf(node.content);
        return result;
    }
    for (const xmlAttr* attribute = node.properties; attribute != nullptr; attribute = attribute->next) {
        std::string value;
        for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
            value += textOf(part->content);
        }
        result.attributes.push_back({qualified(attribute->ns, attribute->name), std::move(value)});
    }
    for (const xmlNode* child = node.children; child != nullptr; child = child->next) {
        result.children.push_back(converted(*child));
    }
    return result;
}

}  // namespace

XmlDocument XmlParser::parse(std::string_view content) {
    Guard guard;
    XmlDocument result;
    Document document = guard.read(content, XML_PARSE_NONET);
    // To be validated without a type declaration would be an error.
    if (document && document->intSubset != nullptr) {
        document = guard.read(content, XML_PARSE_NONET | XML_PARSE_DTDVALID | XML_PARSE_DTDATTR);
    }
    const xmlNode* root = document ? xmlDocGetRootElement(document.get()) : nullptr;
    if (root == nullptr) {
        result.error = guard.firstError();
    } else {
        result.root = converted(*root);
    }
    return result;
}

}  // namespace platform_linux::xml
