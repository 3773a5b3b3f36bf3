#include "platform/linux/fonts/fontconfig_files.h"

#include <cstdlib>
#include <initializer_list>

#include "platform/linux/fonts/scoped.h"

namespace platform_linux::fonts {

namespace {

std::string variable(const char* name) {
    const char* value = ::getenv(name);
    return value != nullptr ? value : "";
}

void append(std::vector<std::string>& paths, FcStrList* list) {
    const Scoped<FcStrList, FcStrListDone> owned(list);
    while (const FcChar8* path = list != nullptr ? FcStrListNext(list) : nullptr) {
        paths.emplace_back(reinterpret_cast<const char*>(path));
    }
}

// Where users keep their own (conf.d/50-user.conf and the folders of fonts.conf).
void appendUsers(std::vector<std::string>& paths) {
    const std::string home = variable("HOME");
    const auto below = [&](const char* name, const char* usual) {
        const std::string configured = variable(name);
        return configured.empty() ? home + usual : configured;
    };
    const std::string configuration = below("XDG_CONFIG_HOME", "/.config") + "/fontconfig";
    for (const std::string& path : {configuration, configuration + "/fonts.conf", configuration + "/conf.d",
                                    below("XDG_DATA_HOME", "/.local/share") + "/fonts", home + "/.fonts",
                                    home + "/.fonts.conf", home + "/.fonts.conf.d"}) {
        paths.push_back(path);
    }
}

}  // namespace

std::string fontconfigEnvironment() {
    std::string all;
    for (const char* name : {"FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT", "HOME", "XDG_CONFIG_HOME",
                             "XDG_DATA_HOME", "FC_LANG", "LC_ALL", "LC_CTYPE", "LANG"}) {
        all += std::string(name) + '=' + variable(name) + '\n';
    }
    return all;
}

std::vector<std::string> fontconfigFiles(FcConfig* config) {
    std::vector<std::string> paths;
    append(paths, FcConfigGetConfigFiles(config));
    const std::size_t files = paths.size();
    for (std::size_t file = 0; file < files; ++file) {
        paths.push_back(paths[file].substr(0, paths[file].rfind('/')));
    }
    append(paths, FcConfigGetConfigDirs(config));
    append(paths, FcConfigGetFontDirs(config));
    appendUsers(paths);
    return paths;
}

}  // namespace platform_linux::fonts
