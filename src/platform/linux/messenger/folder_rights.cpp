#include "platform/linux/messenger/folder_rights.h"

#include <endian.h>
#include <grp.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace platform_linux::messenger {

namespace {

struct Right {
    int holder = 0;  // a tag of linux/posix_acl.h
    unsigned int permissions = 0;
    id_t number = 0;  // of the user or group
};

std::vector<Right> rightsOfMode(mode_t mode) {
    constexpr unsigned int bits = 3;
    return {{ACL_USER_OBJ, mode >> (2 * bits), 0}, {ACL_GROUP_OBJ, mode >> bits, 0}, {ACL_OTHER, mode, 0}};
}

// None where the folder has no list.
std::vector<Right> rightsOfList(int folder) {
    constexpr std::size_t most = 4096;
    std::array<char, most> list{};
    const ssize_t length = ::fgetxattr(folder, "system.posix_acl_access", list.data(), list.size());
    std::vector<Right> rights;
    posix_acl_xattr_entry entry{};
    for (std::size_t at = sizeof(posix_acl_xattr_header);
         length > 0 && at + sizeof(entry) <= static_cast<std::size_t>(length); at += sizeof(entry)) {
        std::memcpy(&entry, list.data() + at, sizeof(entry));
        rights.push_back({le16toh(entry.e_tag), le16toh(entry.e_perm), le32toh(entry.e_id)});
    }
    return rights;
}

std::vector<gid_t> groupsOf(uid_t user) {
    const passwd* known = ::getpwuid(user);
    if (known == nullptr) {
        return {};
    }
    constexpr std::size_t usual = 64;
    std::vector<gid_t> groups(usual);
    int count = static_cast<int>(groups.size());
    if (::getgrouplist(known->pw_name, known->pw_gid, groups.data(), &count) < 0) {
        groups.resize(static_cast<std::size_t>(std::max(count, 0)));
        count = std::max(::getgrouplist(known->pw_name, known->pw_gid, groups.data(), &count), 0);
    }
    groups.resize(static_cast<std::size_t>(count));
    return groups;
}

}  // namespace

bool mayWrite(uid_t user, int folder) {
    struct stat status {};
    if (user == 0 || user == ::geteuid()) {
        return true;
    }
    if (::fstat(folder, &status) != 0) {
        return false;
    }
    std::vector<Right> rights = rightsOfList(folder);
    if (rights.empty()) {
        rights = rightsOfMode(status.st_mode);
    }
    const std::vector<gid_t> groups = groupsOf(user);
    const auto isMember = [&groups](gid_t group) { return std::ranges::count(groups, group) > 0; };
    const auto mask = std::ranges::find(rights, ACL_MASK, &Right::holder);
    const unsigned int most = mask != rights.end() ? mask->permissions : ~0U;
    return std::ranges::any_of(rights, [&](const Right& right) {
        const bool writes = (right.permissions & ACL_WRITE) != 0;
        const bool writesMasked = writes && (most & ACL_WRITE) != 0;
        return (right.holder == ACL_USER_OBJ && writes && user == status.st_uid) ||
               (right.holder == ACL_USER && writesMasked && user == right.number) ||
               (right.holder == ACL_GROUP_OBJ && writesMasked && isMember(status.st_gid)) ||
               (right.holder == ACL_GROUP && writesMasked && isMember(right.number)) ||
               (right.holder == ACL_OTHER && writes);
    });
}

}  // namespace platform_linux::messenger
