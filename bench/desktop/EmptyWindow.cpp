#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

/// The minimal Qt program with a window. With --text, the window has a menu bar and a line of text, for which
/// fonts must be loaded.
int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    QMainWindow window;
    window.setWindowTitle("Empty");
    QLabel text("A line of text");
    if (QApplication::arguments().contains("--text")) {
        window.menuBar()->addMenu("File");
        window.setCentralWidget(&text);
    }
    window.resize(760, 800);
    window.show();
    const int status = QApplication::exec();
    text.setParent(nullptr);
    return status;
}
