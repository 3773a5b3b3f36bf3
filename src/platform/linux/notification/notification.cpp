// By "Desktop Notifications" 1.2 of freedesktop.org.
#include "platform/linux/notification/notification.h"

#include <dbus/dbus.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "runtime/program.h"

namespace {

struct CloseConnection {
    void operator()(DBusConnection* connection) const {
        dbus_connection_close(connection);
        dbus_connection_unref(connection);
    }
};
struct ReleaseMessage {
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};
using Connection = std::unique_ptr<DBusConnection, CloseConnection>;
using Message = std::unique_ptr<DBusMessage, ReleaseMessage>;

// Where the environment does not name the session bus, it is at its usual place.
std::string busAddress() {
    if (const char* named = std::getenv("DBUS_SESSION_BUS_ADDRESS"); named != nullptr && *named != '\0') {
        return named;
    }
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr || *folder == '\0') {
        return "";
    }
    const std::unique_ptr<char, decltype(&dbus_free)> path(
        dbus_address_escape_value((std::string(folder) + "/bus").c_str()), dbus_free);
    return path ? std::string("unix:path=") + path.get() : "";
}

Connection sessionBus() {
    const std::string address = busAddress();
    Connection bus(address.empty() ? nullptr : dbus_connection_open_private(address.c_str(), nullptr));
    if (bus) {
        dbus_connection_set_exit_on_disconnect(bus.get(), FALSE);
        if (dbus_bus_register(bus.get(), nullptr) == FALSE) {
            bus.reset();
        }
    }
    return bus;
}

Message callOf(const char* method) {
    constexpr const char* name = "org.freedesktop.Notifications";
    return Message(dbus_message_new_method_call(name, "/org/freedesktop/Notifications", name, method));
}

// The answer; nothing where there is none, or it is an error.
Message answerTo(const Message& call, const Connection& bus) {
    return Message(
        call ? dbus_connection_send_with_reply_and_block(bus.get(), call.get(), DBUS_TIMEOUT_USE_DEFAULT, nullptr)
             : nullptr);
}

// Whether the service takes "<", ">" and "&" of a text for markup.
bool readsMarkup(const Connection& bus) {
    const Message answer = answerTo(callOf("GetCapabilities"), bus);
    char** names = nullptr;
    int count = 0;
    if (!answer || dbus_message_get_args(answer.get(), nullptr, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &names, &count,
                                         DBUS_TYPE_INVALID) == FALSE) {
        return false;
    }
    bool found = false;
    for (int i = 0; i < count; ++i) {
        found = found || std::string_view(names[i]) == "body-markup";
    }
    dbus_free_string_array(names);
    return found;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

// The bus refuses, and its library takes for a fault of the program, what is no valid UTF-8.
std::string valid(std::string text) {
    if (dbus_validate_utf8(text.c_str(), nullptr) == FALSE) {
        for (char& c : text) {
            c = static_cast<unsigned char>(c) < 0x80 ? c : '?';
        }
    }
    return text;
}

// Hints: it stays until the user has seen it.
bool appendHints(DBusMessageIter& arguments) {
    constexpr const char* name = "urgency";
    constexpr unsigned char critical = 2;
    DBusMessageIter hints{};
    DBusMessageIter hint{};
    DBusMessageIter value{};
    return dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &hints) != FALSE &&
           dbus_message_iter_open_container(&hints, DBUS_TYPE_DICT_ENTRY, nullptr, &hint) != FALSE &&
           dbus_message_iter_append_basic(&hint, DBUS_TYPE_STRING, &name) != FALSE &&
           dbus_message_iter_open_container(&hint, DBUS_TYPE_VARIANT, "y", &value) != FALSE &&
           dbus_message_iter_append_basic(&value, DBUS_TYPE_BYTE, &critical) != FALSE &&
           dbus_message_iter_close_container(&hint, &value) != FALSE &&
           dbus_message_iter_close_container(&hints, &hint) != FALSE &&
           dbus_message_iter_close_container(&arguments, &hints) != FALSE;
}

Message notifyCall(const std::string& text) {
    Message call = callOf("Notify");
    const char* program = runtime::programName;
    const char* icon = "printer";
    const char* body = text.c_str();
    const char** noActions = nullptr;
    const dbus_uint32_t replaced = 0;
    const dbus_int32_t usualTime = -1;
    DBusMessageIter arguments{};
    if (!call ||
        dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &program, DBUS_TYPE_UINT32, &replaced, DBUS_TYPE_STRING,
                                 &icon, DBUS_TYPE_STRING, &program, DBUS_TYPE_STRING, &body, DBUS_TYPE_ARRAY,
                                 DBUS_TYPE_STRING, &noActions, 0, DBUS_TYPE_INVALID) == FALSE) {
        return nullptr;
    }
    dbus_message_iter_init_append(call.get(), &arguments);
    const bool whole =
        appendHints(arguments) && dbus_message_iter_append_basic(&arguments, DBUS_TYPE_INT32, &usualTime) != FALSE;
    return whole ? std::move(call) : nullptr;
}

}  // namespace

extern "C" {
[[gnu::visibility("default")]] bool krvwinpr_notification(const std::string& text);
}

bool krvwinpr_notification(const std::string& text) {
    const Connection bus = sessionBus();
    if (!bus) {
        return false;
    }
    const std::string shown = valid(text);
    return answerTo(notifyCall(readsMarkup(bus) ? escaped(shown) : shown), bus) != nullptr;
}
