#include "runtime/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "runtime/currency.h"
#include "runtime/error.h"
#include "runtime/text.h"

namespace runtime {

namespace {

// The value's nearest whole number, ties to even, whatever the rounding mode of the process is.
double halfToEven(double value) {
    const double floor = std::floor(value);
    const double fraction = value - floor;
    if (fraction != 0.5) {
        return fraction < 0.5 ? floor : floor + 1;
    }
    return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1;
}

double roundWithin(double value, double least, double greatest) {
    const double rounded = halfToEven(value);
    if (!(rounded >= least && rounded <= greatest)) {
        throw Error(errOverflow);
    }
    return rounded;
}

template <typename Whole>
Whole within(std::int64_t value) {
    if (value < std::numeric_limits<Whole>::min() || value > std::numeric_limits<Whole>::max()) {
        throw Error(errOverflow);
    }
    return static_cast<Whole>(value);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A number in C notation, cut from the beginning of a text, and how much of the text it took.
struct ScannedNumber {
    std::string text;
    std::size_t length = 0;
};

class NumberScanner {
public:
    NumberScanner(std::string_view text, std::string_view separator) : text_(text), separator_(separator) {}

    ScannedNumber scan() {
        takeSign(number_);
        const bool whole = takeDigits(number_);
        bool fraction = false;
        if (text_.substr(position_).starts_with(separator_)) {
            const std::size_t before = position_;
            position_ += separator_.size();
            std::string digits;
            fraction = takeDigits(digits);
            if (fraction || whole) {
                number_ += '.' + (fraction ? digits : std::string("0"));
            } else {
                position_ = before;
            }
        }
        if (!whole && !fraction) {
            return {};
        }
        takeExponent();
        return {number_, position_};
    }

private:
    void takeSign(std::string& to) {
        if (position_ < text_.size() && (text_[position_] == '-' || text_[position_] == '+')) {
            if (text_[position_] == '-') {
                to += '-';
            }
            ++position_;
        }
    }

    bool takeDigits(std::string& to) {
        const std::size_t begin = position_;
        while (position_ < text_.size() && isDigit(text_[position_])) {
            to += text_[position_++];
        }
        return position_ > begin;
    }

    void takeExponent() {
        if (position_ >= text_.size() || std::string_view("eEdD").find(text_[position_]) == std::string_view::npos) {
            return;
        }
        const std::size_t before = position_;
        ++position_;
        std::string exponent = "e";
        takeSign(exponent);
        if (takeDigits(exponent)) {
            number_ += exponent;
        } else {
            position_ = before;
        }
    }

    std::string_view text_;
    std::string_view separator_;
    std::size_t position_ = 0;
    std::string number_;
};

// Whether a number in C notation that is not 0 has a power of ten below 0: what does not fit into a double is then too
// small for it, otherwise too large.
bool isSmall(std::string_view number) {
    const std::size_t mark = std::min(number.find('e'), number.size());
    const std::string_view mantissa = number.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mark);
    const std::size_t first = mantissa.find_first_of("123456789");
    std::int64_t exponent = 0;
    if (mark < number.size()) {
        const std::string_view digits = number.substr(mark + 1);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (error != std::errc{}) {
            return digits.starts_with('-');
        }
    }
    return exponent < static_cast<std::int64_t>(first) - static_cast<std::int64_t>(point);
}

double valueOf(std::string number) {
    if (number.starts_with('.')) {
        number.insert(0, "0");
    } else if (number.starts_with("-.")) {
        number.insert(1, "0");
    }
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range) {
        if (isSmall(number)) {
            return 0;
        }
        throw Error(errOverflow);
    }
    return value;
}

// Decimal digits (at most `precision`, without zeros at the end) and the power of ten of the first one.
struct Decimal {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

template <typename Real>
Decimal decimalOf(Real value, int precision) {
    std::array<char, 64> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::scientific, precision - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    Decimal result;
    const std::size_t mark = text.find('e');
    for (const char c : text.substr(0, mark)) {
        if (c == '-') {
            result.negative = true;
        } else if (c != '.') {
            result.digits += c;
        }
    }
    std::string_view exponent = text.substr(mark + 1);
    if (exponent.starts_with('+')) {
        exponent.remove_prefix(1);
    }
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), result.exponent);
    const std::size_t last = result.digits.find_last_not_of('0');
    result.digits.resize(last == std::string::npos ? 1 : last + 1);
    return result;
}

template <typename Real>
std::string realText(Real value, int precision, const Locale& locale) {
    if (!std::isfinite(value)) {
        throw Error(errOverflow);
    }
    if (value == 0) {
        return "0";
    }
    const Decimal decimal = decimalOf(value, precision);
    const int count = static_cast<int>(decimal.digits.size());
    std::string result = decimal.negative ? "-" : "";
    if (decimal.exponent >= precision || count - 1 - decimal.exponent > precision) {
        result += decimal.digits[0];
        if (count > 1) {
            result += locale.decimalSeparator + decimal.digits.substr(1);
        }
        const int power = std::abs(decimal.exponent);
        result += decimal.exponent < 0 ? "E-" : "E+";
        return result + (power < 10 ? "0" : "") + std::to_string(power);
    }
    if (decimal.exponent < 0) {
        return result + "0" + locale.decimalSeparator +
               std::string(static_cast<std::size_t>(-decimal.exponent - 1), '0') + decimal.digits;
    }
    const std::size_t whole = static_cast<std::size_t>(decimal.exponent) + 1;
    if (decimal.digits.size() <= whole) {
        return result + decimal.digits + std::string(whole - decimal.digits.size(), '0');
    }
    return result + decimal.digits.substr(0, whole) + locale.decimalSeparator + decimal.digits.substr(whole);
}

}  // namespace

std::int32_t roundToLong(double value) {
    return static_cast<std::int32_t>(
        roundWithin(value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

std::int16_t roundToInteger(double value) {
    return static_cast<std::int16_t>(
        roundWithin(value, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()));
}

std::int32_t addLong(std::int32_t left, std::int32_t right) { return within<std::int32_t>(std::int64_t{left} + right); }

std::int32_t subtractLong(std::int32_t left, std::int32_t right) {
    return within<std::int32_t>(std::int64_t{left} - right);
}

std::int16_t addInteger(std::int16_t left, std::int16_t right) {
    return within<std::int16_t>(std::int64_t{left} + right);
}

Currency Currency::fromDouble(double value) {
    constexpr double limit = 9.2233720368547758e18;
    const double units = halfToEven(value * 10000.0);
    if (!(units > -limit && units < limit)) {
        throw Error(errOverflow);
    }
    return fromUnits(static_cast<std::int64_t>(units));
}

float toSingle(double value) {
    const auto result = static_cast<float>(value);
    if (!std::isfinite(result)) {
        throw Error(errOverflow);
    }
    return result;
}

double divide(double numerator, double denominator) {
    if (denominator == 0) {
        throw Error(numerator == 0 ? errOverflow : errDivisionByZero);
    }
    return numerator / denominator;
}

double numberPrefix(std::string_view text, char decimalSeparator) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) {
        return 0;
    }
    const ScannedNumber number = NumberScanner(text.substr(begin), std::string_view(&decimalSeparator, 1)).scan();
    return number.length == 0 ? 0 : valueOf(number.text);
}

std::string withDecimalComma(std::string_view text) {
    std::string number(text);
    std::replace(number.begin(), number.end(), '.', ',');
    return number;
}

double parseNumber(std::string_view text, const Locale& locale) {
    const std::string_view number = trimBlanks(text);
    const ScannedNumber scanned = NumberScanner(number, locale.decimalSeparator).scan();
    if (scanned.length == 0 || scanned.length != number.size()) {
        throw Error(errTypeMismatch, "\"" + std::string(text) + "\" ist keine Zahl");
    }
    return valueOf(scanned.text);
}

std::string singleText(float value, const Locale& locale) { return realText(value, 7, locale); }

std::string doubleText(double value, const Locale& locale) { return realText(value, 15, locale); }

std::string sizeText(std::uint64_t bytes, const Locale& locale) {
    constexpr std::uint64_t kilo = 1024;
    if (bytes < kilo) {
        return std::to_string(bytes) + " Byte";
    }
    const auto withOneDecimal = [&locale](double value) { return doubleText(std::round(value * 10) / 10, locale); };
    const double kilobytes = static_cast<double>(bytes) / kilo;
    return kilobytes < kilo ? withOneDecimal(kilobytes) + " KB" : withOneDecimal(kilobytes / kilo) + " MB";
}

std::string groupedText(std::uint64_t value, const Locale& locale) {
    constexpr std::size_t group = 3;
    std::string text = std::to_string(value);
    for (std::size_t end = text.size(); end > group; end -= group) {
        text.insert(end - group, locale.decimalSeparator == "," ? "." : ",");
    }
    return text;
}

const std::string& booleanText(bool value, const Locale& locale) { return value ? locale.trueText : locale.falseText; }

std::string hexText(std::uint32_t value) {
    std::array<char, 8> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, 16);
    return upperCase(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())));
}

}  // namespace runtime
