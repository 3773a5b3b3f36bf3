// The least that a program with a window of Qt's can do.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    window.resize(450, 200);
    window.show();
    return QApplication::exec();
}
