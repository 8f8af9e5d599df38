// "Cadastro de Bancos": code and name, the positions as a table of line and column per field
// with the three date columns apart, the list with its search, the commands below.
#include "ui/cadastro_vista.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaBancos(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    QHBoxLayout *corpo = nullptr;
    auto *esquerda = cria_codigo_e_nome(tela, v, central, corpo);
    auto *talao = new QHBoxLayout;
    auto *proximo = cria_campo(central, "ProximoCheque", 110);
    talao->addWidget(new QLabel(legenda(tela, "ProximoCheque", -1), central));
    talao->addWidget(proximo);
    talao->addStretch(1);
    esquerda->addLayout(talao);

    // Each field's line beside its column, created in the order Enter walks them.
    auto *posicoes = new QGroupBox("Posições", central);
    auto *g = new QGridLayout(posicoes);
    g->addWidget(new QLabel("Linha / Coluna", posicoes), 0, 1, 1, 2, Qt::AlignCenter);
    QList<QLineEdit *> ordem;
    for (int i = 2; i <= 14; ++i) {
        auto *e = cria_campo(posicoes, nome_controle("Text1", i), 44);
        e->setAlignment(Qt::AlignCenter);
        ordem.append(e);
        if (i <= 6) {
            g->addWidget(new QLabel(legenda(tela, "Text1", i), posicoes), i - 1, 0);
            g->addWidget(e, i - 1, 1);
        } else if (i <= 11) {
            g->addWidget(e, i - 6, 2);
        }
    }
    g->addWidget(new QLabel("Colunas", posicoes), 6, 1, 1, 3, Qt::AlignCenter);
    completa_posicoes(tela, central, esquerda, corpo, posicoes, g, ordem, 7);

    auto *comandos = new QHBoxLayout;
    cria_comandos(comandos, central, {"Command3D2", "SSCommand1"});
    v->addLayout(comandos);
    tela.LarguraJanela = 760;
    tela.AlturaJanela = 460;
}

} // namespace vexa::ui
