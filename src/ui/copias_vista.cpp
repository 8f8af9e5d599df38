// The backups to restore: where they lie, their list, the two commands below.
#include "ui/partes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaCopias(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    auto *onde = cria<QLabel>(central, "Label1");
    onde->setWordWrap(true);
    v->addWidget(onde);
    v->addWidget(cria<QListView>(central, "List1"), 1);
    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i = 0; i < 2; ++i)
        comandos->addWidget(cria_botao(central, nome_controle("Command1", i)));
    v->addLayout(comandos);
    tela.LarguraJanela = 460;
    tela.AlturaJanela = 360;
}

} // namespace vexa::ui
