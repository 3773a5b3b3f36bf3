#include "platform/linux/cups/ipp_message.h"

#include <cups/cups.h>

#include <array>

namespace platform_linux::cups {

namespace {

template <typename... Types>
bool hasType(ipp_attribute_t* attribute, Types... types) {
    const ipp_tag_t tag = ippGetValueTag(attribute);
    return ((tag == types) || ...);
}

// What a request is about comes first, then who asks (RFC 8011, section 4.1.5).
void addQueue(ipp_t* request, const std::string& queue) {
    if (!queue.empty()) {
        std::array<char, HTTP_MAX_URI> uri{};
        httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr, "localhost", 0,
                         "/printers/%s", queue.c_str());
        ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.data());
    }
}

void addAsker(ipp_t* request, const std::vector<const char*>& attributes) {
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    if (!attributes.empty()) {
        ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                      static_cast<int>(attributes.size()), nullptr, attributes.data());
    }
}

}  // namespace

IppMessage makeRequest(ipp_op_t operation, const std::string& queue, const std::vector<const char*>& attributes) {
    IppMessage request(ippNewRequest(operation));
    addQueue(request.get(), queue);
    addAsker(request.get(), attributes);
    return request;
}

IppMessage makeJobRequest(ipp_op_t operation, const std::string& queue, int job,
                          const std::vector<const char*>& attributes) {
    IppMessage request(ippNewRequest(operation));
    addQueue(request.get(), queue);
    ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
    addAsker(request.get(), attributes);
    return request;
}

ipp_attribute_t* find(ipp_t* message, const char* name) { return ippFindAttribute(message, name, IPP_TAG_ZERO); }

int count(ipp_t* message, const char* name) {
    ipp_attribute_t* attribute = find(message, name);
    return attribute != nullptr ? ippGetCount(attribute) : 0;
}

std::string text(ipp_t* message, const char* name) {
    const std::vector<std::string> values = texts(message, name);
    return values.empty() ? std::string() : values.front();
}

std::vector<std::string> texts(ipp_t* message, const char* name) { return textsOf(find(message, name)); }

std::vector<std::string> textsOf(ipp_attribute_t* attribute) {
    std::vector<std::string> result;
    for (int i = 0; attribute != nullptr && i < ippGetCount(attribute); ++i) {
        if (const char* value = ippGetString(attribute, i, nullptr); value != nullptr) {
            result.emplace_back(value);
        }
    }
    return result;
}

int number(ipp_t* message, const char* name, int otherwise) {
    ipp_attribute_t* attribute = find(message, name);
    return attribute != nullptr && hasType(attribute, IPP_TAG_INTEGER, IPP_TAG_ENUM) ? ippGetInteger(attribute, 0)
                                                                                     : otherwise;
}

std::optional<bool> boolean(ipp_t* message, const char* name) {
    ipp_attribute_t* attribute = find(message, name);
    if (attribute == nullptr || !hasType(attribute, IPP_TAG_BOOLEAN)) {
        return std::nullopt;
    }
    return ippGetBoolean(attribute, 0) != 0;
}

void eachGroup(ipp_t* message, ipp_tag_t kind, const std::function<void(ipp_attribute_t*)>& attribute,
               const std::function<void()>& end) {
    bool open = false;
    for (auto* next = ippFirstAttribute(message); next != nullptr; next = ippNextAttribute(message)) {
        const bool inside = ippGetGroupTag(next) == kind && ippGetName(next) != nullptr;
        if (inside) {
            attribute(next);
        } else if (open) {
            end();
        }
        open = inside;
    }
    if (open) {
        end();
    }
}

std::vector<ipp_t*> collections(ipp_t* message, const char* name) {
    std::vector<ipp_t*> result;
    ipp_attribute_t* attribute = find(message, name);
    for (int i = 0; attribute != nullptr && i < ippGetCount(attribute); ++i) {
        if (ipp_t* value = ippGetCollection(attribute, i); value != nullptr) {
            result.push_back(value);
        }
    }
    return result;
}

}  // namespace platform_linux::cups
