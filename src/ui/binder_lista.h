#pragma once
// A list control's rows as a Qt model/view list or table, and the rows the operator chose in
// it. The binder makes a list's model when it binds it (a view may bring a table model of its
// own over the same rows) and refreshes it on a mirror.
#include "core/tela.h"

#include <QAbstractListModel>
#include <set>

class QAbstractItemView;

namespace vexa::ui {

// A model the binder refreshes from its list control after every handler.
class Atualizavel {
  public:
    virtual ~Atualizavel() = default;
    // Resets the view when the control's rows changed since the last call.
    virtual void atualiza() = 0;
};

// The count when the rows last changed, and the rows read when the view draws them: a list
// of a whole table costs one row per line drawn.
template <class Base> class SobreLinhas : public Base, public Atualizavel {
  public:
    SobreLinhas(const Controle &c, QObject *pai) : Base(pai), c_(c) {}
    int rowCount(const QModelIndex &pai = {}) const override { return pai.isValid() ? 0 : conta_; }
    void atualiza() override {
        if (versao_ == c_.Itens.versao() && conta_ == c_.Itens.size()) return;
        this->beginResetModel();
        versao_ = c_.Itens.versao();
        conta_ = c_.Itens.size();
        this->endResetModel();
    }

  protected:
    const Controle &c_;

  private:
    quint64 versao_ = 0;
    int conta_ = 0;
};

// A list's rows as their texts.
class ModeloLista : public SobreLinhas<QAbstractListModel> {
  public:
    using SobreLinhas::SobreLinhas;
    QVariant data(const QModelIndex &i, int papel) const override;
};

// A list where the operator chooses several rows: its rows chosen mirror the model's
// Selecionadas, its current row the model's ListIndex.
bool varias_linhas(const QAbstractItemView &lv);
std::set<int> linhas_escolhidas(const QAbstractItemView &lv);
// Puts the model's current row and rows chosen on a list of several rows.
void espelha_escolhidas(QAbstractItemView &lv, const Controle &c);

} // namespace vexa::ui
