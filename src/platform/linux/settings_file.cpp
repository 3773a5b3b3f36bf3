#include "platform/linux/settings_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "runtime/text.h"

namespace platform_linux {

namespace {

using platform::SettingsRoot;
using platform::SettingsValue;

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

struct RootName {
    SettingsRoot root;
    std::string_view name;
    std::string_view longName;
};

constexpr std::array rootNames = {
    RootName{SettingsRoot::currentUser, "HKCU", "HKEY_CURRENT_USER"},
    RootName{SettingsRoot::localMachine, "HKLM", "HKEY_LOCAL_MACHINE"},
    RootName{SettingsRoot::classesRoot, "HKCR", "HKEY_CLASSES_ROOT"},
    RootName{SettingsRoot::users, "HKU", "HKEY_USERS"},
};

std::string_view nameOf(SettingsRoot root) {
    const auto* found =
        std::find_if(rootNames.begin(), rootNames.end(), [root](const RootName& entry) { return entry.root == root; });
    return found != rootNames.end() ? found->name : std::string_view{};
}

std::string_view trimmed(std::string_view text, std::string_view characters = blanks) {
    const std::size_t first = text.find_first_not_of(characters);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(characters) - first + 1);
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// Root and key as one path, separators once each, neither they nor blanks at the ends; empty for a root that there is
// not.
std::string pathOf(SettingsRoot root, std::string_view key) {
    std::string path(nameOf(root));
    key = trimmed(key, " \t\r\n\\");
    while (!path.empty() && !key.empty()) {
        const std::string_view part = key.substr(0, key.find('\\'));
        key.remove_prefix(std::min(part.size() + 1, key.size()));
        if (!part.empty()) {
            path.append("\\").append(part);
        }
    }
    return path;
}

// What is equal for names of the same key or value, however their letters are written.
std::string identityOf(SettingsRoot root, std::string_view key) { return runtime::upperCase(pathOf(root, key)); }

// The identity of the key that a header names; nothing where it cannot be understood.
std::optional<std::string> keyOfHeader(std::string_view line) {
    if (line.size() < 2 || line.back() != ']' || std::any_of(line.begin(), line.end(), isControl)) {
        return std::nullopt;
    }
    const std::string_view path = trimmed(line.substr(1, line.size() - 2));
    const std::size_t separator = std::min(path.find('\\'), path.size());
    const std::string root = runtime::upperCase(path.substr(0, separator));
    const auto* found = std::find_if(rootNames.begin(), rootNames.end(), [&root](const RootName& entry) {
        return entry.name == root || entry.longName == root;
    });
    return found == rootNames.end() ? std::nullopt
                                    : std::optional<std::string>(identityOf(found->root, path.substr(separator)));
}

struct Quoted {
    std::string text;
    std::size_t length = 0;  // of the quoted form, quotes included
};

// The text in double quotes at the beginning; nothing where the closing one is missing.
std::optional<Quoted> unquoted(std::string_view text) {
    constexpr std::string_view letters = "\\\"nrt";
    constexpr std::string_view meanings = "\\\"\n\r\t";
    Quoted result;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') {
            result.length = i + 1;
            return result;
        }
        const std::size_t escape =
            text[i] == '\\' && i + 1 < text.size() ? letters.find(text[i + 1]) : std::string_view::npos;
        if (escape != std::string_view::npos) {
            result.text += meanings[escape];
            ++i;
        } else {
            result.text += text[i];
        }
    }
    return std::nullopt;
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        switch (c) {
            case '\\':
            case '"':
                result.append(1, '\\').append(1, c);
                break;
            case '\n':
                result += "\\n";
                break;
            case '\r':
                result += "\\r";
                break;
            case '\t':
                result += "\\t";
                break;
            default:
                result += c;
        }
    }
    return result + '"';
}

// Length of a type such as "REG_DWORD" that the text begins with and a ":" follows; 0 for none.
std::size_t typeLength(std::string_view text) {
    constexpr std::string_view prefix = "REG_";
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || runtime::upperCase(text.substr(0, prefix.size())) != prefix) {
        return 0;
    }
    const std::string_view type = text.substr(0, colon);
    const bool isWord = std::all_of(type.begin(), type.end(), [](char c) {
        return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    });
    return isWord ? colon : 0;
}

bool needsQuotes(std::string_view text) {
    return text != trimmed(text) || text.starts_with('"') || std::any_of(text.begin(), text.end(), isControl);
}

std::string encoded(std::string_view text) {
    if (needsQuotes(text)) {
        return quoted(text);
    }
    return (typeLength(text) != 0 ? "REG_SZ:" : "") + std::string(text);
}

std::string encodedName(std::string_view name) {
    const bool special = name.empty() || name.find('=') != std::string_view::npos ||
                         std::string_view("[#;").find(name.front()) != std::string_view::npos;
    return special || needsQuotes(name) ? quoted(name) : std::string(name);
}

std::optional<std::string> textIn(std::string_view value) {
    if (!value.starts_with('"')) {
        return std::string(value);
    }
    std::optional<Quoted> result = unquoted(value);
    return result && result->length == value.size() ? std::optional(std::move(result->text)) : std::nullopt;
}

std::optional<std::uint32_t> numberIn(std::string_view value) {
    constexpr int decimal = 10;
    constexpr int hexadecimal = 16;
    const bool hex = value.starts_with("0x") || value.starts_with("0X");
    value.remove_prefix(hex ? 2 : 0);
    std::uint32_t number = 0;
    const char* const end = value.data() + value.size();
    const auto [last, error] = std::from_chars(value.data(), end, number, hex ? hexadecimal : decimal);
    return error == std::errc{} && last == end ? std::optional(number) : std::nullopt;
}

struct TypedValue {
    bool understood = false;
    std::optional<SettingsValue> value;
};

template <typename Content>
TypedValue typedValue(std::optional<Content> content) {
    if (!content) {
        return {};
    }
    return {true, SettingsValue(std::move(*content))};
}

TypedValue readValue(std::string_view value) {
    const std::size_t length = typeLength(value);
    if (length == 0) {
        return typedValue(textIn(value));
    }
    const std::string type = runtime::upperCase(value.substr(0, length));
    const std::string_view content = trimmed(value.substr(length + 1));
    if (type == "REG_SZ") {
        return typedValue(textIn(content));
    }
    return type == "REG_DWORD" ? typedValue(numberIn(content)) : TypedValue{true, std::nullopt};
}

struct ValueLine {
    std::string name;
    std::size_t equals = 0;
};

std::optional<ValueLine> readName(std::string_view line) {
    const std::size_t start = std::min(line.find_first_not_of(blanks), line.size());
    if (line.substr(start).starts_with('"')) {
        std::optional<Quoted> name = unquoted(line.substr(start));
        const std::size_t equals = name ? line.find_first_not_of(blanks, start + name->length) : std::string_view::npos;
        if (equals == std::string_view::npos || line[equals] != '=') {
            return std::nullopt;
        }
        return ValueLine{std::move(name->text), equals};
    }
    const std::size_t equals = line.find('=', start);
    if (equals == std::string_view::npos || equals == start) {
        return std::nullopt;
    }
    return ValueLine{std::string(trimmed(line.substr(start, equals - start))), equals};
}

}  // namespace

SettingsFile::SettingsFile(std::string_view text) {
    if (const std::size_t end = text.find('\n'); end != std::string_view::npos && end > 0 && text[end - 1] == '\r') {
        lineEnd_ = "\r\n";
    }
    Section* section = nullptr;
    bool first = true;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines_.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
        const auto line = std::prev(lines_.end());
        std::string_view content = *line;
        content.remove_prefix(std::exchange(first, false) && content.starts_with(byteOrderMark) ? byteOrderMark.size()
                                                                                                : 0);
        content = trimmed(content);
        if (content.starts_with('[')) {
            section = addSection(line, content);
        } else if (section != nullptr && !content.empty() && content.front() != '#' && content.front() != ';') {
            addValue(*section, line);
        }
    }
}

SettingsFile::Section* SettingsFile::addSection(Lines::iterator line, std::string_view header) {
    const std::optional<std::string> identity = keyOfHeader(header);
    if (!identity) {
        return nullptr;
    }
    for (std::size_t end = identity->size(); end != std::string::npos && end > 0;
         end = identity->rfind('\\', end - 1)) {
        keys_.insert(identity->substr(0, end));
    }
    Section& section = sections_[*identity];
    section.last = line;
    return &section;
}

void SettingsFile::addValue(Section& section, Lines::iterator line) {
    section.last = line;
    const std::optional<ValueLine> named = readName(*line);
    if (!named || line->find('\0') != std::string::npos) {
        return;
    }
    TypedValue typed = readValue(trimmed(std::string_view(*line).substr(named->equals + 1)));
    if (typed.understood) {
        const std::size_t valueAt = line->find_first_not_of(blanks, named->equals + 1);
        section.values[runtime::upperCase(named->name)] = {
            line, valueAt != std::string::npos ? valueAt : named->equals + 1, std::move(typed.value)};
    }
}

const SettingsFile::Section* SettingsFile::find(SettingsRoot root, std::string_view key) const {
    const auto found = sections_.find(identityOf(root, key));
    return found != sections_.end() ? &found->second : nullptr;
}

bool SettingsFile::keyExists(SettingsRoot root, std::string_view key) const {
    const std::string identity = identityOf(root, key);
    const bool isRoot = !identity.empty() && identity == nameOf(root);
    return isRoot || keys_.contains(identity);
}

std::optional<SettingsValue> SettingsFile::value(SettingsRoot root, std::string_view key, std::string_view name) const {
    const Section* section = find(root, key);
    if (section == nullptr) {
        return std::nullopt;
    }
    const auto found = section->values.find(runtime::upperCase(name));
    return found != section->values.end() ? found->second.value : std::nullopt;
}

SettingsFile::Section& SettingsFile::appendSection(const std::string& path) {
    if (!lines_.empty()) {
        if (!lines_.back().ends_with('\n')) {
            lines_.back() += lineEnd_;
        }
        if (!trimmed(lines_.back()).empty()) {
            lines_.push_back(lineEnd_);
        }
    }
    const std::string header = "[" + path + "]";
    lines_.push_back(header + lineEnd_);
    return *addSection(std::prev(lines_.end()), header);
}

SettingsFile::Change SettingsFile::setText(SettingsRoot root, std::string_view key, std::string_view name,
                                           std::string_view text) {
    text = text.substr(0, text.find('\0'));
    if (nameOf(root).empty() || std::any_of(key.begin(), key.end(), isControl) ||
        name.find('\0') != std::string_view::npos) {
        return Change::impossible;
    }
    const auto known = sections_.find(identityOf(root, key));
    Section& section = known != sections_.end() ? known->second : appendSection(pathOf(root, key));
    const auto found = section.values.find(runtime::upperCase(name));
    if (found == section.values.end()) {
        if (!section.last->ends_with('\n')) {
            *section.last += lineEnd_;
        }
        const auto line = lines_.insert(std::next(section.last), encodedName(name) + "=" + encoded(text) + lineEnd_);
        addValue(section, line);
        return Change::made;
    }
    Value& value = found->second;
    if (value.value == SettingsValue(std::string(text))) {
        return Change::none;
    }
    const std::size_t end = std::min(value.line->find_last_not_of(blanks) + 1, value.line->size());
    const std::string lineEnd = value.line->substr(std::max(end, value.valueAt));
    value.line->replace(value.valueAt, std::string::npos, encoded(text) + lineEnd);
    value.value = SettingsValue(std::string(text));
    return Change::made;
}

std::string SettingsFile::text() const {
    std::string result;
    for (const std::string& line : lines_) {
        result += line;
    }
    return result;
}

}  // namespace platform_linux
