#include "ui/binder.h"
#include "ui/binder_lista.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>

// A widget's signals run the model's handlers: typing is a Change, a click takes the model's
// own road, a list's row, a combo's pick and a scroll bar's move set the control first.

namespace vexa::ui {

void Binder::do_widget(size_t n, const std::function<void()> &acao) {
    ligacoes_[n].sujo = true;
    Despacha(acao);
}

void Binder::clique(size_t n) {
    const RefControle ref = ligacoes_[n].ref;
    if (recusado_.valida() && recusado_ == ref) {
        // The press already asked for the focus, and a leave handler kept it: the click
        // doesn't happen, and the widget shows the model's state again.
        recusado_ = {};
        ligacoes_[n].sujo = true;
        Despacha([] {});
        return;
    }
    do_widget(n, [this, ref] { tela_.Clica(ref.Nome, ref.Index); });
}

void Binder::liga(QObject *obj, const RefControle &ref, Controle *c) {
    const size_t n = ligacoes_.size();
    ligacoes_.push_back({ref, c, obj, std::nullopt, true});
    if (auto *w = qobject_cast<QWidget *>(obj)) w->installEventFilter(this);

    if (auto *e = qobject_cast<QLineEdit *>(obj)) {
        connect(e, &QLineEdit::textEdited, this, [this, n, ref, c](const QString &t) {
            if (espelhando_) return;
            do_widget(n, [this, ref, c, t] {
                c->Text = t;
                tela_.Dispara(ref, Evento::Change);
            });
        });
    } else if (auto *p = qobject_cast<QPlainTextEdit *>(obj)) {
        connect(p, &QPlainTextEdit::textChanged, this, [this, n, ref, c, p] {
            if (espelhando_) return;
            const QString t = p->toPlainText();
            do_widget(n, [this, ref, c, t] {
                c->Text = t;
                tela_.Dispara(ref, Evento::Change);
            });
        });
    } else if (auto *rb = qobject_cast<QRadioButton *>(obj)) {
        // The model chooses within the option's frame; the widget never unticks one itself.
        rb->setAutoExclusive(false);
        connect(rb, &QRadioButton::clicked, this, [this, n] { clique(n); });
    } else if (auto *b = qobject_cast<QAbstractButton *>(obj)) {
        // A check box changes its value on the model's road, with the click.
        connect(b, &QAbstractButton::clicked, this, [this, n] { clique(n); });
    } else if (auto *lv = qobject_cast<QAbstractItemView *>(obj)) {
        // A table brings its own model over the rows, with their columns.
        if (!lv->model()) lv->setModel(new ModeloLista(*c, lv));
        if (auto *l = qobject_cast<QListView *>(lv)) l->setUniformItemSizes(true);
        connect(lv->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                [this, n, ref, c](const QModelIndex &atual) {
                    const int linha = atual.isValid() ? atual.row() : -1;
                    if (espelhando_ || linha == c->ListIndex) return;
                    do_widget(n, [this, ref, c, linha] {
                        c->ListIndex = linha;
                        tela_.Dispara(ref, Evento::Click);
                    });
                });
        if (varias_linhas(*lv))
            connect(lv->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                    [this, n, c, lv] {
                        if (espelhando_) return;
                        do_widget(n, [c, lv] { c->Selecionadas = linhas_escolhidas(*lv); });
                    });
        connect(lv, &QAbstractItemView::doubleClicked, this,
                [this, n, ref, c](const QModelIndex &i) {
                    const int linha = i.row();
                    do_widget(n, [this, ref, c, linha] {
                        c->ListIndex = linha;
                        tela_.Dispara(ref, Evento::DblClick);
                    });
                });
    } else if (auto *co = qobject_cast<QComboBox *>(obj)) {
        connect(co, &QComboBox::activated, this, [this, n, ref, c, co](int i) {
            do_widget(n, [this, ref, c, co, i] {
                c->ListIndex = i;
                c->Text = co->itemText(i);
                tela_.Dispara(ref, Evento::Click);
            });
        });
        if (co->isEditable())
            connect(co, &QComboBox::editTextChanged, this, [this, n, ref, c](const QString &t) {
                if (espelhando_) return;
                do_widget(n, [this, ref, c, t] {
                    c->Text = t;
                    tela_.Dispara(ref, Evento::Change);
                });
            });
    } else if (auto *sb = qobject_cast<QScrollBar *>(obj)) {
        // The bar moved by the operator takes the model's road; a value mirrored from the
        // model runs nothing.
        connect(sb, &QScrollBar::valueChanged, this, [this, n, ref](int v) {
            if (espelhando_) return;
            do_widget(n, [this, ref, v] { tela_.Rola(ref.Nome, ref.Index, v); });
        });
    } else if (auto *a = qobject_cast<QAction *>(obj)) {
        connect(a, &QAction::triggered, this, [this, n, c, a](bool marcado) {
            if (c->Enabled && a->isCheckable()) c->Value = marcado ? 1 : 0;
            clique(n);
        });
    }
}

} // namespace vexa::ui
