#include "core/desktop_roteiro.h"

namespace vexa {

namespace {
Resposta primeiro_botao(Botoes b) {
    switch (b) {
    case Botoes::OK:
    case Botoes::OKCancel:
        return Resposta::OK;
    case Botoes::AbortRetryIgnore:
        return Resposta::Abort;
    case Botoes::YesNoCancel:
    case Botoes::YesNo:
        return Resposta::Yes;
    case Botoes::RetryCancel:
        return Resposta::Retry;
    }
    return Resposta::OK;
}
} // namespace

Resposta DesktopRoteiro::MsgBox(const QString &texto, Botoes botoes, const QString &titulo,
                                Icone icone, std::optional<Resposta> Padrao) {
    const Resposta padrao = Padrao.value_or(primeiro_botao(botoes));
    const Resposta r = Respostas.isEmpty() ? padrao : Respostas.takeFirst();
    Mensagens.append({texto, titulo, botoes, icone, r, padrao});
    return r;
}

Tela *DesktopRoteiro::Abre(std::unique_ptr<Tela> tela, bool) {
    Abertas.append(tela->Nome);
    if (Tela *ja = Aberta(tela->Nome)) return ja;
    Tela *p = tela.get();
    telas_.push_back(std::move(tela));
    p->Form_Load();
    return p->Descarregada() ? nullptr : p;
}

void DesktopRoteiro::Fecha(Tela &tela) {
    if (tela.Descarregada()) return;
    tela.Form_Unload();
    tela.marcaDescarregada();
    for (auto it = telas_.begin(); it != telas_.end(); ++it)
        if (it->get() == &tela) {
            // Kept alive: the screen may still be running the handler that closed it.
            fechadas_.push_back(std::move(*it));
            telas_.erase(it);
            break;
        }
}

void DesktopRoteiro::Mostra(Tela &tela) {
    Mostradas.append(tela.Nome);
}

void DesktopRoteiro::Encerra(int codigo) {
    Encerrado = true;
    CodigoSaida = codigo;
}

Tela *DesktopRoteiro::Aberta(const QString &nome) const {
    for (const auto &t : telas_)
        if (t->Nome == nome && !t->Descarregada()) return t.get();
    return nullptr;
}

QString DesktopRoteiro::SalvarComo(const QString &, const QString &, const QString &) {
    return CaminhoSalvar;
}

int DesktopRoteiro::ImprimeSistema(const DocumentoImpressao &documento) {
    if (ErroImpressao == 0) Impressos.append(documento);
    return ErroImpressao;
}

void DesktopRoteiro::Ajuda(const QString &topico) {
    Ajudas.append(topico);
}

QString DesktopRoteiro::EscolhePasta(const QString &) {
    return PastaEscolhida;
}

namespace {
class ProgressoRoteiro : public Progresso {
  public:
    ProgressoRoteiro(QStringList &registro, int &etapas, int cancela, int cancelaValor,
                     const QString &titulo)
        : registro_(registro), etapas_(etapas), cancela_(cancela), cancelaValor_(cancelaValor),
          titulo_(titulo) {
        registro_.append(titulo);
    }
    void Etapa(const QString &texto, int) override {
        registro_.append(titulo_ + ": " + texto);
        cancelado_ = cancelado_ || ++etapas_ == cancela_;
    }
    void Valor(int valor) override {
        cancelado_ = cancelado_ || (cancelaValor_ > 0 && valor >= cancelaValor_);
    }
    bool Cancelado() const override { return cancelado_; }

  private:
    QStringList &registro_;
    int &etapas_;
    int cancela_, cancelaValor_;
    QString titulo_;
    bool cancelado_ = false;
};
} // namespace

std::unique_ptr<Progresso> DesktopRoteiro::AbreProgresso(const QString &titulo) {
    return std::make_unique<ProgressoRoteiro>(Progressos, etapas_, CancelaNaEtapa, CancelaNoValor,
                                              titulo);
}

QStringList DesktopRoteiro::Textos() const {
    QStringList t;
    for (const auto &m : Mensagens)
        t.append(m.Texto);
    return t;
}

} // namespace vexa
