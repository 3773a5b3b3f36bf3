// The connection to the CUPS scheduler: one, kept between requests, and never waited for longer than a few seconds.
#pragma once

#include <cups/http.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/cups/ipp_message.h"

namespace platform_linux::cups {

// The server is the one that CUPS_SERVER or client.conf names, otherwise the local one. Nobody is ever asked for a
// password: what the server does not grant to the user as he is, it refuses.
class Connection {
public:
    Connection();

    // Sends a request, with the content of a file from its start where a descriptor is given, and returns the answer.
    // Throws platform::SpoolerError, which names the queue, when the server cannot be reached, does not answer in time
    // or refuses. A server that did not answer in time is not asked again before askAgain().
    IppMessage request(const std::string& queue, IppMessage message, int fileDescriptor = -1);

    // The same for an answer that may be long, such as all jobs of a queue: libcups itself fetches an answer in pieces
    // of a few bytes, each with two calls of the system.
    IppMessage requestLong(const std::string& queue, IppMessage message);

    // The answer with these attributes of a queue.
    IppMessage attributes(const std::string& queue, const std::vector<const char*>& names) {
        return request(queue, makeRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, queue, names));
    }

    // While it lives, all questions together take no longer than its time, but for a tenth of a second each; a server
    // that has not answered by then is asked the next time as ever.
    class Limit {
    public:
        Limit(Connection& connection, std::chrono::milliseconds time) : connection_(connection) {
            connection_.end_ = Clock::now() + time;
        }
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;
        ~Limit() { connection_.end_.reset(); }

    private:
        Connection& connection_;
    };

    // A server that did not answer is asked again from now on.
    void askAgain() { silent_ = false; }

    // Fetches a resource of the server into a file; false where it cannot be had.
    bool fetch(const std::string& resource, int fileDescriptor);

    // For calls of libcups that speak to the server themselves: connected; throws as request() does.
    http_t* connected(const std::string& queue);

private:
    struct Close {
        void operator()(http_t* http) const noexcept { httpClose(http); }
    };
    using Clock = std::chrono::steady_clock;

    // Seconds, or what is left of the limit.
    double within(double seconds) const;
    double answerLimit(double seconds) const;
    void connect(const std::string& queue, double timeout);
    bool waitedFor(double limit) const;
    [[noreturn]] void lost(const std::string& queue, bool silent);

    std::unique_ptr<http_t, Close> http_;
    Clock::time_point lastUse_;
    bool silent_ = false;  // the server did not answer in time
    std::optional<Clock::time_point> end_;
};

}  // namespace platform_linux::cups
