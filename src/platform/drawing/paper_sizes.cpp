#include "platform/drawing/paper_sizes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace platform::drawing {

namespace {

// Where several numbers mean the same size, the first is the one that a size is called by.
constexpr std::array sizes = {
    PaperSize{1, 21590, 27940},   // Letter
    PaperSize{3, 27940, 43180},   // Tabloid
    PaperSize{4, 43180, 27940},   // Ledger
    PaperSize{5, 21590, 35560},   // Legal
    PaperSize{6, 13970, 21590},   // Statement
    PaperSize{7, 18415, 26670},   // Executive
    PaperSize{8, 29700, 42000},   // A3
    PaperSize{9, 21000, 29700},   // A4
    PaperSize{11, 14800, 21000},  // A5
    PaperSize{12, 25700, 36400},  // B4 (JIS)
    PaperSize{13, 18200, 25700},  // B5 (JIS)
    PaperSize{14, 21590, 33020},  // Folio
    PaperSize{15, 21500, 27500},  // Quarto
    PaperSize{16, 25400, 35560},  // 10 x 14 inches
    PaperSize{10, 21000, 29700},  // A4 small
    PaperSize{2, 21590, 27940},   // Letter small
    PaperSize{17, 27940, 43180},  // 11 x 17 inches
    PaperSize{18, 21590, 27940},  // Note
    PaperSize{20, 10478, 24130},  // envelope no. 10
    PaperSize{27, 11000, 22000},  // envelope DL
    PaperSize{28, 16200, 22900},  // envelope C5
    PaperSize{29, 32400, 45800},  // envelope C3
    PaperSize{30, 22900, 32400},  // envelope C4
    PaperSize{31, 11400, 16200},  // envelope C6
    PaperSize{33, 25000, 35300},  // envelope B4
    PaperSize{34, 17600, 25000},  // envelope B5
    PaperSize{37, 9843, 19050},   // envelope Monarch
    PaperSize{39, 37783, 27940},  // fanfold, US standard
    PaperSize{40, 21590, 30480},  // fanfold, German standard
    PaperSize{41, 21590, 33020},  // fanfold, German legal
    PaperSize{42, 25000, 35300},  // B4 (ISO)
    PaperSize{66, 42000, 59400},  // A2
    PaperSize{70, 10500, 14800},  // A6
};

}  // namespace

std::optional<PaperSize> paperSize(int number) {
    const auto* found =
        std::find_if(sizes.begin(), sizes.end(), [number](const PaperSize& size) { return size.number == number; });
    return found != sizes.end() ? std::optional(*found) : std::nullopt;
}

PaperSize paperOf(const PageOptions& options) {
    constexpr int landscape = 2;
    PaperSize paper = paperSize(options.paperSize).value_or(PaperSize());
    if (options.orientation == landscape) {
        std::swap(paper.width, paper.height);
    }
    return paper;
}

int paperNumber(double widthPoints, double heightPoints) {
    const double tolerance = toPoints(100);
    const auto* found = std::find_if(sizes.begin(), sizes.end(), [&](const PaperSize& size) {
        return std::abs(toPoints(size.width) - widthPoints) < tolerance &&
               std::abs(toPoints(size.height) - heightPoints) < tolerance;
    });
    return found != sizes.end() ? found->number : paperOwn;
}

double toPoints(int hundredthsOfMillimetre) { return hundredthsOfMillimetre * 72.0 / 2540.0; }

}  // namespace platform::drawing
