#include "platform/drawing/likely_resolution.h"

namespace platform::drawing {

PixelsPerInch likelyResolution(const PixelsPerInch& real, const PixelsPerInch& taken) {
    constexpr double coarsest = 50;
    constexpr double finest = 600;
    constexpr double squareEnough = 1.2;
    constexpr double closeEnough = 2.5;
    const auto isWithin = [](double value, double least, double most) { return value >= least && value <= most; };
    const auto isNear = [&](double one, double other, double factor) {
        return isWithin(one / other, 1 / factor, factor);
    };
    const bool isLikely = isWithin(real.across, coarsest, finest) && isWithin(real.down, coarsest, finest) &&
                          isNear(real.across, real.down, squareEnough) &&
                          isNear(real.across, taken.across, closeEnough) && isNear(real.down, taken.down, closeEnough);
    return isLikely ? real : taken;
}

}  // namespace platform::drawing
