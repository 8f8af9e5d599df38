// "Cadastro de Script": code and name, each item's line beside its column (the date has only
// columns, on the city's line), the list with its search, the commands below.
#include "ui/cadastro_vista.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaScript(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    QHBoxLayout *corpo = nullptr;
    auto *esquerda = cria_codigo_e_nome(tela, v, central, corpo);

    // Rows by item: its line field (by index 2..9) and its column field (10..17).
    auto *posicoes = new QGroupBox("Posições", central);
    auto *g = new QGridLayout(posicoes);
    g->addWidget(new QLabel("Linha", posicoes), 0, 1, Qt::AlignCenter);
    g->addWidget(new QLabel("Coluna", posicoes), 0, 2, Qt::AlignCenter);
    QList<QLineEdit *> ordem;
    for (int i = 2; i <= 20; ++i) {
        auto *e = cria_campo(posicoes, nome_controle("Text1", i), 44);
        e->setAlignment(Qt::AlignCenter);
        ordem.append(e);
    }
    for (int i = 2; i <= 9; ++i) {
        g->addWidget(new QLabel(legenda(tela, "Text1", i), posicoes), i - 1, 0);
        g->addWidget(ordem[i - 2], i - 1, 1);
        g->addWidget(ordem[i + 8 - 2], i - 1, 2);
    }
    completa_posicoes(tela, central, esquerda, corpo, posicoes, g, ordem, 9);

    auto *comandos = new QHBoxLayout;
    cria_comandos(comandos, central, {"Command3D2"});
    v->addLayout(comandos);
    tela.LarguraJanela = 780;
    tela.AlturaJanela = 500;
}

} // namespace vexa::ui
