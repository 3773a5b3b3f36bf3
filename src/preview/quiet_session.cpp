#include "preview/quiet_session.h"

#include <algorithm>

namespace preview {

platform::Answer CollectingDialogs::messageBox(const std::string& text, platform::Buttons buttons,
                                               platform::Icon /*icon*/, const std::string& /*title*/) {
    add(text);
    return buttons == platform::Buttons::yesNo ? platform::Answer::yes : platform::Answer::ok;
}

// A message that cannot be kept for want of memory is dropped, since no message may fail.
void CollectingDialogs::add(const std::string& text) {
    try {
        if (std::find(texts_.begin(), texts_.end(), text) == texts_.end()) {
            texts_.push_back(text);
        }
    } catch (const std::bad_alloc&) {
        real_.outOfMemory();
    }
}

QuietSession::QuietSession(session::Session& whole)
    : dialogs_(whole.platform.dialogs),
      ports_{whole.platform.system,
             whole.platform.settings,
             whole.platform.spooler,
             whole.platform.printJobs,
             dialogs_,
             whole.platform.imageFiles,
             whole.platform.userFiles,
             whole.platform.forms,
             whole.platform.xmlFiles,
             whole.platform.errorReports},
      session_(ports_, whole) {}

}  // namespace preview
