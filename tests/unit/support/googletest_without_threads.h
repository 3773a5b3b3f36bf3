// Included before GoogleTest where the compiler's library has no std::mutex: what GoogleTest makes of it otherwise, for
// threads of its own that no test starts.
#pragma once

namespace testing::internal {

class Notification {
public:
    void Notify() {}
    void WaitForNotification() {}
};

}  // namespace testing::internal
