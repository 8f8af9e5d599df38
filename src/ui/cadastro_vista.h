#pragma once
// The parts the register views share: the search field with its list, and the row of
// commands.
#include "ui/partes.h"

class QBoxLayout;
class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QMainWindow;
class QVBoxLayout;

namespace vexa::ui {

// The search field (Text2 with its caption, or another name) over List1.
QWidget *cria_lista(Tela &tela, QWidget *pai, const QString &procura);
// The layout registers' body: code and name on top of a left column, beside what the view
// adds to the row (the list). Returns the left column; corpo is the row.
QVBoxLayout *cria_codigo_e_nome(Tela &tela, QVBoxLayout *v, QWidget *central, QHBoxLayout *&corpo);
// Closes the positions' group of a layout register: the three date columns (the last three
// fields of ordem, whose caption is that of the first of them) in one row of the grid at
// linhaDatas, the group in the left column, Tab through the fields by index, the list beside.
void completa_posicoes(Tela &tela, QWidget *central, QVBoxLayout *esquerda, QHBoxLayout *corpo,
                       QGroupBox *posicoes, QGridLayout *g, const QList<QLineEdit *> &ordem,
                       int linhaDatas);
// Command3D1(0..3) and the print button, in a row.
void cria_comandos(QBoxLayout *linha, QWidget *pai, const QStringList &outros);

} // namespace vexa::ui
