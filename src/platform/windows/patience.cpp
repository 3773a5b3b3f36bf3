#include "platform/windows/patience.h"

#include <array>

namespace platform_windows {

namespace {

template <std::size_t count>
bool isOneOf(const std::array<DWORD, count>& codes, DWORD error) noexcept {
    return std::find(codes.begin(), codes.end(), error) != codes.end();
}

}  // namespace

bool isInUse(DWORD error) noexcept {
    constexpr std::array<DWORD, 8> codes = {
        ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_USER_MAPPED_FILE, ERROR_DELETE_PENDING,
        ERROR_NETWORK_BUSY,      ERROR_UNEXP_NET_ERR,  ERROR_NETNAME_DELETED,  ERROR_VC_DISCONNECTED,
    };
    return isOneOf(codes, error);
}

bool isInUse(DWORD error, const std::wstring& path) {
    return isInUse(error) || (error == ERROR_ACCESS_DENIED &&
                              openFile(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING).error == ERROR_ACCESS_DENIED);
}

bool mayBeInUse(DWORD error) noexcept {
    constexpr std::array<DWORD, 4> codes = {
        ERROR_ACCESS_DENIED,
        ERROR_UNABLE_TO_REMOVE_REPLACED,
        ERROR_UNABLE_TO_MOVE_REPLACEMENT,
        ERROR_UNABLE_TO_MOVE_REPLACEMENT_2,
    };
    return isInUse(error) || isOneOf(codes, error);
}

OpenedFile openPatiently(DWORD patience, const std::wstring& path, DWORD access, DWORD disposition) {
    OpenedFile result;
    const auto mayPass = [&](DWORD error) { return isInUse(error, path); };
    patiently(patience, mayPass, [&] {
        result = openFile(path, access, disposition);
        return result.error;
    });
    return result;
}

}  // namespace platform_windows
