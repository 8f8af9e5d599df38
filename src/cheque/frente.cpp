#include "cheque/frente.h"

#include "cheque/main.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "printer/impressao.h"
#include "store/historico.h"
#include "store/talao.h"

namespace vexa {

namespace {

const QString Titulo = "Impressão do Cheque";

QString valor_mostrado(const QString &Valor) {
    return mascara_valor(Valor, "###,##0.00").trimmed();
}

QString numero_mostrado(const QString &Numero) {
    return Numero.trimmed().isEmpty() ? QStringLiteral("sem número") : Numero.trimmed();
}

// Why the register can't take a cheque, in the operator's words.
QString causa_sem_registro(const Sessao &s, EstadoRegistro estado) {
    const QString base = "O banco de dados \"" + s.NomeMDB + "\"";
    switch (estado) {
    case EstadoRegistro::Ausente:
        return base + " não foi encontrado.";
    case EstadoRegistro::Travado:
        return base + " está sendo usado por outro programa. Feche esse programa e tente de novo.";
    case EstadoRegistro::SemGravacao:
        return base + " não aceita gravação: o disco está cheio ou o arquivo está protegido.";
    default:
        return base + " está danificado ou não é deste programa.";
    }
}

ChequeImpresso cheque_da_tela(const Main &Tela) {
    ChequeImpresso cheque{Tela.Text1[0].Text, Tela.Text1[1].Text, Tela.Text1[2].Text,
                          Tela.Text1[3].Text, Tela.Text1[4].Text, Tela.Text1[6].Text};
    cheque.Comentarios = {Tela.Text2[0].Text, Tela.Text2[1].Text, Tela.Text2[2].Text};
    return cheque;
}

} // namespace

QString descreve_cheque(const QString &Numero, const QString &Valor, const QString &Favorecido) {
    QString texto = "Cheque " + numero_mostrado(Numero) + " — R$ " + valor_mostrado(Valor);
    if (!Favorecido.trimmed().isEmpty()) texto += " — " + Favorecido.trimmed();
    return texto;
}

QString descreve_parcela(int Parcela, int Total, const QString &Numero, const QString &Valor) {
    return QStringLiteral("Parcela %1 de %2 — cheque ").arg(Parcela).arg(Total) +
           numero_mostrado(Numero) + " — R$ " + valor_mostrado(Valor);
}

QString situacao_cheque(const QString &Numero, const QString &Valor, const Desfecho &desfecho) {
    const QString cheque = "Cheque " + numero_mostrado(Numero) + " de R$ " + valor_mostrado(Valor);
    if (!desfecho.Impresso()) return cheque + " não foi impresso.";
    if (!desfecho.Registrado) return cheque + " impresso e NÃO registrado.";
    return cheque + (desfecho.Cancelado ? " saiu errado e foi registrado como cancelado."
                                        : " impresso e registrado.");
}

Desfecho imprime_e_registra(Sessao &s, Desktop &d, Medidor *Gauge, const TextosCheque &Textos,
                            const ChequeImpresso &Cheque, bool Registra, bool TestaPorta) {
    Desfecho desfecho;
    qint64 pendente = 0;
    if (Registra) {
        const EstadoRegistro estado = grava_pendente(s, Cheque, pendente);
        if (estado != EstadoRegistro::Gravado) {
            d.MsgBox("O cheque não foi impresso, porque não pode ser registrado no relatório.\n\n" +
                         causa_sem_registro(s, estado) +
                         "\n\nPara imprimir sem registrar, desmarque \"Incluir no relatório\".",
                     Botoes::OK, Titulo, Icone::Exclamacao);
            return desfecho;
        }
    }
    QString nota;
    desfecho.Resultado =
        imprime_um_cheque(s, d, Gauge, Textos, TestaPorta, Registra ? &nota : nullptr);
    // A leaf of the book is used, whether the cheque is registered or not.
    if (desfecho.Impresso()) avanca_talao(s, Cheque.Banco, Cheque.Numero);
    if (!Registra) return desfecho;
    if (!desfecho.Impresso()) {
        descarta_pendente(s, pendente);
        return desfecho;
    }
    desfecho.Cancelado = !nota.isEmpty();
    desfecho.Registrado = registra_pendente(s, pendente, nota, &desfecho.Index);
    // The cheque is on paper: the operator must know its row is missing, and which one.
    if (!desfecho.Registrado)
        d.MsgBox("O cheque foi impresso, mas não foi registrado no relatório." + QString("\n\n") +
                     "Banco: " + Cheque.Banco.trimmed() + "\nValor: " +
                     valor_mostrado(Cheque.Valor) + "\nFavorecido: " + Cheque.Favorecido.trimmed() +
                     "\nNúmero: " + Cheque.Numero.trimmed() +
                     "\n\nO programa perguntará por ele de novo ao ser aberto.",
                 Botoes::OK, Titulo, Icone::Critico);
    return desfecho;
}

bool confere_duplicado(Sessao &s, Desktop &d, const QString &Banco, const QString &Numero,
                       const QString &Reimpresso, const QString &Parcela) {
    const std::optional<ChequeRegistrado> anterior = cheque_registrado(s, Banco, Numero);
    if (!anterior || (!Reimpresso.isEmpty() && anterior->Index == Reimpresso)) return true;
    return d.MsgBox(Parcela + descreve_duplicado(Numero, *anterior) + "\n\nImprimir assim mesmo?",
                    Botoes::YesNo, "Cheque já registrado", Icone::Exclamacao,
                    Resposta::No) == Resposta::Yes;
}

void confere_pendentes(Sessao &s, Desktop &d) {
    for (const ChequePendente &p : cheques_pendentes(s)) {
        const ChequeImpresso &c = p.Cheque;
        QString texto =
            "O cheque nº " + numero_mostrado(c.Numero) + " de R$ " + valor_mostrado(c.Valor);
        if (!c.Favorecido.trimmed().isEmpty()) texto += " para " + c.Favorecido.trimmed();
        texto += " pode ter sido impresso e não foi registrado.\n\nSim: registrá-lo no "
                 "relatório.\nNão: descartá-lo, porque não foi impresso.";
        const Resposta r = d.MsgBox(texto, Botoes::YesNo, "Cheque não registrado",
                                    Icone::Informacao, Resposta::Yes);
        const bool gravou =
            r == Resposta::Yes ? registra_pendente(s, p.Id) : descarta_pendente(s, p.Id);
        if (!gravou)
            d.MsgBox("O banco de dados não aceitou a gravação: a pergunta volta na próxima vez "
                     "que o programa for aberto.",
                     Botoes::OK, "Erro", Icone::Exclamacao);
    }
}

void ImprimeFrente(Main &Tela, bool Valido) {
    if (!Valido) return;
    Sessao &s = Tela.sessao;
    s.UltimoComentario = {Tela.Text2[0].Text, Tela.Text2[1].Text, Tela.Text2[2].Text};
    const QString numero = Tela.Text1[6].Text, valor = Tela.Text1[1].Text;
    if (!pede_documento(Tela.desktop, Titulo, Icone::Informacao,
                        descreve_cheque(numero, valor, Tela.Text1[2].Text))) {
        Tela.Situacao.Caption = "Impressão do cheque " + numero_mostrado(numero) + " cancelada.";
        return Tela.DevolveCaixa();
    }

    // The printer can't take an empty payee: the blank stands on the screen and in Log too.
    if (Tela.Text1[2].Text.isEmpty()) Tela.Muda(Tela.Text1[2], " ");
    const TextosCheque textos{
        Tela.Text1[0].Text.trimmed(), mascara_valor(valor, "###,##0.00").trimmed(),
        Tela.Text1[2].Text,           Tela.Text1[3].Text,
        Tela.Text1[4].Text.trimmed(), QString()};
    const ChequeImpresso cheque = cheque_da_tela(Tela);
    const Desfecho desfecho =
        imprime_e_registra(s, Tela.desktop, &Tela.Gauge1, textos, cheque, Tela.CheckBox.Value != 0);
    Tela.Situacao.Caption = situacao_cheque(numero, valor, desfecho);
    if (desfecho.Impresso()) {
        if (!Tela.IndexReimpresso.isEmpty())
            grava_historico(s, Tela.IndexReimpresso, "Reimpressão");
        Tela.Impresso(cheque, desfecho.Index);
        if (desfecho.Cancelado) Tela.ProximaFolha();
    }
    Tela.DevolveCaixa();
}

void GravaCheque(Main &Tela) {
    registra_cheque(Tela.sessao, cheque_da_tela(Tela));
}

} // namespace vexa
