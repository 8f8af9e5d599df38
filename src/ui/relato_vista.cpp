// The report of issued cheques: the list under its head, the details of the cheque chosen
// beside the commands, and the list's format, target and general report below.
#include "ui/partes.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {
QFont fixa() {
    QFont f("Courier New");
    f.setStyleHint(QFont::TypeWriter);
    f.setFixedPitch(true);
    return f;
}
} // namespace

void CriaVistaRelato(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central, 8);

    // The order of the list, and the sign of a filter in force.
    auto *topo = new QHBoxLayout;
    auto *rotuloOrdem = cria<QLabel>(central, "LabelOrdem");
    auto *escolha = cria<QComboBox>(central, "Ordem");
    rotuloOrdem->setBuddy(escolha);
    topo->addWidget(rotuloOrdem);
    topo->addWidget(escolha);
    topo->addWidget(cria<QCheckBox>(central, "Decrescente"));
    topo->addSpacing(16);
    auto *filtro = cria<QLabel>(central, "LabelFiltro");
    filtro->setStyleSheet(
        "QLabel { background: #fff3c4; border: 1px solid #d9b84a; padding: 2px 6px; }");
    topo->addWidget(filtro);
    topo->addStretch(1);
    v->addLayout(topo);

    auto *cabeca = cria<QLabel>(central, "Label2");
    cabeca->setFont(fixa());
    v->addWidget(cabeca);
    auto *lista = cria<QListView>(central, "List1");
    lista->setUniformItemSizes(true);
    lista->setFont(fixa());
    lista->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lista->setMinimumHeight(220);
    v->addWidget(lista, 1);
    // The heading starts where the rows' text starts: past the list's frame and the margin the
    // style gives an item's text.
    cabeca->setContentsMargins(
        lista->frameWidth() +
            lista->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, lista) + 1,
        0, 0, 0);

    auto *baixo = new QHBoxLayout;
    baixo->setSpacing(14);
    v->addLayout(baixo);

    // The details: caption and value side by side, the comments under them.
    auto *detalhe = new QGridLayout;
    detalhe->setHorizontalSpacing(8);
    const int ordem[] = {0, 1, 2, 3, 4, 6, 7, 5};
    int linha = 0;
    for (int i : ordem) {
        detalhe->addWidget(cria<QLabel>(central, nome_controle("Label1", i)), linha, 0,
                           Qt::AlignRight);
        auto *valor = cria<QLabel>(central, nome_controle("Text1", i));
        valor->setMinimumWidth(320);
        valor->setTextInteractionFlags(Qt::TextSelectableByMouse);
        detalhe->addWidget(valor, linha++, 1);
    }
    detalhe->addWidget(cria<QLabel>(central, "LabelContagem"), linha++, 1);
    detalhe->addWidget(cria<QLabel>(central, nome_controle("Label1", 8)), linha, 0,
                       Qt::AlignRight | Qt::AlignTop);
    for (int i = 8; i <= 10; ++i)
        detalhe->addWidget(cria<QLabel>(central, nome_controle("Text1", i)), linha++, 1);
    detalhe->setRowStretch(linha, 1);
    baixo->addLayout(detalhe, 1);

    auto *opcoes = new QVBoxLayout;
    auto *formato = cria<QGroupBox>(central, "FrameFormato");
    auto *f = new QVBoxLayout(formato);
    f->addWidget(cria<QRadioButton>(formato, nome_controle("OpCmd", 1)));
    f->addWidget(cria<QRadioButton>(formato, nome_controle("OpCmd01", 1)));
    opcoes->addWidget(formato);
    auto *envio = cria<QGroupBox>(central, "FrameEnvio");
    auto *e = new QVBoxLayout(envio);
    e->addWidget(cria<QRadioButton>(envio, nome_controle("OpCmd", 0)));
    e->addWidget(cria<QRadioButton>(envio, nome_controle("OpCmd01", 0)));
    e->addWidget(cria<QRadioButton>(envio, nome_controle("OpCmd02", 0)));
    opcoes->addWidget(envio);
    auto *geral = cria<QGroupBox>(central, "FrameGeral");
    auto *g = new QVBoxLayout(geral);
    g->addWidget(cria<QLabel>(geral, "Label3"));
    g->addWidget(cria<QLabel>(geral, "Label4"));
    g->addWidget(cria_botao(geral, "criar"));
    g->addWidget(cria_botao(geral, nome_controle("Exportar", 0)));
    g->addWidget(cria_botao(geral, nome_controle("Exportar", 1)));
    opcoes->addWidget(geral);
    opcoes->addStretch(1);
    baixo->addLayout(opcoes);

    auto *comandos = new QVBoxLayout;
    for (const char *nome : {"SSCommand6", "SSCommand5", "SSCommand3", "Elimina", "SSCommand1",
                             "SSCommand4", "SSCommand2"})
        comandos->addWidget(cria_botao(central, nome));
    comandos->addStretch(1);
    baixo->addLayout(comandos);

    tela.LarguraJanela = 1120;
    tela.AlturaJanela = 640;
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
