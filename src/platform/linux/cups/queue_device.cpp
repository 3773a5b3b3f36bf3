#include "platform/linux/cups/queue_device.h"

#include <cups/cups.h>
#include <cups/pwg.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "platform/drawing/paper_sizes.h"

namespace platform_linux::cups {

namespace {

using platform::drawing::PaperSize;

// IPP has its sizes in hundredths of a millimetre, too.
constexpr auto points = platform::drawing::toPoints;

constexpr const char* a4Keyword = "iso_a4_210x297mm";
// Drivers give sizes in whole points; two sizes that differ by less than this are the same paper.
constexpr int tolerance = 100;

bool same(int width, int height, int otherWidth, int otherHeight) {
    return std::abs(width - otherWidth) < tolerance && std::abs(height - otherHeight) < tolerance;
}

// The queue's own name for a size; the standard's name where the queue has none.
std::string keywordOf(const std::vector<std::string>& supported, int width, int height) {
    for (const std::string& keyword : supported) {
        const pwg_media_t* media = pwgMediaForPWG(keyword.c_str());
        if (media != nullptr && same(media->width, media->length, width, height)) {
            return keyword;
        }
    }
    const pwg_media_t* media = pwgMediaForSize(width, height);
    return media != nullptr && media->pwg != nullptr ? media->pwg : "";
}

std::optional<QueueMedia> mediaOf(ipp_t* collection, const std::vector<std::string>& supported) {
    const std::vector<ipp_t*> size = collections(collection, "media-size");
    const int width = size.empty() ? 0 : number(size.front(), "x-dimension", 0);
    const int height = size.empty() ? 0 : number(size.front(), "y-dimension", 0);
    if (width <= 0 || height <= 0) {
        return std::nullopt;
    }
    QueueMedia media;
    media.keyword = keywordOf(supported, width, height);
    media.widthPoints = points(width);
    media.heightPoints = points(height);
    media.marginLeft = points(std::max(0, number(collection, "media-left-margin", 0)));
    media.marginTop = points(std::max(0, number(collection, "media-top-margin", 0)));
    media.marginRight = points(std::max(0, number(collection, "media-right-margin", 0)));
    media.marginBottom = points(std::max(0, number(collection, "media-bottom-margin", 0)));
    if (media.marginLeft + media.marginRight >= media.widthPoints ||
        media.marginTop + media.marginBottom >= media.heightPoints) {
        media.marginLeft = media.marginTop = media.marginRight = media.marginBottom = 0;
    }
    return media;
}

bool isA4(const QueueMedia& media) {
    return std::abs(media.widthPoints - points(PaperSize().width)) < points(tolerance) &&
           std::abs(media.heightPoints - points(PaperSize().height)) < points(tolerance);
}

bool hasMargins(const QueueMedia& media) {
    return media.marginLeft + media.marginTop + media.marginRight + media.marginBottom > 0;
}

// The default size of a queue that names it without margins.
QueueMedia mediaOfKeyword(const std::string& keyword) {
    QueueMedia media;
    media.keyword = a4Keyword;
    media.widthPoints = points(PaperSize().width);
    media.heightPoints = points(PaperSize().height);
    const pwg_media_t* known = keyword.empty() ? nullptr : pwgMediaForPWG(keyword.c_str());
    if (known != nullptr && known->width > 0 && known->length > 0) {
        media.keyword = keyword;
        media.widthPoints = points(known->width);
        media.heightPoints = points(known->length);
    }
    return media;
}

// A4 as the queue's driver has it: of several entries the first that is not borderless.
QueueMedia a4Of(ipp_t* attributes, const std::vector<std::string>& supported, const QueueMedia& own) {
    if (isA4(own)) {
        return own;
    }
    std::optional<QueueMedia> borderless;
    for (ipp_t* entry : collections(attributes, "media-col-database")) {
        const std::optional<QueueMedia> media = mediaOf(entry, supported);
        if (media && isA4(*media)) {
            if (hasMargins(*media)) {
                return *media;
            }
            borderless = borderless ? borderless : media;
        }
    }
    if (borderless) {
        return *borderless;
    }
    QueueMedia media = mediaOfKeyword(a4Keyword);
    media.marginLeft = own.marginLeft;
    media.marginTop = own.marginTop;
    media.marginRight = own.marginRight;
    media.marginBottom = own.marginBottom;
    return media;
}

void readResolution(ipp_t* attributes, QueueDevice& device) {
    for (const char* name : {"printer-resolution-default", "printer-resolution-supported"}) {
        ipp_attribute_t* attribute = find(attributes, name);
        if (attribute == nullptr || ippGetValueTag(attribute) != IPP_TAG_RESOLUTION) {
            continue;
        }
        ipp_res_t units = IPP_RES_PER_INCH;
        int y = 0;
        const int x = ippGetResolution(attribute, 0, &y, &units);
        const double factor = units == IPP_RES_PER_CM ? 2.54 : 1.0;
        const long perInchX = std::lround(x * factor);
        const long perInchY = std::lround(y * factor);
        if (std::min(perInchX, perInchY) >= 50 && std::max(perInchX, perInchY) <= 9600) {
            device.resolutionX = static_cast<int>(perInchX);
            device.resolutionY = static_cast<int>(perInchY);
            return;
        }
    }
}

}  // namespace

std::vector<const char*> deviceAttributes() {
    return {"color-supported",
            "media-col-database",
            "media-col-default",
            "media-default",
            "media-supported",
            "orientation-requested-default",
            "print-color-mode-default",
            "print-color-mode-supported",
            "printer-resolution-default",
            "printer-resolution-supported"};
}

QueueDevice queueDevice(ipp_t* attributes) {
    QueueDevice device;
    readResolution(attributes, device);

    const std::vector<std::string> modes = texts(attributes, "print-color-mode-supported");
    const bool colorMode = std::find(modes.begin(), modes.end(), "color") != modes.end();
    device.color = boolean(attributes, "color-supported").value_or(colorMode || modes.empty());
    const std::string mode = text(attributes, "print-color-mode-default");
    const bool gray = mode.find("monochrome") != std::string::npos || mode == "bi-level";
    device.defaultColorMode = device.color && (modes.empty() || !gray) ? 2 : 1;

    const int orientation = number(attributes, "orientation-requested-default", IPP_ORIENT_PORTRAIT);
    device.defaultOrientation =
        orientation == IPP_ORIENT_LANDSCAPE || orientation == IPP_ORIENT_REVERSE_LANDSCAPE ? 2 : 1;

    const std::vector<std::string> supported = texts(attributes, "media-supported");
    std::optional<QueueMedia> own;
    if (const std::vector<ipp_t*> defaults = collections(attributes, "media-col-default"); !defaults.empty()) {
        own = mediaOf(defaults.front(), supported);
    }
    device.own = own ? *own : mediaOfKeyword(text(attributes, "media-default"));
    device.a4 = a4Of(attributes, supported, device.own);
    return device;
}

}  // namespace platform_linux::cups
