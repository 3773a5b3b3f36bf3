// The desktop's file manager, by "File Manager Interface" of freedesktop.org.
#pragma once

#include <QString>
#include <functional>

namespace platform_linux::qt {

// As in Desktop.
bool markInFileManager(const QString& path, std::function<void()> otherwise);

}  // namespace platform_linux::qt
