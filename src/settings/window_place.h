// Where the windows of forms lie, kept from call to call below the product's key.
#pragma once

#include <optional>
#include <string>

#include "platform/form_design.h"
#include "session/session.h"

namespace settings {

// The key of a form: "Vorschau".
std::string formKey(const std::string& form);

// What cannot be used is as good as missing.
std::optional<platform::WindowPlace> readWindowPlace(session::Session& session, const std::string& form);

// To be made durable by the caller. A place without a size is not kept.
void keepWindowPlace(session::Session& session, const std::string& form, const platform::WindowPlace& place);

}  // namespace settings
