// The settings of several printers, in the order of their file.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "settings/clsPrnSetting.h"

namespace settings {

class clsPrnSettings {
public:
    void Add(clsPrnSetting setting) { settings_.push_back(std::move(setting)); }
    std::size_t Count() const { return settings_.size(); }

    // The settings at a position from 1; errSubscript where there are none.
    const clsPrnSetting& Item(std::size_t position) const;

    auto begin() const { return settings_.begin(); }
    auto end() const { return settings_.end(); }

private:
    std::vector<clsPrnSetting> settings_;
};

}  // namespace settings
