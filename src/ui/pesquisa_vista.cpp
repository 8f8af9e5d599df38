// The search window: the text to look for over the list, and its three commands.
#include "ui/cadastro_vista.h"

#include <QHBoxLayout>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaPesquisa(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    v->addWidget(cria_lista(tela, central, "Text1(0)"), 1);
    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i = 0; i < 3; ++i)
        comandos->addWidget(cria_botao(central, nome_controle("Command3D1", i)));
    v->addLayout(comandos);
    tela.LarguraJanela = 460;
    tela.AlturaJanela = 400;
}

} // namespace vexa::ui
