// The routines that were under way, as addresses: what a procedure trace is made of.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform::crash {

// Of an endless recursion the ends: the innermost routines, where it happened, and the outermost ones.
class Trace {
public:
    static constexpr std::size_t mostInner = 48;
    static constexpr std::size_t mostOuter = 32;

    void clear() noexcept { count_ = 0; }

    // From the innermost routine outward. Exact is the address of an instruction itself, not one to be returned to.
    void add(std::uintptr_t address, bool exact = false) noexcept {
        // An address to return to may lie behind its routine already, where that never returns.
        const std::uintptr_t within = address - (exact || address == 0 ? 0 : 1);
        if (count_ < mostInner) {
            inner_[count_] = within;
        } else {
            outer_[(count_ - mostInner) % mostOuter] = within;
        }
        ++count_;
    }

    std::size_t size() const noexcept { return count_; }
    // Routines between the inner and the outer ones that are not kept.
    std::size_t leftOut() const noexcept { return count_ > mostInner + mostOuter ? count_ - mostInner - mostOuter : 0; }
    // The address within a routine; 0 is the innermost one. None of those left out.
    std::uintptr_t at(std::size_t index) const noexcept {
        return index < mostInner ? inner_[index] : outer_[(index - mostInner) % mostOuter];
    }

private:
    std::array<std::uintptr_t, mostInner> inner_{};
    std::array<std::uintptr_t, mostOuter> outer_{};
    std::size_t count_ = 0;
};

}  // namespace platform::crash
