#pragma once
// The desktop on Qt Widgets: real message boxes, windows, dialogs and the system printer.
#include "core/desktop.h"

#include <QList>
#include <QPointer>

class QMainWindow;
class QPrinter;

namespace vexa::ui {

class JanelaTela;

class DesktopQt : public Desktop {
  public:
    DesktopQt();
    ~DesktopQt() override;

    Resposta MsgBox(const QString &texto, Botoes botoes = Botoes::OK,
                    const QString &titulo = QString(), Icone icone = Icone::Nenhum,
                    std::optional<Resposta> Padrao = std::nullopt) override;
    Tela *Abre(std::unique_ptr<Tela> tela, bool modal = false) override;
    void Fecha(Tela &tela) override;
    void Mostra(Tela &tela) override;
    void Encerra(int codigo = 0) override;
    Tela *Aberta(const QString &nome) const override;
    QString SalvarComo(const QString &titulo, const QString &filtro,
                       const QString &nomeSugerido) override;
    int ImprimeSistema(const DocumentoImpressao &documento) override;
    void Ajuda(const QString &topico) override;
    // In progresso_qt.cpp.
    QString EscolhePasta(const QString &titulo) override;
    std::unique_ptr<Progresso> AbreProgresso(const QString &titulo) override;
    void Processa() override;

    // The window of an open screen.
    QMainWindow *Janela(const Tela &tela) const;

    // Paints a document's pages on a printer (also a PDF printer). Returns the error number
    // of the print: 0 when done.
    static int ImprimePaginas(QPrinter &impressora, const DocumentoImpressao &documento);

  private:
    QList<QPointer<JanelaTela>> janelas_;
};

} // namespace vexa::ui
