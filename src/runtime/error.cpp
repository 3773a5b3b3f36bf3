#include "runtime/error.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace runtime {

namespace {

struct Description {
    std::int32_t number;
    std::string_view text;
};

constexpr std::array descriptions = {
    Description{errInvalidCall, "Ungültiger Prozeduraufruf oder ungültiges Argument"},
    Description{errOverflow, "Überlauf"},
    Description{errOutOfMemory, "Nicht genügend Speicher"},
    Description{errSubscript, "Index außerhalb des gültigen Bereichs"},
    Description{errDivisionByZero, "Division durch Null"},
    Description{errTypeMismatch, "Typen unverträglich"},
    Description{errInternal, "Interner Fehler"},
    Description{errBadFileName, "Dateiname oder -nummer falsch"},
    Description{errFileNotFound, "Datei nicht gefunden"},
    Description{errDeviceIo, "Geräte-E/A-Fehler"},
    Description{errFileExists, "Datei existiert bereits"},
    Description{errDiskFull, "Datenträger voll"},
    Description{errInputPastEnd, "Eingabe hinter Dateiende"},
    Description{errTooManyFiles, "Zu viele Dateien"},
    Description{errPermissionDenied, "Zugriff verweigert"},
    Description{errPathFileAccess, "Fehler beim Zugriff auf Pfad/Datei"},
    Description{errPathNotFound, "Pfad nicht gefunden"},
    Description{errObjectNotSet, "Objektvariable oder With-Blockvariable nicht festgelegt"},
    Description{errInvalidPropertyValue, "Ungültiger Eigenschaftswert"},
    Description{errInvalidPicture, "Ungültiges Bild"},
    Description{errPrinter, "Druckerfehler"},
};

}  // namespace

std::string describe(std::int32_t number) {
    const auto* found = std::find_if(descriptions.begin(), descriptions.end(),
                                     [number](const Description& entry) { return entry.number == number; });
    return std::string(found != descriptions.end() ? found->text : "Anwendungs- oder objektdefinierter Fehler");
}

Error Error::at(const std::string& place) const {
    return {number_, source_, description_, detail_.empty() ? place : detail_ + " " + place};
}

Error::Error(std::int32_t number, std::string detail) : Error(number, {}, describe(number), std::move(detail)) {}

Error::Error(std::int32_t number, std::string source, std::string description, std::string detail)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      detail_(std::move(detail)),
      message_(detail_.empty() ? description_ : description_ + (description_.ends_with('.') ? " " : ": ") + detail_) {}

}  // namespace runtime
