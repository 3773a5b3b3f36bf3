// Port: the user's settings, keys and typed values as a registry has them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace platform {

enum class SettingsRoot : std::uint32_t {
    classesRoot = 0x80000000,
    currentUser = 0x80000001,
    localMachine = 0x80000002,
    users = 0x80000003,
};

// A value that the program reads: text (REG_SZ, UTF-8) or a 32-bit number (REG_DWORD). Any other type has no value
// here and counts as missing.
using SettingsValue = std::variant<std::string, std::uint32_t>;

// Keys are paths with "\" between the parts, without the root. Key and value names are compared without regard to
// case. Reading never throws; a store that cannot be read is empty. Access: query, set, create, enumerate.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    virtual bool keyExists(SettingsRoot root, std::string_view key) = 0;

    // The value, or nothing where key or value is missing or is of another type.
    virtual std::optional<SettingsValue> value(SettingsRoot root, std::string_view key, std::string_view name) = 0;

    // Sets a text value (REG_SZ), creating the key and those above it. Seen by the following reads at once; false where
    // it is known to have failed.
    virtual bool setText(SettingsRoot root, std::string_view key, std::string_view name, std::string_view text) = 0;

    // Makes what was set durable, as one step: afterwards the store holds all of it or, where it could not be written,
    // what it held before (false). Values that others wrote meanwhile stay. The destructor does the same.
    virtual bool commit() = 0;

    // Where the settings are kept, as a message names it to the user.
    virtual std::string place() = 0;
};

}  // namespace platform
