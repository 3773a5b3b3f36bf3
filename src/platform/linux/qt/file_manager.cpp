#include "platform/linux/qt/file_manager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QFileInfo>
#include <QUrl>
#include <utility>

namespace platform_linux::qt {

namespace {

constexpr const char* service = "org.freedesktop.FileManager1";
constexpr int quick = 1000;     // milliseconds, for the bus itself
constexpr int patience = 5000;  // for a file manager that may have to be started

// Whether it runs, or would be started.
bool isOnBus(const QDBusConnection& bus) {
    for (const char* question : {"ListNames", "ListActivatableNames"}) {
        const QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                                 "org.freedesktop.DBus", question);
        const QDBusReply<QStringList> names = bus.call(call, QDBus::Block, quick);
        if (names.isValid() && names.value().contains(QString(service))) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool markInFileManager(const QString& path, std::function<void()> otherwise) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !isOnBus(bus)) {
        return false;
    }
    QDBusMessage show = QDBusMessage::createMethodCall(service, "/org/freedesktop/FileManager1", service, "ShowItems");
    const QString address = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded);
    const QString startedByNobody;
    show << QStringList(address) << startedByNobody;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(show, patience), QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, otherwise = std::move(otherwise)] {
        if (answer->isError()) {
            otherwise();
        }
        answer->deleteLater();
    });
    return true;
}

}  // namespace platform_linux::qt
