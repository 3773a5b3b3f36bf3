#include "platform/linux/qt/qt_desktop.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPluginLoader>
#include <QPushButton>
#include <QTranslator>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/qt/file_choice.h"
#include "platform/linux/qt/file_manager.h"
#include "platform/linux/qt/open_forms.h"
#include "platform/linux/qt/qt_form.h"
#include "platform/linux/qt/sheet_surface.h"
#include "runtime/program.h"

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

struct Choice {
    const char* label;
    QMessageBox::ButtonRole role;
    Answer answer;
};

std::vector<Choice> choicesOf(Buttons buttons) {
    const Choice ok{"OK", QMessageBox::AcceptRole, Answer::ok};
    switch (buttons) {
        case Buttons::okCancel:
            return {ok, {"Abbrechen", QMessageBox::RejectRole, Answer::cancel}};
        case Buttons::yesNo:
            return {{"Ja", QMessageBox::YesRole, Answer::yes}, {"Nein", QMessageBox::NoRole, Answer::no}};
        default:
            return {ok};
    }
}

QMessageBox::Icon iconOf(Icon icon) {
    switch (icon) {
        case Icon::critical:
            return QMessageBox::Critical;
        case Icon::information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// What fits on a screen with the buttons below it.
QString shortened(QString text) {
    constexpr qsizetype most = 3000;
    constexpr qsizetype mostLines = 40;
    const qsizetype firstLines = text.section('\n', 0, mostLines - 1).size();
    const qsizetype size = std::min(most, firstLines);
    if (text.size() > size) {
        text.truncate(size);
        text += "…";
    }
    return text;
}

QString linesOf(const std::string& text) {
    QString lines = QString::fromStdString(text);
    lines.replace("\r\n", "\n").replace('\r', '\n').remove(QChar::Null);
    return shortened(lines);
}

// The program's window that the user works in, whatever module opened it; null where none is open.
QWidget* topmostWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.rbegin(), windows.rend(), [](const QWidget* window) {
        return window->isVisible() && (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog);
    });
    return shown != windows.rend() ? *shown : nullptr;
}

// What Qt says of its surroundings is of no use to the user of a printer driver; why it ends the process may be.
void onlyFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type == QtFatalMsg) {
        std::fputs(qPrintable(message + '\n'), stderr);
    }
}

class QtDesktop : public platform_linux::qt::Desktop {
public:
    explicit QtDesktop(platform_linux::qt::CodePageSource codePage) : sheet_(std::move(codePage)) {
        QCoreApplication::setApplicationName(runtime::programName);
        // The desktop entry, by which desktops group windows and know their icon.
        QGuiApplication::setDesktopFileName("krvwinpr");
        QGuiApplication::setQuitOnLastWindowClosed(false);
        QGuiApplication::setWindowIcon(QIcon(":/krvwinpr.ico"));
        // What Qt does only in its own main loop; without it screen readers meet no window.
        QAccessible::setRootObject(&application_);
        // For the menus that Qt's own controls have; the program speaks German.
        if (translator_.load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
            QCoreApplication::installTranslator(&translator_);
        }
    }

    Answer messageBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title) override {
        const std::vector<Choice> choices = choicesOf(buttons);
        QMessageBox box(topmostWindow());
        box.setTextFormat(Qt::PlainText);
        box.setText(linesOf(text));
        box.setWindowTitle(QString::fromStdString(title));
        box.setIcon(iconOf(icon));
        std::vector<QAbstractButton*> shown;
        shown.reserve(choices.size());
        for (const Choice& choice : choices) {
            shown.push_back(box.addButton(QString(choice.label), choice.role));
        }
        box.setDefaultButton(qobject_cast<QPushButton*>(shown.front()));
        box.setEscapeButton(shown.back());
        box.show();
        box.raise();
        box.activateWindow();
        box.exec();
        for (std::size_t i = 0; i < choices.size(); ++i) {
            if (box.clickedButton() == shown[i]) {
                return choices[i].answer;
            }
        }
        return choices.back().answer;
    }

    void processEvents() override { QCoreApplication::processEvents(); }

    std::unique_ptr<platform::Form> createForm(const platform::FormDesign& design, platform::FormEvents& events,
                                               platform::Form* owner) override {
        return std::make_unique<platform_linux::qt::QtForm>(design, events, forms_, sheet_,
                                                            static_cast<platform_linux::qt::QtForm*>(owner));
    }
    void runForms() override { forms_.run(); }
    void closeForms() override { forms_.closeAll(); }

    void copyText(const std::string& text) override {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    }

    std::optional<std::string> askFileToWrite(platform::Form& owner, const std::string& title,
                                              const std::string& suggestion, const std::string& kindOfFile,
                                              const std::string& ending) override {
        return platform_linux::qt::askFileToWrite(static_cast<platform_linux::qt::QtForm&>(owner).window(), title,
                                                  suggestion, kindOfFile, ending);
    }

    std::optional<std::string> askFileToRead(platform::Form& owner, const std::string& title,
                                             const std::string& folder) override {
        return platform_linux::qt::askFileToRead(static_cast<platform_linux::qt::QtForm&>(owner).window(), title,
                                                 folder);
    }

    bool markInFileManager(const std::string& path, std::function<void()> otherwise) override {
        return platform_linux::qt::markInFileManager(QString::fromStdString(path), std::move(otherwise));
    }

private:
    // Qt keeps references to both as long as the application lives.
    std::string name_ = runtime::programName;
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    int argumentCount_ = 1;
    QApplication application_{argumentCount_, arguments_.data()};
    QTranslator translator_;
    // What sheets of paper on the forms are drawn on; it keeps fonts and pictures from one to the next.
    platform_linux::qt::SheetSurface sheet_;
    platform_linux::qt::OpenForms forms_;
};

// Qt ends the process where it has no plugin for the display, or one that lacks a library. What loads here need not be
// loaded again.
bool pluginLoads() {
    const bool usual = qEnvironmentVariableIsEmpty("QT_PLUGIN_PATH") &&
                       qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return !usual || QPluginLoader(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms/libqxcb.so").load();
}

}  // namespace

extern "C" {
[[gnu::visibility("default")]] std::unique_ptr<platform_linux::qt::Desktop> krvwinpr_qt(
    platform_linux::qt::CodePageSource codePage);
}

std::unique_ptr<platform_linux::qt::Desktop> krvwinpr_qt(platform_linux::qt::CodePageSource codePage) {
    qInstallMessageHandler(onlyFatal);
    if (!pluginLoads()) {
        return nullptr;
    }
    auto desktop = std::make_unique<QtDesktop>(std::move(codePage));
    // Qt takes over the locale of the environment; numbers are no business of the process's locale here.
    std::setlocale(LC_NUMERIC, "C");
    // On these nobody would ever see a box, let alone answer it.
    const QString screen = QGuiApplication::platformName();
    if (screen == "offscreen" || screen == "minimal") {
        return nullptr;
    }
    return desktop;
}
