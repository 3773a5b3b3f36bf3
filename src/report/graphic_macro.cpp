#include "report/graphic_macro.h"

#include <string>

#include "runtime/numbers.h"

namespace report {

namespace {

constexpr std::string_view firstSetHere = "GZ";
constexpr std::string_view secondSetHere = "GY";
constexpr std::string_view firstSetOwnPlace = "GR";
constexpr std::string_view secondSetOwnPlace = "GA";

bool isOfFirstSet(std::string_view code) { return code == firstSetHere || code == firstSetOwnPlace; }

bool isAtCurrentPosition(std::string_view code) { return code == firstSetHere || code == secondSetHere; }

}  // namespace

bool isGraphicMacro(std::string_view code) {
    return isOfFirstSet(code) || code == secondSetHere || code == secondSetOwnPlace;
}

int graphicNumber(std::string_view next) {
    return !next.empty() && next.front() >= '1' && next.front() <= '9' ? next.front() - '0' : 0;
}

void GraphicMacro::print(std::string_view code, int number) {
    graphics::clsGrafiken& grafiken = isOfFirstSet(code) ? state_.colGrafik : state_.colGrafikA;
    const bool logged = code == firstSetOwnPlace;
    if (number == 0) {
        if (logged) {
            session_.log.line(">       alle Grafiken ausgeben");
        }
        for (const graphics::clsGrafik& grafik : grafiken) {
            if (logged) {
                announce();
            }
            printOne(grafik, code, "1-9");
        }
        return;
    }
    const std::string digit = std::to_string(number);
    if (logged) {
        session_.log.line(">       Grafik ", digit, " ausgeben");
    }
    const auto position = static_cast<std::size_t>(number);
    if (position <= grafiken.Count()) {
        printOne(grafiken.Item(position), code, digit);
    }
}

void GraphicMacro::announce() {
    session_.log.line(">         Teilgrafik ausdrucken");
    session_.log.line(">           objPrinterUtil ", "clsDrucker");
    session_.log.line(">           lngLinkerRand ", std::to_string(state_.settings.lngLinkerRand));
    session_.log.line(">           lngKopfabstand ", std::to_string(state_.settings.lngKopfabstand));
    session_.log.line(">           sngScaleFactor ",
                      runtime::singleText(state_.settings.sngScaleFaktor, session_.locale()));
}

void GraphicMacro::printOne(const graphics::clsGrafik& grafik, std::string_view code, std::string_view which) {
    if (!state_.blnGrafikAusgeben) {
        return;
    }
    const graphics::GraphicTarget ziel{printer_, objPrinterUtil_, state_.settings.lngLinkerRand,
                                       state_.settings.lngKopfabstand};
    std::string message = ">       " + std::string(code) + " Grafikmakro " + std::string(which);
    if (isAtCurrentPosition(code)) {
        grafik.PrintGrafik(ziel, message, runtime::toSingle(printer_.CurrentX()),
                           runtime::toSingle(printer_.CurrentY()));
    } else {
        grafik.PrintGrafik(ziel, message);
    }
    session_.log.line(message);
}

}  // namespace report
