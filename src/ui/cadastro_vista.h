#pragma once
// The parts the register views share: named fields, the search field with its list, and the
// row of commands.
#include "core/tela.h"

#include <QString>

class QBoxLayout;
class QMainWindow;
class QVBoxLayout;
class QLineEdit;
class QPushButton;
class QWidget;

namespace vexa::ui {

// The window's central widget with its column of parts, in the margins of every screen.
QVBoxLayout *cria_corpo(QMainWindow &janela, QWidget *&central, int espaco = 10);

// A text box named after a control ("Text1(3)"), as wide as its longest text asks.
QLineEdit *cria_campo(QWidget *pai, const QString &nome, int largura = 0);
QPushButton *cria_botao(QWidget *pai, const QString &nome);
// The caption the model gives a control, for the label in front of it.
QString legenda(Tela &tela, const QString &nome, int index = -1);

// The search field (Text2 with its caption, or another name) over List1.
QWidget *cria_lista(Tela &tela, QWidget *pai, const QString &procura);
// Command3D1(0..3) and the print button, in a row.
void cria_comandos(QBoxLayout *linha, QWidget *pai, const QStringList &outros);

} // namespace vexa::ui
