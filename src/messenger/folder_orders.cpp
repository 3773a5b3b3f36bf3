#include "messenger/folder_orders.h"

#include <algorithm>
#include <optional>

#include "messenger/order_names.h"
#include "platform/host_drives.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace messenger {

namespace {

// Seconds after which a file that nobody fetches is nobody's any more.
constexpr std::int64_t fetched = 3600;

// From the root of a drive, without a way back: "C:\FIRMA".
bool isDosDirectory(const std::optional<platform::HostPath>& directory) {
    return directory && directory->rest.starts_with('\\') &&
           (directory->rest + '\\').find("\\..\\") == std::string::npos;
}

bool isOlder(const platform::OrderFile& file, std::int64_t seconds) { return file.age > seconds; }

}  // namespace

void FolderOrders::look() {
    runs_.tellOverdue();
    if (!holds()) {
        return;
    }
    const Files found = files();
    for (const auto& [number, answer] : found.answers) {
        const auto order = found.orders.find(number);
        if (order != found.orders.end() && first_) {
            takeUp(number, order->second, answer.name);
        } else if (isOlder(answer, fetched) && !waiting_.contains(number) &&
                   (order == found.orders.end() || remove(order->second.name))) {
            remove(answer.name);
        }
    }
    for (const auto& [number, order] : found.orders) {
        if (!found.answers.contains(number)) {
            take(number, order);
        }
    }
    first_ = false;
    beginNext();
}

bool FolderOrders::holds() {
    if (ours_) {
        return true;
    }
    ours_ = desk_.folder().hold() == platform::OrderFolder::Holder::ours;
    if (ours_) {
        desk_.log(Desk::Severity::information,
                  desk_.folder().reportsChanges() ? "wird überwacht" : "wird überwacht, durch regelmäßiges Nachsehen");
    } else if (!std::exchange(toldHolder_, true)) {
        desk_.log(Desk::Severity::information,
                  "Die Aufträge führt schon ein anderer Bote aus: " + desk_.folder().holder());
    }
    return ours_;
}

FolderOrders::Files FolderOrders::files() {
    Files found;
    for (const platform::OrderFile& file : desk_.folder().files()) {
        const auto name = orderFileName(file.name);
        if (!name) {
            continue;
        }
        if (name->kind == OrderFileKind::order) {
            found.orders.emplace(name->number, file);
        } else if (name->kind == OrderFileKind::answer) {
            found.answers.emplace(name->number, file);
        } else if (isOlder(file, fetched)) {
            remove(file.name);
        }
    }
    return found;
}

bool FolderOrders::remove(const std::string& name) { return desk_.folder().remove(name); }

// An order that a messenger took which is no more.
void FolderOrders::takeUp(int number, const platform::OrderFile& order, const std::string& answerName) {
    try {
        const auto answer = readAnswer(desk_.folder().read(answerName));
        if (answer && isLast(answer->state)) {
            return;
        }
        const Order read = readOrder(desk_.folder().read(order.name));
        if (answer && answer->state == AnswerState::taken) {
            accept(number, order, read);
        } else {
            desk_.refuse(order.name, read.mark,
                         "der Bote ist beim letzten Mal mittendrin beendet worden, als KRVWinPr ihn begann; bitte "
                         "nachsehen, ob er gedruckt ist");
        }
    } catch (const runtime::Error& error) {
        desk_.log(Desk::Severity::warning, order.name + " ist nicht zu lesen: " + error.message());
    }
}

void FolderOrders::take(int number, const platform::OrderFile& file) {
    platform::OrderFolder& folder = desk_.folder();
    const std::string answerName = withEnding(file.name, answerEnding);
    std::string content;
    std::string forbidden;
    try {
        try {
            content = folder.read(file.name);
        } catch (const runtime::Error& error) {
            if (error.number() != runtime::errPermissionDenied) {
                throw;
            }
            forbidden = error.detail();
        }
        Order order = readOrder(content);
        if (!folder.make(answerName, answerContent({AnswerState::taken, order.mark, {}}))) {
            return;
        }
        if (!forbidden.empty()) {
            desk_.refuse(file.name, order.mark, forbidden);
        } else if (isStill(file.name, content)) {
            accept(number, file, order);
        } else {
            remove(answerName);
        }
        toldUnread_.erase(file.name);
    } catch (const runtime::Error& error) {
        if (error.number() == runtime::errPathNotFound) {
            throw;
        }
        if (error.number() != runtime::errFileNotFound && toldUnread_.insert(file.name).second) {
            desk_.warn("Der Auftrag " + file.name + " kann nicht angenommen werden: " + error.message());
        }
    }
}

// Where locks do not hold, another messenger may have been through with an order while it was being taken.
bool FolderOrders::isStill(const std::string& name, const std::string& content) const {
    try {
        return desk_.folder().read(name) == content;
    } catch (const runtime::Error& error) {
        if (error.number() != runtime::errFileNotFound) {
            throw;
        }
        return false;
    }
}

void FolderOrders::accept(int number, const platform::OrderFile& file, const Order& order) {
    if (const std::string fault = faultOf(order); !fault.empty()) {
        desk_.refuse(file.name, order.mark, fault);
    } else if (first_ && isOlder(file, desk_.settings.oldestOrder)) {
        desk_.refuse(file.name, order.mark,
                     "er hat " + std::to_string(file.age / 60) +
                         " Minuten auf einen Boten gewartet (Grenze: Wert Alter, " +
                         std::to_string(desk_.settings.oldestOrder) + " Sekunden)");
    } else {
        waiting_[number] = {file.name, order};
    }
}

std::string FolderOrders::faultOf(const Order& order) const {
    if (!order.fault.empty()) {
        return order.fault;
    }
    const std::string directory = desk_.system.fromDosCodePage(order.directory);
    const auto ofDrive = platform::splitDrive(directory);
    if (!isDosDirectory(ofDrive)) {
        return "sein Ordner " + runtime::shown(directory) + " ist kein Ordner eines Laufwerks";
    }
    // Which folder a name is that the emulator made shorter ("AUFTRA~1") is known to the emulator alone.
    const bool isShortened = directory.find('~') != std::string::npos;
    const std::string drive = platform::folderOfDrive(ofDrive->letter, *desk_.messengerSystem.settings());
    if (drive.empty() || isShortened) {
        return {};
    }
    const std::string folder = runtime::AddBackslash(drive) + ofDrive->rest.substr(1);
    return desk_.folder().isAt(folder)
               ? std::string()
               : "sein Ordner " + runtime::shown(directory) + " ist nach den Einstellungen (Laufwerke) " +
                     runtime::shown(folder) + " und nicht der, in dem er liegt";
}

void FolderOrders::happened(const platform::MessengerEvent& event) {
    runs_.happened(event);
    beginNext();
}

void FolderOrders::beginNext() {
    while (!closed_ && !waiting_.empty() && !runs_.keepOthersWaiting()) {
        const auto next = waiting_.begin();
        if (!runs_.begin(next->second.name, next->second.order)) {
            return;  // until the next look
        }
        waiting_.erase(next);
    }
}

std::chrono::milliseconds FolderOrders::nextLook() const {
    constexpr std::chrono::milliseconds whereReported{10'000};
    constexpr std::chrono::milliseconds whereAnother{2'000};
    std::chrono::milliseconds next = desk_.folder().reportsChanges() ? whereReported : desk_.settings.lookEvery;
    if (!ours_) {
        next = std::min(next, whereAnother);
    }
    if (const auto change = runs_.nextChange()) {
        next = std::min(next, std::chrono::milliseconds(*change));
    }
    return next;
}

}  // namespace messenger
