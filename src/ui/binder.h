#pragma once
// The one generic binder between a screen model and its Qt widgets. A widget whose
// objectName is a control's name ("Text1(3)", "Opcoes(0)", "CheckBox") is connected to the
// model's handlers, and after every handler the state of every open model is mirrored back
// to its widgets: texts, captions, enabled and visible states, lists, values and the focus.
#include "core/tela.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

class QWidget;
class QTimer;

namespace vexa::ui {

class Binder : public QObject {
    Q_OBJECT
  public:
    // Binds every widget and action below raiz (itself included) named after a control.
    Binder(Tela &tela, QWidget *raiz);
    ~Binder() override;

    Tela &tela() const { return tela_; }
    // The widget (or action) bound to a control, or null.
    QObject *objeto(const RefControle &ref) const;
    QWidget *widget(const RefControle &ref) const;

    // Mirrors the model into the widgets.
    void Espelha();
    // Mirrors every open screen: a handler of one screen may change another.
    static void EspelhaTodos();
    // Runs a model handler as the operator's action: nested handlers and message boxes are
    // guarded, and every screen is mirrored when the outermost one ends.
    static void Despacha(const std::function<void()> &acao);
    static bool Ocupado();

    // Called after each mirror: views that paint from the model repaint here.
    std::function<void()> aoEspelhar;

    // The classic key code of a Qt key (F3 is 114, Enter 13), 0 when it has none.
    static int CodigoTecla(int qtKey);

  protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;

  private:
    struct Ligacao {
        RefControle ref;
        Controle *controle;
        QPointer<QObject> objeto;
    };
    void liga(QObject *obj, const RefControle &ref, Controle *c);
    void clique(const RefControle &ref);
    void espelha_um(const Ligacao &l);
    void espelha_foco();
    const Ligacao *ligacao_de(QObject *obj) const;

    Tela &tela_;
    QPointer<QWidget> raiz_;
    std::vector<Ligacao> ligacoes_;
    std::vector<std::pair<RefControle, QTimer *>> timers_;
    bool espelhando_ = false;
};

} // namespace vexa::ui
