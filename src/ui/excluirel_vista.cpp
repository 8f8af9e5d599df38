// The cancelling options: which cheques on the left, where they are cancelled on the right,
// the two commands below.
#include "ui/partes.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaExcluiRel(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    auto *quadros = new QHBoxLayout;
    auto *cheques = cria<QGroupBox>(central, "Frame1");
    auto *c = new QVBoxLayout(cheques);
    for (int i : {2, 0, 1})
        c->addWidget(cria<QRadioButton>(cheques, nome_controle("RadioBox01", i)));
    quadros->addWidget(cheques);
    auto *onde = cria<QGroupBox>(central, "Frame2");
    auto *o = new QVBoxLayout(onde);
    for (int i : {1, 0})
        o->addWidget(cria<QCheckBox>(onde, nome_controle("CheckBox01", i)));
    o->addStretch(1);
    quadros->addWidget(onde);
    v->addLayout(quadros);
    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i = 0; i < 2; ++i)
        comandos->addWidget(cria_botao(central, nome_controle("BtnCmd", i)));
    v->addLayout(comandos);
    tela.LarguraJanela = 420;
}

} // namespace vexa::ui
