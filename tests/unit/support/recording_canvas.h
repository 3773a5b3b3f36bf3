// A canvas in memory: what was painted on it.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/canvas.h"
#include "unit/support/recording_printer.h"

namespace testing_support {

class RecordingCanvas : public platform::Canvas {
public:
    struct Fill {
        platform::Box box;
        std::optional<platform::SystemColor> system;
        platform::Color color;
        double opacity = 1;
    };
    std::vector<Fill> fills;
    std::vector<std::string> texts;
    std::vector<platform::SheetView> sheets;

    explicit RecordingCanvas(platform::CanvasSize size) : size_(size) {}

    platform::CanvasSize size() const override { return size_; }
    void fill(const platform::Box& box, platform::Color color, double opacity) override {
        fills.push_back({box, std::nullopt, color, opacity});
    }
    void fill(const platform::Box& box, platform::SystemColor color, double opacity) override {
        fills.push_back({box, color, {}, opacity});
    }
    double text(const platform::Box&, const std::string& text, platform::TextStyle, platform::Color) override {
        constexpr double height = 20;
        texts.push_back(text);
        return height;
    }
    platform::Surface& sheet(const platform::SheetView& view) override {
        sheets.push_back(view);
        return *surface_;
    }

    // What was drawn on the sheet.
    RecordedPage page() const { return surface_->page(); }
    std::size_t count(platform::Color color) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(fills, [&](const Fill& fill) { return !fill.system && fill.color == color; }));
    }

private:
    platform::CanvasSize size_;
    std::shared_ptr<RecordingDevice> device_ = std::make_shared<RecordingDevice>();
    std::shared_ptr<RecordingSurface> surface_ = std::make_shared<RecordingSurface>(*device_);
};

}  // namespace testing_support
