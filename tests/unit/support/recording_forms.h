// Forms in memory: a test reads what they show and does what a user would do.
#pragma once

#include <map>
#include <memory>
#include <string>
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
    };
    platform::FormDesign design;
    platform::FormEvents* events = nullptr;
    std::map<std::string, ControlState> controls;
    std::string title;
    platform::FormHeight height;
    bool shown = false;
    bool closed = false;
    int repaints = 0;

    // The user.
    void press(const std::string& button) {
        if (controls.at(button).enabled) {
            events->clicked(button);
        }
    }
    void choose(const std::string& list, int index) {
        controls.at(list).selected = index;
        events->clicked(list);
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
    FormState form;
    bool hasDesktop = true;
    int folders = 0;
    std::string remedy;

    std::unique_ptr<platform::Form> create(const platform::FormDesign& design, platform::FormEvents& events,
                                           platform::Form* /*owner*/) override {
        if (!hasDesktop) {
            throw runtime::Error(runtime::errPermissionDenied, "kein Bildschirm");
        }
        form = {};
        form.design = design;
        form.events = &events;
        form.title = design.title;
        for (const platform::Control& control : design.controls) {
            form.controls[control.name].text = control.caption;
        }
        return std::make_unique<Handle>(form);
    }
    void run() override {
        if (form.shown && !form.closed && atRun) {
            atRun();
        }
    }
    void closeAll() override { form.closed = true; }
    std::string showPrinterFolder() override {
        ++folders;
        return remedy;
    }

    std::function<void()> atRun;  // what the user does while forms are served

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
        void selectText(const std::string& control) override { at(control).text += "|selected"; }
        void setItems(const std::string& control, const std::vector<std::string>& items) override {
            at(control).items = items;
            at(control).selected = -1;
        }
        int selected(const std::string& control) const override { return state_.controls.at(control).selected; }
        void select(const std::string& control, int index) override { at(control).selected = index; }
        void setEnabled(const std::string& control, bool enabled) override { at(control).enabled = enabled; }
        void setTabStop(const std::string& control, bool stop) override { at(control).tabStop = stop; }
        void repaint() override { ++state_.repaints; }

    private:
        FormState::ControlState& at(const std::string& control) { return state_.controls.at(control); }
        FormState& state_;
    };
};

}  // namespace testing_support
