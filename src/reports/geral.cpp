#include "reports/geral.h"

#include "core/conversoes.h"
#include "reports/arquivo_relatorio.h"
#include "reports/relato.h"
#include "store/tabelas.h"

#include <QHash>

namespace vexa {

namespace {

const QString Fim = QStringLiteral("\r\n");

struct Banco {
    QString codigo, nome;
};

} // namespace

QString texto_relatorio_geral(Sessao &s) {
    QString texto = "Relatório Geral de Cheques Emitidos" + Fim;
    RecordSet &rs = Conjunto(s, TabLog);
    if (!rs.Aberto()) return texto;

    // The banks are few: read once, in the order of their table.
    QHash<QString, Banco> bancos;
    Banco atual;
    RecordSet rb;
    if (rb.Abre(s.Banco->db(), "Select * From Bancos")) {
        for (rb.MoveFirst(); !rb.Eof(); rb.MoveNext()) {
            const Banco b{rb.Campo("Codigo"), rb.Campo("Nome")};
            if (bancos.isEmpty()) atual = b;
            if (!bancos.contains(b.codigo)) bancos.insert(b.codigo, b);
        }
    }
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
        // A bank that is no longer registered shows the one found last.
        const auto b = bancos.constFind(rs.Campo("Banco"));
        if (b != bancos.constEnd()) atual = *b;
        texto += rs.Campo("Codigo") + "   " + atual.codigo.trimmed() + " - " + atual.nome +
                 "  CH. Nº: " + rs.Campo("NRCH") + Fim;
        texto += "Valor: " + valor_relatorio(rs.Campo("V_CH"), "#,###0.00") +
                 "   Loc.: " + rs.Campo("Local") + "   Data: " + rs.Campo("Data") + Fim;
        texto += "Fav.: " + rs.Campo("Favor") + Fim;
        for (const char *c : {"Comentario", "Comentario1", "Comentario2"}) {
            const QString comentario = rs.Campo(QLatin1String(c));
            if (!comentario.isEmpty()) texto += comentario + Fim;
        }
        texto += QString(56, u'*') + Fim;
    }
    return texto;
}

void cria_relatorio_geral(Sessao &s, Desktop &d) {
    RecordSet &rs = Conjunto(s, TabLog);
    if (!rs.Aberto() || rs.RecordCount() == 0) {
        d.MsgBox("Não há cheques na lista para criar o relatório.", Botoes::OK, "Relatório Geral",
                 Icone::Exclamacao);
        return;
    }
    if (grava_arquivo_relatorio(d, "Salvar Relatório Geral", texto_relatorio_geral(s)))
        d.MsgBox("O Relatório Foi Criado Com Sucesso, Poderá Abri-lo no Word ou Excel");
}

} // namespace vexa
