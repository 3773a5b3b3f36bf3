// Asks for the name of a file to be written.
#pragma once

#include <QWidget>
#include <optional>
#include <string>

namespace platform_linux::qt {

// As in the port Forms.
std::optional<std::string> askFileToWrite(QWidget& owner, const std::string& title, const std::string& suggestion,
                                          const std::string& kindOfFile, const std::string& ending);

}  // namespace platform_linux::qt
