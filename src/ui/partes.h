#pragma once
// The parts every view builds its screen from: widgets named after the model's controls, the
// window's body, and the captions the model gives its controls.
#include "core/tela.h"

#include <QString>
#include <QWidget>

class QMainWindow;
class QVBoxLayout;
class QLineEdit;
class QPushButton;

namespace vexa::ui {

// The name a widget takes to be bound to a control: "Text1(3)", or "CheckBox".
inline QString nome_controle(const QString &controle, int indice = -1) {
    return RefControle{controle, indice}.texto();
}

// A widget of type W named after a control.
template <class W> W *cria(QWidget *pai, const QString &nome) {
    auto *w = new W(pai);
    w->setObjectName(nome);
    return w;
}

// The window's central widget with its column of parts, in the margins of every screen.
QVBoxLayout *cria_corpo(QMainWindow &janela, QWidget *&central, int espaco = 10);

// A text box named after a control ("Text1(3)"), as wide as its longest text asks.
QLineEdit *cria_campo(QWidget *pai, const QString &nome, int largura = 0);
// A command button named after a control; Enter presses it when it has the focus.
QPushButton *cria_botao(QWidget *pai, const QString &nome);
// The caption the model gives a control, for the label in front of it.
QString legenda(Tela &tela, const QString &nome, int index = -1);

} // namespace vexa::ui
