// "Impressão de Cheques a Prazo": the total and how it is spread on top, with the fixed day at
// the right; the schedule in twelve rows (days, due date, amount, number); the bank, city and
// payee of every cheque below it; the key hint and the commands at the bottom.
#include "ui/partes.h"

#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {

QLabel *rotulo(QWidget *pai, const QString &texto, QWidget *par) {
    auto *l = new QLabel(texto, pai);
    l->setBuddy(par);
    return l;
}

QFrame *linha(QWidget *pai) {
    auto *l = new QFrame(pai);
    l->setFrameShape(QFrame::HLine);
    l->setFrameShadow(QFrame::Sunken);
    return l;
}

// Total, start date, days between instalments and their number, side by side; the fixed day
// in its frame at the right.
QHBoxLayout *cria_topo(Tela &tela, QWidget *central) {
    auto *topo = new QHBoxLayout;
    auto *g = new QGridLayout;
    g->setHorizontalSpacing(8);
    const std::pair<RefControle, int> campos[] = {
        {{"Text1", 0}, 100}, {{"DataPre", -1}, 80}, {{"prazo", -1}, 50}, {{"parcelas", -1}, 50}};
    int coluna = 0;
    for (const auto &[ref, largura] : campos) {
        auto *campo = cria_campo(central, ref.texto(), largura);
        if (ref.Nome == "Text1") campo->setAlignment(Qt::AlignRight);
        g->addWidget(rotulo(central, legenda(tela, ref.Nome, ref.Index), campo), 0, coluna);
        g->addWidget(campo, 1, coluna++);
    }
    topo->addLayout(g);
    topo->addStretch(1);

    auto *fixo = cria<QGroupBox>(central, "Frame1");
    auto *f = new QHBoxLayout(fixo);
    auto *dia = cria_campo(fixo, "Text5", 40);
    f->addWidget(rotulo(fixo, legenda(tela, "Text5"), dia));
    f->addWidget(dia);
    topo->addWidget(fixo);
    return topo;
}

// The twelve rows of the schedule, made a column at a time so that Tab walks each column
// down as Enter does.
QGridLayout *cria_parcelas(Tela &tela, QWidget *central) {
    auto *g = new QGridLayout;
    g->setHorizontalSpacing(10);
    g->setVerticalSpacing(4);
    g->addWidget(cria<QLabel>(central, nome_controle("Label1", 0)), 0, 0, Qt::AlignHCenter);
    g->addWidget(cria<QLabel>(central, nome_controle("Label1", 1)), 0, 3, Qt::AlignHCenter);
    g->addWidget(cria<QLabel>(central, nome_controle("Label1", 2)), 0, 4, Qt::AlignHCenter);
    for (int k = 0; k < 12; ++k) {
        auto *dias = cria_campo(central, nome_controle("Text1", k + 1), 44);
        dias->setAlignment(Qt::AlignRight);
        g->addWidget(dias, k + 1, 0, Qt::AlignHCenter);
    }
    for (int k = 0; k < 12; ++k) {
        auto *data = cria_campo(central, nome_controle("Text1", k + 13), 90);
        data->setAlignment(Qt::AlignHCenter);
        g->addWidget(rotulo(central, legenda(tela, "Text1", k + 13), data), k + 1, 1,
                     Qt::AlignRight);
        g->addWidget(data, k + 1, 2);
    }
    for (int k = 0; k < 12; ++k) {
        auto *valor = cria_campo(central, nome_controle("Text2", k), 110);
        valor->setAlignment(Qt::AlignRight);
        g->addWidget(valor, k + 1, 3);
    }
    for (int k = 0; k < 12; ++k)
        g->addWidget(cria_campo(central, nome_controle("Text4", k), 130), k + 1, 4);
    g->setColumnStretch(5, 1);
    return g;
}

// Bank with its name beside it, city and payee: the same on every cheque of the schedule.
QGridLayout *cria_cheque(Tela &tela, QWidget *central) {
    auto *g = new QGridLayout;
    g->setHorizontalSpacing(8);
    auto *banco = cria_campo(central, nome_controle("Text3", 0), 50);
    auto *nome = cria<QLabel>(central, "Label2");
    nome->setMinimumWidth(260);
    auto *linhaBanco = new QHBoxLayout;
    linhaBanco->addWidget(banco);
    linhaBanco->addWidget(nome, 1);
    g->addWidget(rotulo(central, legenda(tela, "Text3", 0), banco), 0, 0);
    g->addLayout(linhaBanco, 0, 1);
    auto *cidade = cria_campo(central, nome_controle("Text3", 1), 200);
    g->addWidget(rotulo(central, legenda(tela, "Text3", 1), cidade), 1, 0);
    g->addWidget(cidade, 1, 1, Qt::AlignLeft);
    auto *favorecido = cria_campo(central, nome_controle("Text3", 2));
    g->addWidget(rotulo(central, legenda(tela, "Text3", 2), favorecido), 2, 0);
    g->addWidget(favorecido, 2, 1);
    g->setColumnStretch(1, 1);
    return g;
}

} // namespace

void CriaVistaChePrz(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central, 8);
    v->addLayout(cria_topo(tela, central));
    v->addWidget(linha(central));
    v->addLayout(cria_parcelas(tela, central));
    v->addWidget(linha(central));
    v->addLayout(cria_cheque(tela, central));
    v->addStretch(1);

    auto *dica = cria<QLabel>(central, "Panel3D1");
    dica->setFrameShape(QFrame::Panel);
    dica->setFrameShadow(QFrame::Sunken);
    dica->setMargin(3);
    v->addWidget(dica);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i : {0, 2, 1})
        comandos->addWidget(cria_botao(central, nome_controle("Command3D1", i)));
    v->addLayout(comandos);
}

} // namespace vexa::ui
