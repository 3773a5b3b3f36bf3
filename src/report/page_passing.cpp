#include "report/page_passing.h"

#include "report/page_cutter.h"
#include "report/page_interpreter.h"
#include "report/tray_selection.h"

namespace report {

namespace {

void passOnce(std::string_view page, PageStart& start) {
    PageReader reader(page);
    while (const auto token = reader.next()) {
        if (token->kind != PageToken::Kind::macro) {
            continue;
        }
        if (isTypeMacro(token->text)) {
            start.type.execute(token->text);
        } else if (token->text == "LR" && !token->parameter.empty()) {
            start.type.SetIndent(static_cast<unsigned char>(token->parameter.front()));
        } else if (token->text == "LS") {
            start.orientation = orientationOfMacro;
        }
    }
}

}  // namespace

PageStart PagePassing::firstPage(const TypeState& type) {
    return {type, printer_.Option(platform::PageOption::orientation), printer_.Option(platform::PageOption::paperBin),
            ""};
}

void PagePassing::pass(std::string_view page, PageStart& start) {
    requestTray(page, start.tray);
    start.paperBin = binFor(start.tray, start.paperBin);
    if (page.find('^') == std::string_view::npos) {
        return;
    }
    const TypeState before = start.type;
    passOnce(page, start);
    if (blnTwoPass_ && start.type != before) {
        passOnce(page, start);
    }
}

// A tray means the same bin on all pages, so it is looked up once.
int PagePassing::binFor(const std::string& tray, int binSoFar) {
    const auto [known, added] = bins_.try_emplace(tray);
    if (added) {
        try {
            known->second = selectTraySilently(session_, printer_, tray);
        } catch (const runtime::Error&) {
            known->second.reset();
        }
    }
    return known->second.value_or(binSoFar);
}

}  // namespace report
