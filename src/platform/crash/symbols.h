// The names of a program's or module's own routines, from the table that cmake/link_with_symbols.py puts into the file.
#pragma once

#include <cstdint>
#include <string_view>

namespace platform::crash {

// A table as 32-bit words: how many routines there are; four words with the identity of the code, 16 hexadecimal
// digits, the same for the same code; where each routine begins, in bytes from where the file is loaded, ascending;
// where its name begins among the names; the names, each with a zero behind it. Code of libraries that are linked in
// has empty names.
using SymbolTable = const std::uint32_t*;

// Name and distance from its beginning of the routine at a place of the code, "report.MPrint.DoReport"; an empty name
// where the table, which may be null, knows none.
struct Routine {
    std::string_view name;
    std::uint32_t offset = 0;
};
Routine routineAt(SymbolTable table, std::uintptr_t place) noexcept;

// Empty for null.
std::string_view identityOf(SymbolTable table) noexcept;

}  // namespace platform::crash

// That of the program, or of the module that this is linked into.
extern "C" const std::uint32_t krvwinpr_symbols[];
