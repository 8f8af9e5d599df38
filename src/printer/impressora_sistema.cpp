#include "printer/impressora_sistema.h"

#include "core/conversoes.h"
#include "core/relogio.h"
#include "printer/papel.h"

namespace vexa {

namespace {
ImpressorSistema impressor_ = nullptr;
PreviaSistema previa_ = nullptr;
ListaImpressoras lista_ = nullptr;
} // namespace

void define_lista_impressoras(ListaImpressoras lista) {
    lista_ = lista;
}

QStringList impressoras_conhecidas() {
    return lista_ ? lista_() : QStringList();
}

void define_impressor_sistema(ImpressorSistema impressor) {
    impressor_ = impressor;
}

int imprime_trabalho_sistema(const TrabalhoSistema &trabalho) {
    return impressor_ ? impressor_(trabalho) : 482;
}

void define_previa_sistema(PreviaSistema previa) {
    previa_ = previa;
}

ImpressoraSistema::ImpressoraSistema(const QString &caminhoApp, const QString &caminhoIni)
    : Simulador(caminhoApp), caminhoIni_(caminhoIni), config_(le_configuracao_sistema(caminhoIni)) {
}

QString ImpressoraSistema::Descricao() const {
    return "Impressora do sistema (" +
           (config_.Impressora.isEmpty() ? QStringLiteral("padrão") : config_.Impressora) + ")";
}

QString ImpressoraSistema::Motivo(qint16 resultado) const {
    switch (resultado) {
    case SemImpressora:
        return "A impressora \"" + config_.Impressora +
               "\" não foi encontrada no sistema.\nEscolha a impressora em Configurações, "
               "Impressora do sistema.";
    case Recusou:
        return "A impressora do sistema recusou o trabalho: nada foi impresso.";
    case FaixaMagnetica:
        return "O leiaute do banco põe o campo " + recusado_ + " (linha " +
               QString::number(linhaRecusada_) +
               ") fora da área de impressão do cheque: nada pode ser impresso na faixa "
               "magnética, os 16 mm de baixo.\nCorrija o leiaute no Cadastro de Bancos. Nada "
               "foi impresso.";
    case CanceladoPrevia:
        return "Impressão cancelada na prévia: nada foi impresso.";
    case BancoSemLayout:
        return "O leiaute deste banco não está na memória da impressora.\nAtualize-o no "
               "Cadastro de Bancos.";
    default:
        return {};
    }
}

qint16 ImpressoraSistema::IniciaPorta(const QString &) {
    config_ = le_configuracao_sistema(caminhoIni_);
    encerra_texto();
    // The system printer has no port: the one the settings name opens it.
    return Simulador::IniciaPorta(Porta());
}

qint16 ImpressoraSistema::FechaPorta() {
    const qint16 texto = encerra_texto();
    const qint16 r = Simulador::FechaPorta();
    return r == Feito ? texto : r;
}

qint16 ImpressoraSistema::TravaDoc(qint16 Trava) {
    return opera("TravaDoc", {QString::number(Trava)}, ExigePorta, [&]() -> qint16 {
        if (Trava != 0 && Trava != 1) return ArgumentoInvalido;
        return encerra_texto();
    });
}

FaceSistema ImpressoraSistema::FaceCheque(const QString &Banco, const QString &Valor,
                                          const QString &Favorecido, const QString &Cidade,
                                          const QString &Data,
                                          const QMap<int, CampoExtra> &extras) {
    return compoe_face_sistema(config_,
                               campos_face(modelo(Banco), Valor, Favorecido, Cidade, Data, extras));
}

qint16 ImpressoraSistema::ImprimeCheque(const QString &Banco, const QString &Valor,
                                        const QString &Favorecido, const QString &Cidade,
                                        const QString &Data, const QString &Extra) {
    const QMap<int, CampoExtra> extras = toma_extras();
    const QStringList args{Banco, Valor, Favorecido, Cidade, Data, Extra};
    return opera("ImprimeCheque", args, ExigePorta, [&]() -> qint16 {
        if (!Memoria().Bancos().contains(Banco.trimmed())) return BancoSemLayout;
        encerra_texto();
        const FaceSistema face = FaceCheque(Banco, Valor, Favorecido, Cidade, Data, extras);
        if (!face.Recusado.isEmpty()) {
            recusado_ = face.Recusado;
            linhaRecusada_ = face.LinhaRecusada;
            return FaixaMagnetica;
        }
        if (face.Pagina.Escritos.isEmpty()) return ArgumentoInvalido;
        ultimaFace_ = face.Pagina;
        if (previa_ && config_.Previa && arquivoPdf_.isEmpty() && !previa_(face.Pagina))
            return CanceladoPrevia;
        return ImprimePaginas("Cheque " + Banco.trimmed() + " " + Valor.trimmed(), {face.Pagina});
    });
}

qint16 ImpressoraSistema::ImprimePaginas(const QString &titulo,
                                         const QList<PaginaSistema> &paginas) {
    const int erro = imprime_trabalho_sistema({titulo, config_.Impressora, arquivoPdf_, paginas});
    return erro == 0 ? qint16(Feito) : erro == 482 ? qint16(SemImpressora) : qint16(Recusou);
}

qint16 ImpressoraSistema::recebe_texto(const QString &texto) {
    folha_.recebe(da_impressora(texto));
    temTexto_ = true;
    return Feito;
}

qint16 ImpressoraSistema::encerra_texto() {
    if (!temTexto_) return Feito;
    folha_.encerra();
    const QList<PaginaSistema> paginas =
        paginas_texto_sistema(config_, folha_.Linhas(), folha_.Forma());
    folha_ = FolhaTexto();
    temTexto_ = false;
    return ImprimePaginas("Vexa Plus", paginas);
}

qint16 ImpressoraSistema::ImprimeChequeTeste(const QString &Banco) {
    const QString banco = Banco.trimmed().isEmpty() && !Memoria().Bancos().isEmpty()
                              ? Memoria().Bancos().firstKey()
                              : Banco.trimmed();
    IniciaPorta(Porta());
    const qint16 r = ImprimeCheque(banco, "1.234,56", ConverteTexto("Fulano de Tal"),
                                   ConverteTexto("São Paulo"), hoje().toString("dd/MM/yy"), {});
    FechaPorta();
    return r;
}

} // namespace vexa
