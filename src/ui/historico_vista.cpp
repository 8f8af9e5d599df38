// The history of a cheque: what it is on top, its entries in a list, the command below.
#include "ui/partes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaHistoricoCheque(Tela &, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    v->addWidget(cria<QLabel>(central, "Label1"));
    auto *lista = cria<QListView>(central, "List1");
    lista->setUniformItemSizes(true);
    v->addWidget(lista, 1);
    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    comandos->addWidget(cria_botao(central, "Command1"));
    v->addLayout(comandos);
}

} // namespace vexa::ui
