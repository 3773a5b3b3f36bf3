// The orders of one folder: taken when they are seen, and carried out one behind the other.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "messenger/desk.h"
#include "messenger/order.h"
#include "messenger/order_runs.h"

namespace messenger {

class FolderOrders {
public:
    explicit FolderOrders(Desk desk) : desk_(std::move(desk)), runs_(desk_) {}
    FolderOrders(const FolderOrders&) = delete;
    FolderOrders& operator=(const FolderOrders&) = delete;

    const platform::OrderFolder& folder() const { return desk_.folder(); }

    // Looks at the folder: takes what is new, and begins what can be begun. errPathNotFound where the folder is gone.
    void look();

    // What a program says; nothing where it is none of this folder's.
    void happened(const platform::MessengerEvent& event);

    // In how long look() has to be called at the latest.
    std::chrono::milliseconds nextLook() const;

    // Begins nothing more. What is left is carried out by the next messenger.
    void close() { closed_ = true; }
    bool awaitsCompletion() const { return runs_.awaitsCompletion(); }

private:
    struct Waiting {
        std::string name;  // of the order's file
        Order order;
    };
    struct Files {
        std::map<int, platform::OrderFile> orders;
        std::map<int, platform::OrderFile> answers;
    };

    bool holds();
    Files files();
    void takeUp(int number, const platform::OrderFile& order, const std::string& answerName);
    void take(int number, const platform::OrderFile& order);
    bool isStill(const std::string& name, const std::string& content) const;
    void accept(int number, const platform::OrderFile& file, const Order& order);
    bool remove(const std::string& name);
    std::string faultOf(const Order& order) const;
    void beginNext();

    Desk desk_;
    OrderRuns runs_;
    bool ours_ = false;
    bool first_ = true;  // since the folder is ours nobody has looked at it
    bool closed_ = false;
    bool toldHolder_ = false;
    std::map<int, Waiting> waiting_;    // by number, the oldest first
    std::set<std::string> toldUnread_;  // orders that cannot be read or answered
};

}  // namespace messenger
