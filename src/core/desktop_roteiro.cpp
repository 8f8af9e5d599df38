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

void ProgressoRoteiro::Inicia(const QString &titulo, const QString &texto, qint64 maximo,
                              bool cancelavel) {
    Trabalhos.append({titulo, texto, maximo, cancelavel, {}, false});
}

bool ProgressoRoteiro::Passo(qint64 valor) {
    if (Trabalhos.isEmpty()) return true;
    Registro &r = Trabalhos.last();
    r.Passos.append(valor);
    return !(r.Cancelavel && CancelaEm && valor >= *CancelaEm);
}

void ProgressoRoteiro::Termina() {
    if (!Trabalhos.isEmpty()) Trabalhos.last().Terminado = true;
}

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

QStringList DesktopRoteiro::Textos() const {
    QStringList t;
    for (const auto &m : Mensagens)
        t.append(m.Texto);
    return t;
}

} // namespace vexa
