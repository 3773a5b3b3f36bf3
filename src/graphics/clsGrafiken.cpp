#include "graphics/clsGrafiken.h"

#include <utility>

#include "runtime/error.h"
#include "runtime/text.h"

namespace graphics {

clsGrafik& clsGrafiken::Add(session::Session& session, PictureCache& pictures, const GraphicDefinition& daten) {
    clsGrafik grafik(session, pictures);
    grafik.YPos(daten.sngYPos);
    grafik.XPos(daten.sngXPos);
    grafik.Bildname(daten.sBildname);
    grafik.Makro(daten.bytMakro);
    grafik.Masseinheit(runtime::upperCase(daten.sMasseinheit) == "CM" ? "CM" : "INCH");
    grafik.AbsolutPos(daten.blnAbsolutPos);
    grafik.ScaleFaktor(daten.sngScaleFaktor);
    return grafiken_.emplace_back(std::move(grafik));
}

clsGrafik& clsGrafiken::Item(std::size_t position) {
    if (position < 1 || position > grafiken_.size()) {
        throw runtime::Error(runtime::errSubscript);
    }
    return grafiken_[position - 1];
}

}  // namespace graphics
