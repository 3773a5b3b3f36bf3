#include "settings/druckerauswahl_design.h"

namespace settings {

platform::FormDesign designOfDruckerAuswahl() {
    using enum platform::ControlKind;
    constexpr const char* toolTipTestPage = "Druckt eine Testseite über den aktuellen Treiber";
    constexpr int left = 7;
    constexpr int rightOfList = 231;
    constexpr int fields = 76;
    constexpr int trays = 150;
    constexpr int trayLists = 188;
    return {
        .name = "FDruckerAuswahl",
        .title = titleOfDruckerAuswahl,
        .width = 300,
        .controls =
            {
                {label,
                 "Label1",
                 "Bitte gewünschten Windowsdruckertreiber auswählen und mit OK bestätigen.",
                 "",
                 {left, 5, 286, 8}},
                {listBox, "List1", "", "", {left, 15, 218, 61}},
                {button, "cmdOK", "&OK", "", {rightOfList, 15, 62, 13}},
                {button, "cmdAbbruch", "&Abbruch", "", {rightOfList, 31, 62, 13}},
                {button, "cmdDruckerordner", "Druckerordner...", toolTipTestPage, {rightOfList, 47, 62, 13}},
                {button, "cmdErweitert", captionUnfold, "", {rightOfList, 63, 62, 13}},
                {label,
                 "Label2",
                 "Hier können bei Problemen mit dem oben ausgewählten Druckertreiber Feineinstellungen vorgenommen "
                 "werden.",
                 "",
                 {left, 86, 286, 18}},
                {label, "Label3", "Oberer Rand", "", {left, 112, 66, 8}},
                {textBox, "txtObererRand", "", "", {fields, 110, 60, 12}},
                {label, "Label4", "Zeilenabstand", "", {left, 129, 66, 8}},
                {textBox, "txtZeilenabstand", "", "", {fields, 127, 60, 12}},
                {label, "Label5", "Linker Rand", "", {left, 146, 66, 8}},
                {textBox, "txtLinkerRand", "", "", {fields, 144, 60, 12}},
                {label, "Label6", "ScaleFaktor", "", {left, 163, 66, 8}},
                {textBox,
                 "txtScaleFaktor",
                 "",
                 "Vorgabe ist 5,5 je größer die Zahl desto kleiner wird die Grafik",
                 {fields, 161, 60, 12}},
                {button, "cmdStandardwerte", "Standardwerte eintragen", "", {left, 182, 129, 14}},
                {label, "Label7", "Schacht &1:", "", {trays, 112, 36, 8}},
                {dropDownList,
                 "cboSchacht1",
                 "",
                 "Ordnet den ausgewählten Druckerschacht dem Korvano-Schacht1 zu",
                 {trayLists, 110, 105, 12}},
                {label, "Label8", "Schacht &2:", "", {trays, 129, 36, 8}},
                {dropDownList,
                 "cboSchacht2",
                 "",
                 "Ordnet den ausgewählten Druckerschacht dem Korvano-Schacht2 zu",
                 {trayLists, 127, 105, 12}},
                {label, "Label9", "Schacht &3:", "", {trays, 146, 36, 8}},
                {dropDownList,
                 "cboSchacht3",
                 "",
                 "Ordnet den ausgewählten Druckerschacht dem Korvano-Schacht3 zu",
                 {trayLists, 144, 105, 12}},
                {button, "cmdTestseite", "&Testseite drucken", toolTipTestPage, {trays, 164, 143, 14}},
                {button,
                 "cmdSchachtTest",
                 "&Schachtzuordnungen testen",
                 "Druckt Schachtzuordnungen über den aktuellen Treiber",
                 {trays, 182, 143, 14}},
                {button, "cmdGrafikseite", "&Grafiktest drucken", "", {trays, 200, 143, 14}},
            },
        .defaultButton = "cmdOK",
        .cancelButton = "cmdAbbruch",
    };
}

}  // namespace settings
