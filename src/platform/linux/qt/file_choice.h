// Asks for the name of a file to be written, or of one that is there.
#pragma once

#include <QWidget>
#include <optional>
#include <string>

namespace platform_linux::qt {

// As in the port Forms.
std::optional<std::string> askFileToWrite(QWidget& owner, const std::string& title, const std::string& suggestion,
                                          const std::string& kindOfFile, const std::string& ending);

std::optional<std::string> askFileToRead(QWidget& owner, const std::string& title, const std::string& folder);

}  // namespace platform_linux::qt
