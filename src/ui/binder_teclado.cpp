#include "ui/binder.h"

#include "core/teclas.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <map>

// The focus and the keys: a widget that takes the focus asks the model first, and a key runs
// the control's KeyDown and KeyPress handlers with the classic key codes.

namespace vexa::ui {

namespace {
int shift_de(Qt::KeyboardModifiers m) {
    return (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) |
           (m & Qt::AltModifier ? 4 : 0);
}
} // namespace

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

} // namespace vexa::ui
