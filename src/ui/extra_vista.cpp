// "Programa Campo": the three field choices in a row, the line and column, and the commands.
#include "ui/partes.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>

namespace vexa::ui {

void CriaVistaCmpExtra(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);

    auto *campos = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        auto *b = cria<QPushButton>(central, nome_controle("CmdNumCampo", i));
        // The chosen field stays pressed.
        b->setCheckable(true);
        campos->addWidget(b);
    }
    v->addLayout(campos);

    auto *posicao = new QFormLayout;
    for (int i = 0; i < 2; ++i)
        posicao->addRow(legenda(tela, "PosText", i),
                        cria_campo(central, nome_controle("PosText", i), 70));
    v->addLayout(posicao);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i : {0, 2})
        comandos->addWidget(cria_botao(central, nome_controle("BtnCmd", i)));
    v->addLayout(comandos);
}

} // namespace vexa::ui
