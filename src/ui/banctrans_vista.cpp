// "Cadastro de Bancos para Cheque Transferência": code and name, each field's line beside its
// column, the list with its search, the commands below.
#include "ui/cadastro_vista.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QVBoxLayout>

namespace vexa::ui {

void CriaVistaBancTrans(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    QHBoxLayout *corpo = nullptr;
    auto *esquerda = cria_codigo_e_nome(tela, v, central, corpo);

    // Lines Text1(2..8) and columns Text1(9..15), side by side; Enter walks the lines first.
    auto *posicoes = new QGroupBox("Posições", central);
    auto *g = new QGridLayout(posicoes);
    g->addWidget(new QLabel("Linha", posicoes), 0, 1, Qt::AlignCenter);
    g->addWidget(new QLabel("Coluna", posicoes), 0, 2, Qt::AlignCenter);
    QWidget *anterior = central->findChild<QWidget *>("Text1(1)");
    QList<QLineEdit *> colunas;
    for (int i = 2; i <= 8; ++i) {
        g->addWidget(new QLabel(legenda(tela, "Text1", i), posicoes), i - 1, 0);
        for (int j : {i, i + 7}) {
            auto *e = cria_campo(posicoes, nome_controle("Text1", j), 44);
            e->setAlignment(Qt::AlignCenter);
            g->addWidget(e, i - 1, j == i ? 1 : 2);
            if (j == i) {
                QWidget::setTabOrder(anterior, e);
                anterior = e;
            } else {
                colunas.append(e);
            }
        }
    }
    for (QLineEdit *e : colunas) {
        QWidget::setTabOrder(anterior, e);
        anterior = e;
    }
    g->setColumnStretch(3, 1);
    esquerda->addWidget(posicoes);
    esquerda->addStretch(1);

    corpo->addWidget(cria_lista(tela, central, "Text2"), 1);

    auto *comandos = new QHBoxLayout;
    cria_comandos(comandos, central, {"Command3D2", "SSCommand1"});
    v->addLayout(comandos);
    tela.LarguraJanela = 760;
    tela.AlturaJanela = 480;
}

} // namespace vexa::ui
