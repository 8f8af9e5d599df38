#pragma once
// A desktop for tests and tools: message boxes are answered from a list and recorded,
// screens are kept open without windows, dialogs answer what the test set.
#include "core/desktop.h"
#include "core/tela.h"

#include <QList>
#include <vector>

namespace vexa {

class DesktopRoteiro : public Desktop {
  public:
    struct Mensagem {
        QString Texto;
        QString Titulo;
        Botoes Botoes_ = Botoes::OK;
        Icone Icone_ = Icone::Nenhum;
        Resposta Respondida = Resposta::OK;
        // The button Enter presses on this box.
        Resposta Padrao = Resposta::OK;
    };

    // Answers for the next message boxes, in order. When the list runs out a box is
    // answered as Enter would: with its default button, the first one unless it names another.
    QList<Resposta> Respostas;
    QList<Mensagem> Mensagens;

    // Every screen opened, by name, in order (also those that were already open).
    QStringList Abertas;
    // The path the save dialog answers (empty: Cancel).
    QString CaminhoSalvar;
    // What the system printer answers, and what it received.
    int ErroImpressao = 0;
    QList<DocumentoImpressao> Impressos;
    QStringList Ajudas;
    // The folder the folder dialog answers (empty: Cancel).
    QString PastaEscolhida;
    // The progress windows: every title and step text, in order ("título" for a window,
    // then "título: etapa" for each of its steps). Cancelar is pressed when the step
    // numbered CancelaNaEtapa (from 1, over all windows) has begun; 0 never.
    QStringList Progressos;
    int CancelaNaEtapa = 0;
    // Cancelar is also pressed once a step has gone as far as this value (0: never), so a
    // test can stop a task in the middle of its rows.
    int CancelaNoValor = 0;
    // Screens shown while loading, and whether the run was ended (with its code).
    QStringList Mostradas;
    bool Encerrado = false;
    int CodigoSaida = 0;

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
    QString EscolhePasta(const QString &titulo) override;
    std::unique_ptr<Progresso> AbreProgresso(const QString &titulo) override;

    // The texts of the recorded messages, in order.
    QStringList Textos() const;
    template <class T> T *Tela_(const QString &nome) const {
        return dynamic_cast<T *>(Aberta(nome));
    }

  private:
    int etapas_ = 0;
    std::vector<std::unique_ptr<Tela>> telas_;
    std::vector<std::unique_ptr<Tela>> fechadas_;
};

} // namespace vexa
