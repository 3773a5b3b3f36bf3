// The messenger over folders and programs in memory.
#include <gtest/gtest.h>

#include "messenger/Main.h"
#include "messenger/answer.h"
#include "messenger/host_program.h"
#include "messenger/order.h"
#include "runtime/numbers.h"
#include "unit/support/fake_messenger_system.h"

namespace {

using Events = testing_support::FakeMessengerSystem::Events;
using Kind = platform::MessengerEvent::Kind;

std::string withSum(const std::string& lines) {
    unsigned sum = 0;
    for (const char byte : lines) {
        sum += static_cast<unsigned char>(byte);
    }
    const std::string number = runtime::hexText(sum % 0x10000);
    return lines + "Ende=" + std::string(4 - number.size(), '0') + number + "\r\n";
}

std::string orderText(const std::string& tail, const std::string& directory = "C:\\FIRMA",
                      const std::string& mark = "0A1B2C3D") {
    return withSum("KRVWINPR-AUFTRAG 1\r\nKennung=" + mark + "\r\nOrdner=" + directory + "\r\nBefehl=" + tail + "\r\n");
}

TEST(MessengerOrder, IsReadAsTheHostWroteItOrNotAtAll) {
    const std::string tail = " A.OUT  \"Drucker\n\x9a\"\r\nEnde=0000";
    const messenger::Order order = messenger::readOrder(orderText(tail));
    EXPECT_EQ(order.fault, "");
    EXPECT_EQ(order.tail, tail);
    EXPECT_EQ(order.directory + order.mark, "C:\\FIRMA0A1B2C3D");
    EXPECT_EQ(messenger::readOrder(orderText(std::string(127, 'x'))).fault, "");
    const std::string whole = orderText("A.OUT");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        ASSERT_NE(messenger::readOrder(whole.substr(0, length)).fault, "") << "cut after " << length;
    }
    EXPECT_EQ(messenger::readOrder(whole.substr(0, whole.size() - 3)).mark, "0A1B2C3D") << "so that the host is told";
    for (const std::string& damaged :
         {whole + "x", "x" + whole, orderText(std::string(128, 'x')), orderText("A", "C:\\", "0a1b2c3d"),
          withSum("KRVWINPR-AUFTRAG 2\r\nKennung=0A1B2C3D\r\nOrdner=C:\\\r\nBefehl=\r\n"),
          withSum("KRVWINPR-AUFTRAG 1\r\nKennung=0A1B2C3D\r\nBefehl=A\r\n"),
          withSum("KRVWINPR-AUFTRAG 1\r\nKennung=0A1B2C3D\r\nOrdner=C:\\\r\nBefehl=A")}) {
        EXPECT_NE(messenger::readOrder(damaged).fault, "") << damaged;
    }
}

TEST(MessengerAnswer, FitsTheScreenOfDos) {
    using messenger::AnswerState;
    const std::string text = "Größe „x“ \xe2\x82\xac " + std::string(70, 'a') + " b " + std::string(600, 'c');
    const std::string content = messenger::answerContent({AnswerState::failed, "0A1B2C3D", text});
    EXPECT_TRUE(
        content.starts_with("E 0A1B2C3D\r\nGr\x94\xe1"
                            "e \"x\" ?\r\n" +
                            std::string(70, 'a') + " b\r\n"))
        << content;
    EXPECT_LE(content.size(), 412U);
    EXPECT_TRUE(content.ends_with("\r\n"));
    EXPECT_EQ(messenger::readAnswer(content)->mark, "0A1B2C3D");
    EXPECT_FALSE(messenger::readAnswer("E 0A1B2C3\r\n") || messenger::readAnswer("X 0A1B2C3D\r\n"));
}

class MessengerTest : public ::testing::Test {
protected:
    static constexpr const char* path = "C:\\FIRMA";
    testing_support::FakeSystem system;
    testing_support::FakeMessengerSystem around{system};
    testing_support::FakeFolder& folder = around.folders[path];

    void order(int number, const std::string& tail, std::int64_t age = 0) {
        folder.files[name(number)] = {orderText(tail), age};
    }
    static std::string name(int number, const std::string& ending = "AUF") {
        return "KRV0000" + std::to_string(number) + "." + ending;
    }
    // The answers to orders 1 to so many by their letters, "-" for none.
    std::string answers(int orders) {
        std::string letters;
        for (int number = 1; number <= orders; ++number) {
            letters += folder.files.contains(name(number, "ERG")) ? folder.files[name(number, "ERG")].content[0] : '-';
        }
        return letters;
    }
    // The printed files, or what else the tails begin with.
    std::string started() const {
        std::string tails;
        for (const std::string& one : around.started) {
            tails += one.substr(one.find('|') + 1) + ' ';
        }
        return tails;
    }
    static platform::MessengerEvent written(platform::ProgramId program) {
        return {Kind::completionWritten, {}, program, {}};
    }
    static platform::MessengerEvent ended(platform::ProgramId program, const std::string& how = {}) {
        return {Kind::programEnded, nullptr, program, how};
    }
    void then(const std::function<Events()>& moment) { around.moments.push_back(moment); }
    int run(const std::string& tail = path) {
        system.tail = tail;
        return messenger::Main(system, around);
    }
    bool logged(const std::string& text) const {
        return std::ranges::any_of(around.lines,
                                   [&](const std::string& line) { return line.find(text) != std::string::npos; });
    }
};

TEST_F(MessengerTest, CarriesOutOrdersOneBehindTheOther) {
    system.dosCharacters['\x9a'] = "Ü";
    order(2, "B.OUT");
    order(1, "\x9a.OUT  \"X Y\"");
    order(3, "C.OUT");
    then([this] {
        EXPECT_EQ(answers(3), "SAA") << "each host knows that there is a messenger";
        return Events{written(1)};
    });
    then([this] {
        EXPECT_EQ(answers(3), "OAA") << "the first program is still printing";
        return Events{ended(1)};
    });
    then([this] {
        EXPECT_EQ(answers(3), "OSA");
        return Events{written(2)};
    });
    then([] { return Events{}; });  // a message box of the second program stays open
    then([this] {
        EXPECT_EQ(answers(3), "OOS");
        return Events{written(3), ended(3), ended(2)};
    });
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(started(), "Ü.OUT  \"X Y\" B.OUT C.OUT ");
    EXPECT_EQ(around.started[0].substr(0, 37), "C:\\Programme\\KRVWinPr.exe in C:\\FIRMA");
    EXPECT_EQ(answers(3), "OOO");
    EXPECT_EQ(around.notifications.size(), 0U);
}

TEST_F(MessengerTest, AwaitsACompletionFileOnlyOfReports) {
    order(1, "/druckerauswahl");
    order(2, "/VORSCHAU A.OUT");
    order(3, "/INVERT A.PCX");
    order(4, "");
    order(5, "/WAIT A.OUT");
    then([this] {
        EXPECT_EQ(answers(5), "NNNAA") << "a picture may be meant for what comes behind it";
        return Events{ended(3)};
    });
    then([this] {
        EXPECT_EQ(answers(5), "NNNNS");
        return Events{written(5), ended(5)};
    });
    run();
    EXPECT_EQ(answers(5), "NNNNO");
}

TEST_F(MessengerTest, TellsTheHostWhatBecameOfAProgramThatWroteNoCompletionFile) {
    folder.completion = "of an earlier job";
    order(1, "A.OUT");
    order(2, "B.OUT");
    then([] { return Events{ended(1, "Signal 11 (SIGSEGV)")}; });
    then([this] {
        EXPECT_EQ(answers(2), "ES");
        folder.completion = "of a program that crashed and let its host go";
        return Events{ended(2, "Signal 6 (SIGABRT)")};
    });
    run();
    EXPECT_EQ(answers(2), "EO");
    EXPECT_NE(folder.files[name(1, "ERG")].content.find("(Signal 11 (SIGSEGV))"), std::string::npos);
}

TEST_F(MessengerTest, AProgramThatHangsIsToldAndKeepsTheOthersForAWhileOnly) {
    order(1, "A.OUT");
    order(2, "B.OUT");
    for (int look = 0; look < 40; ++look) {
        then([] { return Events{}; });
    }
    run();
    EXPECT_EQ(answers(2), "SS");
    EXPECT_GE(system.sleptMilliseconds, 300'000);
    EXPECT_EQ(around.notifications.size(), 1U);
    EXPECT_EQ(started(), "A.OUT B.OUT ");
}

TEST_F(MessengerTest, TakesUpWhatAMessengerBeforeHasLeft) {
    const auto answered = [this](int number, char state) {
        folder.files[name(number, "ERG")] = {state + std::string(" 0A1B2C3D\r\n"), 5};
    };
    order(1, "A.OUT");
    answered(1, 'A');
    order(2, "B.OUT");
    answered(2, 'S');
    order(3, "C.OUT");
    answered(3, 'O');
    order(4, "D.OUT", 601);
    order(5, "E.OUT", -7200);  // the clock was put back
    order(6, "F.OUT", 7200);
    folder.files[name(6, "ERG")] = {"O 0A1B2C3D\r\n", 7200};
    folder.files[name(7, "ERG")] = {"E 0A1B2C3D\r\n", 7200};
    folder.files[name(8, "TMP")] = {"KRV", 7200};
    then([this] {
        order(9, "I.OUT", 7200);  // the clock was put forward, or a host's is another one
        return Events{written(1), ended(1), {Kind::folderChanged, nullptr, 0, {}}};
    });
    then([] { return Events{}; });
    then([] { return Events{written(2), ended(2)}; });
    run();
    EXPECT_EQ(started(), "A.OUT E.OUT I.OUT ");
    EXPECT_EQ(answers(5), "OEOEO");
    EXPECT_TRUE(folder.files.contains(name(2, "ABG")) && folder.files.contains(name(4, "ABG")));
    EXPECT_EQ(around.notifications.size(), 2U);
    for (const std::string& gone : {name(6), name(6, "ERG"), name(7, "ERG"), name(8, "TMP")}) {
        EXPECT_FALSE(folder.files.contains(gone)) << gone;
    }
}

TEST_F(MessengerTest, PutsAsideAndTellsWhatItMayNotObey) {
    around.store.put(R"(Software\Velmora\KRVWinPr\3.0\Laufwerke)", "C", "/home/dos/");
    order(1, "A.OUT");  // in /home/dos/FIRMA
    folder.files[name(1, "ABG")] = {"of last week", 0};
    order(2, "B.OUT");
    folder.files[name(2)].content.resize(60);
    order(3, "C.OUT");
    folder.forbidden.insert(name(3));
    folder.files[name(4)] = {orderText("D.OUT", "D:\\X\\..\\.."), 0};
    folder.files[name(5)] = {orderText("E.OUT", "D:\\ANDERS"), 0};  // of a drive that nobody has named
    folder.files[name(6)] = {orderText("F.OUT", "C:\\ANDERS~1"), 0};
    run();
    EXPECT_EQ(started(), "E.OUT ");
    EXPECT_EQ(answers(6), "EEEESA");
    EXPECT_TRUE(folder.files.contains(name(1, "AB1")));
    EXPECT_EQ(folder.files[name(1, "ABG")].content, "of last week");
    EXPECT_EQ(around.notifications.size(), 4U);
    EXPECT_TRUE(logged("/home/dos/\\FIRMA und nicht der, in dem er liegt"));
    EXPECT_TRUE(logged("er gehört jemand anderem. Er liegt dort jetzt als KRV00003.ABG."));
}

TEST_F(MessengerTest, WhatCannotBeDoneIsToldOnce) {
    around.cannotStart = "C:\\Programme\\KRVWinPr.exe";
    order(1, "A.OUT");
    then([this] {
        folder.readOnly = true;
        order(2, "B.OUT");
        return Events{};
    });
    then([] { return Events{}; });
    run();
    EXPECT_EQ(answers(2), "E-");
    EXPECT_TRUE(folder.files.contains(name(1, "ABG")) && folder.files.contains(name(2)));
    EXPECT_EQ(around.notifications.size(), 2U);
}

TEST_F(MessengerTest, NothingIsStartedThatCannotBeWrittenDown) {
    order(1, "A.OUT");
    order(2, "B.OUT");
    then([this] {
        folder.readOnly = true;
        return Events{written(1), ended(1)};
    });
    then([] { return Events{}; });
    then([this] {
        EXPECT_EQ(started(), "A.OUT ");
        folder.readOnly = false;
        return Events{};
    });
    then([] { return Events{}; });
    run();
    EXPECT_EQ(started(), "A.OUT B.OUT ");
    EXPECT_EQ(std::ranges::count_if(around.lines, [](const auto& line) { return line.find("Die Antwort") + 1 != 0; }),
              1);
}

TEST_F(MessengerTest, FoldersComeAndGo) {
    const auto named = [this](const char* value, const char* folderPath) {
        around.store.put(R"(Software\Velmora\KRVWinPr\3.0\Bote)", value, std::string(folderPath));
    };
    named("Ordner1", path);
    named("Ordner2", "C:\\ZWEI");
    folder.holder = "meier@pc1, Prozess 7";
    order(1, "A.OUT");
    const auto pass = [] { return Events{}; };
    then([this] {
        EXPECT_EQ(answers(1), "-") << "another messenger carries them out";
        folder.holder.clear();
        around.folders["C:\\ZWEI"].files[name(1)] = {orderText("Z.OUT"), 0};
        return Events{};
    });
    then([&] {
        EXPECT_EQ(started(), "A.OUT Z.OUT ");
        folder.gone = true;
        return Events{written(1), ended(1), written(2), ended(2)};
    });
    then(pass);
    then(pass);
    then([&, this] {
        folder.gone = false;
        folder.holder.clear();
        folder.files.clear();
        order(1, "B.OUT");
        named("Ordner2", "");
        return Events{};
    });
    for (int look = 0; look < 8; ++look) {
        then(pass);
    }
    run("");
    EXPECT_EQ(started(), "A.OUT Z.OUT B.OUT ");
    EXPECT_EQ(around.folders["C:\\ZWEI"].holder, "") << "it was given up";
    EXPECT_TRUE(logged("meier@pc1, Prozess 7") && logged("wird nicht überwacht, bis das wieder geht"));
}

TEST_F(MessengerTest, AtItsEndWaitsForTheHostThatWaits) {
    order(1, "A.OUT");
    order(2, "B.OUT");
    then([] { return Events{{Kind::stop, nullptr, 0, {}}}; });
    then([] { return Events{written(1), ended(1)}; });
    run();
    EXPECT_EQ(answers(2), "OA") << "the next messenger begins the second one";
    EXPECT_EQ(around.moments.size(), 2U);
    EXPECT_EQ(started(), "A.OUT ");
}

TEST_F(MessengerTest, IsSetUpByCommands) {
    const std::string program = std::string(path) + "\\KRVWINPR.COM";
    EXPECT_EQ(run("/EIN C:\\FIRMA"), 0);
    EXPECT_EQ(run("/ein c:\\firma"), 1) << "there is no such folder in this system";
    EXPECT_EQ(run("/EIN C:\\FIRMA"), 0);
    EXPECT_EQ(system.files[program], messenger::hostProgram());
    EXPECT_TRUE(around.startsWithSession);
    EXPECT_EQ(run("/STATIS"), 1);
    EXPECT_NE(around.told.back().find("weder ein Befehl noch ein Ordner"), std::string::npos);
    folder.holder = "ich";
    EXPECT_EQ(run("/STATUS"), 0);
    EXPECT_NE(around.told.back().find("C:\\FIRMA: Dort ist der Bote ich."), std::string::npos);
    EXPECT_EQ(run("/AUS C:\\FIRMA"), 0);
    EXPECT_FALSE(system.files.contains(program));
    run("/STATUS");
    EXPECT_NE(around.told.back().find("kein Ordner genannt"), std::string::npos);
    EXPECT_TRUE(around.startsWithSession);
    run("/AUS");
    EXPECT_FALSE(around.startsWithSession);
    system.files[std::string(path) + "\\KRVWinPr.exe"] = "MZ";
    EXPECT_EQ(run("/EIN C:\\FIRMA"), 1) << "Windows would find KRVWINPR.COM instead";
    EXPECT_FALSE(system.files.contains(program));
}

}  // namespace
