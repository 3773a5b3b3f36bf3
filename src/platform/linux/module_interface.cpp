// Part of every module: says which version of the interfaces it was built for.
#include "platform/linux/module.h"

extern "C" {
[[gnu::visibility("default")]] extern const int krvwinpr_interface;
const int krvwinpr_interface = platform_linux::moduleInterface;
}
