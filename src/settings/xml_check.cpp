#include "settings/xml_check.h"

#include <algorithm>
#include <array>

#include "runtime/text.h"
#include "runtime/utf8.h"

namespace settings {

namespace {

constexpr std::size_t mostLevels = 16;
constexpr std::size_t mostAttributes = 64;  // of one element
constexpr std::size_t largestTypeDeclaration = 4 << 10;
constexpr std::size_t longestContentModel = 256;  // with its declaration; nested or long ones cost a parser minutes
constexpr std::size_t mostOfTypeDeclarations = 4 << 20;  // their size times the elements
constexpr std::size_t longestEncodingName = 40;
constexpr std::string_view blanks = " \t\r\n";

// Markup is ASCII in every encoding that is read here, so the rest need not be told apart.
constexpr char beyondAscii = '\x80';

struct Refusal {
    std::string reason;
};
[[noreturn]] void refuse(std::string reason) { throw Refusal{std::move(reason)}; }

std::string ofUtf16(std::string_view units, bool littleEndian) {
    std::string result(units.size() / 2, '\0');
    for (std::size_t i = 0; i < result.size(); ++i) {
        const char low = units[2 * i + (littleEndian ? 0 : 1)];
        const char high = units[2 * i + (littleEndian ? 1 : 0)];
        result[i] = high == 0 && static_cast<unsigned char>(low) < 0x80 ? low : beyondAscii;
    }
    return result;
}

// Goes through a text from its front.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    std::string_view rest() const { return rest_; }
    char next() const { return rest_.empty() ? '\0' : rest_.front(); }
    bool skip(std::string_view expected) {
        const bool found = rest_.starts_with(expected);
        rest_.remove_prefix(found ? expected.size() : 0);
        return found;
    }
    bool skipBlanks() {
        const std::size_t before = rest_.size();
        take(rest_.find_first_not_of(blanks));
        return rest_.size() < before;
    }
    std::string_view until(std::string_view ends) { return take(rest_.find_first_of(ends)); }
    // To behind the end; to the end of the text where there is none, of which the parser complains.
    void skipBehind(std::string_view end) {
        take(rest_.find(end));
        skip(end);
    }
    // A value with its quotes.
    std::string_view quoted() {
        const char quote = next();
        rest_.remove_prefix(1);
        const std::string_view value = take(rest_.find(quote));
        skip({&quote, 1});
        return value;
    }
    // What may stand everywhere and holds no markup.
    bool skipComment() {
        for (const auto& [begin, end] : {std::pair<std::string_view, std::string_view>{"<!--", "-->"}, {"<?", "?>"}}) {
            if (skip(begin)) {
                skipBehind(end);
                return true;
            }
        }
        return false;
    }
    // The rest of a tag or declaration, whose quotes may hold its end; how many values it has. The last character
    // before the end is left in last.
    std::size_t skipTag(char& last) {
        std::size_t values = 0;
        last = '\0';
        while (!rest_.empty()) {
            const std::string_view before = until("\"'>");
            last = before.empty() ? last : before.back();
            if (next() == '>' || rest_.empty()) {
                skip(">");
                break;
            }
            quoted();
            ++values;
            last = '"';
        }
        return values;
    }

private:
    std::string_view take(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest_;
};

constexpr const char* badDeclaration =
    "Die XML-Deklaration am Anfang der Datei ist fehlerhaft oder nicht von Version 1.0";
constexpr const char* saveAsUtf8 = "; bitte als UTF-8 speichern";

// The value of the declaration's next part, "name = 'value'"; empty where that is another one.
std::string_view partOf(Scanner& declaration, std::string_view name) {
    Scanner part = declaration;
    if (!part.skipBlanks() || !part.skip(name)) {
        return {};
    }
    part.skipBlanks();
    const bool equals = part.skip("=");
    part.skipBlanks();
    if (!equals || (part.next() != '"' && part.next() != '\'')) {
        refuse(badDeclaration);
    }
    const std::string_view value = part.quoted();
    declaration = part;
    return value;
}

// The encoding that the file says it has, in capitals; empty where it says none.
std::string declaredEncoding(std::string_view text) {
    Scanner declaration(text);
    if (!declaration.skip("<?xml") || blanks.find(declaration.next()) == std::string_view::npos) {
        return "";
    }
    const std::string_view version = partOf(declaration, "version");
    const std::string_view encoding = partOf(declaration, "encoding");
    partOf(declaration, "standalone");
    declaration.skipBlanks();
    if (!declaration.skip("?>") || version != "1.0") {
        refuse(badDeclaration);
    }
    return runtime::upperCase(runtime::beginningOf(encoding, longestEncodingName));
}

// What stands in the content as far as it matters here, once that is known for sure.
std::string lookedThrough(std::string_view content) {
    const bool littleEndian = content.starts_with("\xFF\xFE");
    const bool wide = littleEndian || content.starts_with("\xFE\xFF");
    const bool marked = content.starts_with("\xEF\xBB\xBF");
    std::string text = wide ? ofUtf16(content.substr(2), littleEndian) : std::string(content.substr(marked ? 3 : 0));
    if (text.find('\0') != std::string::npos || (wide && content.size() % 2 != 0)) {
        refuse(std::string("Die Datei ist weder UTF-8 noch UTF-16 mit Kennung") + saveAsUtf8);
    }
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin != std::string::npos && text[begin] != '<') {
        refuse("Die Datei ist kein XML");
    }
    const std::string encoding = declaredEncoding(text);
    constexpr std::array<std::string_view, 4> read = {"UTF-8", "US-ASCII", "ISO-8859-1", "WINDOWS-1252"};
    const bool fits = encoding.empty() || (wide     ? encoding == "UTF-16"
                                           : marked ? encoding == "UTF-8"
                                                    : std::ranges::find(read, encoding) != read.end());
    if (!fits) {
        refuse("Die Datei ist nicht in der Kodierung '" + runtime::shown(encoding) +
               "', oder diese wird nicht gelesen" + saveAsUtf8);
    }
    return text;
}

void checkContentModel(std::string_view declaration) {
    if (declaration.size() > longestContentModel || std::ranges::count(declaration, '(') > 1) {
        refuse("In einem ELEMENT der DTD sind Klammern in Klammern, oder es hat mehr als " +
               std::to_string(longestContentModel) + " Zeichen");
    }
}

// Behind "<!DOCTYPE". An end that is missing is the parser's to say.
void checkTypeDeclaration(Scanner& scanner) {
    scanner.skipBlanks();
    scanner.until(std::string(blanks) + "[>");
    scanner.skipBlanks();
    if (scanner.skip(">") || scanner.rest().empty()) {
        return;
    }
    if (!scanner.skip("[")) {
        refuse("Die Datei verweist auf eine DTD außerhalb; das ist nicht erlaubt");
    }
    for (scanner.skipBlanks(); !scanner.skip("]") && !scanner.rest().empty(); scanner.skipBlanks()) {
        char last = '\0';
        const std::string_view declaration = scanner.rest();
        if (scanner.skip("<!ELEMENT")) {
            scanner.skipTag(last);
            checkContentModel(declaration.substr(0, declaration.size() - scanner.rest().size()));
        } else if (scanner.skip("<!ATTLIST")) {
            scanner.skipTag(last);
        } else if (!scanner.skipComment()) {
            refuse("In der DTD der Datei ist nur ELEMENT und ATTLIST erlaubt, insbesondere kein ENTITY");
        }
    }
    scanner.skipBlanks();
    scanner.skip(">");
}

class Check {
public:
    explicit Check(std::string_view text) : scanner_(text) {}

    void run() {
        for (scanner_.until("<"); !scanner_.rest().empty(); scanner_.until("<")) {
            if (scanner_.skip("<![CDATA[")) {
                scanner_.skipBehind("]]>");
            } else if (scanner_.skip("<!DOCTYPE")) {
                typeDeclaration();
            } else if (scanner_.skip("</")) {
                scanner_.skipBehind(">");
                level_ -= level_ > 0 ? 1 : 0;
            } else if (!scanner_.skipComment() && scanner_.skip("<")) {
                element();
            }
        }
    }

private:
    void typeDeclaration() {
        const std::size_t before = scanner_.rest().size();
        checkTypeDeclaration(scanner_);
        typeDeclaration_ += before - scanner_.rest().size();
        if (typeDeclaration_ > largestTypeDeclaration) {
            refuse("Die DTD in der Datei ist zu lang, höchstens " + std::to_string(largestTypeDeclaration) +
                   " Zeichen sind erlaubt");
        }
    }
    void element() {
        char last = '\0';
        if (scanner_.skipTag(last) > mostAttributes) {
            refuse("Ein Element der Datei hat mehr als " + std::to_string(mostAttributes) + " Attribute");
        }
        if (level_ >= mostLevels) {
            refuse("Die Elemente der Datei sind tiefer als " + std::to_string(mostLevels) + " Ebenen verschachtelt");
        }
        level_ += last == '/' ? 0 : 1;
        ++elements_;
        if (elements_ * typeDeclaration_ > mostOfTypeDeclarations) {
            refuse("Die Datei hat zu viele Elemente für eine so lange DTD");
        }
    }

    Scanner scanner_;
    std::size_t level_ = 0;
    std::size_t elements_ = 0;
    std::size_t typeDeclaration_ = 0;
};

}  // namespace

std::string xmlRefusal(std::string_view content) {
    try {
        if (content.size() > largestXmlFile) {
            refuse(tooLargeForXml);
        }
        Check(lookedThrough(content)).run();
    } catch (const Refusal& refusal) {
        return refusal.reason;
    }
    return "";
}

}  // namespace settings
