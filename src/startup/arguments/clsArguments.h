// The arguments of the command line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace startup {

// Split at single spaces, so two in a row hold an empty argument between them. Text in double quotes replaces what was
// gathered before the quote, and what follows the closing quote is added to it; a quote without its partner takes the
// rest of the line. There is no escape.
class clsArguments {
public:
    // The command line behind the program's name.
    explicit clsArguments(std::string_view commandTail);

    std::size_t Count() const { return arguments_.size(); }

    // The argument at a position from 1; empty where there is none.
    std::string Item(std::size_t position) const;

    // Removes the argument at a position from 1; nothing where there is none.
    void Remove(std::size_t position);

    // Removes every argument whose upper-cased text is the name.
    void Remove(std::string_view name);

    auto begin() const { return arguments_.begin(); }
    auto end() const { return arguments_.end(); }

private:
    std::vector<std::string> arguments_;
};

}  // namespace startup
