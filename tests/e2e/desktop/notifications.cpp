// krv-notifications CAPABILITY...: the notification service of a session bus, until it is ended. Each message is a line
// on standard output, "title: text", behind a first line that says that it is ready.
#include <dbus/dbus.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* service = "org.freedesktop.Notifications";

void print(DBusMessage* call) {
    const char* text = nullptr;
    dbus_uint32_t number = 0;
    const char* title = nullptr;
    const char* body = nullptr;
    dbus_message_get_args(call, nullptr, DBUS_TYPE_STRING, &text, DBUS_TYPE_UINT32, &number, DBUS_TYPE_STRING, &text,
                          DBUS_TYPE_STRING, &title, DBUS_TYPE_STRING, &body, DBUS_TYPE_INVALID);
    std::cout << title << ": " << body << std::endl;
}

void answer(DBusConnection* bus, DBusMessage* call, std::vector<const char*> capabilities) {
    DBusMessage* reply = dbus_message_new_method_return(call);
    if (dbus_message_is_method_call(call, service, "GetCapabilities") != FALSE) {
        const char** names = capabilities.data();
        dbus_message_append_args(reply, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &names,
                                 static_cast<int>(capabilities.size()), DBUS_TYPE_INVALID);
    } else if (dbus_message_has_signature(call, "susssasa{sv}i") != FALSE) {
        print(call);
        const dbus_uint32_t number = 1;
        dbus_message_append_args(reply, DBUS_TYPE_UINT32, &number, DBUS_TYPE_INVALID);
    }
    dbus_connection_send(bus, reply, nullptr);
    dbus_connection_flush(bus);
    dbus_message_unref(reply);
}

}  // namespace

int main(int count, char** arguments) {
    DBusConnection* bus = dbus_bus_get(DBUS_BUS_SESSION, nullptr);
    if (bus == nullptr || dbus_bus_request_name(bus, service, 0, nullptr) != DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER) {
        return 1;
    }
    std::cout << "ready" << std::endl;
    while (dbus_connection_read_write(bus, -1) != FALSE) {
        while (DBusMessage* message = dbus_connection_pop_message(bus)) {
            if (dbus_message_get_type(message) == DBUS_MESSAGE_TYPE_METHOD_CALL) {
                answer(bus, message, {arguments + 1, arguments + count});
            }
            dbus_message_unref(message);
        }
    }
}
