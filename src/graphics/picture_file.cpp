#include "graphics/picture_file.h"
