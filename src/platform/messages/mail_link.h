// The address under which the system's mail program opens a new message.
#pragma once

#include <cstddef>
#include <string>

namespace platform::messages {

// By RFC 6068. Texts are UTF-8; lines end with "\n" or "\r\n". Where the whole were longer than so many characters, the
// text is cut at the end of a line, and says so.
std::string mailLink(const std::string& subject, const std::string& text, std::size_t most);

}  // namespace platform::messages
