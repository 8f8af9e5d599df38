// "Impressão de Cheque Transferência": the cheque's fields in their frame, the extra fields,
// the key hints and the commands.
#include "ui/partes.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

namespace {
QLabel *painel(QWidget *pai, const QString &nome) {
    auto *l = cria<QLabel>(pai, nome);
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    l->setMargin(3);
    return l;
}
} // namespace

void CriaVistaChequeTransf(Tela &tela, QMainWindow &janela) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);

    auto *quadro = cria<QGroupBox>(central, "Frame1");
    auto *campos = new QFormLayout(quadro);
    const std::pair<const char *, int> texto[] = {
        {"txtBanco", 50},   {"txtValor", 120}, {"txtAgencia", 300},      {"txtConta", 160},
        {"txtCidade", 240}, {"txtData", 100},  {"txtNumeroCheque", 120}, {"txtComentario", 420}};
    for (const auto &[nome, largura] : texto)
        campos->addRow(legenda(tela, nome), cria_campo(quadro, nome, largura));
    v->addWidget(quadro);

    auto *extras = new QFormLayout;
    for (int i = 0; i < 3; ++i)
        extras->addRow(legenda(tela, "TxtCpo", i),
                       cria_campo(central, nome_controle("TxtCpo", i), 300));
    v->addLayout(extras);

    auto *dicas = new QHBoxLayout;
    dicas->addWidget(painel(central, "Panel3D1"));
    dicas->addWidget(painel(central, "Panel3D2"));
    dicas->addStretch(1);
    v->addLayout(dicas);

    auto *comandos = new QHBoxLayout;
    comandos->addStretch(1);
    for (int i : {0, 2, 1})
        comandos->addWidget(cria_botao(central, nome_controle("Opcoes", i)));
    v->addLayout(comandos);
    tela.LarguraJanela = 600;
    tela.AlturaJanela = 460;
}

} // namespace vexa::ui
