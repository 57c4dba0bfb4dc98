#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

/// The least that a program with a window does with this toolkit. With the option --text, its window has a
/// menu bar and one line of text, for which fonts have to be found and loaded.
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
