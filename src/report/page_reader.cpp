#include "report/page_reader.h"

#include <algorithm>

#include "report/graphic_macro.h"
#include "report/type_state.h"
#include "runtime/byte_set.h"
#include "runtime/numbers.h"

namespace report {

namespace {

using Kind = PageToken::Kind;

// What ends a run of text.
using RunEnds = runtime::ByteSet<'^', '\n', '\r', '\f', '\x1B'>;

bool hasCharacter(std::string_view code) { return code == "LR" || code == "TR" || code == "PL"; }

bool isMacro(std::string_view code) {
    return isTypeMacro(code) || hasCharacter(code) || code == "LS" || code == "BC" || isGraphicMacro(code);
}

}  // namespace

std::optional<PageToken> PageReader::next() {
    while (!full() && position_ < page_.size()) {
        const std::size_t end = RunEnds::find(page_, position_);
        if (end > position_) {
            return PageToken{Kind::text, take(end - position_), {}};
        }
        switch (page_[position_++]) {
            case '\n':
                line_ = runtime::addInteger(line_, 1);
                return PageToken{Kind::lineFeed, {}, {}};
            case '\r':
                return PageToken{Kind::carriageReturn, {}, {}};
            case '\f':
                position_ = page_.size();
                break;
            case '^':
                return macro();
            default:  // escape
                break;
        }
    }
    return std::nullopt;
}

PageToken PageReader::macro() {
    constexpr std::size_t codeLength = 2;
    const std::string_view code = page_.substr(position_, codeLength);
    if (code.size() < codeLength || !isMacro(code)) {
        return {Kind::unknownMacro, code, {}};
    }
    position_ += codeLength;
    return {Kind::macro, code, parameterOf(code)};
}

std::string_view PageReader::take(std::size_t length) {
    const std::string_view taken = page_.substr(position_, length);
    position_ += taken.size();
    return taken;
}

std::string_view PageReader::parameterOf(std::string_view code) {
    if (hasCharacter(code)) {
        return take(1);
    }
    if (code == "BC") {
        const std::size_t end = std::min(page_.find('\\', position_), page_.size());
        const std::string_view fields = take(end - position_);
        take(1);
        return fields;
    }
    return isGraphicMacro(code) && graphicNumber(page_.substr(position_, 1)) != 0 ? take(1) : std::string_view();
}

void readText(std::string_view page, TextListener& listener) {
    PageReader reader(page);
    while (const auto token = reader.next()) {
        if (token->kind == Kind::text) {
            listener.textRun(token->text);
        } else if (token->kind == Kind::lineFeed) {
            listener.lineFeed();
        } else if (token->kind == Kind::carriageReturn) {
            listener.carriageReturn();
        }
    }
}

}  // namespace report
