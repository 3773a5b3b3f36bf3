#include "platform/linux/messenger/file_system.h"

#include <linux/magic.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform_linux::messenger {

namespace {

// Those that linux/magic.h lacks are what the kernel's sources, and those of the guest additions, have.
constexpr std::array<std::uint32_t, 14> sharedFileSystems{
    NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC, CIFS_SUPER_MAGIC, SMB2_SUPER_MAGIC, NCP_SUPER_MAGIC,
    CODA_SUPER_MAGIC, AFS_SUPER_MAGIC, AFS_FS_MAGIC,     V9FS_MAGIC,       CEPH_SUPER_MAGIC,
    FUSE_SUPER_MAGIC,  // sshfs, virtiofs
    0x786F4256,        // vboxsf
    0xBACBACBC,        // vmhgfs
    0x0BD00BD0,        // Lustre
};

}  // namespace

bool isShared(const std::string& folder) {
    struct statfs disk {};
    return ::statfs(folder.c_str(), &disk) == 0 &&
           std::ranges::count(sharedFileSystems, static_cast<std::uint32_t>(disk.f_type)) > 0;
}

}  // namespace platform_linux::messenger
