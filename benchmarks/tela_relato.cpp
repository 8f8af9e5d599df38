// The report opened in its real window, offscreen, over the data folder given: the time from
// the session's start to the table and the chart painted; a click on the amount's heading until
// the table is painted in that order; the chart's sums asked of the database and drawn again.
// Prints "abrir ordenar grafico" in ms, then the peak memory in KiB.
#include "core/sessao.h"
#include "reports/relato.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"
#include "ui/relato_tabela.h"

#include <QApplication>
#include <QChartView>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMainWindow>
#include <QTableView>
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
    auto *relato =
        dynamic_cast<vexa::Relato *>(desktop.Abre(std::make_unique<vexa::Relato>(sessao, desktop)));
    if (!relato) return 1;
    QMainWindow *janela = desktop.Janela(*relato);
    QApplication::processEvents();
    janela->repaint();
    const double abrir = relogio.nsecsElapsed() / 1e6;

    auto *tabela = janela->findChild<QTableView *>("List1");
    auto *grafico = janela->findChild<QChartView *>();
    if (!tabela || !grafico) return 1;
    relogio.restart();
    emit tabela->horizontalHeader()->sectionClicked(vexa::ColunaLog::Valor);
    QApplication::processEvents();
    tabela->repaint();
    const double ordenar = relogio.nsecsElapsed() / 1e6;

    relogio.restart();
    QList<vexa::SomaMensal> somas;
    vexa::somas_mensais(*relato->Linhas(), somas);
    vexa::ui::desenha_grafico(*grafico, somas);
    grafico->repaint();
    const double desenho = relogio.nsecsElapsed() / 1e6;

    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    std::printf("%.1f %.1f %.1f %ld\n", abrir, ordenar, desenho, uso.ru_maxrss);
    return 0;
}
