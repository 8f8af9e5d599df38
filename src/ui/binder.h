#pragma once
// The one generic binder between a screen model and its Qt widgets. A widget whose
// objectName is a control's name ("Text1(3)", "Opcoes(0)", "CheckBox") is connected to the
// model's handlers, and after every handler the state of every open model is mirrored back
// to its widgets: texts, captions, enabled and visible states, lists, values and the focus.
// A click takes the model's own road (Tela::Clica); a list is a view over the model's rows.
#include "core/tela.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <optional>
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
    // The same for a view, whose window's binder is made after it: pinta runs once the binder
    // exists and after each of its mirrors.
    static void PintaAoEspelhar(QWidget &janela, const std::function<void()> &pinta);

    // The classic key code of a Qt key (tecla::F3, tecla::Enter...), 0 when it has none.
    static int CodigoTecla(int qtKey);

  protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;

  private:
    struct Ligacao {
        RefControle ref;
        Controle *controle;
        QPointer<QObject> objeto;
        // The control as it was last mirrored: a mirror skips a control that didn't change.
        std::optional<Controle> espelhado;
        // The widget moved on its own (a click, a pick, typing): mirror it whatever the model
        // says, so a refused click puts the widget back.
        bool sujo = true;
    };
    void liga(QObject *obj, const RefControle &ref, Controle *c);
    // Runs a widget's action on the model; the widget is mirrored afterwards.
    void do_widget(size_t ligacao, const std::function<void()> &acao);
    void clique(size_t ligacao);
    void espelha_um(const Ligacao &l);
    void espelha_foco();
    const Ligacao *ligacao_de(QObject *obj) const;

    Tela &tela_;
    QPointer<QWidget> raiz_;
    std::vector<Ligacao> ligacoes_;
    std::vector<std::pair<RefControle, QTimer *>> timers_;
    bool espelhando_ = false;
    // The control a mouse press tried to give the focus to and the model refused: the click
    // that comes with that press is spent.
    RefControle recusado_;
};

} // namespace vexa::ui
