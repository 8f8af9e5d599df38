#pragma once
// The port to the platform: message boxes, screens, dialogs and the system printer.
// The Qt side implements it in src/ui; tests use DesktopRoteiro.
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace vexa {

class Tela;

// The buttons of a message box, numbered as the classic message-box constants.
enum class Botoes {
    OK = 0,
    OKCancel = 1,
    AbortRetryIgnore = 2,
    YesNoCancel = 3,
    YesNo = 4,
    RetryCancel = 5
};
enum class Icone { Nenhum = 0, Critico = 16, Pergunta = 32, Exclamacao = 48, Informacao = 64 };
enum class Resposta { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

// A document for the system printer: pages of fixed-pitch text lines.
struct DocumentoImpressao {
    QString Titulo;
    QList<QStringList> Paginas;
    int TamanhoFonte = 10;
};

// The window of a long task: a title, the text of the step under way, a bar from 0 to a
// maximum, and Cancelar. The window closes when the object goes. The task asks Cancelado()
// between steps of its own choosing and then stops itself, leaving things as they were.
class Progresso {
  public:
    virtual ~Progresso() = default;
    // A new step: its text, and the bar back to 0 of a new maximum (0: a bar that only moves).
    virtual void Etapa(const QString &texto, int maximo = 0) = 0;
    // How far the step has gone, 0 to its maximum. Lets pending events run.
    virtual void Valor(int valor) = 0;
    // Whether the operator pressed Cancelar.
    virtual bool Cancelado() const = 0;
};

class Desktop {
  public:
    virtual ~Desktop() = default;

    // Padrao names the button that Enter presses; without it, the first button. A question
    // whose Yes would destroy or spend something names No.
    virtual Resposta MsgBox(const QString &texto, Botoes botoes = Botoes::OK,
                            const QString &titulo = QString(), Icone icone = Icone::Nenhum,
                            std::optional<Resposta> Padrao = std::nullopt) = 0;

    // Opens a screen. The desktop owns it until it is unloaded. A screen of the same name
    // already open is brought forward instead, and the one handed in is dropped. Runs the
    // screen's Form_Load before showing it. A modal screen returns when it is closed.
    // Returns the screen that is open (null when its load closed it at once).
    virtual Tela *Abre(std::unique_ptr<Tela> tela, bool modal = false) = 0;
    // Unloads a screen; it is destroyed once the event that asked for it ends.
    virtual void Fecha(Tela &tela) = 0;
    // Shows a screen in its normal state, in front, with the focus: also one that is still
    // loading (the entry screen asks its purge questions over its own open window).
    virtual void Mostra(Tela &tela) = 0;
    // Ends the run at once, whatever is open.
    virtual void Encerra(int codigo = 0) = 0;
    // The open screen of that name, or null.
    virtual Tela *Aberta(const QString &nome) const = 0;

    // The save dialog: the chosen path, or empty on Cancel.
    virtual QString SalvarComo(const QString &titulo, const QString &filtro,
                               const QString &nomeSugerido) = 0;

    // Prints on the system printer after its dialog. Returns 0 when printed, 32755 when the
    // operator cancelled the dialog, 482 when there is no printer, another number otherwise.
    virtual int ImprimeSistema(const DocumentoImpressao &documento) = 0;

    // The folder dialog: the chosen folder, or empty on Cancel.
    virtual QString EscolhePasta(const QString &titulo) = 0;

    // Opens the window of a long task.
    virtual std::unique_ptr<Progresso> AbreProgresso(const QString &titulo) = 0;

    // Shows the help at a topic.
    virtual void Ajuda(const QString &topico) = 0;

    // Lets pending events run (a long walk stays responsive).
    virtual void Processa() {}
};

} // namespace vexa
