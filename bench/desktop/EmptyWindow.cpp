#include <QApplication>
#include <QMainWindow>

/// The least that a program with a window does with this toolkit.
int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    QMainWindow window;
    window.setWindowTitle("Empty");
    window.resize(760, 800);
    window.show();
    return QApplication::exec();
}
