#include "report/page_interpreter.h"

#include <string>

#include "report/barcode_macro.h"
#include "report/graphic_macro.h"
#include "runtime/crash_on_purpose.h"
#include "runtime/numbers.h"

namespace report {

namespace {

using platform::TextRole;
using runtime::Currency;

// Page layout, twips.
constexpr double wideTypeLift = 200;
constexpr double scriptShift = 70;
constexpr double boldOffset = 4;
constexpr double shadowOffsetPerDepth = 2;

}  // namespace

void PageInterpreter::DoPage(std::string_view page) {
    objPrinterUtil_ = printer::clsDrucker(session_.platform.dialogs);
    objPrinterUtil_.NewPrinter(printer_.Device());
    showType();
    PageReader reader(page, state_.intMaxZeilen);
    tellPosition(reader);
    while (const auto token = reader.next()) {
        switch (token->kind) {
            case PageToken::Kind::text:
                PrintTextRun(token->text);
                tell([&](TextListener& listener) { listener.textRun(token->text); });
                break;
            case PageToken::Kind::lineFeed:
                newLine(reader.full());
                tellPosition(reader);
                runtime::crashOnPurpose("page");
                break;
            case PageToken::Kind::carriageReturn:
                printer_.CurrentX(state_.settings.lngLinkerRand);
                tell([](TextListener& listener) { listener.carriageReturn(); });
                break;
            case PageToken::Kind::macro:
                logMacro(token->text);
                execute(*token, reader.line());
                break;
            case PageToken::Kind::unknownMacro:
                logMacro(token->text);
                break;
        }
    }
}

// What a pass without text does not print is not told either.
template <typename Step>
void PageInterpreter::tell(Step step) {
    if (listener_ != nullptr && state_.blnTextAusgeben) {
        step(*listener_);
    }
}

void PageInterpreter::tellPosition(const PageReader& reader) {
    session_.activity().position.store(state_.pageOffset + reader.position(), std::memory_order_relaxed);
}

void PageInterpreter::newLine(bool pageIsFull) {
    state_.blnZeileBegonnen = false;
    if (!pageIsFull) {
        const std::int32_t y = runtime::roundToLong(printer_.CurrentY());
        printer_.CurrentY(runtime::addLong(y, state_.settings.lngZeilenabstand));
        printer_.CurrentX(state_.settings.lngLinkerRand);
    }
    tell([](TextListener& listener) { listener.lineFeed(); });
}

void PageInterpreter::logMacro(std::string_view code) {
    if (session_.log.writes(session::DebugLog::details)) {
        session_.log.detail(">       ^", session_.platform.system.fromDosCodePage(code));
    }
}

void PageInterpreter::execute(const PageToken& macro, std::int16_t line) {
    try {
        execute(macro);
    } catch (const runtime::Error& error) {
        throw error.at("(Makro ^" + std::string(macro.text) + " auf Seite " + std::to_string(state_.intSeite) +
                       ", Zeile " + std::to_string(line) + ")");
    }
}

void PageInterpreter::execute(const PageToken& macro) {
    if (isTypeMacro(macro.text)) {
        state_.type.execute(macro.text);
        showType();
    } else if (macro.text == "LS") {
        printer_.Option(platform::PageOption::orientation, orientationOfMacro);
    } else if (macro.text == "LR" && !macro.parameter.empty()) {
        SetIndent(static_cast<unsigned char>(macro.parameter.front()));
    } else if (macro.text == "BC") {
        barcode(macro.parameter);
    } else if (isGraphicMacro(macro.text)) {
        GraphicMacro(session_, printer_, state_, objPrinterUtil_).print(macro.text, graphicNumber(macro.parameter));
    }
}

void PageInterpreter::showType() {
    printer_.FontSize(state_.type.curFontSize);
    printer_.FontBold(state_.type.bold);
    printer_.FontItalic(state_.type.italic);
    printer_.FontUnderline(state_.type.underline);
    printer_.ForeColor(state_.type.color);
}

void PageInterpreter::barcode(std::string_view fields) {
    const BarcodeMacro macro = readBarcodeMacro(fields);
    if (!macro.data.empty()) {
        printBarcode(session_, printer_, macro, state_.dblBarcodeHeight);
    }
}

void PageInterpreter::SetIndent(std::int16_t count) { state_.type.SetIndent(count); }

void PageInterpreter::PrintTextRun(std::string_view text) {
    if (!state_.blnZeileBegonnen) {
        printIndent();
        state_.blnZeileBegonnen = true;
    }
    const double lift = state_.type.blnBreitschrift ? wideTypeLift : 0;
    printer_.CurrentY(printer_.CurrentY() - lift);
    if (state_.type.intHochTief != 0) {
        printShifted(text, -scriptShift * state_.type.intHochTief);
    } else if (printer_.Font().bold) {
        printWithCopy(text, boldOffset);
    } else if (state_.type.dblSchatten > 0) {
        printWithCopy(text, shadowOffsetPerDepth * state_.type.dblSchatten);
    } else {
        print(text);
    }
    printer_.CurrentY(printer_.CurrentY() + lift);
    letEventsRun_();
}

void PageInterpreter::printIndent() {
    if (state_.type.intEinzug <= 0) {
        return;
    }
    const printer::FontStyle font = printer_.Font();
    printer_.FontSize(Currency::fromDouble(state_.type.dblEinzugFontSize));
    printer_.FontUnderline(false);
    printer_.Print(std::string(static_cast<std::size_t>(state_.type.intEinzug), ' '),
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
