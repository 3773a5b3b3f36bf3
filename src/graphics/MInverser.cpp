#include "graphics/MInverser.h"

#include "graphics/picture_cache.h"
#include "graphics/picture_file.h"

namespace MInverser {

void InvertGraphic(session::Session& session, const std::string& sDateiname) {
    platform::System& system = session.platform.system;
    platform::ImageFiles& others = session.platform.imageFiles;
    const std::string original = system.readFile(sDateiname);
    platform::Picture picture = graphics::decodeFile(sDateiname, original, others);
    graphics::invert(picture);
    system.rewriteFile(sDateiname, graphics::encodePicture(picture, original, others));
}

}  // namespace MInverser
