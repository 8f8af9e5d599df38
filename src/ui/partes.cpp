#include "ui/partes.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace vexa::ui {

QVBoxLayout *cria_corpo(QMainWindow &janela, QWidget *&central, int espaco) {
    central = new QWidget(&janela);
    auto *v = new QVBoxLayout(central);
    v->setContentsMargins(12, 12, 12, 12);
    v->setSpacing(espaco);
    janela.setCentralWidget(central);
    return v;
}

QLineEdit *cria_campo(QWidget *pai, const QString &nome, int largura) {
    auto *e = cria<QLineEdit>(pai, nome);
    if (largura > 0) e->setFixedWidth(largura);
    return e;
}

QPushButton *cria_botao(QWidget *pai, const QString &nome) {
    auto *b = cria<QPushButton>(pai, nome);
    b->setAutoDefault(true);
    return b;
}

QString legenda(Tela &tela, const QString &nome, int index) {
    const Controle *c = tela.controle(nome, index);
    return c ? c->Caption : QString();
}

} // namespace vexa::ui
