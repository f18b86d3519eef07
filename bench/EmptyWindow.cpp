// EmptyWindow: the least that a Qt program with a window does; what start-up is compared with.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    window.resize(592, 478);
    window.show();
    return QApplication::exec();
}
