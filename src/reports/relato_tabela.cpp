// The report's table and chart: the order of the list, each row's cells, the chart's monthly
// sums and the spreadsheet exports.
#include "reports/relato.h"

#include "core/arquivo.h"
#include "core/conversoes.h"
#include "core/relogio.h"
#include "printer/sistema.h"
#include "reports/andamento.h"
#include "reports/arquivo_relatorio.h"
#include "reports/planilha.h"
#include "store/consulta_log.h"
#include "store/tabelas.h"

#include <QStringBuilder>
#include <algorithm>

namespace vexa {

void Relato::Ordena(int coluna, bool crescente) {
    if (coluna < -1 || coluna >= ColunasLog) return;
    OrdemColuna = coluna;
    OrdemCrescente = crescente;
    Ordem.ListIndex = coluna + 1;
    Ordem.Text = Ordem.List(coluna + 1);
    Decrescente.Value = crescente ? 0 : 1;
    if (!linhas_) return;
    // The rows the list shows, whatever a click did to the current set since.
    RecordSet &rs = Conjunto(sessao, TabLog);
    rs = linhas_->Copia();
    // The same rows in another order: the chart's sums stand.
    auto somas = std::move(somas_);
    if (CarregaListaLog()) somas_ = std::move(somas);
}

void Relato::Cabecalho_Click(int coluna) {
    Ordena(coluna, coluna != OrdemColuna || !OrdemCrescente);
}

QStringList Relato::Celulas(int linha) const {
    const QStringList f = linhas_ ? linhas_->Linha(linha) : QStringList();
    QStringList c;
    if (f.isEmpty()) return c;
    for (int i : std::as_const(colunas_))
        c << f.value(i).trimmed();
    c[ColunaLog::Situacao] =
        c[ColunaLog::Situacao] == "C" ? QStringLiteral("Cancelado") : QString();
    c[ColunaLog::Valor] = mascara_valor(c[ColunaLog::Valor], "#,###,###,##0.00");
    return c;
}

const QList<SomaMensal> &Relato::SomasGrafico() {
    if (somas_) return *somas_;
    somas_.emplace();
    if (!linhas_ || !somas_mensais(*linhas_, *somas_)) return somas_->clear(), *somas_;
    // Two-digit years in the order of their centuries, as the program reads a date.
    for (SomaMensal &m : *somas_)
        m.Mes = QString::number(ano_completo(m.Mes.left(2).toInt())) + m.Mes.mid(2);
    std::stable_sort(somas_->begin(), somas_->end(),
                     [](const SomaMensal &a, const SomaMensal &b) { return a.Mes < b.Mes; });
    // The chart beside the table has room for two years: the last months of the list.
    constexpr int Meses = 24;
    QStringList meses;
    for (const SomaMensal &m : std::as_const(*somas_))
        if (meses.isEmpty() || meses.last() != m.Mes) meses << m.Mes;
    if (meses.size() > Meses) {
        const QString primeiro = meses[meses.size() - Meses];
        somas_->removeIf([&primeiro](const SomaMensal &m) { return m.Mes < primeiro; });
    }
    return *somas_;
}

void Relato::Grafico_Click(int Index) {
    if (Ilegivel) return avisa_registro_ilegivel(sessao, desktop);
    if (SomasGrafico().isEmpty() || !GraficoPdf || !ImprimeGrafico) {
        desktop.MsgBox("Não há cheques com data na lista para o gráfico.", Botoes::OK, "Gráfico",
                       Icone::Exclamacao);
        return;
    }
    if (Index == 0) return mostra_erro_impressao(desktop, ImprimeGrafico());
    const QString caminho = pede_arquivo(desktop, "Salvar Gráfico", "Documento PDF (*.pdf)", "pdf");
    if (caminho.isEmpty()) return;
    const QByteArray pdf = GraficoPdf();
    if (pdf.isEmpty() || !grava_inteiro(caminho, pdf))
        return avisa_arquivo_nao_gravado(desktop, caminho);
    desktop.MsgBox("O gráfico foi gravado em \"" + caminho + "\".", Botoes::OK, "Gráfico",
                   Icone::Informacao);
}

void Relato::Ordem_Click() {
    Ordena(Ordem.ListIndex - 1, Decrescente.Value == 0);
}

void Relato::Decrescente_Click() {
    Ordena(OrdemColuna, Decrescente.Value == 0);
}

void Relato::Exportar_Click(int Index) {
    if (Ilegivel) return avisa_registro_ilegivel(sessao, desktop);
    const RecordSet nenhuma;
    exporta_planilha(desktop, linhas_ ? *linhas_ : nenhuma,
                     Index == 1 ? FormatoPlanilha::Ods : FormatoPlanilha::Csv);
}

} // namespace vexa
