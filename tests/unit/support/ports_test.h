// What the tests of the ports System, SettingsStore and Dialogs need on every system.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/dialogs.h"
#include "platform/settings_store.h"
#include "platform/system.h"
#include "unit/support/adapter_test.h"

namespace support {

// The system's own, for a German user whose DOS code page is 850.
platform::System& systemPort();

// A path, in that folder or anywhere, at which there is something other than a file or a folder.
std::string deviceIn(const TemporaryFolder& folder);

// Whether it only stands for the system that the table of profiles was made on.
bool onWine();

// A place for settings that holds none yet; gone with the object.
class SettingsPlace {
public:
    virtual ~SettingsPlace() = default;
    virtual std::unique_ptr<platform::SettingsStore> open() = 0;
};
std::unique_ptr<SettingsPlace> makeSettingsPlace();

// What the system's dialogs write to standard error where nobody sees a window; UTF-8, lines end with "\n".
std::string writtenBy(const std::function<void(platform::Dialogs&)>& function);

}  // namespace support
