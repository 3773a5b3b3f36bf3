// What is drawn on a page, kept so that it can be drawn later and more than once: on the printer when the page has
// ended, on a screen at any size.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/surface.h"

namespace platform::drawing {

// Drawing steps in their order, in pixels of the device that they were measured for. Pictures are shared, not copied.
// Memory is kept when the recording is cleared.
class PageRecording {
public:
    struct Text {
        std::size_t font = 0;  // see fontOf()
        int x = 0;
        int y = 0;
        std::size_t start = 0;  // see bytesOf()
        std::size_t length = 0;
        Color color;
        TextRole role = TextRole::content;
    };
    struct Rectangle {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        Color color;

        bool operator==(const Rectangle&) const = default;
    };
    struct PlacedPicture {
        std::shared_ptr<const Picture> picture;
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };
    using Step = std::variant<Text, Rectangle, PlacedPicture>;

    void clear() noexcept;

    // The font of the texts added from now on; the first text needs one.
    void addFont(const FontRequest& font) { fonts_.push_back(font); }
    void addText(int x, int y, std::string_view bytes, Color color, TextRole role);
    void addRectangle(const Rectangle& rectangle) { steps_.emplace_back(rectangle); }
    void addPicture(PlacedPicture picture) { steps_.emplace_back(std::move(picture)); }

    const std::vector<Step>& steps() const { return steps_; }
    const FontRequest& fontOf(const Text& text) const { return fonts_[text.font]; }
    std::string_view bytesOf(const Text& text) const {
        return std::string_view(bytes_).substr(text.start, text.length);
    }

    // Memory that it takes, without pictures.
    std::size_t bytes() const { return steps_.capacity() * sizeof(Step) + bytes_.capacity(); }

    // Draws everything in its order. The fonts of the texts are selected on the surface as they are needed.
    void play(Surface& surface) const;

private:
    std::vector<Step> steps_;
    std::vector<FontRequest> fonts_;
    std::string bytes_;  // of all texts
};

// Measures as the device does and draws nothing: what is drawn goes into a recording. Fails where the device's own
// surface would fail to measure.
class RecordingSurface : public Surface {
public:
    // The device's surface is borrowed.
    explicit RecordingSurface(Surface& device) : device_(device) {}
    RecordingSurface(const RecordingSurface&) = delete;
    RecordingSurface& operator=(const RecordingSurface&) = delete;

    DeviceCapabilities capabilities() const override { return device_.capabilities(); }
    FontFace setFont(const FontRequest& font) override;
    int textWidth(std::string_view text) const override { return device_.textWidth(text); }
    int textHeight() const override { return device_.textHeight(); }
    void drawText(int x, int y, std::string_view text, Color color, TextRole role) override;
    void fillRectangle(int x, int y, int width, int height, Color color) override;
    void drawPicture(const std::shared_ptr<const Picture>& picture, int x, int y, int width, int height) override;

    // What was drawn since the last clear().
    const PageRecording& recording() const { return recording_; }
    void clear() noexcept;

    // Plays it onto the device's own surface, which afterwards measures in the font selected here as before.
    void playOnDevice();

private:
    Surface& device_;
    PageRecording recording_;
    std::optional<FontRequest> font_;
    bool fontRecorded_ = false;
};

}  // namespace platform::drawing
