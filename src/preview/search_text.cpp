#include "preview/search_text.h"

#include <map>

#include "preview/page_text.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace preview {

namespace {

constexpr std::size_t bytes = 256;

bool separates(unsigned char byte) { return isBlank(byte) || byte == '\n'; }

}  // namespace

// Of bytes that mean the same character the first one stands for all.
SearchText::SearchText(platform::System& system, std::string_view text) {
    std::array<std::string, bytes> characters;
    std::map<std::string, unsigned char> byteOf;
    for (std::size_t byte = 0; byte < bytes; ++byte) {
        characters[byte] = system.fromDosCodePage(std::string(1, static_cast<char>(byte)));
        byteOf.try_emplace(characters[byte], static_cast<unsigned char>(byte));
    }
    for (std::size_t byte = 0; byte < bytes; ++byte) {
        const auto capital = byteOf.find(runtime::upperCase(characters[byte]));
        const unsigned char folded = capital != byteOf.end() ? capital->second : byteOf[characters[byte]];
        folded_[byte] = separates(static_cast<unsigned char>(byte)) ? ' ' : static_cast<char>(folded);
    }
    while (!text.empty()) {
        const std::string_view before = text;
        runtime::takeCharacter(text);
        const std::string character(before.substr(0, before.size() - text.size()));
        const auto known = byteOf.find(character);
        if (known == byteOf.end()) {
            sought_.clear();
            return;
        }
        const char byte = folded_[known->second];
        if (byte != ' ' || sought_.empty() || sought_.back() != ' ') {
            sought_ += byte;
        }
    }
}

void SearchText::fold(std::string_view plainText) {
    page_.resize(plainText.size());
    char* end = page_.data();
    char last = 0;
    for (const char byte : plainText) {
        const char folded = folded_[static_cast<unsigned char>(byte)];
        *end = folded;
        end += folded != ' ' || last != ' ' ? 1 : 0;
        last = folded;
    }
    page_.resize(static_cast<std::size_t>(end - page_.data()));
}

void SearchText::find(std::string_view plainText, std::vector<Place>& places) {
    if (!possible()) {
        return;
    }
    fold(plainText);
    if (page_.find(sought_) != std::string::npos) {
        locate(plainText, places);
    }
}

// Goes along the text and its folded form together, which is shorter where blanks stand together.
void SearchText::locate(std::string_view plainText, std::vector<Place>& places) const {
    std::size_t plain = 0;
    std::size_t folded = 0;
    const auto goTo = [&](std::size_t target) {
        for (; folded < target; ++folded) {
            const bool blank = page_[folded] == ' ';
            ++plain;
            while (blank && plain < plainText.size() && separates(static_cast<unsigned char>(plainText[plain]))) {
                ++plain;
            }
        }
        return plain;
    };
    for (std::size_t at = page_.find(sought_); at != std::string::npos; at = page_.find(sought_, at + sought_.size())) {
        const std::size_t begin = goTo(at);
        places.push_back({begin, goTo(at + sought_.size()) - begin});
    }
}

}  // namespace preview
