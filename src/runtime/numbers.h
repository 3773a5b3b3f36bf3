// Numbers as the product rounds, reads and writes them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "runtime/locale.h"

namespace runtime {

// Rounded half to even; errOverflow outside the type's range and for what is no number.
std::int32_t roundToLong(double value);
std::int16_t roundToInteger(double value);

// Sums and differences in 32 and 16 bits; errOverflow.
std::int32_t addLong(std::int32_t left, std::int32_t right);
std::int32_t subtractLong(std::int32_t left, std::int32_t right);
std::int16_t addInteger(std::int16_t left, std::int16_t right);

// Rounded to single precision; errOverflow beyond its range.
float toSingle(double value);

// A quotient; errDivisionByZero, errOverflow for 0 divided by 0.
double divide(double numerator, double denominator);

// The number that the beginning of a text gives: blanks are skipped, then sign, digits, the decimal separator given,
// and an exponent count as far as they go. A text that begins with no number is 0.
double numberPrefix(std::string_view text, char decimalSeparator);

// The host writes decimals with "." or ","; this is the text with a comma.
std::string withDecimalComma(std::string_view text);

// The whole text, blanks around it aside, as a number with the locale's decimal separator, without grouping;
// errTypeMismatch for anything else, errOverflow beyond the range of a double.
double parseNumber(std::string_view text, const Locale& locale);

// Shortest text of at most 7 (single) or 15 (double) significant digits with the locale's decimal separator; very
// large and very small numbers in the form "1,5E+10".
std::string singleText(float value, const Locale& locale);
std::string doubleText(double value, const Locale& locale);

// A number of bytes: "873 Byte", "12,5 KB", "3,1 MB".
std::string sizeText(std::uint64_t bytes, const Locale& locale);

// Digits in groups of three: "12.345" where decimals have a comma.
std::string groupedText(std::uint64_t value, const Locale& locale);

// "Wahr" or "Falsch" in German.
const std::string& booleanText(bool value, const Locale& locale);

// Upper-case hexadecimal digits without prefix or leading zeros.
std::string hexText(std::uint32_t value);

}  // namespace runtime
