// Inverts a picture file in place.
#pragma once

#include <string>

#include "session/session.h"

namespace graphics::MInverser {

// Turns every colour of the picture into its opposite; kind, depth, transparency and resolution of the file stay. The
// old file stays whole until the new one is, and where something of it could not be kept. Failures are runtime::Error:
// what reading, decoding and rewriteFile() throw.
void InvertGraphic(session::Session& session, const std::string& sDateiname);

}  // namespace graphics::MInverser
