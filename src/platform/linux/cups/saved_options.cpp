#include "platform/linux/cups/saved_options.h"

#include <cups/cups.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

#include "runtime/text.h"

namespace platform_linux::cups {

namespace {

// What the job says itself, under all the names that queues and their filters know.
constexpr std::array paperNames = {"media", "media-col", "media-size", "PageSize", "PageRegion"};
constexpr std::array layoutNames = {
    "orientation-requested", "landscape",      "print-scaling", "fit-to-page", "fitplot", "fill", "scaling",
    "crop-to-fit",           "natural-scaling"};
constexpr std::array colorNames = {"print-color-mode", "output-mode", "ColorModel",
                                   "ColorMode",        "HPColorMode", "BRMonoColor"};
constexpr std::array documentNames = {"raw", "document-format", "job-name", "device-uri", "auth-info-required"};
constexpr std::array driverSourceNames = {"InputSlot", "HPPaperSource", "ManualFeed"};
constexpr const char* sourceName = "media-source";
// In the values of the colour options.
constexpr std::array grayWords = {"GRAY", "GREY", "MONO", "BLACK", "BI-LEVEL"};

bool same(const std::string& one, const std::string& other) { return ::strcasecmp(one.c_str(), other.c_str()) == 0; }

template <typename Names>
bool isOneOf(const std::string& name, const Names& names) {
    return std::any_of(names.begin(), names.end(), [&name](const std::string& other) { return same(name, other); });
}

void parseInto(Options& options, const std::string& text) {
    cups_option_t* list = nullptr;
    const int count = cupsParseOptions(text.c_str(), 0, &list);
    for (int i = 0; i < count; ++i) {
        options[list[i].name] = list[i].value;
    }
    cupsFreeOptions(count, list);
}

const std::string* find(const Options& options, const std::string& name) {
    const auto found =
        std::find_if(options.begin(), options.end(), [&name](const auto& option) { return same(option.first, name); });
    return found != options.end() ? &found->second : nullptr;
}

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

// The words of saved paper among which a source may be: "A4,tray-2", or the member of a collection.
std::vector<std::string> sourceWords(const Options& saved) {
    std::vector<std::string> words;
    if (const std::string* source = find(saved, sourceName)) {
        words.push_back(*source);
    }
    if (const std::string* collection = find(saved, "media-col")) {
        Options members;
        parseInto(members, *collection);
        if (const std::string* source = find(members, sourceName)) {
            words.push_back(*source);
        }
    }
    if (const std::string* media = find(saved, "media")) {
        std::istringstream list(*media);
        for (std::string word; std::getline(list, word, ',');) {
            words.push_back(word);
        }
    }
    return words;
}

bool namesDriverSource(const Options& saved) {
    return std::any_of(saved.begin(), saved.end(),
                       [](const auto& option) { return isOneOf(option.first, driverSourceNames); });
}

bool isGray(const std::string& value) {
    const std::string upper = runtime::upperCase(value);
    return std::any_of(grayWords.begin(), grayWords.end(),
                       [&upper](const char* word) { return upper.find(word) != std::string::npos; });
}

}  // namespace

Options savedIn(const std::string& file, const std::string& queue, const std::string& instance) {
    const std::string wanted = instance.empty() ? queue : queue + '/' + instance;
    Options result;
    std::istringstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string kind;
        std::string name;
        std::string options;
        words >> kind >> name;
        std::getline(words, options);
        if ((same(kind, "Dest") || same(kind, "Default")) && same(name, wanted)) {
            parseInto(result, options);
        }
    }
    return result;
}

Options savedOptions(const std::string& queue, const std::string& instance) {
    const auto folder = [](const char* variable, const char* otherwise) {
        const char* value = std::getenv(variable);
        return std::string(value != nullptr ? value : otherwise);
    };
    Options result = savedIn(contentOf(folder("CUPS_SERVERROOT", "/etc/cups") + "/lpoptions"), queue, instance);
    for (auto& [name, value] : savedIn(contentOf(folder("HOME", "") + "/.cups/lpoptions"), queue, instance)) {
        result[name] = value;
    }
    return result;
}

std::optional<int> savedColorMode(const Options& saved) {
    for (const char* name : colorNames) {
        if (const std::string* value = find(saved, name); value != nullptr && !same(*value, "auto")) {
            return isGray(*value) ? 1 : 2;
        }
    }
    return std::nullopt;
}

bool haveSource(const Options& saved) { return !sourceWords(saved).empty(); }

std::string savedSource(const Options& saved, const std::vector<std::string>& sources) {
    if (!namesDriverSource(saved)) {
        const std::vector<std::string> words = sourceWords(saved);
        const auto found = std::find_if(sources.begin(), sources.end(),
                                        [&words](const std::string& source) { return isOneOf(source, words); });
        return found != sources.end() ? *found : std::string();
    }
    return {};
}

void addSaved(Options& job, const Options& saved, bool jobHasSource, int colorMode) {
    const std::optional<int> asked = savedColorMode(saved);
    for (const auto& [name, value] : saved) {
        const bool isSource = same(name, sourceName) || isOneOf(name, driverSourceNames);
        const bool isColor = isOneOf(name, colorNames);
        if (!isOneOf(name, paperNames) && !isOneOf(name, layoutNames) && !isOneOf(name, documentNames) &&
            !name.starts_with("printer-") && !(isSource && jobHasSource) && !(isColor && asked != colorMode)) {
            job.emplace(name, value);
        }
    }
}

}  // namespace platform_linux::cups
