// Who may write into a folder.
#pragma once

#include <sys/types.h>

namespace platform_linux::messenger {

// Whether a user, who need not be the one of the process, may write into an open folder: its owner, its group,
// everybody, or whom its access control list names, as far as each of them may write; this user and root always.
bool mayWrite(uid_t user, int folder);

}  // namespace platform_linux::messenger
