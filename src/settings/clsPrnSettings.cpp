#include "settings/clsPrnSettings.h"

#include "runtime/error.h"

namespace settings {

const clsPrnSetting& clsPrnSettings::Item(std::size_t position) const {
    if (position < 1 || position > settings_.size()) {
        throw runtime::Error(runtime::errSubscript);
    }
    return settings_[position - 1];
}

}  // namespace settings
