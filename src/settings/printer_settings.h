// A printer's settings: what they are called where they are stored, their ranges and defaults, and how a job reads
// them. Whatever shows or changes a setting takes its name and its default from here.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "session/session.h"

namespace settings {

// A value below a printer's key, decimal text there. Its range is that of the type; a text that is no number of that
// type counts as the default, which standard error is told, but for a tray that a job asks for: there it is an error.
template <typename Number>
struct Setting {
    std::string_view name;
    Number byDefault;
};

inline constexpr Setting<std::int32_t> lineSpacing{"Zeilenabstand", 222};   // twips from one line to the next
inline constexpr Setting<std::int32_t> topMargin{"ObererRand", 500};        // twips above the first line
inline constexpr Setting<std::int32_t> leftMargin{"LinkerRand", 0};         // twips left of every line
inline constexpr Setting<float> scaleFactor{"ScaleFaktor", 5.5F};           // divisor of graphics, in the locale's form
inline constexpr std::string_view colorModeName = "ColorMode";              // the printer's own where it is not set
inline constexpr std::string_view ignorePaperSizeName = "IgnorePaperSize";  // anything but "0" is on

// The paper bin, by the driver's number, for each of the host's trays. Of the four the last is entered by hand; no
// print file asks for it.
inline constexpr std::int16_t noBin = -1;
inline constexpr std::array trays = {
    Setting<std::int16_t>{"Schacht1", noBin},
    Setting<std::int16_t>{"Schacht2", noBin},
    Setting<std::int16_t>{"Schacht3", noBin},
    Setting<std::int16_t>{"Schacht4", noBin},
};

struct PrinterSettings {
    std::int32_t lngZeilenabstand = lineSpacing.byDefault;
    std::int32_t lngKopfabstand = topMargin.byDefault;
    std::int32_t lngLinkerRand = leftMargin.byDefault;
    float sngScaleFaktor = scaleFactor.byDefault;
    std::int32_t lngColorMode = 0;  // 0 driver's default, 1 monochrome, 2 colour
};

// The printer's name as its keys have it. That two backslashes at its beginning were cut is mentioned in the log.
std::string_view keyNameOf(session::Session& session, std::string_view deviceName);

// Records the printer as the last one used, carries its settings over from the old product key where only that has
// them, and reads them. The colour mode's default is the printer's own.
PrinterSettings loadPrinterSettings(session::Session& session, const std::string& deviceName,
                                    std::int32_t printerColorMode);

// What a message says of a stored value that a job cannot use: where it stands, what it is, and what was expected.
std::string unusableValue(session::Session& session, std::string_view key, std::string_view name,
                          std::string_view value, std::string_view expected);

// The setting of the tray "1" to "4"; null for any other text.
const Setting<std::int16_t>* traySetting(std::string_view tray);

// The bin assigned to a tray; below 1 where none is. An assignment that is no number is errTypeMismatch, one that is
// too large errOverflow. The key is the printer's.
std::int32_t binOfTray(session::Session& session, std::string_view printerKey, const Setting<std::int16_t>& tray);

// Whether the printer keeps its own paper size instead of being set to A4.
bool ignoresPaperSize(platform::SettingsStore& store, std::string_view deviceName);

}  // namespace settings
