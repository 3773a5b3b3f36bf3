#include "preview/vorschau_design.h"

#include "preview/vorschau_symbols.h"

namespace preview {

namespace {

using enum platform::ControlKind;
using platform::Control;
using platform::Key;
using platform::Sizing;

constexpr int side = 14;  // of a tool
constexpr int top = 3;
constexpr int toolBarHeight = 20;
constexpr int width = 558;
constexpr int height = 270;
constexpr int statusHeight = 12;

Control tool(int x, const char* name, const char* caption, const char* tooltip, platform::Symbol symbol) {
    return {toolButton, name, caption, tooltip, {x, top, side, side}, Sizing::fixed, std::move(symbol)};
}

Control text(int x, int length, const char* name, const char* caption) {
    return {label, name, caption, "", {x, top + 3, length, 8}};
}

}  // namespace

platform::FormDesign designOfVorschau() {
    return {
        .name = "FVorschau",
        .title = titleOfVorschau,
        .width = width,
        .controls =
            {
                {canvas,
                 "picSeite",
                 "Seite",
                 "",
                 {0, toolBarHeight, width, height - toolBarHeight - statusHeight},
                 Sizing::fill},
                tool(4, "cmdErste", "Erste Seite", "Erste Seite (Pos1)", symbols::firstPage()),
                tool(19, "cmdVorherige", "Vorherige Seite", "Vorherige Seite (Bild auf)", symbols::previousPage()),
                text(36, 20, "lblSeite", "Seite"),
                {textBox, "txtSeite", "", "Gehe zu Seite (Strg+G)", {57, top + 1, 34, 12}},
                text(94, 38, "lblSeiten", ""),
                tool(133, "cmdNaechste", "Nächste Seite", "Nächste Seite (Bild ab)", symbols::nextPage()),
                tool(148, "cmdLetzte", "Letzte Seite", "Letzte Seite (Ende)", symbols::lastPage()),
                tool(168, "cmdKleiner", "Verkleinern", "Verkleinern (Strg+Minus)", symbols::zoomOut()),
                {comboBox, "cboZoom", "", "Vergrößerung; 100 % ist die wirkliche Größe", {184, top + 1, 58, 12}},
                tool(244, "cmdGroesser", "Vergrößern", "Vergrößern (Strg+Plus)", symbols::zoomIn()),
                tool(259, "cmdGanzeSeite", "Ganze Seite", "Ganze Seite (Strg+0)", symbols::wholePage()),
                tool(274, "cmdSeitenbreite", "Seitenbreite", "Seitenbreite", symbols::pageWidth()),
                text(294, 25, "lblSuchen", "Suchen"),
                {textBox, "txtSuchen", "", "Text in allen Seiten suchen (Strg+F)", {320, top + 1, 54, 12}},
                tool(376, "cmdZurueck", "Vorheriger Treffer", "Vorheriger Treffer (Umschalt+F3)",
                     symbols::previousHit()),
                tool(391, "cmdWeiter", "Nächster Treffer", "Nächster Treffer (F3)", symbols::nextHit()),
                text(408, 80, "lblTreffer", ""),
                tool(490, "cmdOeffnen", "Druckdatei öffnen", "Druckdatei öffnen (Strg+O)", symbols::openFile()),
                tool(505, "cmdDrucken", "Drucken", "Drucken (Strg+P)", symbols::print()),
                tool(520, "cmdPDF", "Als PDF speichern", "Als PDF speichern (Strg+S)", symbols::savePdf()),
                tool(540, "cmdSchliessen", "Schließen", "Schließen (Esc)", symbols::close()),
                {label,
                 "lblStatus",
                 "",
                 "",
                 {4, height - statusHeight + 2, width - 8, statusHeight - 4},
                 Sizing::bottomLine},
            },
        .defaultButton = "",
        .cancelButton = "cmdSchliessen",
        .height = height,
        .resizable = true,
        .shortcuts =
            {
                {Key::pageDown, false, false, "cmdNaechste"},   {Key::pageUp, false, false, "cmdVorherige"},
                {Key::home, false, false, "cmdErste", false},   {Key::end, false, false, "cmdLetzte", false},
                {Key::home, true, false, "cmdErste", false},    {Key::end, true, false, "cmdLetzte", false},
                {Key::up, false, false, "hinauf", false},       {Key::down, false, false, "hinunter", false},
                {Key::left, false, false, "nach links", false}, {Key::right, false, false, "nach rechts", false},
                {Key::plus, true, false, "cmdGroesser"},        {Key::minus, true, false, "cmdKleiner"},
                {Key::digit0, true, false, "cmdGanzeSeite"},    {Key::letterF, true, false, "suchen"},
                {Key::f3, false, false, "cmdWeiter"},           {Key::f3, false, true, "cmdZurueck"},
                {Key::letterG, true, false, "gehe zu"},         {Key::letterP, true, false, "cmdDrucken"},
                {Key::letterS, true, false, "cmdPDF"},          {Key::f5, false, false, "neu lesen"},
                {Key::letterC, true, false, "kopieren", false}, {Key::letterA, true, false, "alles", false},
                {Key::letterO, true, false, "cmdOeffnen"},
            },
    };
}

platform::FormDesign designOfDrucken(std::size_t page) {
    constexpr int left = 7;
    return {
        .name = "FDrucken",
        .title = "Drucken",
        .width = 210,
        .controls =
            {
                {label, "lblDrucker", "D&rucker:", "", {left, 9, 34, 8}},
                {dropDownList, "cboDrucker", "", "", {44, 7, 159, 12}},
                {optionButton, "optAlle", "&Alle Seiten", "", {left, 27, 120, 10}},
                {optionButton, "optSeite", "&Diese Seite (" + std::to_string(page) + ")", "", {left, 40, 120, 10}},
                {optionButton, "optBereich", "&Seiten von", "", {left, 53, 56, 10}},
                {textBox, "txtVon", "", "Erste Seite, die gedruckt wird", {65, 52, 32, 12}},
                {label, "lblBis", "&bis", "", {102, 54, 14, 8}},
                {textBox, "txtBis", "", "Letzte Seite, die gedruckt wird", {118, 52, 32, 12}},
                {label, "lblFortschritt", "", "", {left, 71, 196, 16}},
                {button, "cmdDrucken", "Dru&cken", "", {75, 91, 62, 14}},
                {button, "cmdAbbrechen", "Abbrechen", "", {141, 91, 62, 14}},
            },
        .defaultButton = "cmdDrucken",
        .cancelButton = "cmdAbbrechen",
        .height = 111,
    };
}

}  // namespace preview
