#include "report/BarcodeMacro.h"

#include <algorithm>

#include "runtime/numbers.h"

namespace MPrint {

namespace {

// Cuts the text before the next comma, and the comma, off the fields.
std::string_view cutField(std::string_view& fields) {
    const std::size_t comma = fields.find(',');
    const std::string_view field = fields.substr(0, comma);
    fields.remove_prefix(comma == std::string_view::npos ? fields.size() : comma + 1);
    return field;
}

float inches(std::string_view text) {
    std::string number(text);
    std::replace(number.begin(), number.end(), '.', ',');
    return runtime::toSingle(runtime::numberPrefix(number, ','));
}

}  // namespace

BarcodeMacro readBarcodeMacro(std::string_view fields) {
    BarcodeMacro macro;
    macro.y = inches(cutField(fields));
    macro.x = inches(cutField(fields));
    macro.data = fields;
    std::erase(macro.data, ',');
    return macro;
}

}  // namespace MPrint
