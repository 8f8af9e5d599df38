#include "ui/binder.h"
#include "ui/binder_lista.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QTimer>

// The model's state back on its widgets: texts, captions, enabled and visible states, lists,
// values, colours, the timers and the focus. A control that didn't change since its last
// mirror is skipped.

namespace vexa::ui {

namespace {
QColor cor_rgb(qint32 rgb) {
    return QColor(rgb & 0xFF, (rgb >> 8) & 0xFF, (rgb >> 16) & 0xFF);
}

// What a mirror shows of a control; the rows of a list compare by their version, so a list of
// a whole table costs nothing to compare.
bool mesmo_estado(const Controle &a, const Controle &b) {
    return a.Caption == b.Caption && a.Text == b.Text && a.Enabled == b.Enabled &&
           a.Visible == b.Visible && a.Locked == b.Locked && a.Value == b.Value &&
           a.MaxLength == b.MaxLength && a.Itens.versao() == b.Itens.versao() &&
           a.ListIndex == b.ListIndex && a.Picture == b.Picture && a.ForeColor == b.ForeColor &&
           a.BackColor == b.BackColor && a.ToolTipText == b.ToolTipText &&
           a.SelecionaTudo == b.SelecionaTudo && a.Selecionadas == b.Selecionadas &&
           a.Min == b.Min && a.Max == b.Max;
}

} // namespace

void Binder::Espelha() {
    if (tela_.Descarregada() || !raiz_) return;
    espelhando_ = true;
    if (raiz_->isWindow() && raiz_->windowTitle() != tela_.Caption)
        raiz_->setWindowTitle(tela_.Caption);
    for (auto &l : ligacoes_) {
        if (!l.objeto) continue;
        if (!l.sujo && l.espelhado && mesmo_estado(*l.espelhado, *l.controle)) continue;
        espelha_um(l);
        l.espelhado = *l.controle;
        l.sujo = false;
    }
    for (auto &[ref, t] : timers_) {
        const Controle *c = tela_.controle(ref);
        const bool ligado = c->Enabled && c->Interval > 0;
        if (ligado && (t->interval() != c->Interval || !t->isActive()))
            t->start(c->Interval);
        else if (!ligado && t->isActive())
            t->stop();
    }
    espelha_foco();
    espelhando_ = false;
    if (aoEspelhar) aoEspelhar();
}

void Binder::espelha_um(const Ligacao &l) {
    Controle *c = l.controle;
    if (auto *a = qobject_cast<QAction *>(l.objeto)) {
        if (a->text() != c->Caption) a->setText(c->Caption);
        a->setEnabled(c->Enabled);
        a->setVisible(c->Visible);
        if (a->isCheckable()) a->setChecked(c->Value != 0);
        return;
    }
    auto *w = qobject_cast<QWidget *>(l.objeto);
    if (!w) return;
    if (w->isEnabled() != c->Enabled) w->setEnabled(c->Enabled);
    if (w->isHidden() == c->Visible) w->setHidden(!c->Visible);
    if (!c->ToolTipText.isEmpty()) w->setToolTip(c->ToolTipText);

    if (auto *e = qobject_cast<QLineEdit *>(w)) {
        if (e->text() != c->Text) e->setText(c->Text);
        const int max = c->MaxLength > 0 ? c->MaxLength : 32767;
        if (e->maxLength() != max) e->setMaxLength(max);
        e->setReadOnly(c->Locked);
        if (c->SelecionaTudo) {
            e->selectAll();
            c->SelecionaTudo = false;
        }
    } else if (auto *p = qobject_cast<QPlainTextEdit *>(w)) {
        if (p->toPlainText() != c->Text) p->setPlainText(c->Text);
        p->setReadOnly(c->Locked);
    } else if (auto *b = qobject_cast<QAbstractButton *>(w)) {
        if (!c->Caption.isEmpty() && b->text() != c->Caption) b->setText(c->Caption);
        if (b->isCheckable() && b->isChecked() != (c->Value != 0)) b->setChecked(c->Value != 0);
    } else if (auto *lv = qobject_cast<QAbstractItemView *>(w)) {
        if (auto *modelo = dynamic_cast<Atualizavel *>(lv->model())) modelo->atualiza();
        const int atual = lv->currentIndex().isValid() ? lv->currentIndex().row() : -1;
        if (varias_linhas(*lv)) {
            espelha_escolhidas(*lv, *c);
        } else if (atual != c->ListIndex ||
                   (c->ListIndex < 0 && lv->selectionModel()->hasSelection())) {
            if (c->ListIndex < 0) {
                lv->selectionModel()->clear();
            } else {
                const QModelIndex i = lv->model()->index(c->ListIndex, 0);
                lv->selectionModel()->setCurrentIndex(i, QItemSelectionModel::ClearAndSelect |
                                                             QItemSelectionModel::Rows);
                lv->scrollTo(i);
            }
        }
    } else if (auto *co = qobject_cast<QComboBox *>(w)) {
        bool iguais = co->count() == c->Itens.size();
        for (int i = 0; iguais && i < co->count(); ++i)
            iguais = co->itemText(i) == c->Itens.at(i);
        if (!iguais) {
            co->clear();
            co->addItems(c->Itens.lista());
        }
        if (co->isEditable()) {
            if (co->currentText() != c->Text) co->setEditText(c->Text);
        } else if (co->currentIndex() != c->ListIndex) {
            co->setCurrentIndex(c->ListIndex);
        }
    } else if (auto *sb = qobject_cast<QScrollBar *>(w)) {
        if (sb->minimum() != qMin(c->Min, c->Max) || sb->maximum() != qMax(c->Min, c->Max))
            sb->setRange(qMin(c->Min, c->Max), qMax(c->Min, c->Max));
        if (sb->value() != c->Value) sb->setValue(c->Value);
    } else if (auto *g = qobject_cast<QGroupBox *>(w)) {
        if (g->title() != c->Caption) g->setTitle(c->Caption);
    } else if (auto *pb = qobject_cast<QProgressBar *>(w)) {
        pb->setValue(qBound(0, c->Value, 100));
        if (c->ForeColor != SemCor) {
            QPalette pal = pb->palette();
            pal.setColor(QPalette::Highlight, cor_rgb(c->ForeColor));
            pb->setPalette(pal);
        }
    } else if (auto *lb = qobject_cast<QLabel *>(w)) {
        if (c->Tipo == TipoControle::Imagem) {
            if (lb->property("imagem").toString() != c->Picture) {
                lb->setProperty("imagem", c->Picture);
                QPixmap px(c->Picture);
                if (!px.isNull()) lb->setPixmap(px);
            }
        } else if (lb->text() != c->Caption) {
            lb->setText(c->Caption);
        }
        // A label's colours: the text's, and a background only where the model gives one.
        QPalette pal = QApplication::palette(lb);
        if (c->ForeColor != SemCor) pal.setColor(QPalette::WindowText, cor_rgb(c->ForeColor));
        if (c->BackColor != SemCor) pal.setColor(QPalette::Window, cor_rgb(c->BackColor));
        if (lb->palette() != pal) lb->setPalette(pal);
        lb->setAutoFillBackground(c->BackColor != SemCor);
    }
}

void Binder::espelha_foco() {
    const RefControle foco = tela_.Foco();
    if (!foco.valida()) return;
    QWidget *w = widget(foco);
    if (!w || w->hasFocus() || !w->isVisible()) return;
    QWidget *janela = w->window();
    if (QApplication::activeModalWidget() && QApplication::activeModalWidget() != janela) return;
    w->setFocus(Qt::OtherFocusReason);
}

} // namespace vexa::ui
