// The settings of one printer that a report run works with, and the record of the printer last used.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "session/Session.h"

namespace MRegistry {

struct DruckerEinstellungen {
    std::int32_t lngZeilenabstand = 222;  // twips
    std::int32_t lngKopfabstand = 500;    // twips
    std::int32_t lngLinkerRand = 0;       // twips
    float sngScaleFaktor = 5.5F;
    std::int32_t lngColorMode = 0;  // 0 driver's default, 1 monochrome, 2 colour
};

// The printer's name as its keys have it. That two backslashes at its beginning were cut is mentioned in the log.
std::string_view keyNameOf(session::Session& session, std::string_view deviceName);

// Records the printer as the last one used, carries its settings over from the old product key where only that has
// them, and reads them. A value that cannot be read as its number counts as its default. The colour mode's default is
// the printer's own.
DruckerEinstellungen DruckerEinstellungenLaden(session::Session& session, const std::string& deviceName,
                                               std::int32_t printerColorMode);

}  // namespace MRegistry
