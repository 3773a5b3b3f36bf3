#include "report/page_interpreter.h"

#include <algorithm>
#include <array>
#include <string>

#include "report/barcode_macro.h"
#include "report/graphic_macro.h"
#include "runtime/numbers.h"

namespace report {

namespace {

using platform::Color;
using platform::TextRole;
using runtime::Currency;
using namespace runtime::literals;

// Page layout, twips.
constexpr double wideTypeLift = 200;
constexpr double scriptShift = 70;
constexpr double boldOffset = 4;
constexpr double shadowOffsetPerDepth = 2;

// The bytes that end a run of text.
constexpr std::array<bool, 256> runEnds = [] {
    std::array<bool, 256> ends{};
    for (const char byte : {'^', '\n', '\r', '\f', '\x1B'}) {
        ends[static_cast<unsigned char>(byte)] = true;
    }
    return ends;
}();

std::size_t runEnd(std::string_view page, std::size_t begin) {
    while (begin < page.size() && !runEnds[static_cast<unsigned char>(page[begin])]) {
        ++begin;
    }
    return begin;
}

// The sizes of a pitch in normal and in wide type, points. Under wide type "10" and "20" have each other's size on
// purpose; "widened" is the size that wide type makes of the normal one.
struct Pitch {
    std::string_view code;
    Currency normal;
    Currency wide;
    Currency widened;
};

constexpr std::array pitches = {
    Pitch{"10", 12_cur, 6_cur, 24_cur},          Pitch{"12", 9.36_cur, 20.04_cur, 20.04_cur},
    Pitch{"15", 7.92_cur, 15.84_cur, 15.84_cur}, Pitch{"17", 6.72_cur, 14.04_cur, 14.04_cur},
    Pitch{"20", 6_cur, 12_cur, 12_cur},
};

Currency widened(Currency size) {
    const auto* pitch = std::find_if(pitches.begin(), pitches.end(), [&](const Pitch& p) { return p.normal == size; });
    return pitch != pitches.end() ? pitch->widened : size;
}

Currency narrowed(Currency size) {
    const auto* pitch = std::find_if(pitches.begin(), pitches.end(), [&](const Pitch& p) { return p.widened == size; });
    return pitch != pitches.end() ? pitch->normal : size;
}

struct ColorCode {
    std::string_view code;
    Color color;
};

constexpr std::array colors = {
    ColorCode{"CS", {0, 0, 0}},     ColorCode{"CR", {255, 0, 0}}, ColorCode{"CG", {0, 255, 0}},
    ColorCode{"CH", {255, 255, 0}}, ColorCode{"CB", {0, 0, 255}}, ColorCode{"CM", {255, 0, 255}},
    ColorCode{"CC", {0, 255, 255}},
};

}  // namespace

void PageInterpreter::DoPage(std::string_view page) {
    page_ = page;
    position_ = 0;
    line_ = 1;
    objPrinterUtil_ = printer::clsDrucker(session_.platform.dialogs);
    objPrinterUtil_.NewPrinter(printer_.Device());
    while (position_ < page_.size()) {
        const std::size_t end = runEnd(page_, position_);
        if (end > position_) {
            PrintTextRun(page_.substr(position_, end - position_));
        }
        position_ = end;
        if (position_ == page_.size()) {
            return;
        }
        switch (page_[position_++]) {
            case '\n':
                if (!newLine()) {
                    return;
                }
                break;
            case '\r':
                printer_.CurrentX(state_.settings.lngLinkerRand);
                break;
            case '\f':
                return;
            case '^':
                macro();
                break;
            default:  // escape
                break;
        }
    }
}

// False where the page has no line left.
bool PageInterpreter::newLine() {
    const std::int32_t y = runtime::roundToLong(printer_.CurrentY());
    state_.blnZeileBegonnen = false;
    line_ = runtime::addInteger(line_, 1);
    if (line_ > state_.intMaxZeilen) {
        return false;
    }
    printer_.CurrentY(runtime::addLong(y, state_.settings.lngZeilenabstand));
    printer_.CurrentX(state_.settings.lngLinkerRand);
    return true;
}

void PageInterpreter::macro() {
    constexpr std::size_t codeLength = 2;
    const std::string_view code = page_.substr(position_, codeLength);
    if (session_.log.writes(session::DebugLog::details)) {
        session_.log.detail(">       ^", session_.platform.system.fromDosCodePage(code));
    }
    if (code.size() < codeLength) {
        return;
    }
    const std::size_t codeBegin = position_;
    position_ += codeLength;
    try {
        if (!execute(code)) {
            position_ = codeBegin;
        }
    } catch (const runtime::Error& error) {
        throw error.at("(Makro ^" + std::string(code) + " auf Seite " + std::to_string(state_.intSeite) + ", Zeile " +
                       std::to_string(line_) + ")");
    }
}

// False for a code that is none; its characters are text.
bool PageInterpreter::execute(std::string_view code) {
    return executeType(code) || executePitch(code) || executeColor(code) || executeParameter(code) ||
           executeDrawing(code);
}

bool PageInterpreter::executeType(std::string_view code) {
    const char effect = code[0];
    const bool on = code[1] == 'E';
    if (!on && code[1] != 'A') {
        return false;
    }
    switch (effect) {
        case 'F':
            printer_.FontBold(on);
            return true;
        case 'U':
            printer_.FontUnderline(on);
            return true;
        case 'K':
            printer_.FontItalic(on);
            return true;
        case 'H':
            state_.intHochTief = on ? 1 : 0;
            return true;
        case 'T':
            state_.intHochTief = on ? -1 : 0;
            return true;
        case 'B':
            wideType(on);
            return true;
        case 'E':
            return true;
        case 'O':  // both deepen the shadow; only "SA" ends it
            state_.dblSchatten = on ? 2 : 3;
            return true;
        case 'S':
            state_.dblSchatten = on ? 1 : 0;
            return true;
        default:
            return false;
    }
}

void PageInterpreter::wideType(bool on) {
    if (state_.blnBreitschrift == on) {
        return;
    }
    state_.blnBreitschrift = on;
    state_.curFontSize = on ? widened(state_.curFontSize) : narrowed(state_.curFontSize);
    printer_.FontSize(state_.curFontSize);
}

bool PageInterpreter::executePitch(std::string_view code) {
    const auto* pitch = std::find_if(pitches.begin(), pitches.end(), [&](const Pitch& p) { return p.code == code; });
    if (pitch == pitches.end()) {
        return false;
    }
    state_.curFontSize = state_.blnBreitschrift ? pitch->wide : pitch->normal;
    printer_.FontSize(state_.curFontSize);
    return true;
}

bool PageInterpreter::executeColor(std::string_view code) {
    const auto* entry = std::find_if(colors.begin(), colors.end(), [&](const ColorCode& c) { return c.code == code; });
    if (entry == colors.end()) {
        return false;
    }
    printer_.ForeColor(entry->color);
    return true;
}

bool PageInterpreter::executeParameter(std::string_view code) {
    if (code == "LS") {
        // The macro takes the value of its own second letter, which is none: always portrait.
        printer_.Option(platform::PageOption::orientation, 1);
        return true;
    }
    if (code == "TR" || code == "PL") {
        parameter();
        return true;
    }
    if (code == "LR") {
        const std::string_view count = parameter();
        if (!count.empty()) {
            SetIndent(static_cast<unsigned char>(count.front()));
        }
        return true;
    }
    return false;
}

bool PageInterpreter::executeDrawing(std::string_view code) {
    if (code == "BC") {
        barcode();
        return true;
    }
    if (isGraphicMacro(code)) {
        graphics(code);
        return true;
    }
    return false;
}

void PageInterpreter::barcode() {
    const std::size_t end = std::min(page_.find('\\', position_), page_.size());
    const BarcodeMacro macro = readBarcodeMacro(page_.substr(position_, end - position_));
    position_ = std::min(end + 1, page_.size());
    if (!macro.data.empty()) {
        printBarcode(session_, printer_, macro, state_.dblBarcodeHeight);
    }
}

void PageInterpreter::graphics(std::string_view code) {
    const int number = graphicNumber(page_.substr(position_, 1));
    if (number != 0) {
        ++position_;
    }
    GraphicMacro(session_, printer_, state_, objPrinterUtil_).print(code, number);
}

std::string_view PageInterpreter::parameter() {
    const std::string_view character = page_.substr(position_, 1);
    position_ += character.size();
    return character;
}

void PageInterpreter::SetIndent(std::int16_t count) {
    state_.intEinzug = count;
    state_.dblEinzugFontSize = printer_.Font().size.toDouble();
}

void PageInterpreter::PrintTextRun(std::string_view text) {
    if (!state_.blnZeileBegonnen) {
        printIndent();
        state_.blnZeileBegonnen = true;
    }
    const double lift = state_.blnBreitschrift ? wideTypeLift : 0;
    printer_.CurrentY(printer_.CurrentY() - lift);
    if (state_.intHochTief != 0) {
        printShifted(text, -scriptShift * state_.intHochTief);
    } else if (printer_.Font().bold) {
        printWithCopy(text, boldOffset);
    } else if (state_.dblSchatten > 0) {
        printWithCopy(text, shadowOffsetPerDepth * state_.dblSchatten);
    } else {
        print(text);
    }
    printer_.CurrentY(printer_.CurrentY() + lift);
    letEventsRun_();
}

void PageInterpreter::printIndent() {
    if (state_.intEinzug <= 0) {
        return;
    }
    const printer::FontStyle font = printer_.Font();
    printer_.FontSize(Currency::fromDouble(state_.dblEinzugFontSize));
    printer_.FontUnderline(false);
    printer_.Print(std::string(static_cast<std::size_t>(state_.intEinzug), ' '),
                   state_.blnTextAusgeben ? TextRole::content : TextRole::effect);
    printer_.FontSize(font.size);
    printer_.FontUnderline(font.underline);
}

void PageInterpreter::printShifted(std::string_view text, double twipsDown) {
    printer_.CurrentY(printer_.CurrentY() + twipsDown);
    print(text);
    printer_.CurrentY(printer_.CurrentY() - twipsDown);
}

// The copy lies right of and below the text, which is printed over it.
void PageInterpreter::printWithCopy(std::string_view text, double offset) {
    const double x = printer_.CurrentX();
    const double y = printer_.CurrentY();
    printer_.CurrentX(x + offset);
    printer_.CurrentY(y + offset);
    print(text, TextRole::effect);
    printer_.CurrentX(x);
    printer_.CurrentY(y);
    print(text);
}

void PageInterpreter::print(std::string_view text, TextRole role) {
    if (state_.blnTextAusgeben) {
        printer_.Print(text, role);
    }
}

}  // namespace report
