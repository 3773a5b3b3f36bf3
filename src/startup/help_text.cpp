#include "startup/help_text.h"

#include <algorithm>

#include "report/kept_jobs.h"
#include "runtime/utf8.h"

namespace startup {

namespace {

constexpr std::size_t columns = 79;

std::string titleOf(const session::Program& program) {
    return program.title + " V. " + program.version + " - " + program.description;
}

constexpr const char* parameters =
    "Parameter: KRVWinPr [/DRUCKERAUSWAHL| [/INVERT] [/PRINTGRAPHIC <Druckertreiber>] <Datei> "
    "[<Grafikdatei>|KEINEGRAFIK] [<Druckertreiber>]] [/WAIT] [/TWOPASS]";

// The bytes are characters.
std::string wrapped(std::string text) {
    const std::string indent = "\n           ";
    for (std::size_t begin = 0; text.size() - begin > columns;) {
        const std::size_t end = text.rfind(' ', begin + columns);
        text.replace(end, 1, indent);
        begin = end + 1;
    }
    return text;
}

constexpr const char* details = R"(
Aufrufe:
  KRVWinPr Datei [Grafikdatei|KEINEGRAFIK] [Druckertreiber] [Schalter]
                                druckt eine Druckdatei des Hosts
  KRVWinPr /VORSCHAU [Datei [Grafikdatei|KEINEGRAFIK] [Druckertreiber]]
                                zeigt eine so, wie sie gedruckt würde
  KRVWinPr /AUFTRAEGE [Druckertreiber]
                                Warteschlange, und was nicht gedruckt wurde
  KRVWinPr /DRUCKERAUSWAHL      Drucker wählen und einstellen
  KRVWinPr /INVERT Datei        kehrt die Farben einer Bilddatei um
  KRVWinPr /PRINTGRAPHIC [Druckertreiber]
                                druckt GRAFIK.PCX auf eine Seite
  KRVWinPr --help               dieser Text; auch -h und /?
  KRVWinPr --version            nur Name und Fassung
  Die letzten beiden gelten allein, und wo keine Datei so heißt.

Argumente, durch je ein Leerzeichen getrennt:
  Datei           die Druckdatei; \ oder / zwischen Ordnern, groß oder klein
  Grafikdatei     ein Bild hinter jeder Seite; KEINEGRAFIK für keines
  Druckertreiber  Name eines Druckers, mit Leerzeichen in "Anführungszeichen";
                  ohne ihn, oder wo es ihn nicht gibt, der Standarddrucker

Schalter, an beliebiger Stelle und nur in Großbuchstaben:
  /WAIT      KRVWINPR.OK erst, wenn die Warteschlange leer ist (10 Sekunden)
  /TWOPASS   auf jeder Seite erst alle Grafiken, dann den Text
  /DEBUG     jeder Schritt steht in KRVWinPr.LOG; mit /DEBUG2 auch jedes Makro

Dateien im aktuellen Ordner, dem des Hosts:
  KRVWINPR.OK   entsteht, sobald die Druckdatei gelesen ist; darauf wartet er
  HPLASER.INI   wo Grafiken und Barcodes stehen
  KRVWIN.ASW    der in /DRUCKERAUSWAHL gewählte Drucker
  KRVWinPr.LOG  das Protokoll
)";

constexpr const char* variables = R"(
Umgebungsvariablen unter Linux:
  KRVWINPR_CODEPAGE   DOS-Codepage der Druckdateien, zum Beispiel 437
  SOURCE_DATE_EPOCH   Zeit in den PDF-Dateien, Sekunden seit 1970

Handbuch: KRVWinPr-Handbuch.html und .pdf; unter Linux auch „man KRVWinPr“.
)";

}  // namespace

std::string usageText(const session::Program& program) { return titleOf(program) + "\r\n\r\n" + parameters; }

std::string helpText(const session::Session& session) {
    const std::vector<std::string> kept = session.platform.userFiles.folders(report::folderOfKeptJobs);
    return titleOf(session.program) + "\n\n" + wrapped(parameters) + "\n" + details + "\nEinstellungen:\n  " +
           runtime::shown(session.platform.settings.place()) + "\nNicht gedruckte Aufträge:\n  " +
           (kept.empty() ? "" : runtime::shown(kept.front())) + "\n" + variables;
}

std::string versionText(const session::Program& program) { return program.title + " " + program.version; }

}  // namespace startup
