#include "platform/windows/print/page_recording.h"

#include <algorithm>
#include <climits>
#include <limits>
#include <utility>

#include "platform/windows/print/spooler_error.h"

namespace platform_windows::print {

void PageRecording::clear() noexcept {
    steps_.clear();
    fonts_.clear();
    characters_.clear();
    advances_.clear();
}

void PageRecording::addText(const FontKey& font, COLORREF color, POINT baseline, std::string_view bytes,
                            const DosCharacters& characters, const platform::drawing::FontPixels& pixels) {
    if (fonts_.empty() || fonts_.back() != font) {
        fonts_.push_back(font);
    }
    steps_.emplace_back(Text{fonts_.size() - 1, color, baseline, characters_.size(), static_cast<UINT>(bytes.size())});
    for (const char byte : bytes) {
        characters_.push_back(characters[static_cast<unsigned char>(byte)]);
        advances_.push_back(
            static_cast<int>(std::min<std::int64_t>(pixels.advance[static_cast<unsigned char>(byte)], INT_MAX)));
    }
}

void PageRecording::addRectangle(const RECT& rectangle, COLORREF color) {
    steps_.emplace_back(Rectangle{rectangle, color});
}

void PageRecording::addPicture(std::shared_ptr<const DeviceBitmap> bitmap, const Stretch& across, const Stretch& down) {
    steps_.emplace_back(Picture{std::move(bitmap), across, down});
}

// Draws step by step, with the device's state changed only where it has to be.
class PageRecording::Player {
public:
    Player(const PageRecording& page, HDC device, FontHandles& fonts)
        : page_(page), device_(device), handles_(fonts), stockFont_(device, ::GetStockObject(DEVICE_DEFAULT_FONT)) {
        ::SetBkMode(device, TRANSPARENT);
        ::SetTextAlign(device, TA_BASELINE);
    }

    bool operator()(const Text& text) {
        if (font_ != text.font) {
            HFONT font = handles_.get(page_.fonts_[text.font]);
            if (font == nullptr || ::SelectObject(device_, font) == nullptr) {
                return false;
            }
            font_ = text.font;
        }
        if (textColor_ != text.color) {
            ::SetTextColor(device_, text.color);
            textColor_ = text.color;
        }
        return ::ExtTextOutW(device_, text.baseline.x, text.baseline.y, 0, nullptr,
                             page_.characters_.data() + text.start, text.length,
                             page_.advances_.data() + text.start) != FALSE;
    }

    bool operator()(const Rectangle& rectangle) {
        if (brushColor_ != rectangle.color) {
            brush_ = Brush(::CreateSolidBrush(rectangle.color));
            brushColor_ = rectangle.color;
        }
        return brush_ && ::FillRect(device_, &rectangle.area, brush_.get()) != 0;
    }

    bool operator()(const Picture& picture) { return picture.bitmap->draw(device_, picture.across, picture.down); }

private:
    const PageRecording& page_;
    HDC device_;
    FontHandles& handles_;
    Selection stockFont_;
    std::size_t font_ = std::numeric_limits<std::size_t>::max();
    COLORREF textColor_ = CLR_INVALID;
    Brush brush_;
    COLORREF brushColor_ = CLR_INVALID;
};

DWORD PageRecording::play(HDC device, FontHandles& fonts) const {
    Player player(*this, device, fonts);
    for (const auto& step : steps_) {
        ::SetLastError(ERROR_SUCCESS);
        if (!std::visit(player, step)) {
            return lastError();
        }
    }
    return ERROR_SUCCESS;
}

}  // namespace platform_windows::print
