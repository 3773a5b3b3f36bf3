#include "platform/linux/pdf/srgb_profile.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform_linux::pdf {

namespace {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;  // rows

constexpr Vector operator*(const Matrix& matrix, const Vector& vector) {
    Vector result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result[row] += matrix[row][column] * vector[column];
        }
    }
    return result;
}

constexpr Matrix transposed(const Matrix& matrix) {
    Matrix result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result[row][column] = matrix[column][row];
        }
    }
    return result;
}

constexpr Matrix operator*(const Matrix& left, const Matrix& right) {
    Matrix columns{};
    const Matrix from = transposed(right);
    for (std::size_t column = 0; column < 3; ++column) {
        columns[column] = left * from[column];
    }
    return transposed(columns);
}

constexpr Matrix inverse(const Matrix& matrix) {
    const auto cofactor = [&](std::size_t row, std::size_t column) {
        const std::size_t r1 = (row + 1) % 3;
        const std::size_t r2 = (row + 2) % 3;
        const std::size_t c1 = (column + 1) % 3;
        const std::size_t c2 = (column + 2) % 3;
        return matrix[r1][c1] * matrix[r2][c2] - matrix[r1][c2] * matrix[r2][c1];
    };
    const double determinant =
        matrix[0][0] * cofactor(0, 0) + matrix[0][1] * cofactor(0, 1) + matrix[0][2] * cofactor(0, 2);
    Matrix result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result[row][column] = cofactor(column, row) / determinant;
        }
    }
    return result;
}

constexpr Matrix diagonal(const Vector& values) { return {{{values[0], 0, 0}, {0, values[1], 0}, {0, 0, values[2]}}}; }

constexpr Vector quotient(const Vector& left, const Vector& right) {
    return {left[0] / right[0], left[1] / right[1], left[2] / right[2]};
}

// The colour XYZ of a chromaticity, with the luminance 1.
constexpr Vector colorOf(double x, double y) { return {x / y, 1, (1 - x - y) / y}; }

// The white of profiles (D50), and of sRGB (D65).
constexpr Vector profileWhite{0.9642, 1, 0.8249};
constexpr Vector srgbWhite = colorOf(0.3127, 0.3290);

// From one white to the other by the method of Bradford, as ICC.1:2004-10, annex E, has it.
constexpr Matrix bradford{{{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};
constexpr Matrix adaptation =
    inverse(bradford) * (diagonal(quotient(bradford * profileWhite, bradford* srgbWhite)) * bradford);

// Rows are the primaries of IEC 61966-2-1; together they are its white.
constexpr Matrix chromaticities{{colorOf(0.64, 0.33), colorOf(0.30, 0.60), colorOf(0.15, 0.06)}};
constexpr Vector luminances = inverse(transposed(chromaticities)) * srgbWhite;
constexpr Matrix primaries = transposed(adaptation * (transposed(chromaticities) * diagonal(luminances)));

constexpr std::uint32_t signature(std::string_view letters) {
    std::uint32_t value = 0;
    for (const char letter : letters) {
        value = (value << 8) | static_cast<unsigned char>(letter);
    }
    return value;
}

// A profile as it grows: numbers have their most significant byte first.
class Profile {
public:
    static constexpr std::size_t size = 480;

    constexpr Profile() {
        writeHeader();
        place_ = tableEnd;
        addText("desc", "sRGB");
        addText("cprt", "CC0 ");
        addColor("wtpt", profileWhite);
        begin("chad", "sf32");
        for (const Vector& row : adaptation) {
            addFixed(row);
        }
        end();
        addColor("rXYZ", primaries[0]);
        addColor("gXYZ", primaries[1]);
        addColor("bXYZ", primaries[2]);
        addCurves();
    }

    constexpr const std::array<char, size>& bytes() const { return bytes_; }

private:
    static constexpr std::size_t headerSize = 128;
    static constexpr std::size_t tags = 10;
    static constexpr std::size_t tableEnd = headerSize + 4 + 12 * tags;

    constexpr void put(std::uint32_t value, int bytes = 4) {
        while (bytes-- > 0) {
            bytes_.at(place_++) = static_cast<char>((value >> (8 * bytes)) & 0xFF);
        }
    }
    constexpr void put(std::string_view letters) { put(signature(letters)); }

    constexpr void writeHeader() {
        put(size);
        place_ += 4;
        put(0x04200000);
        for (const std::string_view field : {"mntr", "RGB ", "XYZ "}) {
            put(field);
        }
        for (const std::uint32_t part : {2026U, 1U, 1U, 0U, 0U, 0U}) {
            put(part, 2);
        }
        put("acsp");
        place_ = 68;
        addFixed(profileWhite);
        place_ = headerSize;
        put(tags);
    }

    // The table of tags names where the content of each begins and ends.
    constexpr void name(std::string_view tag, std::size_t start, std::size_t length) {
        const std::size_t resume = place_;
        place_ = headerSize + 4 + 12 * named_++;
        put(tag);
        put(static_cast<std::uint32_t>(start));
        put(static_cast<std::uint32_t>(length));
        place_ = resume;
    }
    constexpr void begin(std::string_view tag, std::string_view type) {
        tag_ = tag;
        start_ = place_;
        put(type);
        put(0);
    }
    constexpr void end() { name(tag_, start_, place_ - start_); }

    constexpr void addText(std::string_view tag, std::string_view ascii) {
        begin(tag, "mluc");
        put(1);   // languages
        put(12);  // bytes that say where the text of each is
        put("enUS");
        put(static_cast<std::uint32_t>(2 * ascii.size()));
        put(28);
        for (const char letter : ascii) {
            put(static_cast<unsigned char>(letter), 2);
        }
        end();
    }
    constexpr void addFixed(const Vector& values) {
        for (const double value : values) {
            addFixed(value);
        }
    }
    constexpr void addFixed(double value) {
        put(static_cast<std::uint32_t>(static_cast<std::int32_t>(value * 65536 + (value < 0 ? -0.5 : 0.5))));
    }
    constexpr void addColor(std::string_view tag, const Vector& color) {
        begin(tag, "XYZ ");
        addFixed(color);
        end();
    }
    // ((x + 0.055) / 1.055) to the power of 2.4, and x / 12.92 up to 0.04045; one for all three colours.
    constexpr void addCurves() {
        begin("rTRC", "para");
        put(3, 2);
        put(0, 2);
        for (const double parameter : {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045}) {
            addFixed(parameter);
        }
        end();
        name("gTRC", start_, place_ - start_);
        name("bTRC", start_, place_ - start_);
    }

    std::array<char, size> bytes_{};
    std::size_t place_ = 0;
    std::size_t named_ = 0;
    std::string_view tag_;
    std::size_t start_ = 0;
};

constexpr Profile profile;

}  // namespace

std::string_view srgbProfile() { return {profile.bytes().data(), profile.bytes().size()}; }

}  // namespace platform_linux::pdf
