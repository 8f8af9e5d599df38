#include "reports/historico.h"

#include "core/conversoes.h"

namespace vexa {

QString linha_historico(const EntradaHistorico &e) {
    const auto campo = [&e](const QString &nome) { return e.Linha.value(nome).trimmed(); };
    const QString numero =
        campo("NRCH").isEmpty() ? QStringLiteral("sem número") : "nº " + campo("NRCH");
    return e.Quando + "  " + e.Acao.leftJustified(18) + "  " + e.Usuario + " (" + e.Maquina +
           ")  —  antes: " + numero + ", R$ " +
           mascara_valor(campo("V_CH"), "###,##0.00").trimmed() + ", " + campo("Favor") + ", " +
           campo("Data") + ", " + (campo("StCancel") == "C" ? "cancelado" : "válido");
}

HistoricoCheque::HistoricoCheque(Sessao &sessao, Desktop &desktop)
    : Tela(telas::HistoricoCheque, "Histórico do Cheque", sessao, desktop) {
    LarguraJanela = 900;
    AlturaJanela = 360;
    registra("Label1", Label1);
    registra("List1", List1);
    registra("Command1", Command1);
    liga("Command1", Evento::Click, [this](int) { Unload(); });
}

void HistoricoCheque::Mostra(const QString &Index) {
    List1.Clear();
    if (Index.isEmpty()) {
        Label1.Caption = "Escolha um cheque no relatório para ver o seu histórico.";
        return Refresh();
    }
    const QList<EntradaHistorico> entradas = historico_cheque(sessao, Index);
    for (const EntradaHistorico &e : entradas)
        List1.AddItem(linha_historico(e));
    Label1.Caption = "Cheque de registro " + Index + ": " +
                     (entradas.isEmpty() ? QStringLiteral("nenhuma alteração registrada.")
                                         : QString::number(entradas.size()) + " alteração(ões).");
    Refresh();
}

} // namespace vexa
