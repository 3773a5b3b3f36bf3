// What a running job calls so that windows stay alive.
#pragma once

#include <functional>

namespace report {

// Lets pending events of windows be processed while a job prints. Whoever starts the job knows which ones may be: a
// window that started it must be neither closed meanwhile nor start another one.
using LetEventsRun = std::function<void()>;

}  // namespace report
