// Forms in memory: a test reads what they show and does what a user would do.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/forms.h"
#include "runtime/error.h"

namespace testing_support {

struct FormState {
    struct ControlState {
        std::string text;
        std::vector<std::string> items;
        int selected = -1;
        bool enabled = true;
        bool tabStop = true;
        bool textSelected = false;
        platform::ScrollBar across;
        platform::ScrollBar down;
        platform::Cursor cursor = platform::Cursor::arrow;
        int rowCount = 0;
        std::vector<int> rows;  // selected ones of a table
    };
    platform::FormDesign design;
    platform::FormEvents* events = nullptr;
    std::map<std::string, ControlState> controls;
    std::string title;
    platform::FormHeight height;
    bool shown = false;
    bool closed = false;
    int repaints = 0;
    std::string focus;
    bool wantsIdle = false;
    platform::CanvasSize canvasSize{800, 600, 96, 96, 1};
    int invalidations = 0;
    platform::WindowPlace place;
    int timer = 0;  // milliseconds

    // The user.
    void press(const std::string& button) {
        if (controls.at(button).enabled) {
            events->clicked(button);
        }
    }
    void pressKey(platform::Key key, bool control = false, bool shift = false) {
        for (const platform::Shortcut& shortcut : design.shortcuts) {
            if (shortcut.key == key && shortcut.control == control && shortcut.shift == shift &&
                (shortcut.inBoxes || !isBox(focus))) {
                controls.contains(shortcut.action) ? press(shortcut.action) : events->clicked(shortcut.action);
                return;
            }
        }
    }
    bool isBox(const std::string& control) const {
        const auto found = std::ranges::find(design.controls, control, &platform::Control::name);
        return found != design.controls.end() &&
               (found->kind == platform::ControlKind::textBox || found->kind == platform::ControlKind::comboBox);
    }
    // Types a text over what is there, and Enter.
    void enter(const std::string& box, const std::string& text) {
        replace(box, text);
        events->clicked(box);
    }
    void replace(const std::string& box, const std::string& text) {
        controls.at(box).text = text;
        events->changed(box);
    }
    // Serves idle() until it is not wanted any more; returns how often.
    int rest(int most = 100000) {
        int runs = 0;
        for (; wantsIdle && !closed && runs < most; ++runs) {
            events->idle();
        }
        return runs;
    }
    void select(const std::string& list, int index) {
        const auto isOption = [](const platform::Control& control) {
            return control.kind == platform::ControlKind::optionButton;
        };
        const auto chosen = std::ranges::find(design.controls, list, &platform::Control::name);
        for (auto option = chosen; isOption(*option); --option) {
            controls.at(option->name).selected = -1;
        }
        for (auto option = chosen; isOption(*option); ++option) {
            controls.at(option->name).selected = -1;
        }
        controls.at(list).selected = index;
    }
    void choose(const std::string& list, int index) {
        select(list, index);
        events->clicked(list);
    }
    void chooseRows(const std::string& table, const std::vector<int>& rows) {
        controls.at(table).rows = rows;
        events->clicked(table);
    }
    // What stands in a row, its cells joined.
    std::string row(const std::string& table, int row) const {
        std::string text;
        const auto control = std::ranges::find(design.controls, table, &platform::Control::name);
        for (std::size_t column = 0; column < control->columns.size(); ++column) {
            text += (column > 0 ? "|" : "") + events->cell(table, row, static_cast<int>(column));
        }
        return text;
    }
    // What stays of characters typed behind each other.
    void type(const std::string& box, std::u32string_view characters) {
        for (const char32_t character : characters) {
            std::string& text = controls.at(box).text;
            if (events->accepts(box, text, character)) {
                text += static_cast<char>(character);
                events->changed(box);
            }
        }
    }
};

class RecordingForms : public platform::Forms {
public:
    FormState form;    // the last one without an owner
    FormState dialog;  // the last one in front of it
    std::string copied;
    std::optional<std::string> fileToWrite;  // what the user answers
    std::optional<std::string> fileToRead;
    std::string suggested;
    bool hasDesktop = true;
    int folders = 0;
    bool hasHelpers = true;  // a file manager, and a program for mail
    std::string mail;
    std::string remedy;

    std::unique_ptr<platform::Form> create(const platform::FormDesign& design, platform::FormEvents& events,
                                           platform::Form* owner) override {
        if (!hasDesktop) {
            throw runtime::Error(runtime::errPermissionDenied, "kein Bildschirm");
        }
        FormState& made = owner != nullptr ? dialog : form;
        made = {};
        made.design = design;
        made.events = &events;
        made.title = design.title;
        for (const platform::Control& control : design.controls) {
            made.controls[control.name].text = control.caption;
        }
        return std::make_unique<Handle>(made);
    }
    void run() override {
        if (form.shown && !form.closed && atRun) {
            atRun();
        }
    }
    void serve() override {
        if (atServe) {
            atServe();
        }
    }
    void closeAll() override {
        form.closed = true;
        dialog.closed = true;
    }
    void copyText(const std::string& text) override { copied = text; }
    std::optional<std::string> askFileToWrite(platform::Form&, const std::string&, const std::string& suggestion,
                                              const std::string&, const std::string&) override {
        suggested = suggestion;
        return fileToWrite;
    }
    std::optional<std::string> askFileToRead(platform::Form&, const std::string&, const std::string& folder) override {
        suggested = folder;
        return fileToRead;
    }
    std::string shownInFolder;
    bool showInFolder(const std::string& path) override {
        shownInFolder = path;
        return hasDesktop && hasHelpers;
    }
    bool composeMail(const std::string& subject, const std::string& text) override {
        mail = subject + ": " + text;
        return hasHelpers;
    }
    std::string showPrinterFolder() override {
        ++folders;
        return remedy;
    }

    std::function<void()> atRun;    // what the user does while forms are served
    std::function<void()> atServe;  // likewise, while an event is under way

private:
    class Handle : public platform::Form {
    public:
        explicit Handle(FormState& state) : state_(state) {}
        void show() override { state_.shown = true; }
        void close() override {
            if (!std::exchange(state_.closed, true)) {
                state_.events->closed();
            }
        }
        void setTitle(const std::string& title) override { state_.title = title; }
        void setHeight(platform::FormHeight height) override { state_.height = height; }
        std::string text(const std::string& control) const override { return state_.controls.at(control).text; }
        void setText(const std::string& control, const std::string& text) override { at(control).text = text; }
        void selectText(const std::string& control) override { at(control).textSelected = true; }
        void setItems(const std::string& control, const std::vector<std::string>& items) override {
            at(control).items = items;
            at(control).selected = -1;
        }
        int selected(const std::string& control) const override { return state_.controls.at(control).selected; }
        void select(const std::string& control, int index) override { state_.select(control, index); }
        void setEnabled(const std::string& control, bool enabled) override { at(control).enabled = enabled; }
        void setTabStop(const std::string& control, bool stop) override { at(control).tabStop = stop; }
        void focus(const std::string& control) override { state_.focus = control; }
        platform::CanvasSize canvasSize(const std::string&) const override { return state_.canvasSize; }
        void invalidate(const std::string&) override { ++state_.invalidations; }
        void setScrollBars(const std::string& control, platform::ScrollBar across, platform::ScrollBar down) override {
            at(control).across = across;
            at(control).down = down;
        }
        void setCursor(const std::string& control, platform::Cursor cursor) override { at(control).cursor = cursor; }
        void setRowCount(const std::string& table, int count) override {
            at(table).rowCount = count;
            std::erase_if(at(table).rows, [count](int row) { return row >= count; });
        }
        std::vector<int> selectedRows(const std::string& table) const override {
            return state_.controls.at(table).rows;
        }
        void selectRows(const std::string& table, const std::vector<int>& rows, bool) override {
            at(table).rows = rows;
        }
        void wantTimer(int milliseconds) override { state_.timer = milliseconds; }
        void wantIdle(bool want) override { state_.wantsIdle = want; }
        platform::WindowPlace windowPlace() const override { return state_.place; }
        void setWindowPlace(const platform::WindowPlace& place) override { state_.place = place; }
        void repaint() override { ++state_.repaints; }

    private:
        FormState::ControlState& at(const std::string& control) { return state_.controls.at(control); }
        FormState& state_;
    };
};

}  // namespace testing_support
