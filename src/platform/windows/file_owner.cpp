#include "platform/windows/file_owner.h"

#include <windows.h>

#include <vector>

#include "platform/windows/handle.h"

namespace platform_windows {

namespace {

using Record = std::vector<DWORD>;  // aligned as records of the system are

// A record of the system whose size is asked for first; empty where it does not tell.
template <typename Ask>
Record recordOf(const Ask& ask) {
    DWORD bytes = 0;
    ask(nullptr, 0, bytes);
    Record record((bytes + sizeof(DWORD) - 1) / sizeof(DWORD));
    return bytes != 0 && ask(record.data(), bytes, bytes) != 0 ? record : Record();
}

PSID sidOf(const Record& token) { return token.empty() ? nullptr : *reinterpret_cast<const PSID*>(token.data()); }

// Both records of a token, of its user and of what he makes, begin with the identifier.
bool isOfToken(HANDLE token, TOKEN_INFORMATION_CLASS kind, PSID owner) {
    const Record record = recordOf(
        [&](void* to, DWORD size, DWORD& needed) { return ::GetTokenInformation(token, kind, to, size, &needed); });
    return sidOf(record) != nullptr && ::EqualSid(sidOf(record), owner) != 0;
}

}  // namespace

bool isUsersOwn(const std::wstring& path) {
    Record security = recordOf([&](void* to, DWORD size, DWORD& needed) {
        return ::GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, to, size, &needed);
    });
    PSID owner = nullptr;
    BOOL inherited = FALSE;
    if (security.empty() || ::GetSecurityDescriptorOwner(security.data(), &owner, &inherited) == 0 ||
        owner == nullptr) {
        return true;
    }
    return isUser(owner);
}

bool isUser(void* owner) {
    KernelHandle token;
    if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, token.receive()) == 0) {
        return true;
    }
    return isOfToken(token.get(), TokenUser, owner) || isOfToken(token.get(), TokenOwner, owner);
}

}  // namespace platform_windows
