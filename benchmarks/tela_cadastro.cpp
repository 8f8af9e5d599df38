// The payee register opened in its real window, offscreen: the time from the session's start
// to the list painted, and the peak memory with the window shown. Prints "ms KiB".
#include "core/sessao.h"
#include "registers/favorec.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <cstdio>
#include <sys/resource.h>

int main(int argc, char *argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    vexa::ui::prepara_aplicacao(app);
    if (argc < 2) return 2;
    QElapsedTimer relogio;
    relogio.start();
    vexa::Sessao sessao(QString::fromLocal8Bit(argv[1]));
    vexa::ui::DesktopQt desktop;
    vexa::Tela *tela = desktop.Abre(std::make_unique<vexa::Favorec>(sessao, desktop));
    if (!tela) return 1;
    QMainWindow *janela = desktop.Janela(*tela);
    QApplication::processEvents();
    janela->repaint();
    const double ms = relogio.nsecsElapsed() / 1e6;
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    std::printf("%.1f %ld\n", ms, uso.ru_maxrss);
    return 0;
}
