// The messenger's answer to an order (docs/MESSENGER.md).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace messenger {

enum class AnswerState : char {
    taken = 'A',       // its turn comes
    started = 'S',     // its program is about to be started, or was
    completed = 'O',   // the completion file is written
    notAwaited = 'N',  // started, and writes no completion file
    failed = 'E',      // comes to nothing
};

// Whether nothing comes after it.
bool isLast(AnswerState state);

struct Answer {
    AnswerState state = AnswerState::taken;
    std::string mark;  // the order's
    std::string text;  // UTF-8, for the screen of DOS
};

// As it stands in the file. The text is in lines of at most 78 characters, what is too long is cut; its German letters
// are in the code that DOS code pages of Western and Central Europe share, any other character is a question mark.
std::string answerContent(const Answer& answer);

// State and mark of an answer; nothing where it is none, or a half-written one.
std::optional<Answer> readAnswer(std::string_view content);

}  // namespace messenger
