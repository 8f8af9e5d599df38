#include "ui/binder_lista.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>

namespace vexa::ui {

QVariant ModeloLista::data(const QModelIndex &i, int papel) const {
    if (papel != Qt::DisplayRole || !i.isValid() || i.row() >= rowCount()) return {};
    return c_.Itens.at(i.row());
}

bool varias_linhas(const QAbstractItemView &lv) {
    return lv.selectionMode() == QAbstractItemView::ExtendedSelection ||
           lv.selectionMode() == QAbstractItemView::MultiSelection;
}

std::set<int> linhas_escolhidas(const QAbstractItemView &lv) {
    std::set<int> linhas;
    for (const QItemSelectionRange &r : lv.selectionModel()->selection())
        for (int i = r.top(); i <= r.bottom(); ++i)
            linhas.insert(linhas.end(), i);
    return linhas;
}

void espelha_escolhidas(QAbstractItemView &lv, const Controle &c) {
    QItemSelectionModel &sel = *lv.selectionModel();
    const int atual = lv.currentIndex().isValid() ? lv.currentIndex().row() : -1;
    if (atual != c.ListIndex) {
        if (c.ListIndex < 0) {
            sel.setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
        } else {
            const QModelIndex i = lv.model()->index(c.ListIndex, 0);
            sel.setCurrentIndex(i, QItemSelectionModel::NoUpdate);
            lv.scrollTo(i);
        }
    }
    if (linhas_escolhidas(lv) == c.Selecionadas) return;
    // Runs of rows become one range each, so a whole list chosen is one range.
    QItemSelection escolha;
    for (auto i = c.Selecionadas.begin(); i != c.Selecionadas.end();) {
        const int inicio = *i;
        int fim = inicio;
        while (++i != c.Selecionadas.end() && *i == fim + 1)
            ++fim;
        const int conta = lv.model()->rowCount();
        if (inicio >= conta) break;
        escolha.select(lv.model()->index(inicio, 0), lv.model()->index(qMin(fim, conta - 1), 0));
    }
    // Whole rows: a table chooses every column of a row.
    sel.select(escolha, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace vexa::ui
