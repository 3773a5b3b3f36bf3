// The graphics of a job in the order in which they were defined.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "graphics/clsGrafik.h"

namespace graphics {

// What a graphic is made from; positions are the value in the unit times 1440.
struct GraphicDefinition {
    float sngYPos = 0;
    float sngXPos = 0;
    std::uint8_t bytMakro = 0;
    std::string sMasseinheit;  // "CM" in any case; anything else means inches
    bool blnAbsolutPos = false;
    float sngScaleFaktor = 0;
    std::string sBildname;  // empty for the number's macro file
};

class clsGrafiken {
public:
    std::size_t Count() const { return grafiken_.size(); }

    // Makes a graphic, loads its picture and appends it. What clsGrafik::Makro() throws is the caller's, and the
    // collection then stays as it was. Session and cache are borrowed for as long as the graphic lasts.
    clsGrafik& Add(session::Session& session, PictureCache& pictures, const GraphicDefinition& daten);

    // The graphic at a position from 1; errSubscript where there is none.
    clsGrafik& Item(std::size_t position);

    auto begin() { return grafiken_.begin(); }
    auto end() { return grafiken_.end(); }

private:
    std::deque<clsGrafik> grafiken_;
};

}  // namespace graphics
