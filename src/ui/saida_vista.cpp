// "Imprimir Relatorio": the order and the printer side by side, the total, the two commands.
#include "ui/cadastro_vista.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {
QGroupBox *grupo(QWidget *pai, const QString &nome, std::initializer_list<int> opcoes) {
    auto *g = new QGroupBox(pai);
    g->setObjectName(nome);
    auto *v = new QVBoxLayout(g);
    for (int i : opcoes) {
        auto *r = new QRadioButton(g);
        r->setObjectName(nome_controle("Option1", i));
        v->addWidget(r);
    }
    return g;
}
} // namespace

void CriaVistaSaida(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    auto *grupos = new QHBoxLayout;
    grupos->addWidget(grupo(central, "Frame1", {4, 3}));
    grupos->addWidget(grupo(central, "Frame2", {0, 1}));
    v->addLayout(grupos);
    auto *total = new QLabel(central);
    total->setObjectName("SSPanel1");
    total->setFrameShape(QFrame::Panel);
    total->setFrameShadow(QFrame::Sunken);
    total->setAlignment(Qt::AlignCenter);
    total->setMinimumHeight(28);
    v->addWidget(total);
    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    comandos->addWidget(cria_botao(central, "Command1"));
    comandos->addWidget(cria_botao(central, "Command2"));
    v->addLayout(comandos);
    tela.LarguraJanela = 380;
    tela.AlturaJanela = 200;
}

} // namespace vexa::ui
