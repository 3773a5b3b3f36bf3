#include "errorreport/fehlerbericht_design.h"

namespace errorreport {

namespace {

using enum platform::ControlKind;
using platform::Control;
using platform::Sizing;

constexpr int margin = 7;
constexpr int width = 400;
constexpr int height = 250;
constexpr int lines = 8 * 3;  // of text
constexpr int buttonWidth = 72;
constexpr int buttonHeight = 14;
constexpr int buttonGap = 6;
constexpr int textTop = margin + 2 * (lines + 4);

Control buttonAt(int index, const char* name, const char* caption, const char* tooltip) {
    return {button,
            name,
            caption,
            tooltip,
            {margin + index * (buttonWidth + buttonGap), height - margin - buttonHeight, buttonWidth, buttonHeight},
            Sizing::bottom};
}

}  // namespace

platform::FormDesign designOfFehlerbericht() {
    constexpr int inner = width - 2 * margin;
    return {
        .name = "FFehlerbericht",
        .title = "KRVWinPr: Fehlerbericht",
        .width = width,
        .controls =
            {
                {label, "lblFehler", "", "", {margin, margin, inner, lines}},
                {label, "lblAuftrag", "", "", {margin, margin + lines + 4, inner, lines}},
                {textView,
                 "txtBericht",
                 "Bericht",
                 "",
                 {margin, textTop, inner, height - textTop - 2 * margin - buttonHeight},
                 Sizing::fill},
                buttonAt(0, "cmdKopieren", "&Kopieren", "Den Bericht in die Zwischenablage kopieren"),
                buttonAt(1, "cmdSpeichern", "&Speichern unter …", "Den Bericht in eine Datei schreiben"),
                buttonAt(2, "cmdOrdner", "&Ordner zeigen", "Den Ordner der Datei KRVWinPr.ERR öffnen"),
                buttonAt(3, "cmdSenden", "S&enden …", "Eine E-Mail mit dem Bericht beginnen"),
                buttonAt(4, "cmdSchliessen", "S&chließen", ""),
            },
        .defaultButton = "cmdSchliessen",
        .cancelButton = "cmdSchliessen",
        .height = height,
        .resizable = true,
    };
}

}  // namespace errorreport
