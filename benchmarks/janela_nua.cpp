// The yardsticks of the start-up benchmark: a bare Qt window program that answers on the
// same local link as the program, once its window is shown and its event loop runs. With
// "--texto" the window shows one line of text, and so pays what any window with text pays
// once: finding and loading its font.
#include "core/instancia.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QStandardPaths>

int main(int argc, char *argv[]) {
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName("VexaPlus");
    QCoreApplication::setApplicationName("Vexa Plus");
    QMainWindow janela;
    janela.setWindowTitle("Janela");
    janela.resize(800, 600);
    if (app.arguments().contains("--texto"))
        janela.setCentralWidget(new QLabel("Vexa Plus: uma linha de texto"));
    janela.show();
    vexa::Instancia link(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    link.Escuta();
    return app.exec();
}
