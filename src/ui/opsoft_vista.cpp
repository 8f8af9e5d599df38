// "Opções do Software": each number in a short field with its scroll bar against it, the texts
// around it as the sentence reads, then the two check boxes and the commands.
#include "ui/partes.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {
// A field with its bar against it: the bar as tall as the field, its top arrow adding, as the
// operator expects of a number.
QHBoxLayout *numero(QWidget *pai, int i) {
    auto *h = new QHBoxLayout;
    h->setSpacing(0);
    auto *campo = cria_campo(pai, nome_controle("Text01", i), 56);
    campo->setAlignment(Qt::AlignRight);
    auto *barra = cria<QScrollBar>(pai, nome_controle("VScroll01", i));
    barra->setOrientation(Qt::Vertical);
    barra->setInvertedAppearance(true);
    barra->setFocusPolicy(Qt::StrongFocus);
    barra->setFixedHeight(campo->sizeHint().height());
    h->addWidget(campo);
    h->addWidget(barra);
    return h;
}

QLabel *texto(QWidget *pai, int i) {
    return cria<QLabel>(pai, nome_controle("Label1", i));
}
} // namespace

void CriaVistaOpSoft(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    auto *g = new QGridLayout;
    g->setHorizontalSpacing(8);
    g->setVerticalSpacing(4);
    g->setColumnStretch(2, 1);

    // Text before the number, against it, the number, the text after it; a third line goes
    // under the text after it.
    g->addWidget(texto(central, 0), 0, 0, Qt::AlignRight);
    g->addLayout(numero(central, 0), 0, 1);
    g->addWidget(texto(central, 1), 0, 2);
    g->addWidget(texto(central, 2), 1, 2);
    g->setRowMinimumHeight(2, 8);
    g->addWidget(texto(central, 3), 3, 0, Qt::AlignRight);
    g->addLayout(numero(central, 1), 3, 1);
    g->addWidget(texto(central, 4), 3, 2);
    g->setRowMinimumHeight(4, 8);
    g->addWidget(texto(central, 5), 5, 0, Qt::AlignRight);
    g->addLayout(numero(central, 2), 5, 1);
    g->addWidget(texto(central, 6), 5, 2);
    g->addWidget(texto(central, 7), 6, 2);
    v->addLayout(g);

    v->addSpacing(4);
    v->addWidget(cria<QCheckBox>(central, "CheckImpInv"));
    v->addWidget(cria<QCheckBox>(central, "CheckUsarNum"));
    v->addStretch(1);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    comandos->addWidget(cria_botao(central, nome_controle("BtnCmd", 0)));
    comandos->addWidget(cria_botao(central, nome_controle("BtnCmd", 1)));
    v->addLayout(comandos);
    tela.LarguraJanela = 520;
}

} // namespace vexa::ui
