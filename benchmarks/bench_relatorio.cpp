// The report of issued cheques at an office's size: 250,000 rows of Log, each figure against
// plain SQLite reading the same rows in the same run.
#include "medidas.h"

#include "core/desktop_roteiro.h"
#include "core/sessao.h"
#include "reports/filtro.h"
#include "reports/geral.h"
#include "reports/listas.h"
#include "reports/planilha.h"
#include "reports/relato.h"
#include "store/consulta_log.h"
#include "store/tabelas.h"

#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace vexa;
using namespace vexa::bench;

namespace {

constexpr int Linhas = 250000;

} // namespace

// Cheques of two years, one in ten cancelled, of five banks, with comments now and then.
QString vexa::bench::base_relatorio() {
    static const QStringList bancos{"001", "237", "341", "104", "033"};
    static const QStringList cidades{"São Paulo", "Campinas", "Santos", "Curitiba", "Recife"};
    return base_gerada(
        "relatorio-250000.db",
        "INSERT INTO Log (\"Index\", Codigo, Banco, V_CH, Favor, Local, Data, NRCH, Comentario, "
        "Comentario1, Comentario2, StCancel) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)",
        [](int i) {
            const QString index = QStringLiteral("%1").arg(i, 10, 10, QLatin1Char('0'));
            const QDate dia = QDate(2024, 1, 1).addDays(i % 730);
            return QVariantList{index,
                                index.right(5),
                                bancos[i % bancos.size()],
                                QString::number(i % 100000) + "," + QString::number(i % 100),
                                "Favorecido número " + QString::number(i % 5000),
                                cidades[i % cidades.size()],
                                dia.toString("dd/MM/yy"),
                                QString::number(100000 + i),
                                i % 7 == 0 ? QStringLiteral("Pagamento de fornecedor") : QString(),
                                QString(),
                                i % 11 == 0 ? QStringLiteral("ref. contrato") : QString(),
                                i % 10 == 0 ? QStringLiteral("C") : QStringLiteral(" ")};
        },
        Linhas);
}

namespace {

// The plain query: every field of the rows of a select, read into memory.
int le_sqlite(const QSqlDatabase &db, const QString &sql) {
    QSqlQuery q(db);
    q.setForwardOnly(true);
    q.exec(sql);
    int n = 0;
    QStringList campos;
    while (q.next()) {
        campos.clear();
        for (int c = 0; c < 12; ++c)
            campos.append(q.value(c).toString());
        ++n;
    }
    return n;
}

} // namespace

Relato &vexa::bench::abre_relato(Sessao &s, DesktopRoteiro &d) {
    auto *r = static_cast<Relato *>(d.Abre(std::make_unique<Relato>(s, d)));
    for (int i = 0; i < 30; ++i)
        r->List1.List(i);
    return *r;
}

namespace {

void mede_relatorio() {
    const QString base = base_relatorio();
    QTemporaryDir pasta;
    prepara_pasta(pasta.path(), base);
    Conexao c(pasta.path() + "/VEXA.db");
    const QString todos = "SELECT \"Index\", Codigo, Banco, V_CH, Favor, Local, Data, NRCH, "
                          "Comentario, Comentario1, Comentario2, StCancel FROM Log";
    std::printf("Relatório de cheques com %d linhas (mediana de 3):\n", Linhas);

    const double abre = mediana_ms(3, [&] {
        Sessao s(pasta.path());
        DesktopRoteiro d;
        abre_relato(s, d);
    });
    const double abreSql = mediana_ms(3, [&] { le_sqlite(c.db(), todos); });
    linha("abrir o relatório com a lista e o total", abre, abreSql, "(meta: abaixo de 500 ms)");

    Sessao s(pasta.path());
    DesktopRoteiro d;
    Relato &r = abre_relato(s, d);
    const double filtro = mediana_ms(3, [&] {
        MontaFiltroLog(s, d, "237", "", "", "", "", "", "", "");
        r.List1.List(0);
    });
    const double filtroSql =
        mediana_ms(3, [&] { le_sqlite(c.db(), todos + " WHERE Banco = '237'"); });
    linha("filtro por banco (50.000 linhas)", filtro, filtroSql, "(meta: abaixo de 100 ms)");
    const double datas = mediana_ms(3, [&] {
        MontaFiltroLog(s, d, "", "01/03/24", "31/03/24", "", "", "", "", "");
        r.List1.List(0);
    });
    linha("filtro por datas (um mês)", datas, filtroSql, "(sem meta; SQLite: o filtro por banco)");

    const double completa = mediana_ms(3, [&] {
        r.SSCommand5_Click();
        r.List1.List(0);
    });
    linha("\"Lista Completa\"", completa, abreSql, "(meta: abaixo de 500 ms)");

    // Sorting by a column: the database orders the rows, the list makes those in sight.
    const double porValor = mediana_ms(3, [&] {
        r.Ordena(ColunaLog::Valor, false);
        r.List1.List(0);
    });
    const double porValorSql = mediana_ms(3, [&] {
        le_sqlite(c.db(), todos + " ORDER BY CAST(replace(V_CH, ',', '.') AS "
                                  "REAL) DESC");
    });
    linha("ordenar a lista pelo valor", porValor, porValorSql, "(meta: abaixo de 500 ms)");
    // Any column, as a click on its heading: the slowest of the eight.
    double pior = 0;
    int piorColuna = 0;
    for (int coluna = 0; coluna < ColunasLog; ++coluna) {
        const double ms = mediana_ms(3, [&] {
            r.Cabecalho_Click(coluna);
            r.List1.List(0);
        });
        if (ms > pior) pior = ms, piorColuna = coluna;
    }
    const std::string pela =
        ("ordenar pela coluna mais lenta (" + r.Ordem.List(piorColuna + 1) + ")").toStdString();
    linha(pela.c_str(), pior, porValorSql, "(meta: abaixo de 500 ms; SQLite: pelo valor)");

    QList<SomaMensal> somas;
    const double grafico = mediana_ms(3, [&] { somas_mensais(*r.Linhas(), somas); });
    const double graficoSql = mediana_ms(3, [&] {
        QSqlQuery q(c.db());
        q.exec("SELECT substr(Data,7,2)||substr(Data,4,2) AS m, Banco, "
               "SUM(CAST(replace(V_CH, ',', '.') AS REAL)) FROM Log WHERE StCancel <> 'C' "
               "GROUP BY m, Banco");
        while (q.next()) {
        }
    });
    linha("somas do mês por banco (gráfico)", grafico, graficoSql, "(meta: abaixo de 300 ms)");

    for (const auto formato : {FormatoPlanilha::Csv, FormatoPlanilha::Ods}) {
        d.CaminhoSalvar = pasta.path() + (formato == FormatoPlanilha::Csv ? "/p.csv" : "/p.ods");
        d.Mensagens.clear();
        const double planilha = mediana_ms(3, [&] { r.Exportar_Click(int(formato)); });
        linha(formato == FormatoPlanilha::Csv ? "exportar planilha CSV" : "exportar planilha ODS",
              planilha, abreSql, "(meta: abaixo de 3.000 ms; SQLite: ler as mesmas linhas)");
    }

    const QString arquivo = pasta.path() + "/saida.txt";
    const double geral = mediana_ms(3, [&] {
        QFile f(arquivo);
        f.open(QIODevice::WriteOnly);
        f.write(texto_relatorio_geral(s).toUtf8());
    });
    linha("relatório geral em arquivo", geral, abreSql, "(meta: abaixo de 2.000 ms)");

    const QStringList linhas = r.List1.Itens.lista();
    for (const auto formato : {FormatoLista::Normal, FormatoLista::Compacto}) {
        QByteArray bytes;
        const double lista = mediana_ms(3, [&] {
            bytes = envios_lista(linhas, formato, DestinoLista::Arquivo, s.Hoje6, 55)
                        .join(QString())
                        .toUtf8();
            QFile f(arquivo);
            f.open(QIODevice::WriteOnly);
            f.write(bytes);
        });
        const double grava = mediana_ms(3, [&] {
            QFile f(arquivo);
            f.open(QIODevice::WriteOnly);
            f.write(bytes);
        });
        linha(formato == FormatoLista::Normal ? "lista Normal em arquivo"
                                              : "lista Compacto em arquivo",
              lista, grava, "(meta: abaixo de 3.000 ms; contra gravar os mesmos bytes)");
    }

    // The real window offscreen: the table and the chart painted.
    std::vector<double> abrir, ordenar, desenho;
    for (int i = 0; i < 3; ++i) {
        QProcess p;
        p.start(TELA_RELATO, {pasta.path()});
        p.waitForFinished(120000);
        const QStringList saida =
            QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed().split(' ');
        if (saida.size() < 3) continue;
        abrir.push_back(saida[0].toDouble());
        ordenar.push_back(saida[1].toDouble());
        desenho.push_back(saida[2].toDouble());
    }
    if (abrir.empty()) {
        std::printf("  a janela do relatório não abriu\n");
    } else {
        const auto meio = [](std::vector<double> v) {
            std::sort(v.begin(), v.end());
            return v[v.size() / 2];
        };
        linha("janela: tabela e gráfico pintados", meio(abrir), abreSql,
              "(meta: abaixo de 500 ms na lista)");
        linha("janela: clique no título Valor", meio(ordenar), porValorSql,
              "(meta: abaixo de 500 ms)");
        linha("janela: gráfico somado e desenhado", meio(desenho), graficoSql,
              "(meta: abaixo de 300 ms)");
    }

    const long kib = roda_filho("memoria-relato", {pasta.path()}).trimmed().toLong();
    const long kibSql = roda_filho("memoria-relato-sqlite", {pasta.path()}).trimmed().toLong();
    std::printf("  %-44s %9.1f MB  SQLite %8.1f MB  razão %6.2f  (meta: abaixo de 200 MB)\n\n",
                "pico de memória com o relatório na tela", kib / 1024.0, kibSql / 1024.0,
                kibSql > 0 ? double(kib) / kibSql : 0.0);
}

int memoria_relato(const QStringList &args) {
    Sessao s(args.value(0));
    DesktopRoteiro d;
    abre_relato(s, d);
    std::printf("%ld\n", pico_proprio());
    return 0;
}

int memoria_relato_sqlite(const QStringList &args) {
    Conexao c(args.value(0) + "/VEXA.db");
    le_sqlite(c.db(), "SELECT \"Index\", Codigo, Banco, V_CH, Favor, Local, Data, NRCH, "
                      "Comentario, Comentario1, Comentario2, StCancel FROM Log");
    std::printf("%ld\n", pico_proprio());
    return 0;
}

const bool registrado = registra_medida("5 relatorio", mede_relatorio) &&
                        registra_filho("memoria-relato", memoria_relato) &&
                        registra_filho("memoria-relato-sqlite", memoria_relato_sqlite);

} // namespace
