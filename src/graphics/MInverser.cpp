#include "graphics/MInverser.h"

#include "graphics/picture_reading.h"
#include "pictures/picture_file.h"

namespace graphics::MInverser {

void InvertGraphic(session::Session& session, const std::string& sDateiname) {
    platform::System& system = session.platform.system;
    platform::ImageFiles& others = session.platform.imageFiles;
    const std::string original = readPictureFile(system, sDateiname);
    const std::string inverted = naming(sDateiname, [&] { return pictures::invertedFile(original, others); });
    system.rewriteFile(sDateiname, inverted);
}

}  // namespace graphics::MInverser
