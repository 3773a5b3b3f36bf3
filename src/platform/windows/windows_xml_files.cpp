#include "platform/windows/windows_xml_files.h"

#include "platform/windows/com_object.h"

#include <windows.h>
// After windows.h, which it needs.
#include <msxml2.h>

#include <algorithm>
#include <new>
#include <utility>

#include "platform/messages/unseen_box.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"

namespace platform_windows {

namespace {

using platform::XmlDocument;
using platform::XmlNode;

// Of the system's documentation; the compiler's libraries lack them.
constexpr CLSID msxml6{0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
constexpr CLSID msxml3{0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}};
constexpr IID documentInterface{0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

[[noreturn]] void fail(HRESULT result) {
    throw runtime::Error(runtime::errInternal,
                         "Windows kann auf diesem Rechner kein XML lesen (" + codeOf(result) + ")");
}

void check(HRESULT result) {
    if (isOutOfMemory(result)) {
        throw std::bad_alloc();
    }
    if (FAILED(result)) {
        fail(result);
    }
}

class Variant {
public:
    Variant() { ::VariantInit(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { ::VariantClear(&value_); }

    VARIANT& get() { return value_; }

private:
    VARIANT value_{};
};

template <typename Call>
std::string textFrom(const Call& call) {
    wchar_t* text = nullptr;
    check(call(&text));
    const ComString owner(text);
    return text != nullptr ? narrow(text) : "";
}

ComObject<IXMLDOMDocument2> newDocument() {
    HRESULT result = S_OK;
    for (const CLSID& version : {msxml6, msxml3}) {
        void* created = nullptr;
        result = ::CoCreateInstance(version, nullptr, CLSCTX_INPROC_SERVER, documentInterface, &created);
        if (SUCCEEDED(result)) {
            return ComObject<IXMLDOMDocument2>(static_cast<IXMLDOMDocument2*>(created));
        }
    }
    fail(result);
}

// A type declaration is allowed, because the caller has checked it; versions that know no such property allow it
// anyway.
void allowTypeDeclaration(IXMLDOMDocument2& document) {
    const ComString name(::SysAllocString(L"ProhibitDTD"));
    Variant no;
    no.get().vt = VT_BOOL;
    no.get().boolVal = VARIANT_FALSE;
    document.setProperty(name.get(), no.get());
}

void load(IXMLDOMDocument2& document, std::string_view content) {
    check(document.put_async(VARIANT_FALSE));
    check(document.put_validateOnParse(VARIANT_TRUE));
    check(document.put_resolveExternals(VARIANT_FALSE));
    check(document.put_preserveWhiteSpace(VARIANT_TRUE));
    allowTypeDeclaration(document);
    Variant bytes;
    bytes.get().parray = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(content.size()));
    if (bytes.get().parray == nullptr) {
        throw std::bad_alloc();
    }
    bytes.get().vt = VT_ARRAY | VT_UI1;
    std::copy(content.begin(), content.end(), static_cast<char*>(bytes.get().parray->pvData));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    check(document.load(bytes.get(), &loaded));
}

std::string errorOf(IXMLDOMDocument2& document) {
    const auto error = received<IXMLDOMParseError>([&](auto** to) { return document.get_parseError(to); }, check);
    long code = 0;
    long line = 0;
    check(error->get_errorCode(&code));
    if (code == 0) {
        return "";
    }
    check(error->get_line(&line));
    const std::string reason = textFrom([&](wchar_t** to) { return error->get_reason(to); });
    return platform::messages::oneLine(reason.empty() ? codeOf(code) : reason) +
           (line > 0 ? " (Zeile " + std::to_string(line) + ")" : "");
}

std::string nameOf(IXMLDOMNode& node) {
    return textFrom([&](wchar_t** to) { return node.get_nodeName(to); });
}

std::string valueOf(IXMLDOMNode& node) {
    Variant value;
    check(node.get_nodeValue(&value.get()));
    return value.get().vt == VT_BSTR && value.get().bstrVal != nullptr ? narrow(value.get().bstrVal) : "";
}

bool isNamespaceDeclaration(IXMLDOMNode& attribute) { return (nameOf(attribute) + ":").starts_with("xmlns:"); }

std::vector<platform::XmlAttribute> attributesOf(IXMLDOMNode& element) {
    std::vector<platform::XmlAttribute> result;
    const auto map = received<IXMLDOMNamedNodeMap>([&](auto** to) { return element.get_attributes(to); }, check);
    long count = 0;
    if (map) {
        check(map->get_length(&count));
    }
    for (long i = 0; i < count; ++i) {
        // Wine fails to give the declaration of a default namespace, for want of memory as it says.
        const auto attribute = received<IXMLDOMNode>([&](auto** to) { return map->get_item(i, to); }, [](HRESULT) {});
        if (attribute && !isNamespaceDeclaration(*attribute)) {
            result.push_back({nameOf(*attribute), valueOf(*attribute)});
        }
    }
    return result;
}

XmlNode converted(IXMLDOMNode& node) {
    XmlNode result;
    result.name = nameOf(node);
    DOMNodeType type = NODE_INVALID;
    check(node.get_nodeType(&type));
    if (type != NODE_ELEMENT) {
        result.value = valueOf(node);
        return result;
    }
    result.attributes = attributesOf(node);
    auto child = received<IXMLDOMNode>([&](auto** to) { return node.get_firstChild(to); }, check);
    while (child) {
        result.children.push_back(converted(*child));
        child = received<IXMLDOMNode>([&](auto** to) { return child->get_nextSibling(to); }, check);
    }
    return result;
}

}  // namespace

XmlDocument WindowsXmlFiles::parse(std::string_view content) {
    const ComScope com;
    XmlDocument result;
    try {
        const ComObject<IXMLDOMDocument2> document = newDocument();
        load(*document, content);
        result.error = errorOf(*document);
        if (result.error.empty()) {
            const auto root =
                received<IXMLDOMElement>([&](auto** to) { return document->get_documentElement(to); }, check);
            result.root = root ? converted(*root) : XmlNode();
        }
    } catch (const runtime::Error& error) {
        return {{}, error.detail()};
    }
    return result;
}

}  // namespace platform_windows
