#pragma once
// What the measures of make bench share: a registry, so that each file of measures adds its
// own and the bench runs them all; the timing of a start of the program; children of the
// bench process, so that a peak of memory is one measure's alone; generated data kept between
// runs.
#include <QByteArray>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <functional>

namespace vexa {
class DesktopRoteiro;
class Main;
class Relato;
struct Sessao;
} // namespace vexa

namespace vexa::bench {

// A measure prints its own lines. Measures run in the order of their names.
bool registra_medida(const QString &nome, std::function<void()> medida);
// A child: run as "vexa_bench --filho <nome> <args...>"; what it prints goes back to the caller.
bool registra_filho(const QString &nome, std::function<int(const QStringList &)> filho);
QByteArray roda_filho(const QString &nome, const QStringList &argumentos);

struct Partida {
    double ms;
    long kib;
};
// Starts a program offscreen with its home in casa and times it until it answers idle.
Partida mede_partida(const QString &programa, const QString &casa,
                     const QStringList &argumentos = {});
Partida mediana(const QString &programa, const QString &casa, int vezes,
                const QStringList &argumentos = {});
// The data folder of the program under a home, as the program makes it.
QString pasta_dados(const QString &casa);

// Peak resident memory of this process, in KiB.
long pico_proprio();
// The median of a few runs, in milliseconds.
double mediana_ms(int vezes, const std::function<void()> &trabalho);
// Where generated databases are kept between runs (under the build folder).
QString pasta_cache();

// A connection of its own, for the generation and for the plain queries.
class Conexao {
  public:
    explicit Conexao(const QString &arquivo);
    ~Conexao();
    QSqlDatabase db() const;

  private:
    QString nome_;
};

// A database made by the program and filled in one transaction through one prepared insert;
// kept under the build folder, so that later runs only copy it.
QString base_gerada(const QString &nome, const QString &insercao,
                    const std::function<QVariantList(int)> &linha, int linhas);
// The generated registers of the measures: 99,999 payees, 1,000,000 cheques of the last days,
// 250,000 cheques of two years for the report.
QString base_favorecidos();
QString base_log();
QString base_relatorio();
// The entry screen with a cheque typed, on the simulated printer.
Main &cheque_na_tela(Sessao &s, DesktopRoteiro &d);
// The report screen as the operator sees it: opened, with the rows in sight made.
Relato &abre_relato(Sessao &s, DesktopRoteiro &d);
// A data folder of the program's with a copy of a generated database (none: a new one).
void prepara_pasta(const QString &pasta, const QString &base);
// One line of figures: the program's time, plain SQLite's, their ratio and the target.
void linha(const char *oque, double ms, double sqlite, const char *meta);

} // namespace vexa::bench
