#include "platform/linux/cups/cups_queue_watch.h"

#include <cups/cups.h>

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>
#include <utility>

#include "platform/linux/cups/cups_error.h"

namespace platform_linux::cups {

namespace {

using namespace std::chrono_literals;

constexpr std::array events = {
    "job-created",  "job-completed",         "job-state-changed",      "job-config-changed",
    "job-progress", "printer-state-changed", "printer-config-changed", "printer-deleted",
};
constexpr std::chrono::seconds lease = 5min;
// The server's own interval, a minute or so, is a proposal; one that means it answers that it is busy.
constexpr auto pause = 1s;
constexpr auto usualInterval = 10s;
// Nobody is kept waiting for events.
constexpr auto longestQuestion = 250ms;

IppMessage makeServerRequest(ipp_op_t operation) {
    IppMessage request(ippNewRequest(operation));
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, "ipp://localhost/");
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    return request;
}

}  // namespace

CupsQueueWatch::CupsQueueWatch(std::shared_ptr<Connection> connection, std::string queue)
    : connection_(std::move(connection)), queue_(std::move(queue)), interval_(usualInterval) {
    const IppMessage answer = connection_->attributes(queue_, {"printer-name", "printer-type"});
    if ((static_cast<unsigned>(number(answer.get(), "printer-type", 0)) & CUPS_PRINTER_CLASS) == 0) {
        subject_ = text(answer.get(), "printer-name");
    }
    subscribe();
}

CupsQueueWatch::~CupsQueueWatch() {
    const Connection::Limit limit(*connection_, longestQuestion);
    unsubscribe();
}

void CupsQueueWatch::unsubscribe() noexcept {
    if (const int subscription = std::exchange(subscription_, 0); subscription != 0) {
        try {
            connection_->request({}, request(IPP_OP_CANCEL_SUBSCRIPTION, subscription));
        } catch (const std::exception&) {
            return;  // it ends with its lease
        }
    }
}

IppMessage CupsQueueWatch::request(ipp_op_t operation, int subscription) const {
    IppMessage message = makeServerRequest(operation);
    ippAddInteger(message.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "notify-subscription-id", subscription);
    return message;
}

void CupsQueueWatch::subscribe() {
    IppMessage message = makeServerRequest(IPP_OP_CREATE_PRINTER_SUBSCRIPTIONS);
    ippAddString(message.get(), IPP_TAG_SUBSCRIPTION, IPP_TAG_KEYWORD, "notify-pull-method", nullptr, "ippget");
    ippAddStrings(message.get(), IPP_TAG_SUBSCRIPTION, IPP_TAG_KEYWORD, "notify-events", events.size(), nullptr,
                  events.data());
    ippAddInteger(message.get(), IPP_TAG_SUBSCRIPTION, IPP_TAG_INTEGER, "notify-lease-duration",
                  static_cast<int>(lease.count()));
    const IppMessage answer = connection_->request({}, std::move(message));
    subscription_ = number(answer.get(), "notify-subscription-id", 0);
    if (subscription_ == 0) {
        throw failure(IPP_STATUS_ERROR_IGNORED_ALL_SUBSCRIPTIONS, queue_, {});
    }
    lastEvent_ = 0;
    renewAt_ = Clock::now() + lease / 2;
}

void CupsQueueWatch::renew() {
    IppMessage message = request(IPP_OP_RENEW_SUBSCRIPTION, subscription_);
    ippAddInteger(message.get(), IPP_TAG_SUBSCRIPTION, IPP_TAG_INTEGER, "notify-lease-duration",
                  static_cast<int>(lease.count()));
    connection_->request({}, std::move(message));
    renewAt_ = Clock::now() + lease / 2;
}

// The last event is fetched once more: a server that does not have it has forgotten where this one is, as by a restart.
bool CupsQueueWatch::fetch() {
    IppMessage message = makeServerRequest(IPP_OP_GET_NOTIFICATIONS);
    ippAddInteger(message.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "notify-subscription-ids", subscription_);
    ippAddInteger(message.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "notify-sequence-numbers",
                  std::max(lastEvent_, 1));
    const IppMessage answer = connection_->request({}, std::move(message));
    interval_ = std::chrono::seconds(std::max(number(answer.get(), "notify-get-interval", 0), 1));
    const int before = lastEvent_;
    bool forgotten = before != 0;
    bool ours = false;
    int sequence = 0;
    std::string printer;
    eachGroup(
        answer.get(), IPP_TAG_EVENT_NOTIFICATION,
        [&](ipp_attribute_t* attribute) {
            const std::string_view name = ippGetName(attribute);
            if (name == "notify-sequence-number") {
                sequence = ippGetInteger(attribute, 0);
            } else if (name == "printer-name" && ippGetString(attribute, 0, nullptr) != nullptr) {
                printer = ippGetString(attribute, 0, nullptr);
            }
        },
        [&] {
            forgotten = forgotten && sequence < before;
            ours = ours || (sequence > before && (printer == subject_ || printer.empty() || subject_.empty()));
            lastEvent_ = std::max(lastEvent_, std::exchange(sequence, 0));
            printer.clear();
        });
    if (forgotten) {
        unsubscribe();
    }
    return ours || forgotten;
}

bool CupsQueueWatch::changed() {
    const Clock::time_point now = Clock::now();
    if (std::exchange(first_, false)) {
        return true;
    }
    if (now < askAt_) {
        return false;
    }
    askAt_ = now + pause;
    try {
        const Connection::Limit limit(*connection_, longestQuestion);
        if (subscription_ == 0) {
            subscribe();
            return true;
        }
        if (now >= renewAt_) {
            renew();
        }
        return fetch();
    } catch (const platform::SpoolerError& error) {
        if (error.code() == IPP_STATUS_ERROR_BUSY) {
            askAt_ = now + interval_;
        } else if (error.code() >= firstIppStatus) {
            subscription_ = 0;
        }
        return true;
    } catch (const std::exception&) {
        return true;
    }
}

}  // namespace platform_linux::cups
