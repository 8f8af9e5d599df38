// The report of issued cheques: the register as a table beside the chart of its months, the
// total and the count under it, the details of the cheque chosen, the list's format, target and
// files, and the commands.
#include "ui/binder.h"
#include "ui/partes.h"
#include "ui/relato_tabela.h"

#include <QChartView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <optional>

namespace vexa::ui {

void CriaVistaRelato(Tela &tela, QMainWindow &janela) {
    auto &r = dynamic_cast<Relato &>(tela);
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central, 8);

    // The order of the list; the sign of a filter in force, beside the command that drops it.
    auto *topo = new QHBoxLayout;
    auto *rotuloOrdem = cria<QLabel>(central, "LabelOrdem");
    auto *escolha = cria<QComboBox>(central, "Ordem");
    rotuloOrdem->setBuddy(escolha);
    topo->addWidget(rotuloOrdem);
    topo->addWidget(escolha);
    topo->addWidget(cria<QCheckBox>(central, "Decrescente"));
    topo->addStretch(1);
    auto *filtro = cria<QLabel>(central, "LabelFiltro");
    filtro->setStyleSheet("QLabel { background: #fff3c4; border: 1px solid #d9b84a; "
                          "padding: 3px 8px; font-weight: bold; }");
    topo->addWidget(filtro);
    topo->addWidget(cria_botao(central, "SSCommand5"));
    topo->addWidget(cria_botao(central, "SSCommand6"));
    v->addLayout(topo);
    v->addWidget(cria<QLabel>(central, "Label2"));

    // The table, with the total and the count of the rows it shows under it.
    auto *divisao = new QSplitter(Qt::Horizontal, central);
    auto *ladoTabela = new QWidget(divisao);
    auto *t = new QVBoxLayout(ladoTabela);
    t->setContentsMargins(0, 0, 0, 0);
    auto *tabela = cria<QTableView>(ladoTabela, "List1");
    tabela->setModel(new TabelaRelato(r, tabela));
    tabela->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabela->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tabela->setAlternatingRowColors(true);
    tabela->setWordWrap(false);
    tabela->setShowGrid(false);
    // A register of years: every row as high as the first, no heading per row.
    tabela->verticalHeader()->hide();
    tabela->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    tabela->verticalHeader()->setDefaultSectionSize(tabela->fontMetrics().height() + 6);
    QHeaderView *cabeca = tabela->horizontalHeader();
    cabeca->setSectionsClickable(true);
    cabeca->setHighlightSections(false);
    cabeca->setStretchLastSection(true);
    const int larguras[] = {78, 62, 50, 100, 68, 200, 110, 100};
    for (int c = 0; c < ColunasLog; ++c)
        cabeca->resizeSection(c, larguras[c]);
    QObject::connect(cabeca, &QHeaderView::sectionClicked, tabela, [&r](int coluna) {
        Binder::Despacha([&r, coluna] { r.Cabecalho_Click(coluna); });
    });
    t->addWidget(tabela, 1);
    auto *soma = new QHBoxLayout;
    soma->addStretch(1);
    soma->addWidget(cria<QLabel>(ladoTabela, nome_controle("Label1", 5)));
    auto *total = cria<QLabel>(ladoTabela, nome_controle("Text1", 5));
    total->setStyleSheet("QLabel { font-weight: bold; }");
    soma->addWidget(total);
    soma->addSpacing(16);
    soma->addWidget(cria<QLabel>(ladoTabela, "LabelContagem"));
    t->addLayout(soma);

    // The chart of the months beside it, with its print and its PDF.
    auto *ladoGrafico = new QWidget(divisao);
    auto *gl = new QVBoxLayout(ladoGrafico);
    gl->setContentsMargins(0, 0, 0, 0);
    QChartView *grafico = cria_grafico(ladoGrafico);
    grafico->setMinimumSize(340, 260);
    gl->addWidget(grafico, 1);
    auto *gb = new QHBoxLayout;
    gb->addStretch(1);
    gb->addWidget(cria_botao(ladoGrafico, nome_controle("Grafico", 0)));
    gb->addWidget(cria_botao(ladoGrafico, nome_controle("Grafico", 1)));
    gl->addLayout(gb);
    divisao->addWidget(ladoTabela);
    divisao->addWidget(ladoGrafico);
    divisao->setStretchFactor(0, 3);
    divisao->setStretchFactor(1, 2);
    divisao->setSizes({820, 440});
    divisao->setChildrenCollapsible(false);
    v->addWidget(divisao, 1);

    auto *baixo = new QHBoxLayout;
    baixo->setSpacing(14);
    v->addLayout(baixo);

    // The details: caption and value side by side, the comments under them.
    auto *detalhe = new QGridLayout;
    detalhe->setHorizontalSpacing(8);
    detalhe->setVerticalSpacing(2);
    const int ordem[] = {0, 6, 1, 2, 3, 4, 7};
    int linha = 0;
    for (int i : ordem) {
        detalhe->addWidget(cria<QLabel>(central, nome_controle("Label1", i)), linha, 0,
                           Qt::AlignRight);
        auto *valor = cria<QLabel>(central, nome_controle("Text1", i));
        valor->setMinimumWidth(300);
        valor->setTextInteractionFlags(Qt::TextSelectableByMouse);
        detalhe->addWidget(valor, linha++, 1);
    }
    detalhe->addWidget(cria<QLabel>(central, nome_controle("Label1", 8)), linha, 0,
                       Qt::AlignRight | Qt::AlignTop);
    for (int i = 8; i <= 10; ++i)
        detalhe->addWidget(cria<QLabel>(central, nome_controle("Text1", i)), linha++, 1);
    detalhe->setRowStretch(linha, 1);
    baixo->addLayout(detalhe, 1);

    auto *formato = cria<QGroupBox>(central, "FrameFormato");
    auto *f = new QVBoxLayout(formato);
    f->addWidget(cria<QRadioButton>(formato, nome_controle("OpCmd", 1)));
    f->addWidget(cria<QRadioButton>(formato, nome_controle("OpCmd01", 1)));
    f->addStretch(1);
    auto *envio = cria<QGroupBox>(central, "FrameEnvio");
    auto *e = new QVBoxLayout(envio);
    e->addWidget(cria<QRadioButton>(envio, nome_controle("OpCmd", 0)));
    e->addWidget(cria<QRadioButton>(envio, nome_controle("OpCmd01", 0)));
    e->addWidget(cria<QRadioButton>(envio, nome_controle("OpCmd02", 0)));
    e->addWidget(cria_botao(envio, "SSCommand1"));
    auto *opcoes = new QVBoxLayout;
    opcoes->addWidget(formato);
    opcoes->addWidget(envio);
    opcoes->addStretch(1);
    baixo->addLayout(opcoes);

    auto *geral = cria<QGroupBox>(central, "FrameGeral");
    auto *g = new QVBoxLayout(geral);
    auto *compativel = new QHBoxLayout;
    compativel->addWidget(cria<QLabel>(geral, "Label3"));
    compativel->addWidget(cria<QLabel>(geral, "Label4"));
    compativel->addStretch(1);
    g->addLayout(compativel);
    g->addWidget(cria_botao(geral, "criar"));
    g->addWidget(cria_botao(geral, nome_controle("Exportar", 0)));
    g->addWidget(cria_botao(geral, nome_controle("Exportar", 1)));
    g->addStretch(1);
    baixo->addWidget(geral);

    auto *comandos = new QVBoxLayout;
    for (const char *nome : {"SSCommand3", "Elimina", "Historico", "SSCommand4", "SSCommand2"})
        comandos->addWidget(cria_botao(central, nome));
    comandos->addStretch(1);
    baixo->addLayout(comandos);

    // The chart follows the rows the list shows; it is drawn again only when its sums changed.
    r.GraficoPdf = [grafico = QPointer<QChartView>(grafico)] {
        return grafico ? grafico_pdf(*grafico) : QByteArray();
    };
    r.ImprimeGrafico = [grafico = QPointer<QChartView>(grafico)] {
        return grafico ? imprime_grafico(*grafico) : 482;
    };
    auto desenhado = std::make_shared<std::optional<QList<SomaMensal>>>();
    auto pinta = [&r, grafico = QPointer<QChartView>(grafico),
                  cabeca = QPointer<QHeaderView>(cabeca), desenhado] {
        if (!grafico || !cabeca) return;
        cabeca->setSortIndicatorShown(r.OrdemColuna >= 0);
        if (r.OrdemColuna >= 0)
            cabeca->setSortIndicator(r.OrdemColuna,
                                     r.OrdemCrescente ? Qt::AscendingOrder : Qt::DescendingOrder);
        if (*desenhado == r.SomasGrafico()) return;
        *desenhado = r.SomasGrafico();
        desenha_grafico(*grafico, r.SomasGrafico());
    };
    // The chart is drawn once the window's binder exists, after the table has shown its rows.
    Binder::PintaAoEspelhar(janela, pinta);

    tela.LarguraJanela = 1300;
    tela.AlturaJanela = 820;
}

void CriaVistaFiltro(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    auto *g = new QGridLayout;
    g->setHorizontalSpacing(8);
    const int larguras[] = {50, 80, 80, 130, 130, 0, 0, 0};
    const int linhas[] = {0, 1, 1, 2, 2, 3, 4, 5};
    const int colunas[] = {0, 0, 2, 0, 2, 0, 0, 0};
    for (int i = 0; i < 8; ++i) {
        g->addWidget(cria<QLabel>(central, nome_controle("Label1", i)), linhas[i], colunas[i],
                     Qt::AlignRight);
        auto *campo = cria_campo(central, nome_controle("Text1", i), larguras[i]);
        if (larguras[i] == 0)
            g->addWidget(campo, linhas[i], 1, 1, 3);
        else
            g->addWidget(campo, linhas[i], colunas[i] + 1, Qt::AlignLeft);
    }
    g->addWidget(cria<QLabel>(central, "Label2"), 0, 2, 1, 2);
    g->setColumnStretch(3, 1);
    v->addLayout(g);
    v->addStretch(1);
    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i = 0; i < 2; ++i)
        comandos->addWidget(cria_botao(central, nome_controle("Command3D1", i)));
    v->addLayout(comandos);
    tela.LarguraJanela = 520;
}

} // namespace vexa::ui
