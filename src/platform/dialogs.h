// Port: what the user sees and answers.
#pragma once

#include <string>

namespace platform {

enum class Buttons { ok, okCancel, yesNo };
enum class Icon { none, critical, information };
enum class Answer { ok, cancel, yes, no };

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // Shows a message box over the program's topmost window, if one is open, and waits for its answer. Lines of the
    // text end with CR, LF or both. Where nobody can see a box the text goes to standard error and the answer is the
    // default one: the first button. An empty title stands for the program's name. Never throws.
    virtual Answer messageBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title) = 0;

    // Lets pending events of windows be processed; costs next to nothing where no window was ever shown.
    virtual void processEvents() = 0;

    // Opens a text file for reading in the system's text editor, without waiting for it; where that is not possible,
    // says on standard error where the file is. Never throws.
    virtual void showTextFile(const std::string& path) = 0;

    // One line for whoever started the program from a shell; dropped where there is no such place. Never throws.
    virtual void diagnostic(const std::string& line) = 0;

    // Answers whoever asked something at a shell, with lines ended by LF: on standard output, or the console of the
    // caller. False, and nothing is said, where the program was not started at one. Never throws.
    virtual bool answerCaller(const std::string& text) = 0;

    // Whether somebody at a terminal waits for the program, and no other program has the screen.
    virtual bool watched() = 0;

    // Writes a line at that terminal over the one before; an empty one takes it away, which any other message does as
    // well, and one that ends with LF stays. Without waiting; nothing where nobody watches. Never throws.
    virtual void statusLine(const std::string& line) = 0;

    // Shows a short message, plain text, on the user's desktop, without a box and without waiting for anybody; dropped
    // where there is no desktop. Never throws.
    virtual void notify(const std::string& text) = 0;

    // Says that there is not enough memory, without taking any; what stands for a message that cannot be made any more.
    virtual void outOfMemory() noexcept = 0;
};

}  // namespace platform
