#pragma once
// The base of every screen model: its controls under their own names and indices, its
// event handlers named control_event, and the focus with its leave/enter order.
//
// A focus move from A to B runs, in order: B's Enter, A's LostFocus, B's GotFocus. A
// handler of the move may call SetFocus: from A's LostFocus, SetFocus(A) keeps the focus on
// A (nothing more runs) and SetFocus(C) sends it to C instead of B. B's Enter runs ahead of
// A's LostFocus so that the control being entered can set flags the leave handler reads.
#include "core/desktop.h"
#include "core/sessao.h"
#include "core/telas.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace vexa {

// The rows of a list: texts of its own (AddItem), or a source that answers how many rows
// there are and the text of row i when it is asked, so that a list over a whole table builds
// no text ahead of the rows the operator looks at.
class LinhasLista {
  public:
    using Linha = std::function<QString(int)>;

    LinhasLista() = default;
    LinhasLista(const QStringList &textos);

    int size() const { return fonte_ ? fonte_->conta : int(textos_.size()); }
    bool isEmpty() const { return size() == 0; }
    QString at(int i) const;
    QString operator[](int i) const { return at(i); }
    QString first() const { return at(0); }
    bool contains(const QString &texto) const;
    // Every row's text: for small lists and checks, never for a whole table on screen.
    QStringList lista() const;

    void append(const QString &texto);
    void clear();
    // The rows become conta rows read through linha.
    void fonte(int conta, Linha linha);

    // Moves on at every change of the rows, so a view redraws only when they changed.
    quint64 versao() const { return versao_; }

  private:
    struct Fonte {
        int conta;
        Linha linha;
    };
    void mudou();

    std::shared_ptr<const Fonte> fonte_;
    QStringList textos_;
    quint64 versao_ = 0;
};

bool operator==(const LinhasLista &linhas, const QStringList &textos);

enum class TipoControle {
    Texto,        // a text box (MultiLine for more lines)
    Botao,        // a command button
    Opcao,        // an option (radio) button; Value 1 when chosen
    Caixa,        // a check box; Value 0 or 1
    Lista,        // a list box: Itens, ListIndex
    Combo,        // a combo box: Itens, ListIndex, Text
    Rotulo,       // a label: Caption
    Quadro,       // a frame around other controls: Caption
    Painel,       // a panel with a caption, such as the key hint
    Medidor,      // a progress gauge: Value 0 to 100, ForeColor
    Menu,         // a menu item: Caption, Enabled, Value for a check mark
    Temporizador, // a timer: Interval in milliseconds, Enabled
    Imagem,       // a picture: Picture is a file path
    Forma,        // a drawn box on a picture, placed by Left/Top/Width/Height
    Rolagem,      // a vertical scroll bar: Value within Min..Max
};

// Colours are stored as the classic RGB value (red in the low byte).
constexpr qint32 SemCor = -1;

struct Controle {
    explicit Controle(TipoControle tipo, QString caption = {}) : Tipo(tipo), Caption(caption) {}

    TipoControle Tipo;
    QString Caption;
    QString Text;
    bool Enabled = true;
    bool Visible = true;
    bool MultiLine = false;
    bool Locked = false;
    int Value = 0;
    int MaxLength = 0; // 0: no limit on typing
    LinhasLista Itens;
    int ListIndex = -1;
    int Interval = 0;
    QString Picture;
    qint32 ForeColor = SemCor;
    qint32 BackColor = SemCor;
    int Left = 0, Top = 0, Width = 0, Height = 0;
    // A scroll bar's range.
    int Min = 0, Max = 32767;
    QString ToolTipText;
    // The frame the control lies in (null: the window itself). Option buttons in one frame
    // are one group: choosing one clears the others there, and only there.
    const Controle *Container = nullptr;
    // Asks the view to select the whole text at the next mirror.
    bool SelecionaTudo = false;

    // A list where several rows can be chosen at once: the rows chosen, by position, kept
    // apart from the rows' texts so that a list over a row source keeps them too. A list
    // without it has its current row as the one chosen.
    bool MultiSelect = false;
    std::set<int> Selecionadas;
    bool Selected(int i) const;
    void SetSelected(int i, bool sim);

    void AddItem(const QString &item) { Itens.append(item); }
    void Clear() {
        Itens.clear();
        ListIndex = -1;
        Selecionadas.clear();
    }
    int ListCount() const { return Itens.size(); }
    QString List(int i) const { return Itens.at(i); }
};

struct Texto : Controle {
    Texto(QString caption = {}, int maxLength = 0) : Controle(TipoControle::Texto, caption) {
        MaxLength = maxLength;
    }
};
struct Botao : Controle {
    Botao(QString caption = {}) : Controle(TipoControle::Botao, caption) {}
};
struct Opcao : Controle {
    Opcao(QString caption = {}) : Controle(TipoControle::Opcao, caption) {}
};
struct Caixa : Controle {
    Caixa(QString caption = {}) : Controle(TipoControle::Caixa, caption) {}
};
struct Lista : Controle {
    Lista(QString caption = {}) : Controle(TipoControle::Lista, caption) {}
};
struct Combo : Controle {
    Combo(QString caption = {}) : Controle(TipoControle::Combo, caption) {}
};
struct Rotulo : Controle {
    Rotulo(QString caption = {}) : Controle(TipoControle::Rotulo, caption) {}
};
struct Quadro : Controle {
    Quadro(QString caption = {}) : Controle(TipoControle::Quadro, caption) {}
};
struct Painel : Controle {
    Painel(QString caption = {}) : Controle(TipoControle::Painel, caption) {}
};
struct Medidor : Controle {
    Medidor() : Controle(TipoControle::Medidor) {}
};
struct MenuItem : Controle {
    MenuItem(QString caption = {}) : Controle(TipoControle::Menu, caption) {}
};
struct Temporizador : Controle {
    Temporizador(int interval = 0) : Controle(TipoControle::Temporizador) { Interval = interval; }
};
struct Imagem : Controle {
    Imagem() : Controle(TipoControle::Imagem) {}
};
struct Forma : Controle {
    Forma(QString caption = {}) : Controle(TipoControle::Forma, caption) {}
};

struct Rolagem : Controle {
    Rolagem(int min = 0, int max = 32767) : Controle(TipoControle::Rolagem) {
        Min = min;
        Max = max;
        Value = min;
    }
};

// A control array: controls addressed by index, with gaps where the screen has none.
template <class T> class Matriz {
  public:
    Matriz() = default;
    // Indices 0, 1, 2... with these captions.
    Matriz(std::initializer_list<QString> captions) {
        int i = 0;
        for (const auto &c : captions)
            itens_.emplace(i++, T(c));
    }
    Matriz(std::initializer_list<std::pair<const int, T>> pares) : itens_(pares) {}
    // Indices 0 .. n-1, default controls.
    static Matriz comTamanho(int n) {
        Matriz m;
        for (int i = 0; i < n; ++i)
            m.itens_.emplace(i, T());
        return m;
    }

    T &operator[](int i) { return itens_.at(i); }
    const T &operator[](int i) const { return itens_.at(i); }
    bool contains(int i) const { return itens_.count(i) != 0; }
    int size() const { return int(itens_.size()); }
    auto begin() { return itens_.begin(); }
    auto end() { return itens_.end(); }
    auto begin() const { return itens_.begin(); }
    auto end() const { return itens_.end(); }
    std::map<int, T> &mapa() { return itens_; }

  private:
    std::map<int, T> itens_;
};

// A control's name and index (-1 for a control that is not in an array).
struct RefControle {
    QString Nome;
    int Index = -1;
    bool valida() const { return !Nome.isEmpty(); }
    bool operator==(const RefControle &o) const { return Nome == o.Nome && Index == o.Index; }
    QString texto() const { return Index < 0 ? Nome : Nome + "(" + QString::number(Index) + ")"; }
    // Reads "Text1(3)" or "Text1".
    static RefControle de(const QString &texto);
};

enum class Evento { Click, DblClick, Change, Enter, GotFocus, LostFocus, KeyDown, KeyPress, Timer };

class Tela {
  public:
    Tela(QString nome, QString caption, Sessao &sessao, Desktop &desktop);
    virtual ~Tela();
    Tela(const Tela &) = delete;
    Tela &operator=(const Tela &) = delete;

    const QString Nome;
    QString Caption;
    bool Visible = true;
    // The width and height the view should give the window, in pixels (0: its own).
    int LarguraJanela = 0, AlturaJanela = 0;

    Sessao &sessao;
    Desktop &desktop;

    virtual void Form_Load() {}
    // The window became the active one again (another screen in front of it closed).
    virtual void Form_Activate() {}
    // The window is being closed by the operator: set Cancel to keep it open.
    virtual void Form_QueryUnload(int &Cancel) { Q_UNUSED(Cancel); }
    virtual void Form_Unload() {}

    // Closes this screen.
    void Unload();
    bool Descarregada() const { return descarregada_; }
    void marcaDescarregada() { descarregada_ = true; }

    // --- controls
    Controle *controle(const RefControle &ref) const;
    Controle *controle(const QString &nome, int index = -1) const {
        return controle(RefControle{nome, index});
    }
    RefControle ref(const Controle &c) const;
    const std::vector<std::pair<RefControle, Controle *>> &controles() const { return ordem_; }

    // --- events (the view's binder and tests call these)
    // Runs a handler; false when the control has none for that event.
    bool Dispara(const RefControle &ref, Evento evento);
    bool DisparaTecla(const RefControle &ref, Evento evento, int &codigo, int shift = 0);
    bool TemHandler(const RefControle &ref, Evento evento) const;

    // A click as the operator gives it: the focus goes to the control first (when it takes
    // the focus), and the click runs only when the focus landed there.
    void Clica(const QString &nome, int index = -1);
    // The operator types over a text box: the text changes and Change runs.
    void Digita(const QString &nome, int index, const QString &texto);
    // The operator moves a scroll bar: the focus goes to it, its Value becomes valor held to
    // Min..Max, and Change runs.
    void Rola(const QString &nome, int index, int valor);
    // A key pressed in the control that has the focus; returns the key code after the
    // handlers (0 when swallowed).
    int Tecla(int keyCode, int shift = 0);

    // The button that leaves the screen without acting: its Cancelar, or else its Fechar or
    // Sair; an invalid reference when it has none.
    RefControle BotaoFechar() const;
    // Escape: presses that button as a click does, so the screen's own close runs. False when
    // the screen has no such button or it can't be pressed now.
    bool TeclaEsc();

    // Sets a control's text from the program and runs its Change handler, as assigning the
    // text of a text box does.
    void Muda(Controle &c, const QString &texto);

    // --- focus
    RefControle Foco() const { return foco_; }
    Controle *ControleFoco() const { return controle(foco_); }
    void SetFocus(const RefControle &destino);
    void SetFocus(const QString &nome, int index = -1) { SetFocus(RefControle{nome, index}); }
    void SetFocus(const Controle &c) { SetFocus(ref(c)); }
    // Whether a control can take the focus at all (texts, buttons, lists, options...).
    static bool Focavel(const Controle &c);

    // --- the view
    // The view is told to mirror the model after a change that did not come from it.
    std::function<void()> aoMudar;
    void Refresh() {
        if (aoMudar) aoMudar();
    }

  protected:
    void registra(const QString &nome, Controle &c);
    template <class T> void registra(const QString &nome, Matriz<T> &m) {
        for (auto &[i, c] : m)
            registra_indice(nome, i, c);
    }
    template <class T> void registra(const QString &nome, std::map<int, T> &m) {
        for (auto &[i, c] : m)
            registra_indice(nome, i, c);
    }
    void liga(const QString &nome, Evento evento, std::function<void(int)> handler);
    void ligaTecla(const QString &nome, Evento evento, std::function<void(int, int &, int)> h);

  private:
    void registra_indice(const QString &nome, int index, Controle &c);
    void move_foco(RefControle destino);

    std::vector<std::pair<RefControle, Controle *>> ordem_;
    std::map<QString, std::map<int, Controle *>> porNome_;
    std::map<std::pair<QString, int>, std::function<void(int)>> handlers_;
    std::map<std::pair<QString, int>, std::function<void(int, int &, int)>> teclas_;
    RefControle foco_;
    bool movendo_ = false;
    std::optional<RefControle> redireciona_;
    bool descarregada_ = false;
};

// Opens a screen that may fail in its load: when it set FechaTela, it is closed again at once,
// the flag is cleared and the result is null.
Tela *abre_tela(Sessao &s, Desktop &d, std::unique_ptr<Tela> tela, bool modal = false);

} // namespace vexa
