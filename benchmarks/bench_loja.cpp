// The store at the size of an office's years of cheques: 99,999 payees and 1,000,000 register
// rows, each figure against plain SQLite reading the same rows in the same run.
#include "medidas.h"

#include "cheque/frente.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/inicio.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "printer/simulador.h"
#include "registers/favorec.h"
#include "registers/saida.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

using namespace vexa;
using namespace vexa::bench;

namespace {

constexpr int Favorecidos = 99999;
constexpr int LinhasLog = 1000000;

} // namespace

QString vexa::bench::base_favorecidos() {
    static const QStringList nomes{"José",      "Maria",  "Ana",   "João",   "Antônio",
                                   "Francisca", "Carlos", "Paulo", "Lúcia",  "Márcia",
                                   "Sérgio",    "Fábio",  "Inês",  "Otávio", "Cecília",
                                   "Rafael",    "Érica",  "Luís",  "Bruna",  "Vinícius"};
    static const QStringList sobrenomes{"Silva",    "Santos",   "Oliveira",  "Souza",   "Pereira",
                                        "Lima",     "Carvalho", "Araújo",    "Ribeiro", "Gonçalves",
                                        "Almeida",  "Simões",   "Conceição", "Brandão", "Assunção",
                                        "Mendonça", "Gusmão",   "Magalhães", "Romão",   "Estêvão",
                                        "Zanetti",  "Teixeira", "Nóbrega",   "Azevedo"};
    return base_gerada(
        "favorecidos-99999.db", "INSERT INTO Favorecido (Codigo, Nome) VALUES (?, ?)",
        [](int i) {
            const QString nome =
                nomes[i % nomes.size()] + " " + sobrenomes[(i / 7) % sobrenomes.size()] + " " +
                sobrenomes[(i / 131) % sobrenomes.size()] + " Ltda " + QString::number(i % 997);
            return QVariantList{QStringLiteral("%1").arg(i, 5, 10, QLatin1Char('0')), nome};
        },
        Favorecidos);
}

// A register of printed cheques, all of the last days: the purge finds nothing to delete.
QString vexa::bench::base_log() {
    const QDate dia = QDate::currentDate();
    return base_gerada(
        "log-1000000.db",
        "INSERT INTO Log (\"Index\", Codigo, Banco, V_CH, Favor, Local, Data, NRCH, Comentario, "
        "Comentario1, Comentario2, StCancel) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)",
        [dia](int i) {
            const QString index = QStringLiteral("%1").arg(i, 10, 10, QLatin1Char('0'));
            return QVariantList{index,
                                index.right(5),
                                "001",
                                "1234,5",
                                "Favorecido de teste",
                                "Santos",
                                dia.addDays(-(i % 5)).toString("dd/MM/yy"),
                                "000123",
                                " ",
                                " ",
                                " ",
                                " "};
        },
        LinhasLog);
}

namespace {

double cpu_ms() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return t.tv_sec * 1e3 + t.tv_nsec / 1e6;
}

double mediana(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// The plain query: the rows of a select read into list lines "code - name".
QStringList linhas_sqlite(const QSqlDatabase &db, const QString &sql) {
    QStringList r;
    QSqlQuery q(db);
    q.setForwardOnly(true);
    q.exec(sql);
    while (q.next())
        r.append(q.value(0).toString() + " - " + q.value(1).toString());
    return r;
}

void mede_cadastro() {
    const QString base = base_favorecidos();
    QTemporaryDir pasta;
    prepara_pasta(pasta.path(), base);
    std::printf("Cadastro de favorecidos com %d linhas (mediana de 5):\n", Favorecidos);

    const double abre = mediana_ms(5, [&] {
        Sessao s(pasta.path());
        DesktopRoteiro d;
        d.Abre(std::make_unique<Favorec>(s, d));
    });
    Conexao c(pasta.path() + "/VEXA.db");
    const double abreSql = mediana_ms(
        5, [&] { linhas_sqlite(c.db(), "SELECT Codigo, Nome FROM Favorecido ORDER BY Codigo"); });
    linha("abrir Favorec e encher a lista (modelo)", abre, abreSql, "(meta: abaixo de 150 ms)");

    Sessao s(pasta.path());
    DesktopRoteiro d;
    auto *f = static_cast<Favorec *>(d.Abre(std::make_unique<Favorec>(s, d)));
    std::vector<double> teclas;
    for (int i = 0; i < 5; ++i) {
        f->Text2.Text.clear();
        f->Text2_Change();
        f->Text2.Text = "M";
        QElapsedTimer relogio;
        relogio.start();
        f->Text2_Change();
        teclas.push_back(relogio.nsecsElapsed() / 1e6);
    }
    const int achados = f->List1.Itens.size();
    const double teclaSql = mediana_ms(5, [&] {
        linhas_sqlite(c.db(), "SELECT Codigo, Nome FROM Favorecido WHERE NomeChave >= 'm' AND "
                              "NomeChave < 'n' ORDER BY NomeChave, Nome");
    });
    linha(QStringLiteral("primeira tecla em \"Procurar por:\" (%1 linhas)")
              .arg(achados)
              .toUtf8()
              .constData(),
          mediana(teclas), teclaSql, "(meta: abaixo de 30 ms)");

    const double lista = mediana_ms(3, [&] {
        Sessao s2(pasta.path());
        DesktopRoteiro d2;
        ImprimeCadastro(s2, d2, 1, "1", "Favorecido");
    });
    const double listaSql = mediana_ms(3, [&] {
        linhas_sqlite(c.db(), "SELECT Codigo, Nome FROM Favorecido ORDER BY NomeChave, Nome");
    });
    linha("lista por nome para a impressora do sistema", lista, listaSql,
          "(meta: abaixo de 1000 ms, antes de pintar)");

    // The same register in its real window, offscreen, each run a process of its own.
    std::vector<double> janelas;
    std::vector<long> picos;
    for (int i = 0; i < 5; ++i) {
        QProcess p;
        p.start(TELA_CADASTRO, {pasta.path()});
        p.waitForFinished(120000);
        const QStringList saida = QString::fromLocal8Bit(p.readAllStandardOutput()).split(' ');
        if (saida.size() < 2) continue;
        janelas.push_back(saida[0].toDouble());
        picos.push_back(saida[1].trimmed().toLong());
    }
    if (janelas.empty()) {
        std::printf("  a janela do cadastro não abriu\n\n");
        return;
    }
    linha("abrir Favorec com a lista pintada na janela", mediana(janelas), abreSql,
          "(meta: abaixo de 150 ms)");
    const long kib = *std::max_element(picos.begin(), picos.end());
    const long kibSql = roda_filho("memoria-sqlite", {pasta.path()}).trimmed().toLong();
    std::printf("  %-44s %9.1f MB  SQLite %8.1f MB  razão %6.2f  (meta: abaixo de 120 MB)\n\n",
                "pico de memória com o cadastro na janela", kib / 1024.0, kibSql / 1024.0,
                kibSql > 0 ? double(kib) / kibSql : 0.0);
}

int memoria_sqlite(const QStringList &a) {
    QStringList linhas;
    {
        Conexao c(a.value(0) + "/VEXA.db");
        linhas = linhas_sqlite(c.db(), "SELECT Codigo, Nome FROM Favorecido ORDER BY Codigo");
    }
    std::printf("%ld\n", pico_proprio());
    return linhas.isEmpty() ? 1 : 0;
}

} // namespace

Main &vexa::bench::cheque_na_tela(Sessao &s, DesktopRoteiro &d) {
    s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList textos{"001", "1234,5", "Maria", "Santos", "05/03/99", "", "000123"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = textos[i];
    return *m;
}

namespace {

// CPU of one GravaCheque, median of 15, in a register of that many rows.
double cpu_grava(const QString &pasta) {
    Sessao s(pasta);
    DesktopRoteiro d;
    Main *m = &cheque_na_tela(s, d);
    std::vector<double> v;
    for (int i = 0; i < 15; ++i) {
        const double antes = cpu_ms();
        GravaCheque(*m);
        v.push_back(cpu_ms() - antes);
    }
    return mediana(v);
}

double cpu_insert(const QString &pasta) {
    Conexao c(pasta + "/VEXA.db");
    QSqlQuery q(c.db());
    q.prepare("INSERT INTO Log (\"Index\", Codigo, Banco, V_CH, Favor, Local, Data, NRCH, "
              "Comentario, Comentario1, Comentario2, StCancel) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)");
    std::vector<double> v;
    for (int i = 0; i < 15; ++i) {
        const double antes = cpu_ms();
        for (const char *x : {"9999999999", "99999", "001", "1234,5", "Maria", "Santos", "05/03/99",
                              "000123", "", "", "", " "})
            q.addBindValue(x);
        q.exec();
        v.push_back(cpu_ms() - antes);
    }
    return mediana(v);
}

void mede_grava_e_partida() {
    const QString base = base_log();
    QTemporaryDir vazio, cheio;
    prepara_pasta(vazio.path(), {});
    prepara_pasta(cheio.path(), base);
    std::printf("Registro de cheques (Log) com 0 e %d linhas:\n", LinhasLog);
    const double g0 = cpu_grava(vazio.path()), g1 = cpu_grava(cheio.path());
    const double i0 = cpu_insert(vazio.path()), i1 = cpu_insert(cheio.path());
    linha("GravaCheque, CPU, Log vazio", g0, i0, "");
    linha("GravaCheque, CPU, Log com 1.000.000", g1, i1, "");
    std::printf("  %-44s %9.2f      (meta: até 1,50)\n", "razão 1.000.000 / vazio", g1 / g0);

    QTemporaryDir casa0, casa1;
    mede_partida(VEXA_PROGRAMA, casa0.path());
    mede_partida(VEXA_PROGRAMA, casa1.path());
    QFile::remove(pasta_dados(casa1.path()) + "/VEXA.db");
    QFile::copy(base, pasta_dados(casa1.path()) + "/VEXA.db");
    mede_partida(VEXA_PROGRAMA, casa1.path()); // warms the disk cache
    const Partida p0 = bench::mediana(VEXA_PROGRAMA, casa0.path(), 5);
    const Partida p1 = bench::mediana(VEXA_PROGRAMA, casa1.path(), 5);
    std::printf("  %-44s %9.1f ms\n", "partida até a tela ociosa, Log vazio", p0.ms);
    std::printf("  %-44s %9.1f ms  razão %6.2f  (meta: até 1,20; nada a expurgar)\n\n",
                "partida até a tela ociosa, Log com 1.000.000", p1.ms, p1.ms / p0.ms);
}

const bool registrado = registra_medida("3 loja cadastro", mede_cadastro) &&
                        registra_medida("4 loja registro", mede_grava_e_partida) &&
                        registra_filho("memoria-sqlite", memoria_sqlite);

} // namespace
