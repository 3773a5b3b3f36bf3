#include "platform/linux/fonts/font_answers.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>

#include "platform/linux/fonts/fields.h"

namespace platform_linux::fonts {

namespace {

constexpr std::string_view head = "KRVWinPr, Antworten auf Fragen nach Zeichensaetzen, 1";

// FNV-1a, 64 bits (draft-eastlake-fnv, section 2): against damage, not against anybody.
std::string checkOf(std::string_view text) {
    constexpr std::uint64_t offsetBasis = 0xCBF29CE484222325;
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t hash = offsetBasis;
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * prime;
    }
    return std::to_string(hash);
}

}  // namespace

FileStamp stampOf(std::string path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return {std::move(path), "-"};
    }
    std::string state = std::to_string(status.st_size) + ' ' + std::to_string(status.st_mtim.tv_sec) + '.' +
                        std::to_string(status.st_mtim.tv_nsec) + ' ' + std::to_string(status.st_ino);
    return {std::move(path), std::move(state)};
}

bool stillHold(const KeptAnswers& kept, std::string_view environmentNow) {
    return kept.environment == environmentNow && std::ranges::all_of(kept.stamps, [](const FileStamp& stamp) {
               return stampOf(stamp.path).state == stamp.state;
           });
}

std::string textOf(const KeptAnswers& kept) {
    Fields fields;
    fields.add(head);
    fields.add(kept.environment);
    fields.add(std::to_string(kept.stamps.size()));
    for (const FileStamp& stamp : kept.stamps) {
        fields.add(stamp.path);
        fields.add(stamp.state);
    }
    fields.add(std::to_string(kept.answers.size()));
    for (const FontAnswer& answer : kept.answers) {
        fields.add(answer.family);
        fields.add(answer.bold);
        fields.add(answer.italic);
        fields.add(answer.fonts);
    }
    const std::string check = checkOf(fields.text());
    fields.add(check);
    return std::move(fields).text();
}

std::optional<KeptAnswers> keptAnswers(std::string_view text) {
    if (text.size() < 2 || text.back() != Fields::end) {
        return std::nullopt;
    }
    const std::size_t check = text.rfind(Fields::end, text.size() - 2) + 1;
    if (text.substr(check, text.size() - check - 1) != checkOf(text.substr(0, check))) {
        return std::nullopt;
    }
    TakenFields fields(text.substr(0, check));
    if (fields.take() != head) {
        return std::nullopt;
    }
    KeptAnswers kept;
    kept.environment = fields.take();
    kept.stamps.resize(fields.takeCount());
    for (FileStamp& stamp : kept.stamps) {
        stamp.path = fields.take();
        stamp.state = fields.take();
    }
    kept.answers.resize(fields.takeCount());
    for (FontAnswer& answer : kept.answers) {
        answer.family = fields.take();
        answer.bold = fields.takeFlag();
        answer.italic = fields.takeFlag();
        answer.fonts = fields.takeFonts();
    }
    return kept;
}

}  // namespace platform_linux::fonts
