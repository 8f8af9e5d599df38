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
    if (imprime_um_cheque(s, Tela.desktop, &Tela.Gauge1, textos) == 1 && Tela.CheckBox.Value)
        GravaCheque(Tela);
}

void GravaCheque(Main &Tela) {
    Sessao &s = Tela.sessao;
    Desktop &d = Tela.desktop;
    // The cheque has printed; a register that can't be opened just doesn't show it.
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) return;
    const QString Index = proximo_index(s);
    // The shared set of Log over the new row alone: nothing else of the register is read.
    RecordSet &log = Conjunto(s, TabLog);
    bool gravou = log.Abre(s.Banco->db(), "Select * From Log Where (\"Index\"=?)", {Index});
    if (gravou) {
        log.AddNew();
        log.Define("Comentario", Tela.Text2[0].Text);
        log.Define("Comentario1", Tela.Text2[1].Text);
        log.Define("Comentario2", Tela.Text2[2].Text);
        log.Define("StCancel", " ");
        log.Define("Codigo", Index.right(5));
        log.Define("Banco", Tela.Text1[0].Text);
        log.Define("V_CH", mascara_valor(Tela.Text1[1].Text, "###########.##").trimmed());
        log.Define("Favor", Tela.Text1[2].Text);
        log.Define("Local", Tela.Text1[3].Text);
        log.Define("Data", Tela.Text1[4].Text);
        log.Define("Index", Index);
        log.Define("NRCH", Tela.Text1[6].Text.isEmpty() ? " " : Tela.Text1[6].Text);
        gravou = log.Update();
    }
    FechaTabelas(s, 0, 0, 0, 1);
    // The cheque is on paper: the operator must know its row is missing, and which one.
    if (!gravou)
        d.MsgBox("O cheque foi impresso, mas não foi registrado no relatório." + QString("\n\n") +
                     "Banco: " + Tela.Text1[0].Text.trimmed() +
                     "\nValor: " + mascara_valor(Tela.Text1[1].Text, "###,##0.00").trimmed() +
                     "\nFavorecido: " + Tela.Text1[2].Text.trimmed() +
                     "\nNúmero: " + Tela.Text1[6].Text.trimmed(),
                 Botoes::OK, "Impressão do Cheque", Icone::Critico);
}

} // namespace vexa
