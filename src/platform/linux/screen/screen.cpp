#include "platform/linux/screen/screen.h"

#include <xcb/xcb.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

// The resources are lines of "name:<blanks>value".
int dpiIn(std::string_view resources) {
    constexpr std::string_view name = "Xft.dpi:";
    double dpi = 0;
    while (!resources.empty()) {
        std::string_view line = resources.substr(0, resources.find('\n'));
        resources.remove_prefix(line.size() < resources.size() ? line.size() + 1 : line.size());
        if (line.starts_with(name)) {
            line.remove_prefix(name.size());
            const std::size_t start = line.find_first_not_of(" \t");
            line.remove_prefix(start == std::string_view::npos ? line.size() : start);
            std::from_chars(line.data(), line.data() + line.size(), dpi);
        }
    }
    constexpr double most = 10000;
    return dpi > 0 && dpi < most ? static_cast<int>(std::lround(dpi)) : 0;
}

}  // namespace

extern "C" {
[[gnu::visibility("default")]] int krvwinpr_screen();
}

int krvwinpr_screen() {
    constexpr int noDisplay = -1;
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return noDisplay;
    }
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    if (screens.rem == 0) {
        return noDisplay;
    }
    constexpr std::uint32_t longestInWords = 0x10000;
    const xcb_get_property_cookie_t cookie = xcb_get_property(
        connection.get(), 0, screens.data->root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, longestInWords);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
        xcb_get_property_reply(connection.get(), cookie, nullptr));
    if (!reply) {
        return 0;
    }
    return dpiIn({static_cast<const char*>(xcb_get_property_value(reply.get())),
                  static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
}
