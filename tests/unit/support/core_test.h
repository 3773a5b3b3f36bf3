// What the tests of the core share.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "report/page_interpreter.h"
#include "startup/MMain.h"
#include "unit/support/fake_platform.h"

namespace testing_support {

using Lines = std::vector<std::string>;

// Pixels are twice as wide as high and the margins differ, so that across and down cannot stand for each other.
inline constexpr platform::DeviceCapabilities oblongPixels{2380, 6816, 300, 600, 2480, 7016, 60, 90};

// What a step fails with; an error of the number 0 where it does not.
inline runtime::Error failureOf(const std::function<void()>& step) {
    try {
        step();
    } catch (const runtime::Error& error) {
        return error;
    }
    return runtime::Error(0);
}

// Its number, source and description.
inline std::string failureText(const std::function<void()>& step) {
    const runtime::Error error = failureOf(step);
    return std::to_string(error.number()) + " " + error.source() + ": " + error.description();
}

class CoreTest : public ::testing::Test {
protected:
    void start(const std::string& tail) {
        host.system.tail = tail;
        startup::MMain::Main(host.ports);
    }
    std::string lastBox() const { return host.dialogs.boxes.empty() ? "" : host.dialogs.boxes.back().text; }

    FakePlatform host;
    session::Session session{host.ports};
    graphics::PictureCache pictures{host.system, host.imageFiles};
};

// Prints pages through the interpreter; left margin 100, top offset 500, line spacing 222 twips. At 1440 pixels to the
// inch a pixel is a twip, 12 points are 240 pixels, and a character is 144 wide.
class PageTest : public CoreTest {
protected:
    PageTest() {
        state.settings.lngLinkerRand = 100;
        state.type.curFontSize = runtime::Currency::fromUnits(120000);
        printer.Font(printer::FontStyle{});
    }
    const auto& print(std::string_view page) {
        state.blnZeileBegonnen = false;
        printer.CurrentX(state.settings.lngLinkerRand);
        printer.CurrentY(state.settings.lngKopfabstand);
        report::PageInterpreter(session, printer, state, [] {}).DoPage(page);
        printer.NewPage();
        return host.spooler.device.pages().back();
    }

    printer::Printer printer{host.spooler, "Laser 1", "TEST.OUT"};
    report::JobState state;
};

}  // namespace testing_support
