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
    constexpr std::array<DWORD, 7> codes = {
        ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION,  ERROR_USER_MAPPED_FILE, ERROR_NETWORK_BUSY,
        ERROR_UNEXP_NET_ERR,     ERROR_NETNAME_DELETED, ERROR_VC_DISCONNECTED,
    };
    return isOneOf(codes, error);
}

bool mayBeInUse(DWORD error) noexcept {
    constexpr std::array<DWORD, 5> codes = {
        ERROR_ACCESS_DENIED,
        ERROR_DELETE_PENDING,
        ERROR_UNABLE_TO_REMOVE_REPLACED,
        ERROR_UNABLE_TO_MOVE_REPLACEMENT,
        ERROR_UNABLE_TO_MOVE_REPLACEMENT_2,
    };
    return isInUse(error) || isOneOf(codes, error);
}

}  // namespace platform_windows
