#include "joblist/druckauftraege_design.h"

namespace joblist {

namespace {

using enum platform::ControlKind;
using platform::Control;
using platform::Key;
using platform::Sizing;

constexpr int left = 7;
constexpr int width = 540;
constexpr int height = 302;
constexpr int inner = width - 2 * left;
constexpr int buttonHeight = 14;
constexpr int buttons = 22;  // from the top: those of the queue
constexpr int keptTop = 184;

Control jobButton(int x, int length, const char* name, const char* caption, const char* tooltip) {
    return {button, name, caption, tooltip, {x, buttons, length, buttonHeight}};
}

Control keptButton(int x, int length, const char* name, const char* caption, const char* tooltip) {
    return {button, name, caption, tooltip, {x, keptTop + 84, length, buttonHeight}, Sizing::bottom};
}

Control jobTable() {
    Control made{table, "tblAuftraege", "", "", {left, 51, inner, keptTop - 57}, Sizing::fill};
    made.columns = {{"Platz", 26, true},  {"Dokument", 86},        {"Benutzer", 44},    {"Status", 78},
                    {"Seiten", 30, true}, {"Größe", 36, true},     {"Eingereicht", 70}, {"Wartet seit", 46, true},
                    {"Nummer", 34, true}, {"Priorität", 34, true}, {"Rechner", 32}};
    return made;
}

Control keptTable() {
    Control made{table, "tblAufbewahrt", "", "", {left, keptTop + 11, inner, 70}, Sizing::bottomLine};
    made.columns = {{"Druckdatei", 90}, {"Zeit", 76}, {"Drucker", 80}, {"Grund", 210}, {"Gedruckte Seiten", 60}};
    return made;
}

}  // namespace

platform::FormDesign designOfDruckauftraege() {
    return {
        .name = "FDruckauftraege",
        .title = titleOfDruckauftraege,
        .width = width,
        .controls =
            {
                {label, "lblDrucker", "Dr&ucker:", "", {left, 7, 34, 8}},
                {dropDownList, "cboDrucker", "", "Drucker, dessen Warteschlange gezeigt wird", {42, 5, 170, 12}},
                {label, "lblDruckerStatus", "", "", {218, 7, 226, 8}},
                {button,
                 "cmdDruckerFortsetzen",
                 "D&rucker fortsetzen",
                 "Lässt den angehaltenen Drucker weiterdrucken",
                 {449, 4, 84, buttonHeight}},
                jobButton(left, 52, "cmdAnhalten", "An&halten", "Hält die ausgewählten Aufträge an"),
                jobButton(62, 52, "cmdFortsetzen", "&Fortsetzen", "Lässt angehaltene Aufträge weiterlaufen"),
                jobButton(117, 76, "cmdAbbrechen", "Auftrag a&bbrechen", "Bricht die ausgewählten Aufträge ab (Entf)"),
                jobButton(196, 52, "cmdNeuStarten", "&Neu starten", "Druckt die ausgewählten Aufträge von vorn"),
                jobButton(251, 50, "cmdNachVorn", "Nach &vorn",
                          "Stellt die ausgewählten Aufträge an den Anfang der Warteschlange"),
                {label, "lblPrioritaet", "&Priorität:", "", {308, buttons + 3, 34, 8}},
                {comboBox,
                 "cboPrioritaet",
                 "",
                 "Priorität der ausgewählten Aufträge, 1 (niedrigste) bis 99 (höchste)",
                 {343, buttons + 1, 44, 12}},
                jobButton(397, 66, "cmdAktualisieren", "A&ktualisieren", "Liest die Warteschlange noch einmal (F5)"),
                jobButton(467, 66, "cmdSchliessen", "&Schließen", ""),
                {label, "lblAuftraege", "&Aufträge", "", {left, 41, 300, 8}},
                jobTable(),
                {label, "lblAufbewahrt", "N&icht gedruckt", "", {left, keptTop, 300, 8}, Sizing::bottom},
                keptTable(),
                keptButton(left, 90, "cmdNochEinmal", "Noch &einmal drucken",
                           "Druckt den Auftrag so, wie der Host ihn drucken wollte"),
                keptButton(100, 60, "cmdLoeschen", "&Löschen", "Löscht die aufbewahrten Dateien (Entf)"),
                keptButton(163, 80, "cmdOrdner", "Im &Ordner zeigen", ""),
                {label, "lblStatus", "", "", {left, height - 12, inner, 8}, Sizing::bottomLine},
            },
        .defaultButton = "",
        .cancelButton = "cmdSchliessen",
        .height = height,
        .resizable = true,
        .shortcuts =
            {
                {Key::f5, false, false, "cmdAktualisieren"},
                {Key::deleteKey, false, false, "entfernen", false},
            },
    };
}

}  // namespace joblist
