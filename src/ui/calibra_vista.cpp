// "Impressora do Sistema": the choice and the printer on top, the sheet, the calibration's four
// numbers, and the commands in a row.
#include "ui/partes.h"

#include <QCheckBox>
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

void CriaVistaCalibra(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    v->addWidget(cria<QCheckBox>(central, "CheckUsar"));
    auto *impressora = new QHBoxLayout;
    impressora->addWidget(cria<QLabel>(central, "Label1"));
    auto *lista = cria<QComboBox>(central, "cboImpressora");
    lista->setEditable(true);
    impressora->addWidget(lista, 1);
    v->addLayout(impressora);

    auto *folha = cria<QGroupBox>(central, "Frame1");
    auto *g = new QGridLayout(folha);
    g->addWidget(cria<QRadioButton>(folha, nome_controle("OptFolha", 0)), 0, 0, 1, 5);
    g->addWidget(cria<QRadioButton>(folha, nome_controle("OptFolha", 1)), 1, 0, 1, 5);
    for (int i = 0; i < 2; ++i) {
        g->addWidget(cria<QLabel>(folha, nome_controle("Label2", i)), 2, 2 * i + 1, Qt::AlignRight);
        g->addWidget(cria_campo(folha, nome_controle("TxtFolha", i), 60), 2, 2 * i + 2);
    }
    g->setColumnMinimumWidth(0, 16);
    v->addWidget(folha);

    auto *ajuste = cria<QGroupBox>(central, "Frame2");
    g = new QGridLayout(ajuste);
    for (int i = 0; i < 4; ++i) {
        g->addWidget(cria<QLabel>(ajuste, nome_controle("Label3", i)), i % 2, (i / 2) * 2,
                     Qt::AlignRight);
        g->addWidget(cria_campo(ajuste, nome_controle("TxtAjuste", i), 70), i % 2, (i / 2) * 2 + 1);
    }
    v->addWidget(ajuste);

    auto *comandos = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        if (i == 2) comandos->addStretch(1);
        comandos->addWidget(cria_botao(central, nome_controle("Command1", i)));
    }
    v->addLayout(comandos);
    tela.LarguraJanela = 640;
}

} // namespace vexa::ui
