#include "platform/linux/cups/connection.h"

#include <cups/cups.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/linux/cups/cups_error.h"

namespace platform_linux::cups {

namespace {

using namespace std::chrono_literals;

constexpr double connectSeconds = 3;
constexpr double answerSeconds = 3;
// What libcups waits for the server's leave to send a request, before it does so without.
constexpr double leaveSeconds = 1;
// Of what is left of a limit that is over.
constexpr double leastSeconds = 0.1;
// A document may have to wait for the server's disk.
constexpr double documentSeconds = 10;
// The server closes a connection that is idle for half a minute; libcups would then reconnect in its own time.
constexpr auto longestIdle = 10s;

std::string resourceOf(const std::string& queue) { return queue.empty() ? "/" : "/printers/" + queue; }

// To the end of the answer, or to what was there before the connection was lost.
std::string readBody(http_t* http) {
    std::string body;
    std::string piece(1 << 16, '\0');
    for (ssize_t size = 0; (size = httpRead2(http, piece.data(), piece.size())) > 0;) {
        body.append(piece, 0, static_cast<std::size_t>(size));
    }
    return body;
}

ssize_t readFromText(void* text, ipp_uchar_t* to, std::size_t size) {
    auto& rest = *static_cast<std::string_view*>(text);
    const std::string_view piece = rest.substr(0, size);
    std::ranges::copy(piece, to);
    rest.remove_prefix(piece.size());
    return static_cast<ssize_t>(piece.size());
}

// Null where the body is no whole message.
IppMessage parsed(std::string_view body) {
    IppMessage message(ippNew());
    return ippReadIO(&body, readFromText, 1, nullptr, message.get()) == IPP_STATE_DATA ? std::move(message) : nullptr;
}

}  // namespace

Connection::Connection() {
    cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                       nullptr);
}

void Connection::lost(const std::string& queue, bool silent) {
    http_.reset();
    if (silent) {
        silent_ = !end_;
        throw failure(ETIMEDOUT, queue, "");
    }
    throw failure(ECONNREFUSED, queue, "");
}

double Connection::within(double seconds) const {
    if (!end_) {
        return seconds;
    }
    const std::chrono::duration<double> left = *end_ - Clock::now();
    return std::clamp(left.count(), leastSeconds, seconds);
}

double Connection::answerLimit(double seconds) const {
    return std::max(within(leaveSeconds + seconds) - leaveSeconds, leastSeconds);
}

void Connection::connect(const std::string& queue, double timeout) {
    if (silent_) {
        throw failure(ETIMEDOUT, queue, "");
    }
    if (http_ != nullptr && Clock::now() - lastUse_ > longestIdle) {
        http_.reset();
    }
    if (http_ == nullptr) {
        const Clock::time_point start = Clock::now();
        const std::chrono::duration<double> limit(within(connectSeconds));
        const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(limit);
        http_.reset(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                                 static_cast<int>(milliseconds.count()), nullptr));
        if (http_ == nullptr) {
            lost(queue, Clock::now() - start >= milliseconds);
        }
    }
    httpSetTimeout(
        http_.get(), timeout, [](http_t*, void*) { return 0; }, nullptr);
    lastUse_ = Clock::now();
}

http_t* Connection::connected(const std::string& queue) {
    connect(queue, within(answerSeconds));
    return http_.get();
}

bool Connection::waitedFor(double limit) const {
    return Clock::now() - lastUse_ >= std::chrono::duration<double>(std::min(limit, answerSeconds));
}

IppMessage Connection::request(const std::string& queue, IppMessage message, int fileDescriptor) {
    const double usual = fileDescriptor < 0 ? answerSeconds : documentSeconds;
    const double limit = answerLimit(usual);
    connect(queue, limit);
    IppMessage answer(cupsDoIORequest(http_.get(), message.release(), resourceOf(queue).c_str(), fileDescriptor, -1));
    const ipp_status_t status = cupsLastError();
    const std::string said = cupsLastErrorString() != nullptr ? cupsLastErrorString() : "";
    const bool denied = status == IPP_STATUS_ERROR_FORBIDDEN || status == IPP_STATUS_ERROR_NOT_AUTHENTICATED ||
                        status == IPP_STATUS_ERROR_NOT_AUTHORIZED ||
                        status == IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED;
    if (answer == nullptr && !denied) {
        lost(queue, waitedFor(limit));
    }
    lastUse_ = Clock::now();
    if (status >= IPP_STATUS_ERROR_BAD_REQUEST) {
        throw failure(static_cast<std::uint32_t>(status), queue, said);
    }
    return answer;
}

IppMessage Connection::requestLong(const std::string& queue, IppMessage message) {
    const double limit = answerLimit(answerSeconds);
    connect(queue, limit);
    http_status_t status =
        cupsSendRequest(http_.get(), message.get(), resourceOf(queue).c_str(), ippLength(message.get()));
    while (status == HTTP_STATUS_CONTINUE) {
        status = httpUpdate(http_.get());
    }
    if (status == HTTP_STATUS_OK) {
        IppMessage answer = parsed(readBody(http_.get()));
        if (answer != nullptr && ippGetStatusCode(answer.get()) < IPP_STATUS_ERROR_BAD_REQUEST) {
            lastUse_ = Clock::now();
            return answer;
        }
    }
    // Whatever else there is, libcups knows what to do: a connection that the server closed, an error, a refusal.
    if (waitedFor(limit)) {
        lost(queue, true);
    }
    http_.reset();
    return request(queue, std::move(message));
}

bool Connection::fetch(const std::string& resource, int fileDescriptor) {
    const bool fetched = cupsGetFd(connected({}), resource.c_str(), fileDescriptor) == HTTP_STATUS_OK;
    if (!fetched) {
        http_.reset();
    }
    return fetched;
}

}  // namespace platform_linux::cups
