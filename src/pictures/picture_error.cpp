#include "pictures/picture_error.h"

#include <string>

#include "runtime/error.h"

namespace pictures {

void refusePicture(std::string_view kind, std::string_view fault) {
    throw runtime::Error(runtime::errInvalidPicture,
                         "Die " + std::string(kind) + "-Datei " + std::string(fault) +
                             ". Bitte das Bild neu erzeugen oder mit einem Bildprogramm öffnen und neu speichern.");
}

}  // namespace pictures
