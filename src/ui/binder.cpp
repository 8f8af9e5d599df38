#include "ui/binder.h"

#include "core/teclas.h"

#include <QAbstractButton>
#include <QAbstractListModel>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QWidget>
#include <map>
#include <set>

namespace vexa::ui {

namespace {
std::vector<Binder *> &vivos() {
    static std::vector<Binder *> v;
    return v;
}
int profundidade = 0;

QColor cor_rgb(qint32 rgb) {
    return QColor(rgb & 0xFF, (rgb >> 8) & 0xFF, (rgb >> 16) & 0xFF);
}

int shift_de(Qt::KeyboardModifiers m) {
    return (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) |
           (m & Qt::AltModifier ? 4 : 0);
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

// A list's rows as a Qt model: the count when the rows last changed, and the text of a row
// when the view draws it.
class ModeloLista : public QAbstractListModel {
  public:
    ModeloLista(const Controle &c, QObject *pai) : QAbstractListModel(pai), c_(c) {}
    int rowCount(const QModelIndex &pai) const override { return pai.isValid() ? 0 : conta_; }
    QVariant data(const QModelIndex &i, int papel) const override {
        if (papel != Qt::DisplayRole || !i.isValid() || i.row() >= conta_) return {};
        return c_.Itens.at(i.row());
    }
    void atualiza() {
        if (versao_ == c_.Itens.versao() && conta_ == c_.Itens.size()) return;
        beginResetModel();
        versao_ = c_.Itens.versao();
        conta_ = c_.Itens.size();
        endResetModel();
    }

  private:
    const Controle &c_;
    quint64 versao_ = 0;
    int conta_ = 0;
};
// A list where the operator chooses several rows; its rows chosen mirror the model's
// Selecionadas, its current row the model's ListIndex.
bool varias_linhas(const QListView &lv) {
    return lv.selectionMode() == QAbstractItemView::ExtendedSelection ||
           lv.selectionMode() == QAbstractItemView::MultiSelection;
}

std::set<int> linhas_escolhidas(const QListView &lv) {
    std::set<int> linhas;
    for (const QItemSelectionRange &r : lv.selectionModel()->selection())
        for (int i = r.top(); i <= r.bottom(); ++i)
            linhas.insert(linhas.end(), i);
    return linhas;
}

void espelha_escolhidas(QListView &lv, const Controle &c) {
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
    sel.select(escolha, QItemSelectionModel::ClearAndSelect);
}

} // namespace

Binder::Binder(Tela &tela, QWidget *raiz) : QObject(raiz), tela_(tela), raiz_(raiz) {
    vivos().push_back(this);
    QList<QObject *> objetos;
    objetos.append(raiz);
    for (QObject *o : raiz->findChildren<QObject *>())
        objetos.append(o);
    for (QObject *o : objetos) {
        if (o->objectName().isEmpty()) continue;
        const RefControle ref = RefControle::de(o->objectName());
        if (!ref.valida()) continue;
        if (Controle *c = tela.controle(ref)) liga(o, ref, c);
    }
    // Timers have no widget: the binder runs them.
    for (const auto &[ref, c] : tela.controles()) {
        if (c->Tipo != TipoControle::Temporizador) continue;
        auto *t = new QTimer(this);
        const RefControle r = ref;
        connect(t, &QTimer::timeout, this, [this, r] {
            if (tela_.Descarregada()) return;
            Despacha([this, r] { tela_.Dispara(r, Evento::Timer); });
        });
        timers_.push_back({ref, t});
    }
    tela.aoMudar = [this] {
        if (profundidade == 0) Espelha();
    };
    Espelha();
}

Binder::~Binder() {
    auto &v = vivos();
    v.erase(std::remove(v.begin(), v.end(), this), v.end());
    if (!tela_.Descarregada()) tela_.aoMudar = nullptr;
}

bool Binder::Ocupado() {
    return profundidade > 0;
}

void Binder::Despacha(const std::function<void()> &acao) {
    ++profundidade;
    acao();
    --profundidade;
    if (profundidade == 0) EspelhaTodos();
}

void Binder::EspelhaTodos() {
    const auto copia = vivos();
    for (Binder *b : copia)
        if (std::find(vivos().begin(), vivos().end(), b) != vivos().end()) b->Espelha();
}

QObject *Binder::objeto(const RefControle &ref) const {
    for (const auto &l : ligacoes_)
        if (l.ref == ref) return l.objeto;
    return nullptr;
}

QWidget *Binder::widget(const RefControle &ref) const {
    return qobject_cast<QWidget *>(objeto(ref));
}

const Binder::Ligacao *Binder::ligacao_de(QObject *obj) const {
    for (const auto &l : ligacoes_)
        if (l.objeto == obj) return &l;
    return nullptr;
}

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
    } else if (auto *lv = qobject_cast<QListView *>(obj)) {
        auto *modelo = new ModeloLista(*c, lv);
        lv->setModel(modelo);
        lv->setUniformItemSizes(true);
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
        connect(lv, &QListView::doubleClicked, this, [this, n, ref, c](const QModelIndex &i) {
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

bool Binder::eventFilter(QObject *obj, QEvent *ev) {
    const Ligacao *l = ligacao_de(obj);
    if (!l || tela_.Descarregada()) return false;
    const RefControle ref = l->ref;

    if (ev->type() == QEvent::FocusIn) {
        if (espelhando_ || Ocupado() || tela_.Foco() == ref) return false;
        Despacha([this, ref] { tela_.SetFocus(ref); });
        const bool mouse = static_cast<QFocusEvent *>(ev)->reason() == Qt::MouseFocusReason;
        recusado_ = mouse && !(tela_.Foco() == ref) ? ref : RefControle{};
        return false;
    }
    if (ev->type() == QEvent::MouseButtonDblClick && qobject_cast<QLineEdit *>(obj)) {
        Despacha([this, ref] { tela_.Dispara(ref, Evento::DblClick); });
        return false;
    }
    if (ev->type() != QEvent::KeyPress) return false;

    auto *k = static_cast<QKeyEvent *>(ev);
    if (k->key() == Qt::Key_Tab || k->key() == Qt::Key_Backtab) return false;
    const int codigo = CodigoTecla(k->key());
    bool engolida = false;
    if (codigo != 0 && tela_.TemHandler(ref, Evento::KeyDown)) {
        Despacha([&] {
            int c = codigo;
            tela_.DisparaTecla(ref, Evento::KeyDown, c, shift_de(k->modifiers()));
            // A key whose handler moved the focus is spent.
            engolida = c == 0 || !(tela_.Foco() == ref);
        });
    }
    if (engolida) return true;
    const QString texto = k->text();
    if (texto.size() == 1 && tela_.TemHandler(ref, Evento::KeyPress)) {
        int ascii = texto.at(0).unicode();
        Despacha([&] { tela_.DisparaTecla(ref, Evento::KeyPress, ascii, 0); });
        if (ascii == 0) return true;
        if (ascii != texto.at(0).unicode()) {
            if (auto *e = qobject_cast<QLineEdit *>(obj)) {
                e->insert(QString(QChar(ascii)));
                Despacha([this, ref, e] {
                    if (Controle *c = tela_.controle(ref)) c->Text = e->text();
                    tela_.Dispara(ref, Evento::Change);
                });
                return true;
            }
        }
    }
    return false;
}

int Binder::CodigoTecla(int k) {
    if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return tecla::F1 + (k - Qt::Key_F1);
    // Letters and digits keep their own codes, the capital letter's for a letter.
    if (k >= Qt::Key_A && k <= Qt::Key_Z) return k;
    if (k >= Qt::Key_0 && k <= Qt::Key_9) return k;
    static const std::map<int, int> teclas = {
        {Qt::Key_Return, tecla::Enter},      {Qt::Key_Enter, tecla::Enter},
        {Qt::Key_Escape, tecla::Esc},        {Qt::Key_Backspace, tecla::Backspace},
        {Qt::Key_Space, tecla::Espaco},      {Qt::Key_PageUp, tecla::PageUp},
        {Qt::Key_PageDown, tecla::PageDown}, {Qt::Key_End, tecla::End},
        {Qt::Key_Home, tecla::Home},         {Qt::Key_Left, tecla::Esquerda},
        {Qt::Key_Up, tecla::Acima},          {Qt::Key_Right, tecla::Direita},
        {Qt::Key_Down, tecla::Abaixo},       {Qt::Key_Insert, tecla::Insert},
        {Qt::Key_Delete, tecla::Delete},
    };
    const auto t = teclas.find(k);
    return t == teclas.end() ? 0 : t->second;
}

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
    } else if (auto *lv = qobject_cast<QListView *>(w)) {
        if (auto *modelo = dynamic_cast<ModeloLista *>(lv->model())) modelo->atualiza();
        const int atual = lv->currentIndex().isValid() ? lv->currentIndex().row() : -1;
        if (varias_linhas(*lv)) {
            espelha_escolhidas(*lv, *c);
        } else if (atual != c->ListIndex ||
                   (c->ListIndex < 0 && lv->selectionModel()->hasSelection())) {
            if (c->ListIndex < 0) {
                lv->selectionModel()->clear();
            } else {
                const QModelIndex i = lv->model()->index(c->ListIndex, 0);
                lv->selectionModel()->setCurrentIndex(i, QItemSelectionModel::ClearAndSelect);
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
