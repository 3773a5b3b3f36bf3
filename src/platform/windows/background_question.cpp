#include "platform/windows/background_question.h"

#include <memory>
#include <utility>

namespace platform_windows {

namespace {

DWORD WINAPI run(void* parameter) noexcept {
    const std::unique_ptr<std::function<void()>> question(static_cast<std::function<void()>*>(parameter));
    (*question)();
    return 0;
}

}  // namespace

BackgroundQuestion::BackgroundQuestion(std::function<void()> question) {
    auto parameter = std::make_unique<std::function<void()>>(std::move(question));
    thread_ = KernelHandle(::CreateThread(nullptr, 0, run, parameter.get(), 0, nullptr));
    if (thread_) {
        static_cast<void>(parameter.release());  // the thread has it
    }
}

bool BackgroundQuestion::isAnswered(DWORD within) const noexcept {
    return thread_ && ::WaitForSingleObject(thread_.get(), within) == WAIT_OBJECT_0;
}

}  // namespace platform_windows
