#include "reports/geral.h"
#include "reports/andamento.h"

#include "core/conversoes.h"
#include "core/ini.h"
#include "reports/arquivo_relatorio.h"
#include "reports/historico.h"
#include "reports/relato.h"
#include "store/tabelas.h"

#include <QHash>
#include <QStringBuilder>

namespace vexa {

namespace {

const QString Fim = QStringLiteral("\r\n");

struct Banco {
    QString codigo, nome;
};

} // namespace

QString texto_relatorio_geral(Sessao &s, bool *lido, bool ComHistorico, Progresso *p) {
    QString texto = "Relatório Geral de Cheques Emitidos" + Fim;
    RecordSet &rs = Conjunto(s, TabLog);
    if (lido) *lido = rs.Aberto();
    if (!rs.Aberto()) return texto;

    // The banks are few: read once, in the order of their table.
    QHash<QString, Banco> bancos;
    Banco atual;
    RecordSet rb;
    const bool bancosLidos = rb.Abre(s.Banco->db(), "Select * From Bancos");
    if (bancosLidos) {
        for (rb.MoveFirst(); !rb.Eof(); rb.MoveNext()) {
            const Banco b{rb.Campo("Codigo"), rb.Campo("Nome")};
            if (bancos.isEmpty()) atual = b;
            if (!bancos.contains(b.codigo)) bancos.insert(b.codigo, b);
        }
    }
    // Only the fields the report shows, in one pass over the set.
    const QStringList campos = {"Codigo",      "Banco",       "NRCH",  "V_CH",
                                "Local",       "Data",        "Favor", "Comentario",
                                "Comentario1", "Comentario2", "Index"};
    const auto historico = ComHistorico ? historico_completo(s) : decltype(historico_completo(s)){};
    const QList<QStringList> linhas = rs.Colunas(campos);
    // A read that fails gives no rows at all.
    if (lido) *lido = bancosLidos && (!linhas.isEmpty() || rs.RecordCount() == 0);
    // About 200 characters a cheque: the text grows in place, without a copy per line.
    texto.reserve(texto.size() + linhas.size() * 224);
    const QString estrelas = QString(56, u'*') + Fim;
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        // Stopped by the operator: no text, and so no file.
        if (!segue(p, i)) return QString();
        const QStringList &c = linhas[i];
        // A bank that is no longer registered shows the one found last.
        const auto b = bancos.constFind(c[1]);
        if (b != bancos.constEnd()) atual = *b;
        texto += c[0] % u"   " % atual.codigo.trimmed() % u" - " % atual.nome % u"  CH. Nº: " %
                 c[2] % Fim;
        texto += u"Valor: " % mascara_valor(c[3], "#,###0.00") % u"   Loc.: " % c[4] %
                 u"   Data: " % c[5] % Fim;
        texto += u"Fav.: " % c[6] % Fim;
        for (int i = 7; i <= 9; ++i)
            if (!c[i].isEmpty()) texto += c[i] % Fim;
        for (const EntradaHistorico &e : historico.value(c[10]))
            texto += u"Hist.: " % linha_historico(e) % Fim;
        texto += estrelas;
    }
    return texto;
}

void cria_relatorio_geral(Sessao &s, Desktop &d) {
    RecordSet &rs = Conjunto(s, TabLog);
    // A set closed while the database is open is a select that failed.
    if (!rs.Aberto() && s.Banco && s.Banco->Aberta()) return avisa_registro_ilegivel(s, d);
    if (!rs.Aberto() || rs.RecordCount() == 0) {
        d.MsgBox("Não há cheques na lista para criar o relatório.", Botoes::OK, "Relatório Geral",
                 Icone::Exclamacao);
        return;
    }
    bool lido = false;
    // The history of each cheque goes in when the settings ask for it.
    const bool historico = LeGravaIni(s.CaminhoIni, "Opcoes", "HistoricoNoRelatorio", "") == "1";
    QString texto;
    {
        const auto p = d.AbreProgresso("Relatório Geral");
        p->Etapa(QString("Montando o relatório de %1 cheques...").arg(rs.RecordCount()),
                 rs.RecordCount());
        texto = texto_relatorio_geral(s, &lido, historico, p.get());
    }
    if (!lido) return avisa_registro_ilegivel(s, d);
    if (texto.isEmpty()) return;
    if (grava_arquivo_relatorio(d, "Salvar Relatório Geral", texto))
        d.MsgBox("O Relatório Foi Criado Com Sucesso, Poderá Abri-lo no Word ou Excel");
}

} // namespace vexa
