// What the tests of the port ImageFiles need on every system.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "unit/support/adapter_test.h"
#include "unit/support/picture_table.h"
#include "unit/support/pixels.h"

namespace support {

// The system's own.
std::unique_ptr<platform::ImageFiles> makeImageFiles();

// Whether they decode and invert this file of make_pictures.sh, and whether they write each file with the compression
// of its original and as well as it goes.
bool canDecode(std::string_view name);
bool canInvert(std::string_view name);
bool canKeepAll();

// The content of a file of make_pictures.sh.
inline std::string pictureFile(std::string_view name) {
    const std::string content = get(KRV_PICTURES "/" + std::string(name));
    EXPECT_GT(content.size(), 0U) << name;
    return content;
}

// The pixels of a PPM file, as colorsOf() has those of a picture.
inline std::string colorsOfPpm(const std::string& content) {
    return content.substr(content.size() - std::min(content.size(), bytesOfPixels));
}

// The greatest difference between two channels.
inline int differenceOf(const std::string& one, const std::string& other) {
    EXPECT_EQ(one.size(), other.size());
    int most = 0;
    for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i) {
        most = std::max(most, std::abs(static_cast<std::uint8_t>(one[i]) - static_cast<std::uint8_t>(other[i])));
    }
    return most;
}

}  // namespace support
