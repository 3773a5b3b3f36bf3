// Who started the program, where that is the messenger of hosts inside an emulator.
#pragma once

namespace platform_linux {

// The environment variable with the number of a pipe's descriptor that the program inherits.
inline constexpr const char* starterVariable = "KRVWINPR_STARTER";

// Takes over the descriptor from the environment, so that no program that this one starts has either.
class Starter {
public:
    Starter();
    Starter(const Starter&) = delete;
    Starter& operator=(const Starter&) = delete;
    ~Starter();

    // Says that the completion file is written: one byte.
    void tellCompletion() noexcept;

private:
    int descriptor_ = -1;
};

}  // namespace platform_linux
