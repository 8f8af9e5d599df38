#include "reports/listas.h"

#include "core/conversoes.h"
#include "core/entrada.h"
#include "printer/impressao.h"
#include "printer/sistema.h"
#include "reports/arquivo_relatorio.h"

namespace vexa {

namespace {

QString brancos(int n) {
    return QString(qMax(0, n), u' ');
}
QString regua(int n) {
    return QString(n, u'-');
}

// What sets one format on one target apart from the others.
struct Molde {
    QString fim;        // line end
    int margem = 0;     // blanks in front of every line of the head, the foot and the totals
    int porLinha = 1;   // cheques on a line
    int porPagina = 13; // cheques on a page
    int entreDataTitulo = 15, entreTituloPagina = 32;
    bool compacto = false;
    int recuo = 0; // Compacto: the indent of each line of cells
    QString cabeca, cabecaPrimeira;
    QStringList rotulosCheia, rotulosUltima; // the totals' labels at the end of a full page, last
};

Molde forma_de(FormatoLista formato, DestinoLista destino, int NumChkPgRel) {
    Molde f;
    const bool win = destino == DestinoLista::Windows;
    f.fim = destino == DestinoLista::Vexa ? QStringLiteral("\n") : QStringLiteral("\r\n");
    const int porPaginaWin = qMax(1, NumChkPgRel);
    if (formato == FormatoLista::Normal) {
        f.margem = win ? 2 : 12;
        f.porPagina = win ? porPaginaWin : 13;
        f.entreDataTitulo = win ? 26 : 15;
        f.entreTituloPagina = win ? 26 : 12 + 20;
        f.cabeca = QStringLiteral("N. Cheque    | Bco | Valor            | Data     | Favorecido");
        if (win) f.cabeca = "  " + f.cabeca;
        f.cabecaPrimeira = f.cabeca;
        if (win) {
            f.rotulosCheia = {"Total da página             :", "Total acumulado             :",
                              "Total cancelados acumulados :"};
            f.rotulosUltima = {"Total da página            :", "Total acumulado            :",
                               "Total cancelados acumulados:"};
        } else {
            f.rotulosCheia = {"Total da página              |", "Total acumulado              |",
                              "Total cancelados acumulados  |"};
            f.rotulosUltima = f.rotulosCheia;
        }
        return f;
    }
    f.compacto = true;
    f.porLinha = win ? 2 : 3;
    f.porPagina = win ? 2 * porPaginaWin : 36;
    f.margem = win ? 14 : 8;
    f.recuo = win ? 14 : 7;
    f.entreDataTitulo = win ? 13 : 15;
    f.entreTituloPagina = win ? 12 : 8 + 24;
    if (win) {
        f.cabeca = QStringLiteral(
            " |N. Cheque  |Bco| Valor           | |N. Cheque  |Bco| Valor           |");
        f.cabecaPrimeira = f.cabeca;
        f.rotulosCheia = {"Total da página            :", "Total acumulado            :",
                          "Total cancelados acumalados:"};
        f.rotulosUltima = {"Total da página            :", "Total acumulado            :",
                           "Total cancelados acumulados:"};
    } else {
        f.cabecaPrimeira = QStringLiteral("N. Cheque   |Bco| Valor          |   N. Cheque   |Bco| "
                                          "Valor           |   N. Cheque   |Bco| Valor         |");
        f.cabeca = "  " + f.cabecaPrimeira;
        f.rotulosCheia = {"Total da página              |", "Total acumulado              |",
                          "Total cancelados acumalados  |"};
        f.rotulosUltima = {"Total da página              |", "Total acumulado              |",
                           "Total cancelados acumulados  |"};
    }
    return f;
}

// The rules of a head: its first line, and its third and fifth.
QPair<int, int> reguas_cabeca(const Molde &f, DestinoLista destino, int pagina) {
    if (!f.compacto)
        return destino == DestinoLista::Windows ? qMakePair(100, 100) : qMakePair(94, 94);
    if (destino == DestinoLista::Windows) return {72, 72};
    return pagina == 1 ? qMakePair(107, 107) : qMakePair(108, 104);
}

int regua_rodape(const Molde &f, DestinoLista destino) {
    if (!f.compacto) return destino == DestinoLista::Windows ? 100 : 94;
    return destino == DestinoLista::Windows ? 72 : 108;
}

QString cabecalho(const Molde &f, DestinoLista destino, const QString &hoje, int pagina,
                  int paginas) {
    const QString m = brancos(f.margem);
    const auto [primeira, outras] = reguas_cabeca(f, destino, pagina);
    QString t = m + regua(primeira) + f.fim;
    t += m + hoje + brancos(f.entreDataTitulo) + "Relatorio de Cheques Impressos" +
         brancos(f.entreTituloPagina) + "Pag:" + Format(QString::number(pagina), "00") + "/" +
         Format(QString::number(paginas), "00") + f.fim;
    t += m + regua(outras) + f.fim;
    t += m + (pagina == 1 ? f.cabecaPrimeira : f.cabeca) + f.fim;
    t += m + regua(outras) + f.fim;
    if (f.compacto) t += brancos(f.recuo);
    return t;
}

QString total(const Molde &f, const QString &rotulo, qint64 centavos_) {
    return brancos(f.margem) + rotulo +
           Format(formata_centavos(centavos_, "##,###,###,##0.00"), "@@@@@@@@@@@@@@@@@") + f.fim;
}

QString totais(const Molde &f, const QStringList &rotulos, qint64 pagina, qint64 acumulado,
               qint64 cancelados) {
    return total(f, rotulos[0], pagina) + total(f, rotulos[1], acumulado) +
           total(f, rotulos[2], cancelados);
}

// A row's part on a line of the list.
QString corpo(const Molde &f, DestinoLista destino, const QString &linha) {
    const bool cancelado = linha.startsWith(u'C');
    if (f.compacto) {
        // The number's column has 11 places for a number kept in 12: its last 11 show, so a
        // right-aligned number keeps its digits.
        return (cancelado ? QStringLiteral("C|") : QStringLiteral(" |")) + linha.mid(4, 11) + "|" +
               linha.mid(18, 3) + "|" + linha.mid(23, 17) + "|";
    }
    if (destino == DestinoLista::Windows)
        return brancos(f.margem) + (cancelado ? "C|" : " |") + linha.mid(3, 100) + f.fim;
    return (cancelado ? brancos(3) + "Cancelado" : brancos(f.margem)) + linha.mid(3, 94) + f.fim;
}

} // namespace

QStringList envios_lista(const QStringList &Linhas, FormatoLista Formato, DestinoLista Destino,
                         const QString &Hoje6, int NumChkPgRel) {
    const Molde f = forma_de(Formato, Destino, NumChkPgRel);
    const QString hoje = Format(Hoje6, "@@/@@/@@");
    const int paginas =
        int(Linhas.size() / f.porPagina) + (Linhas.size() % f.porPagina != 0 ? 1 : 0);
    QStringList envios;
    int pagina = 1;
    QString texto = cabecalho(f, Destino, hoje, pagina++, paginas);
    qint64 daPagina = 0, acumulado = 0, cancelados = 0;
    int conta = 0;
    for (const QString &linha : Linhas) {
        texto += corpo(f, Destino, linha);
        const qint64 valor = centavos(linha.mid(23, 17).trimmed()).value_or(0);
        (linha.startsWith(u'C') ? cancelados : daPagina) += valor;
        ++conta;
        if (f.compacto && conta % f.porLinha == 0) texto += f.fim + brancos(f.recuo);
        if (conta == f.porPagina) {
            if (f.compacto) texto += f.fim;
            texto += brancos(f.margem) + regua(regua_rodape(f, Destino)) + f.fim;
            acumulado += daPagina;
            texto += totais(f, f.rotulosCheia, daPagina, acumulado, cancelados);
            daPagina = 0;
            envios << texto;
            conta = 0;
            texto = cabecalho(f, Destino, hoje, pagina++, paginas);
        }
    }
    if (!f.compacto)
        texto += brancos(f.margem) + regua(regua_rodape(f, Destino)) + f.fim;
    else if (conta != 0 && conta % f.porLinha != 0)
        texto += f.fim + brancos(f.margem) + regua(regua_rodape(f, Destino)) + f.fim;
    if (conta != 0) {
        acumulado += daPagina;
        texto += totais(f, f.rotulosUltima, daPagina, acumulado, cancelados);
    }
    envios << texto;
    return envios;
}

void envia_lista(Sessao &s, Desktop &d, const QStringList &Linhas, FormatoLista Formato,
                 DestinoLista Destino, const std::function<bool(int)> &andamento) {
    if (Destino == DestinoLista::Vexa && !pede_documento(d, "Impressão do Cheque")) return;
    // The rows are walked one by one, so that the list shows how far the printing went.
    if (andamento)
        for (int i = 0; i < Linhas.size(); ++i)
            if (!andamento(i)) return;
    const QStringList envios = envios_lista(Linhas, Formato, Destino, s.Hoje6, s.ChequesPorPagina);
    switch (Destino) {
    case DestinoLista::Vexa:
        for (int i = 0; i < envios.size(); ++i) {
            if (!EnviaTextoImpressora(s, d, envios[i], 1)) return;
            if (i + 1 < envios.size() && d.MsgBox("Insira novo Documento...", Botoes::OKCancel,
                                                  "Impressão de Relatório") == Resposta::Cancel)
                return;
        }
        return;
    case DestinoLista::Arquivo:
        grava_arquivo_relatorio(d, "Salvar Lista de Cheques", envios.join(QString()));
        return;
    case DestinoLista::Windows:
        mostra_erro_impressao(
            d, d.ImprimeSistema(documento_impressao("Relatorio de Cheques Impressos", envios, 9)));
        return;
    }
}

} // namespace vexa
