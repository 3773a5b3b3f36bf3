#include "platform/crash/report_text.h"

#include "runtime/program.h"

namespace platform::crash {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t valueColumn = 20;
// What remains for the end of an entry, whatever stands in it.
constexpr std::size_t endRoom = 128;

void addLabel(FixedText& text, std::string_view label) {
    text << label << ":";
    text.column(valueColumn);
}

void addFact(FixedText& text, const Fact& fact) {
    if (!fact.value.empty()) {
        addLabel(text, fact.label);
        text.shown(fact.value) << lineEnd;
    }
}

void addNumber(FixedText& text, std::string_view label, std::uint64_t number) {
    if (number > 0) {
        addLabel(text, label);
        text.number(number) << lineEnd;
    }
}

void addMoment(FixedText& text, const ErrorFacts& error) {
    const auto part = [&text](int value, int digits) -> FixedText& {
        return text.number(static_cast<std::uint64_t>(value), digits);
    };
    addLabel(text, "Zeit");
    part(error.day, 2) << ".";
    part(error.month, 2) << ".";
    part(error.year, 4) << " ";
    part(error.hour, 2) << ":";
    part(error.minute, 2) << ":";
    part(error.second, 2) << " UTC" << lineEnd;
}

void addError(FixedText& text, const ErrorFacts& error) {
    addLabel(text, label::error);
    if (error.number < 0) {
        text << "-";
    }
    text.number(error.number < 0 ? 0 - static_cast<std::uint64_t>(error.number)
                                 : static_cast<std::uint64_t>(error.number));
    text << ": ";
    text.shown(error.description) << lineEnd;
}

void addActivity(FixedText& text, const Activity& activity, HostFate host) {
    addFact(text, {label::mode, activity.mode.load()});
    addFact(text, {label::printFile, activity.printFile.view()});
    addFact(text, {label::keptAs, activity.keptAs.view()});
    addFact(text, {"Drucker", activity.printer.view()});
    addFact(text, {"Treiber", activity.driver.view()});
    addFact(text, {label::stretch, activity.stretch.load()});
    addNumber(text, "Seite", activity.page);
    addNumber(text, "Byte der Datei", activity.position);
    addFact(text, {label::host, fateText(host)});
}

void addRoutine(FixedText& text, std::size_t number, std::uintptr_t address, const Module& module) {
    constexpr std::size_t nameColumn = 7;
    constexpr std::size_t placeColumn = 60;
    const std::uintptr_t place = address - module.base;
    const Routine routine = routineAt(module.symbols, place);
    text << (number < 10 ? "  " : number < 100 ? " " : "");
    text.number(number) << " ";
    text.column(nameColumn) << (routine.name.empty() ? module.name.empty() ? std::string_view("?") : module.name
                                                     : routine.name);
    if (module.name.empty()) {
        text << " ";
        text.address(address) << lineEnd;
        return;
    }
    text.column(placeColumn) << " (" << module.name << "+";
    text.address(place) << ")" << lineEnd;
}

void addTrace(FixedText& text, const Trace& trace, ModuleAt moduleAt) {
    text << lineEnd << "Aufrufe, der äußerste zuerst:" << lineEnd;
    const std::size_t firstLeftOut = Trace::mostInner;
    std::size_t number = 1;
    for (std::size_t index = trace.size(); index > 0; --index) {
        const std::size_t left = trace.leftOut();
        if (left > 0 && index == firstLeftOut + left) {
            text << "     … ";
            text.number(left) << " weitere …" << lineEnd;
            index = firstLeftOut;
            number += left;
        }
        const std::uintptr_t address = trace.at(index - 1);
        addRoutine(text, number, address, moduleAt(address));
        ++number;
    }
}

void addArguments(FixedText& text, std::span<const std::string_view> arguments) {
    text << lineEnd << "Argumente:" << lineEnd;
    for (const std::string_view argument : arguments) {
        text << "     \"";
        text.shown(argument) << "\"" << lineEnd;
    }
}

void addSystem(FixedText& text, std::span<const Module> modules, std::span<const Fact> system) {
    text << lineEnd;
    addFact(text, {"Version", runtime::programVersion});
    for (const Module& module : modules) {
        addLabel(text, "Datei");
        text.shown(module.name) << " " << identityOf(module.symbols) << lineEnd;
    }
    for (const Fact& fact : system) {
        addFact(text, fact);
    }
}

}  // namespace

std::string_view fateText(HostFate host) noexcept {
    switch (host) {
        case HostFate::released:
            return "wartete und hat KRVWINPR.OK bekommen";
        case HostFate::stillWaiting:
            return "wartet noch; KRVWINPR.OK war nicht zu schreiben";
        case HostFate::notWaiting:
            break;
    }
    return "wartete nicht auf das Ende dieses Auftrags";
}

void addMark(FixedText& text, const ErrorFacts& error) noexcept {
    const auto part = [&text](int value, int digits) { text.number(static_cast<std::uint64_t>(value), digits); };
    text << "Fehlerbericht ";
    part(error.year, 4);
    part(error.month, 2);
    part(error.day, 2);
    text << "-";
    part(error.hour, 2);
    part(error.minute, 2);
    part(error.second, 2);
    part(error.millisecond, 3);
    text << "-";
    text.number(error.process);
}

void addEntry(FixedText& text, const ErrorFacts& error, const Activity& activity, const Trace& trace, ModuleAt moduleAt,
              std::span<const std::string_view> arguments, std::span<const Module> modules,
              std::span<const Fact> system) noexcept {
    text.keepBack(endRoom);
    // Behind an entry that was not finished its mark still begins a line.
    text << lineEnd << "===== ";
    addMark(text, error);
    text << " =====" << lineEnd;
    addMoment(text, error);
    addError(text, error);
    addActivity(text, activity, error.host);
    addTrace(text, trace, moduleAt);
    addArguments(text, arguments);
    addSystem(text, modules, system);
    text.keepBack(0);
    text << (text.view().ends_with(lineEnd) ? "" : lineEnd) << "===== Ende, ";
    addMark(text, error);
    text << " =====" << lineEnd;
}

}  // namespace platform::crash
