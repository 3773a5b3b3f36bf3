// How long a user waits for a window: from the start of a process until it shows one on the display, in milliseconds.
//
//     window-shown PROGRAM [ARGUMENT...]     ends the program with SIGTERM then
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

extern char** environ;

namespace {

struct Freed {
    void operator()(void* memory) const { std::free(memory); }
};

// Windows with a border or a size of nothing are what toolkits keep for themselves.
bool isForUsers(xcb_connection_t* display, xcb_window_t window) {
    constexpr int least = 50;
    const std::unique_ptr<xcb_get_geometry_reply_t, Freed> size(
        xcb_get_geometry_reply(display, xcb_get_geometry(display, window), nullptr));
    return size && size->width >= least && size->height >= least;
}

void waitForWindow(xcb_connection_t* display) {
    while (true) {
        const std::unique_ptr<xcb_generic_event_t, Freed> event(xcb_wait_for_event(display));
        if (!event) {
            std::fputs("the display has gone\n", stderr);
            std::exit(1);
        }
        if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY &&
            isForUsers(display, reinterpret_cast<const xcb_map_notify_event_t&>(*event).window)) {
            return;
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    xcb_connection_t* const display = xcb_connect(nullptr, nullptr);
    if (argc < 2 || xcb_connection_has_error(display) != 0) {
        std::fputs("usage: window-shown PROGRAM [ARGUMENT...], with a display\n", stderr);
        return 1;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(display);
    const auto begin = Clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, argv[1], nullptr, nullptr, argv + 1, environ) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    waitForWindow(display);
    std::printf("%.1f\n", std::chrono::duration<double, std::milli>(Clock::now() - begin).count());
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    return 0;
}
