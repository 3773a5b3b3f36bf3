// What the tests of the port ImageFiles need on every system.
#pragma once

#include <memory>

#include "unit/support/pixels.h"

namespace support {

// The system's own.
std::unique_ptr<platform::ImageFiles> makeImageFiles();

// Whether they decode this file of make_pictures.sh, and whether they write each file with the depth and compression of
// its original and as well as it goes.
bool canDecode(std::string_view name);
bool canKeepAll();

// The content of a file of make_pictures.sh.
std::string pictureFile(std::string_view name);

// The pixels of a PPM file, as colorsOf() has those of a picture.
std::string colorsOfPpm(const std::string& content);

// The greatest difference between two channels.
int differenceOf(const std::string& one, const std::string& other);

}  // namespace support
