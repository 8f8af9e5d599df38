#include "cheque/frente.h"

#include "cheque/main.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "printer/impressao.h"
#include "store/tabelas.h"

namespace vexa {

void ImprimeFrente(Main &Tela, bool Valido) {
    if (!Valido) return;
    Sessao &s = Tela.sessao;
    s.UltimoComentario = {Tela.Text2[0].Text, Tela.Text2[1].Text, Tela.Text2[2].Text};
    if (!pede_documento(Tela.desktop, "Impressão do Cheque")) return;

    // The printer can't take an empty payee: the blank stands on the screen and in Log too.
    if (Tela.Text1[2].Text.isEmpty()) Tela.Muda(Tela.Text1[2], " ");
    const TextosCheque textos{
        Tela.Text1[0].Text.trimmed(), mascara_valor(Tela.Text1[1].Text, "###,##0.00").trimmed(),
        Tela.Text1[2].Text,           Tela.Text1[3].Text,
        Tela.Text1[4].Text.trimmed(), QString()};
    QString nota;
    if (imprime_um_cheque(s, Tela.desktop, &Tela.Gauge1, textos, false, &nota) == 1 &&
        Tela.CheckBox.Value)
        GravaCheque(Tela, nota);
}

void GravaCheque(Main &Tela, const QString &Nota) {
    ChequeImpresso cheque{Tela.Text1[0].Text, Tela.Text1[1].Text, Tela.Text1[2].Text,
                          Tela.Text1[3].Text, Tela.Text1[4].Text, Tela.Text1[6].Text};
    cheque.Comentarios = {Tela.Text2[0].Text, Tela.Text2[1].Text, Tela.Text2[2].Text};
    cheque.Nota = Nota;
    registra_cheque(Tela.sessao, Tela.desktop, cheque);
}

int registra_cheque(Sessao &s, Desktop &d, const ChequeImpresso &Cheque) {
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) return -2;
    // An instalment goes on from the last row of Log; a single cheque looks at the first.
    const QString Index =
        proximo_index(s, Cheque.Parcela ? LinhaConferida::Ultima : LinhaConferida::Primeira);
    const QString Codigo = Index.right(5);
    QString NRCH = Cheque.Numero;
    if (NRCH.isEmpty()) NRCH = Cheque.Parcela ? "SEQ:" + Codigo : QStringLiteral(" ");
    // The shared set of Log over the new row alone: nothing else of the register is read.
    RecordSet &log = Conjunto(s, TabLog);
    bool gravou = log.Abre(s.Banco->db(), "Select * From Log Where (\"Index\"=?)", {Index});
    if (gravou) {
        log.AddNew();
        // A cheque that came out wrong stays, cancelled, with its note in a free comment line.
        QStringList comentarios = Cheque.Comentarios;
        if (!Cheque.Nota.isEmpty()) {
            const qsizetype livre = comentarios.indexOf(QString());
            if (livre >= 0)
                comentarios[livre] = Cheque.Nota;
            else
                comentarios[2] = Cheque.Nota + " - " + comentarios[2];
        }
        log.Define("Comentario", comentarios.value(0));
        log.Define("Comentario1", comentarios.value(1));
        log.Define("Comentario2", comentarios.value(2));
        log.Define("StCancel", Cheque.Nota.isEmpty() ? " " : "C");
        log.Define("Codigo", Codigo);
        log.Define("Banco", Cheque.Banco);
        log.Define("V_CH", mascara_valor(Cheque.Valor, "###########.##").trimmed());
        log.Define("Favor", Cheque.Favorecido);
        log.Define("Local", Cheque.Cidade);
        log.Define("Data", Cheque.Data);
        log.Define("Index", Index);
        log.Define("NRCH", NRCH);
        gravou = log.Update();
    }
    FechaTabelas(s, 0, 0, 0, 1);
    // The cheque is on paper: the operator must know its row is missing, and which one.
    if (!gravou)
        d.MsgBox("O cheque foi impresso, mas não foi registrado no relatório." + QString("\n\n") +
                     "Banco: " + Cheque.Banco.trimmed() +
                     "\nValor: " + mascara_valor(Cheque.Valor, "###,##0.00").trimmed() +
                     "\nFavorecido: " + Cheque.Favorecido.trimmed() +
                     "\nNúmero: " + Cheque.Numero.trimmed(),
                 Botoes::OK, "Impressão do Cheque", Icone::Critico);
    return gravou ? 1 : 0;
}

} // namespace vexa
