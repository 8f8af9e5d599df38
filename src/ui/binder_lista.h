#pragma once
// A list control's rows as a Qt model/view list, and the rows the operator chose in it. Only
// the binder uses these: it makes the model when it binds a list and refreshes it on a mirror.
#include "core/tela.h"

#include <QAbstractListModel>
#include <set>

class QListView;

namespace vexa::ui {

// The count when the rows last changed, and the text of a row when the view draws it: a list
// of a whole table costs one row per line drawn.
class ModeloLista : public QAbstractListModel {
  public:
    ModeloLista(const Controle &c, QObject *pai) : QAbstractListModel(pai), c_(c) {}
    int rowCount(const QModelIndex &pai) const override { return pai.isValid() ? 0 : conta_; }
    QVariant data(const QModelIndex &i, int papel) const override;
    // Resets the view when the model's rows changed since the last call.
    void atualiza();

  private:
    const Controle &c_;
    quint64 versao_ = 0;
    int conta_ = 0;
};

// A list where the operator chooses several rows: its rows chosen mirror the model's
// Selecionadas, its current row the model's ListIndex.
bool varias_linhas(const QListView &lv);
std::set<int> linhas_escolhidas(const QListView &lv);
// Puts the model's current row and rows chosen on a list of several rows.
void espelha_escolhidas(QListView &lv, const Controle &c);

} // namespace vexa::ui
