#include "graphics/MInverser.h"

#include "graphics/picture_cache.h"
#include "pictures/picture_file.h"

namespace graphics::MInverser {

void InvertGraphic(session::Session& session, const std::string& sDateiname) {
    platform::System& system = session.platform.system;
    platform::ImageFiles& others = session.platform.imageFiles;
    const std::string original = system.readFile(sDateiname);
    platform::Picture picture = decodeFile(sDateiname, original, others);
    pictures::invert(picture);
    system.rewriteFile(sDateiname, pictures::encodePicture(picture, original, others));
}

}  // namespace graphics::MInverser
