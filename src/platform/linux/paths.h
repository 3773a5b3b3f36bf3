// Paths as the host writes them, and the files that they mean.
#pragma once

#include <string>
#include <string_view>

namespace platform_linux {

struct ResolvedPath {
    std::string path;  // a native path
    int error = 0;     // errno value: ENOENT the file is missing, ENOTDIR a folder before it, EINVAL no name at all
};

// The file or folder that a path means: "\" separates like "/"; each part is the name of exactly that spelling, else
// the one that differs from it in the case of letters only or is it in the bytes of DOS (of several the first in the
// order of their bytes).
ResolvedPath findPath(std::string_view path);

// The same for a file that is to be written: its folder is looked for, its name is taken as it is.
ResolvedPath findFolderOf(std::string_view path);

// The same for a file that is to be replaced: an existing one of that name in other letters is that file, unless there
// is one in exactly these.
ResolvedPath findFileToReplace(std::string_view path);

// The program file as an absolute path, links resolved; empty where the system does not tell.
std::string programFile();

}  // namespace platform_linux
