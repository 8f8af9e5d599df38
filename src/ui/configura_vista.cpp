// "Configurações": a panel for the port, one for the currency, one for adding a payee to the
// printer, one for removing it, and the self-test, each with its own button.
#include "ui/partes.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {
QGroupBox *painel(QWidget *pai, const QString &nome, QGridLayout *&g) {
    auto *p = cria<QGroupBox>(pai, nome);
    g = new QGridLayout(p);
    g->setColumnStretch(1, 1);
    return p;
}
} // namespace

void CriaVistaConfigura(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    QGridLayout *g = nullptr;

    auto *porta = painel(central, "Frame1", g);
    g->addWidget(cria<QLabel>(porta, "Label1"), 0, 0);
    g->addWidget(cria<QComboBox>(porta, "cboPorta"), 0, 1, Qt::AlignLeft);
    g->addWidget(cria_botao(porta, "Command3D7"), 0, 2);
    v->addWidget(porta);

    auto *moeda = painel(central, "Frame2", g);
    for (int i = 0; i < 2; ++i) {
        g->addWidget(cria<QLabel>(moeda, nome_controle("Label2", i)), i, 0);
        g->addWidget(cria_campo(moeda, nome_controle("Text1", i)), i, 1);
    }
    g->addWidget(cria_botao(moeda, "Command3D1"), 0, 2);
    v->addWidget(moeda);

    auto *inclui = painel(central, "Frame3", g);
    g->addWidget(cria<QLabel>(inclui, nome_controle("Label3", 0)), 0, 0);
    g->addWidget(cria_campo(inclui, nome_controle("Text2", 0), 40), 0, 1, Qt::AlignLeft);
    g->addWidget(cria<QLabel>(inclui, nome_controle("Label3", 1)), 1, 0);
    g->addWidget(cria_campo(inclui, nome_controle("Text2", 1)), 1, 1);
    g->addWidget(cria_botao(inclui, "Command3D2"), 0, 2);
    v->addWidget(inclui);

    auto *exclui = painel(central, "Frame4", g);
    g->addWidget(cria<QLabel>(exclui, "Label4"), 0, 0);
    auto *codigo = new QHBoxLayout;
    codigo->addWidget(cria_campo(exclui, "Text3", 40));
    codigo->addWidget(cria<QRadioButton>(exclui, "Option3D2"));
    codigo->addStretch(1);
    g->addLayout(codigo, 0, 1);
    g->addWidget(cria_botao(exclui, "Command3D4"), 0, 2);
    v->addWidget(exclui);

    auto *teste = painel(central, "Frame5", g);
    g->addWidget(cria_botao(teste, "Command3D9"), 0, 0, Qt::AlignLeft);
    g->addWidget(cria_botao(teste, "Command3D10"), 0, 1, Qt::AlignRight);
    v->addWidget(teste);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    comandos->addWidget(cria_botao(central, "SSCommand1"));
    v->addLayout(comandos);
    tela.LarguraJanela = 520;
}

void CriaVistaSobre(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central, 6);
    auto *produto = cria<QLabel>(central, "Label2");
    QFont grande = produto->font();
    grande.setPointSize(grande.pointSize() + 3);
    grande.setBold(true);
    produto->setFont(grande);
    v->addWidget(produto, 0, Qt::AlignHCenter);
    v->addWidget(cria<QLabel>(central, "Label3"), 0, Qt::AlignHCenter);
    v->addWidget(cria<QLabel>(central, "Label4"), 0, Qt::AlignHCenter);
    v->addSpacing(8);
    v->addWidget(cria<QLabel>(central, "Label1"), 0, Qt::AlignHCenter);
    auto *pasta = cria<QLabel>(central, "Label5");
    pasta->setAlignment(Qt::AlignHCenter);
    pasta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    v->addWidget(pasta, 0, Qt::AlignHCenter);
    v->addStretch(1);
    v->addWidget(cria_botao(central, "Command3D1"), 0, Qt::AlignHCenter);
    tela.LarguraJanela = 460;
    tela.AlturaJanela = 270;
}

} // namespace vexa::ui
