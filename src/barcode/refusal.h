// What users read about data that a symbology cannot encode.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace barcode {

// German: which character it is, where it stands in the data, and what the symbology takes instead.
std::string refusal(int symbology, std::string_view data, std::size_t position);

}  // namespace barcode
