// "Programa Campo": the three field choices in a row, the line and column, and the commands.
#include "cheque/extra.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaCmpExtra(Tela &tela, QMainWindow &janela) {
    auto *central = new QWidget(&janela);
    auto *v = new QVBoxLayout(central);
    v->setContentsMargins(12, 12, 12, 12);
    v->setSpacing(10);

    auto *campos = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        auto *b = new QPushButton(central);
        b->setObjectName(QStringLiteral("CmdNumCampo(%1)").arg(i));
        // The chosen field stays pressed.
        b->setCheckable(true);
        campos->addWidget(b);
    }
    v->addLayout(campos);

    auto *posicao = new QFormLayout;
    for (int i = 0; i < 2; ++i) {
        auto *e = new QLineEdit(central);
        e->setObjectName(QStringLiteral("PosText(%1)").arg(i));
        e->setFixedWidth(70);
        const Controle *c = tela.controle("PosText", i);
        posicao->addRow(c ? c->Caption : QString(), e);
    }
    v->addLayout(posicao);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i : {0, 2}) {
        auto *b = new QPushButton(central);
        b->setObjectName(QStringLiteral("BtnCmd(%1)").arg(i));
        b->setAutoDefault(true);
        comandos->addWidget(b);
    }
    v->addLayout(comandos);
    janela.setCentralWidget(central);
}

} // namespace vexa::ui
