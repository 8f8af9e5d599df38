#pragma once
// The parts the register views share: the search field with its list, and the row of
// commands.
#include "ui/partes.h"

class QBoxLayout;
class QHBoxLayout;
class QMainWindow;
class QVBoxLayout;

namespace vexa::ui {

// The search field (Text2 with its caption, or another name) over List1.
QWidget *cria_lista(Tela &tela, QWidget *pai, const QString &procura);
// The body of a bank register: a row whose left column (returned) starts with the code and
// the name; the caller adds the positions under them and the list beside.
QVBoxLayout *cria_corpo_banco(Tela &tela, QMainWindow &janela, QWidget *&central, QVBoxLayout *&v,
                              QHBoxLayout *&corpo);
// Command3D1(0..3) and the print button, in a row.
void cria_comandos(QBoxLayout *linha, QWidget *pai, const QStringList &outros);

} // namespace vexa::ui
