// The views of the payee and city registers, and the parts every register view shares.
#include "ui/cadastro_vista.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

QWidget *cria_lista(Tela &tela, QWidget *pai, const QString &procura) {
    auto *lado = new QWidget(pai);
    auto *v = new QVBoxLayout(lado);
    v->setContentsMargins(0, 0, 0, 0);
    auto *f = new QFormLayout;
    const RefControle campo = RefControle::de(procura);
    f->addRow(legenda(tela, campo.Nome, campo.Index), cria_campo(lado, procura));
    v->addLayout(f);
    // A view over the model's rows: a whole table costs only the rows in sight.
    auto *lista = cria<QListView>(lado, "List1");
    lista->setUniformItemSizes(true);
    QFont fixa("Courier New");
    fixa.setStyleHint(QFont::TypeWriter);
    lista->setFont(fixa);
    lista->setMinimumWidth(280);
    v->addWidget(lista, 1);
    return lado;
}

QVBoxLayout *cria_codigo_e_nome(Tela &tela, QVBoxLayout *v, QWidget *central, QHBoxLayout *&corpo) {
    corpo = new QHBoxLayout;
    corpo->setSpacing(14);
    v->addLayout(corpo, 1);
    auto *esquerda = new QVBoxLayout;
    corpo->addLayout(esquerda);
    auto *topo = new QGridLayout;
    topo->addWidget(new QLabel(legenda(tela, "Text1", 0), central), 0, 0);
    topo->addWidget(cria_campo(central, "Text1(0)", 50), 0, 1, Qt::AlignLeft);
    topo->addWidget(new QLabel(legenda(tela, "Text1", 1), central), 1, 0);
    topo->addWidget(cria_campo(central, "Text1(1)", 260), 1, 1);
    esquerda->addLayout(topo);
    return esquerda;
}

void completa_posicoes(Tela &tela, QWidget *central, QVBoxLayout *esquerda, QHBoxLayout *corpo,
                       QGroupBox *posicoes, QGridLayout *g, const QList<QLineEdit *> &ordem,
                       int linhaDatas) {
    const QList<QLineEdit *> datas = ordem.mid(ordem.size() - 3);
    const RefControle primeira = RefControle::de(datas[0]->objectName());
    g->addWidget(new QLabel(legenda(tela, primeira.Nome, primeira.Index), posicoes), linhaDatas, 0);
    auto *linha = new QHBoxLayout;
    for (QLineEdit *e : datas)
        linha->addWidget(e);
    linha->addStretch(1);
    g->addLayout(linha, linhaDatas, 1, 1, 3);
    g->setColumnStretch(3, 1);
    esquerda->addWidget(posicoes);
    esquerda->addStretch(1);
    // Tab walks the fields by index, as Enter does.
    QWidget *anterior = central->findChild<QWidget *>("Text1(1)");
    for (QLineEdit *e : ordem) {
        QWidget::setTabOrder(anterior, e);
        anterior = e;
    }
    corpo->addWidget(cria_lista(tela, central, "Text2"), 1);
}

void cria_comandos(QBoxLayout *linha, QWidget *pai, const QStringList &outros) {
    for (int i = 0; i < 4; ++i)
        linha->addWidget(cria_botao(pai, nome_controle("Command3D1", i)));
    linha->addStretch(1);
    for (const QString &nome : outros)
        linha->addWidget(cria_botao(pai, nome));
}

namespace {
// Payees and cities: code and name over the list, the commands below.
void cria_vista_simples(Tela &tela, QMainWindow &janela, const QString &imprime, int largura) {
    QWidget *central = nullptr;
    auto *v = cria_corpo(janela, central);
    auto *campos = new QFormLayout;
    campos->addRow(legenda(tela, "Text1", 0), cria_campo(central, "Text1(0)", 70));
    campos->addRow(legenda(tela, "Text1", 1), cria_campo(central, "Text1(1)", largura));
    v->addLayout(campos);
    v->addWidget(cria_lista(tela, central, "Text2"), 1);
    auto *comandos = new QHBoxLayout;
    cria_comandos(comandos, central, {imprime});
    v->addLayout(comandos);
    tela.LarguraJanela = qMax(440, largura + 180);
    tela.AlturaJanela = 440;
}
} // namespace

void CriaVistaFavorec(Tela &tela, QMainWindow &janela) {
    cria_vista_simples(tela, janela, "Imprimirfav", 470);
}

void CriaVistaCidade(Tela &tela, QMainWindow &janela) {
    cria_vista_simples(tela, janela, "Imprime", 200);
}

} // namespace vexa::ui
