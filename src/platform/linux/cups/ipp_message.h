// An IPP message and its attributes, without the casts and null pointers of the C interface.
#pragma once

#include <cups/ipp.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform_linux::cups {

struct IppDelete {
    void operator()(ipp_t* message) const noexcept { ippDelete(message); }
};
using IppMessage = std::unique_ptr<ipp_t, IppDelete>;

// A request about a queue, or about the server where the name is empty; the attributes are those wanted in the answer.
IppMessage makeRequest(ipp_op_t operation, const std::string& queue, const std::vector<const char*>& attributes = {});

// A request about a job of a queue.
IppMessage makeJobRequest(ipp_op_t operation, const std::string& queue, int job,
                          const std::vector<const char*>& attributes = {});

// Values of an answer. A missing attribute, or one of another type, is empty or the value given.
ipp_attribute_t* find(ipp_t* message, const char* name);
int count(ipp_t* message, const char* name);
std::string text(ipp_t* message, const char* name);
std::vector<std::string> texts(ipp_t* message, const char* name);
std::vector<std::string> textsOf(ipp_attribute_t* attribute);  // none of null
int number(ipp_t* message, const char* name, int otherwise);
std::optional<bool> boolean(ipp_t* message, const char* name);
// Goes through the groups of a kind, of which an answer has one for each job or event: through the attributes of each,
// and then to its end.
void eachGroup(ipp_t* message, ipp_tag_t kind, const std::function<void(ipp_attribute_t*)>& attribute,
               const std::function<void()>& end);
// The members of the collections of an attribute; they belong to the message.
std::vector<ipp_t*> collections(ipp_t* message, const char* name);

}  // namespace platform_linux::cups
