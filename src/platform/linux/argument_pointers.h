// Texts as the calls that start programs take them.
#pragma once

#include <string>
#include <vector>

namespace platform_linux {

// Ended by a null pointer. The texts must outlive it.
inline std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace platform_linux
