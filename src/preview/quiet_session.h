// A session in which no message box appears: what it would say is collected.
#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace preview {

class CollectingDialogs : public platform::Dialogs {
public:
    explicit CollectingDialogs(platform::Dialogs& real) : real_(real) {}

    platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                const std::string& title) override;
    void processEvents() override { real_.processEvents(); }
    void showTextFile(const std::string& /*path*/) override {}
    void diagnostic(const std::string& line) override { add(line); }
    bool answerCaller(const std::string& /*text*/) override { return false; }
    bool watched() override { return false; }
    void statusLine(const std::string& /*line*/) override {}
    void notify(const std::string& text) override { add(text); }
    void outOfMemory() noexcept override { real_.outOfMemory(); }

    // Each once, in their order.
    const std::vector<std::string>& texts() const { return texts_; }
    void clear() { texts_.clear(); }

private:
    void add(const std::string& text);

    platform::Dialogs& real_;
    std::vector<std::string> texts_;
};

class QuietSession {
public:
    // A part of the run of that session, which is borrowed; the log is the same.
    explicit QuietSession(session::Session& whole);
    QuietSession(const QuietSession&) = delete;
    QuietSession& operator=(const QuietSession&) = delete;

    session::Session& session() { return session_; }
    CollectingDialogs& dialogs() { return dialogs_; }
    const CollectingDialogs& dialogs() const { return dialogs_; }

private:
    CollectingDialogs dialogs_;
    platform::Platform ports_;
    session::Session session_;
};

}  // namespace preview
