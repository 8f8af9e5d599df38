#include "registers/saida.h"

#include "core/conversoes.h"
#include "core/entrada.h"
#include "printer/impressao.h"
#include "printer/sistema.h"
#include "store/tabelas.h"

namespace vexa {

namespace {

const QString CRLF = QStringLiteral("\r\n");

QString brancos(int n) {
    return QString(qMax(0, n), u' ');
}

// The text followed by blanks up to a width (a longer text stands whole).
QString ate(const QString &texto, int largura) {
    return texto.leftJustified(largura, u' ');
}

struct FormaLista {
    QString Titulo;
    QString Cabeca;         // the column heads
    QString CabecaPrimeira; // on the first page, when it differs
    int Passo = 1;          // what one record adds to the page's count
    int Limite = 32;        // the count that closes a page
    bool DoisPorLinha = false;
    int LarguraPar = 0; // code and name of the first record of a line, together
    int LarguraCodigo = 12;
};

FormaLista forma_de(const QString &Tabela, bool vexa) {
    FormaLista f;
    f.Limite = vexa ? 32 : 50;
    if (Tabela == "Favorecido") {
        f.Titulo = "Relatório de Favorecidos";
        f.Cabeca = "NºFavorec.   |Favorecido";
        f.CabecaPrimeira = vexa ? f.Cabeca : "NºFavorec.|Favorecido";
        // A payee's name can take a whole line on the cheque printer: it counts twice.
        f.Passo = vexa ? 2 : 1;
        f.LarguraCodigo = vexa ? 15 : 12;
        return f;
    }
    if (Tabela == "Cidade") {
        f.Titulo = vexa ? "Relatório de Cidades" : "Relatório de Cidade";
        f.Cabeca = "NºCidade  |Cidade                                    "
                   "||NºCidade  |Cidade                                 ";
        f.LarguraPar = 49;
    } else {
        f.Titulo = "Relatório de Bancos";
        f.Cabeca = "Nº Banco  |Banco                                     "
                   "||Nº Banco  |Banco                                  ";
        f.LarguraPar = 54;
    }
    f.CabecaPrimeira = f.Cabeca;
    f.DoisPorLinha = vexa;
    f.LarguraCodigo = vexa ? 11 : 12;
    return f;
}

QString cabecalho(const FormaLista &f, bool vexa, const QString &data, int pagina, int total) {
    const QString margem = brancos(vexa ? 12 : 0);
    const QString tracos = margem + QString(vexa ? 107 : 76, u'-');
    const QString pag =
        "Pag:" + Format(QString::number(pagina), "00") + "/" + Format(QString::number(total), "00");
    return tracos + CRLF + margem + data + brancos(15) + f.Titulo + brancos(vexa ? 12 + 24 : 24) +
           pag + CRLF + tracos + CRLF + margem + (pagina == 1 ? f.CabecaPrimeira : f.Cabeca) +
           CRLF + tracos + CRLF + brancos(7);
}

QString titulo_primeira_pagina(const QString &Tabela) {
    return Tabela == "Favorecido" || Tabela == "Cidade" ? QStringLiteral("Impressão de Relatório")
                                                        : QStringLiteral("Impressão");
}

// The records of a list's select, code and name.
QList<QPair<QString, QString>> registros(Sessao &s, Desktop &d, const QString &Tabela,
                                         const QString &Ordem) {
    QList<QPair<QString, QString>> r;
    if (AbreTabelas(s, d, 0, 0, 0, 0) == -2) return r;
    RecordSet rs;
    // A list by name reads as a directory: case and accents aside, through the folded key.
    if (!rs.Abre(s.Banco->db(), "Select * FROM " + Tabela + " ORDER BY " +
                                    (Ordem == "0" ? "Codigo" : "NomeChave, Nome")))
        return r;
    const QList<QStringList> linhas = rs.Colunas({"Codigo", "Nome"});
    r.reserve(linhas.size());
    for (const QStringList &l : linhas)
        r.append({l.value(0), l.value(1)});
    return r;
}

void imprime_lista(Sessao &s, Desktop &d, int Destino, const QString &Ordem,
                   const QString &Tabela) {
    const QStringList paginas =
        paginas_lista(Tabela, Destino, registros(s, d, Tabela, Ordem), s.Hoje6);
    if (Destino == 0) {
        for (int p = 0; p < paginas.size(); ++p) {
            const QString titulo =
                p == 0 ? titulo_primeira_pagina(Tabela) : QStringLiteral("Impressão do Cheque");
            if (!pede_documento(d, titulo)) return;
            // A page the printer refused leaves the rest of the list unsent.
            if (!EnviaTextoImpressora(s, d, paginas[p], 1)) return;
        }
        return;
    }
    mostra_erro_impressao(
        d, d.ImprimeSistema(documento_impressao(forma_de(Tabela, false).Titulo, paginas)));
}

} // namespace

QStringList paginas_lista(const QString &Tabela, int Destino,
                          const QList<QPair<QString, QString>> &Registros, const QString &Hoje6) {
    const bool vexa = Destino == 0;
    const FormaLista f = forma_de(Tabela, vexa);
    const QString data = Format(Hoje6, "@@/@@/@@");
    const QString margem = brancos(vexa ? 12 : 0);
    // The head counts the pages that are really written; no page goes out without a record.
    const int total = int((qint64(Registros.size()) * f.Passo + f.Limite - 1) / f.Limite);

    QStringList paginas;
    QString pagina, pendente;
    int conta = 0, numero = 0;
    const auto registro = [&](const QPair<QString, QString> &r, int largura) {
        return ate(r.first, largura) + r.second;
    };
    for (const auto &r : Registros) {
        if (pagina.isEmpty()) pagina = cabecalho(f, vexa, data, ++numero, total);
        if (!f.DoisPorLinha) {
            pagina += margem + registro(r, f.LarguraCodigo) + CRLF;
        } else if (pendente.isEmpty()) {
            pendente = registro(r, f.LarguraCodigo);
        } else {
            pagina += margem + ate(pendente, f.LarguraPar) + registro(r, 12) + CRLF;
            pendente.clear();
        }
        conta += f.Passo;
        if (conta >= f.Limite) {
            paginas.append(pagina);
            pagina.clear();
            conta = 0;
        }
    }
    // An odd record closes the list on a line of its own.
    if (!pendente.isEmpty()) pagina += margem + pendente + CRLF;
    if (!pagina.isEmpty()) paginas.append(pagina);
    return paginas;
}

void ImprimeCadastro(Sessao &s, Desktop &d, int Destino, const QString &Ordem,
                     const QString &Tabela) {
    if (Tabela != "Favorecido" && Tabela != "Cidade") return;
    imprime_lista(s, d, Destino, Ordem, Tabela);
}

void ImprimeBancos(Sessao &s, Desktop &d, int Destino, const QString &Ordem) {
    imprime_lista(s, d, Destino, Ordem, s.TabelaBancos == 2 ? "Transferencia" : "Bancos");
}

// --- Saida

Saida::Saida(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Saida, "Imprimir Relatorio", sessao, desktop) {
    for (int i : {3, 4})
        Option1[i].Container = &Frame1;
    for (int i : {0, 1})
        Option1[i].Container = &Frame2;
    Option1[4].Value = 1;
    Option1[0].Value = 1;
    registra("Frame1", Frame1);
    registra("Frame2", Frame2);
    registra("Option1", Option1);
    registra("SSPanel1", SSPanel1);
    registra("Command1", Command1);
    registra("Command2", Command2);
    liga("Command1", Evento::Click, [this](int) { Command1_Click(); });
    liga("Command2", Evento::Click, [this](int) { Unload(); });
}

void Saida::Command1_Click() {
    const QString Ordem = Option1[3].Value ? "0" : "1";
    const int Destino = Option1[0].Value ? 0 : 1;
    if (sessao.TabelaLista == "Bancos")
        ImprimeBancos(sessao, desktop, Destino, Ordem);
    else
        ImprimeCadastro(sessao, desktop, Destino, Ordem, sessao.TabelaLista);
}

} // namespace vexa
