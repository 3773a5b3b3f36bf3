// How long a user waits in front of a window: starts a program, works its keys, and looks for colours on the display.
//
//     screen-watch STEP... -- PROGRAM [ARGUMENT...]
//
// Steps, each timed from the one before, in milliseconds on a line of its own:
//     shows RRGGBB    until a pixel of this colour is in the middle of the display's width
//     press KEY       a key by its name in X (Next, ctrl+g); not timed
//     times N         the two steps that follow are done so often, by turns with both colours: RRGGBB/RRGGBB
//     memory          KiB that the process has in memory, and the most that it had
// The program is ended with SIGTERM then.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(const std::string& reason) {
    std::fprintf(stderr, "screen-watch: %s\n", reason.c_str());
    std::exit(1);
}

class WatchedScreen {
public:
    WatchedScreen() : display_(XOpenDisplay(nullptr)) {
        if (display_ == nullptr) {
            fail("no display");
        }
    }
    WatchedScreen(const WatchedScreen&) = delete;
    WatchedScreen& operator=(const WatchedScreen&) = delete;
    ~WatchedScreen() { XCloseDisplay(display_); }

    void waitFor(unsigned long color) {
        const auto limit = Clock::now() + std::chrono::seconds(60);
        while (!shows(color)) {
            if (Clock::now() > limit) {
                fail("the colour does not appear");
            }
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

    void press(std::string_view key) {
        std::vector<KeyCode> codes;
        for (std::size_t start = 0; start <= key.size();) {
            const std::size_t end = std::min(key.find('+', start), key.size());
            const std::string name(key.substr(start, end - start));
            const KeySym symbol = XStringToKeysym(name == "ctrl" ? "Control_L" : name.c_str());
            codes.push_back(XKeysymToKeycode(display_, symbol));
            start = end + 1;
        }
        for (const KeyCode code : codes) {
            XTestFakeKeyEvent(display_, code, True, CurrentTime);
        }
        std::reverse(codes.begin(), codes.end());
        for (const KeyCode code : codes) {
            XTestFakeKeyEvent(display_, code, False, CurrentTime);
        }
        XFlush(display_);
    }

private:
    static constexpr unsigned stripWidth = 16;

    bool shows(unsigned long color) {
        const int screen = DefaultScreen(display_);
        const auto height = static_cast<unsigned>(DisplayHeight(display_, screen));
        XImage* const strip = XGetImage(display_, DefaultRootWindow(display_), DisplayWidth(display_, screen) / 2, 0,
                                        stripWidth, height, AllPlanes, ZPixmap);
        bool found = false;
        for (unsigned pixel = 0; pixel < height * stripWidth && !found; ++pixel) {
            const int x = static_cast<int>(pixel % stripWidth);
            const int y = static_cast<int>(pixel / stripWidth);
            found = (XGetPixel(strip, x, y) & 0xFFFFFF) == color;
        }
        XDestroyImage(strip);
        return found;
    }

    Display* display_;
};

void printMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    std::string now;
    std::string most;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            now = line.substr(6);
        } else if (line.starts_with("VmHWM:")) {
            most = line.substr(6);
        }
    }
    std::printf("%d %d\n", std::atoi(now.c_str()), std::atoi(most.c_str()));
}

unsigned long colorOf(std::string_view step, std::size_t turn) {
    const std::size_t slash = step.find('/');
    if (slash != std::string_view::npos) {
        step = turn % 2 == 0 ? step.substr(0, slash) : step.substr(slash + 1);
    }
    return std::strtoul(std::string(step).c_str(), nullptr, 16);
}

class Watch {
public:
    Watch(WatchedScreen& screen, pid_t process) : screen_(screen), process_(process), since_(Clock::now()) {}

    // The number of words that the step takes.
    std::size_t step(const std::vector<std::string>& words, std::size_t at, std::size_t turn) {
        if (words[at] == "memory") {
            printMemory(process_);
            return 1;
        }
        if (at + 1 == words.size()) {
            fail("a step lacks its argument");
        }
        const std::string& argument = words[at + 1];
        if (words[at] == "press") {
            since_ = Clock::now();
            screen_.press(argument);
        } else if (words[at] == "shows") {
            screen_.waitFor(colorOf(argument, turn));
            std::printf("%.2f\n", std::chrono::duration<double, std::milli>(Clock::now() - since_).count());
        } else if (words[at] == "times") {
            return 2 + repeat(words, at + 2, std::strtoul(argument.c_str(), nullptr, 10));
        } else {
            fail("no step is called " + words[at]);
        }
        return 2;
    }

private:
    std::size_t repeat(const std::vector<std::string>& words, std::size_t at, std::size_t times) {
        std::size_t taken = 0;
        for (std::size_t turn = 0; turn < times; ++turn) {
            taken = step(words, at, turn);
            taken += step(words, at + taken, turn);
        }
        return taken;
    }

    WatchedScreen& screen_;
    pid_t process_;
    Clock::time_point since_;
};

}  // namespace

int main(int argc, char** argv) {
    const auto end = std::find(argv + 1, argv + argc, std::string_view("--"));
    if (end + 1 >= argv + argc) {
        fail("usage: screen-watch STEP... -- PROGRAM [ARGUMENT...], with a display");
    }
    const std::vector<std::string> words(argv + 1, end);
    WatchedScreen screen;
    pid_t child = 0;
    if (posix_spawnp(&child, end[1], nullptr, nullptr, end + 1, environ) != 0) {
        fail(std::string("cannot start ") + end[1]);
    }
    Watch watch(screen, child);
    for (std::size_t at = 0; at < words.size();) {
        at += watch.step(words, at, 0);
    }
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    return 0;
}
