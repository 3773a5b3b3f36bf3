#include "platform/windows/messenger/order_rights.h"

#include <aclapi.h>

#include "platform/windows/file_owner.h"
#include "platform/windows/handle.h"

namespace platform_windows::messenger {

namespace {

struct Security {
    PSID owner = nullptr;
    PACL rights = nullptr;
    LocalMemory memory;
};

Security securityOf(HANDLE file, SECURITY_INFORMATION what) {
    Security security;
    PSECURITY_DESCRIPTOR memory = nullptr;
    if (::GetSecurityInfo(file, SE_FILE_OBJECT, what, &security.owner, nullptr, &security.rights, nullptr, &memory) !=
        ERROR_SUCCESS) {
        return {};
    }
    security.memory.reset(memory);
    return security;
}

bool isOfTheSystem(PSID owner) {
    return ::IsWellKnownSid(owner, WinBuiltinAdministratorsSid) != 0 || ::IsWellKnownSid(owner, WinLocalSystemSid) != 0;
}

bool mayAddFiles(PACL rights, PSID who) {
    TRUSTEE_W trustee{};
    trustee.TrusteeForm = TRUSTEE_IS_SID;
    trustee.ptstrName = static_cast<wchar_t*>(who);
    ACCESS_MASK allowed = 0;
    return ::GetEffectiveRightsFromAclW(rights, &trustee, &allowed) != ERROR_SUCCESS || (allowed & FILE_ADD_FILE) != 0;
}

}  // namespace

bool ownerMayUseFolder(HANDLE file, const wchar_t* folder) {
    const Security order = securityOf(file, OWNER_SECURITY_INFORMATION);
    if (order.owner == nullptr || isUser(order.owner) || isOfTheSystem(order.owner)) {
        return true;
    }
    const FileHandle place(::CreateFileW(folder, READ_CONTROL, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const Security around = securityOf(place.get(), OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION);
    return around.rights == nullptr || (around.owner != nullptr && ::EqualSid(around.owner, order.owner) != 0) ||
           mayAddFiles(around.rights, order.owner);
}

}  // namespace platform_windows::messenger
