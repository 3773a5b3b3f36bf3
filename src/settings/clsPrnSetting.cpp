#include "settings/clsPrnSetting.h"

#include <algorithm>

namespace settings {

void clsPrnSetting::set(std::string_view property, std::string_view value) {
    const auto* const found = std::ranges::find(names, property);
    if (found != names.end()) {
        values_[static_cast<std::size_t>(found - names.begin())] = value;
    }
}

}  // namespace settings
