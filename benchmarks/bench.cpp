// make bench: runs every registered measure (start-up, purge, the store at an office's size, ...)
// and prints its figures. It is a measurement, not a test.
#include "medidas.h"
#include <QUuid>

#include "core/desktop_roteiro.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

using namespace vexa;

namespace vexa::bench {

namespace {
std::map<QString, std::function<void()>> &medidas() {
    static std::map<QString, std::function<void()>> m;
    return m;
}
std::map<QString, std::function<int(const QStringList &)>> &filhos() {
    static std::map<QString, std::function<int(const QStringList &)>> f;
    return f;
}
} // namespace

bool registra_medida(const QString &nome, std::function<void()> medida) {
    medidas()[nome] = std::move(medida);
    return true;
}

bool registra_filho(const QString &nome, std::function<int(const QStringList &)> filho) {
    filhos()[nome] = std::move(filho);
    return true;
}

QByteArray roda_filho(const QString &nome, const QStringList &argumentos) {
    QProcess p;
    p.start(QCoreApplication::applicationFilePath(), QStringList{"--filho", nome} + argumentos);
    p.waitForFinished(1800000);
    return p.readAllStandardOutput();
}

QString pasta_dados(const QString &casa) {
    return casa + "/dados/VexaPlus/Vexa Plus";
}

QString pasta_cache() {
    const QString pasta = QCoreApplication::applicationDirPath() + "/cache";
    QDir().mkpath(pasta);
    return pasta;
}

Conexao::Conexao(const QString &arquivo)
    : nome_("bench-" + QUuid::createUuid().toString(QUuid::WithoutBraces)) {
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", nome_);
    db.setDatabaseName(arquivo);
    db.open();
}

Conexao::~Conexao() {
    QSqlDatabase::database(nome_, false).close();
    QSqlDatabase::removeDatabase(nome_);
}

QSqlDatabase Conexao::db() const {
    return QSqlDatabase::database(nome_, false);
}

QString base_gerada(const QString &nome, const QString &insercao,
                    const std::function<QVariantList(int)> &linha, int linhas) {
    const QString arquivo = pasta_cache() + "/" + nome;
    if (QFile::exists(arquivo)) return arquivo;
    QTemporaryDir pasta;
    {
        Sessao s(pasta.path());
        cria_base_dados(s);
        Conexao c(pasta.path() + "/VEXA.db");
        QSqlDatabase db = c.db();
        db.transaction();
        QSqlQuery q(db);
        q.prepare(insercao);
        for (int i = 1; i <= linhas; ++i) {
            for (const QVariant &v : linha(i))
                q.addBindValue(v);
            q.exec();
        }
        q.finish();
        db.commit();
    }
    QFile::copy(pasta.path() + "/VEXA.db", arquivo);
    return arquivo;
}

void prepara_pasta(const QString &pasta, const QString &base) {
    QFile::remove(pasta + "/VEXA.db");
    if (!base.isEmpty()) QFile::copy(base, pasta + "/VEXA.db");
    Sessao s(pasta);
    prepara_pasta_dados(s);
}

void linha(const char *oque, double ms, double sqlite, const char *meta) {
    std::printf("  %-44s %9.1f ms  SQLite %8.1f ms  razão %6.2f  %s\n", oque, ms, sqlite,
                sqlite > 0 ? ms / sqlite : 0.0, meta);
}

double mediana_ms(int vezes, const std::function<void()> &trabalho) {
    std::vector<double> v;
    for (int i = 0; i < vezes; ++i) {
        QElapsedTimer relogio;
        relogio.start();
        trabalho();
        v.push_back(relogio.nsecsElapsed() / 1e6);
    }
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// Peak resident memory of a process, in KiB, read before it ends.
long pico_memoria(qint64 pid) {
    QFile f(QStringLiteral("/proc/%1/status").arg(pid));
    if (!f.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray &l : f.readAll().split('\n'))
        if (l.startsWith("VmHWM:")) return l.mid(6).trimmed().split(' ').first().toLong();
    return -1;
}

} // namespace vexa::bench

namespace {

using namespace vexa::bench;

constexpr int LinhasLog = 250000;
} // namespace

// Read from /proc: the peak that getrusage gives survives exec, so a child would show its
// parent's.
long vexa::bench::pico_proprio() {
    return pico_memoria(QCoreApplication::applicationPid());
}

namespace {
// True once the running program has taken a request on its link. It closes the link from its
// event loop, so the answer means that its window is up and it is idle.
bool responde(const QString &link) {
    QLocalSocket s;
    s.connectToServer(link);
    if (!s.waitForConnected(50)) return false;
    s.write(Instancia::Codifica({}));
    s.waitForBytesWritten(1000);
    return s.state() == QLocalSocket::UnconnectedState || s.waitForDisconnected(10000);
}

} // namespace

// The first start in a home also makes the data folder.
Partida vexa::bench::mede_partida(const QString &programa, const QString &casa,
                                  const QStringList &argumentos) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("HOME", casa);
    env.insert("XDG_DATA_HOME", casa + "/dados");
    const QString link = Instancia::NomeLink(pasta_dados(casa));

    QProcess p;
    p.setProcessEnvironment(env);
    QElapsedTimer relogio;
    relogio.start();
    p.start(programa, argumentos);
    p.waitForStarted();
    while (!responde(link)) {
        if (relogio.elapsed() > 20000 || p.state() == QProcess::NotRunning) return {-1, -1};
        QThread::usleep(500);
    }
    const double ms = relogio.nsecsElapsed() / 1e6;
    const long kib = pico_memoria(p.processId());
    p.kill();
    p.waitForFinished();
    return {ms, kib};
}

Partida vexa::bench::mediana(const QString &programa, const QString &casa, int vezes,
                             const QStringList &argumentos) {
    std::vector<Partida> v;
    for (int i = 0; i < vezes; ++i)
        v.push_back(mede_partida(programa, casa, argumentos));
    std::sort(v.begin(), v.end(), [](auto a, auto b) { return a.ms < b.ms; });
    return v[v.size() / 2];
}

namespace {

// A data folder whose Log has the rows, every other one older than the retention period.
int enche_filho(const QString &pasta) {
    Sessao s(pasta);
    prepara_pasta_dados(s);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "bench-enche");
        db.setDatabaseName(s.CaminhoApp + "/VEXA.db");
        if (!db.open()) return 1;
        db.transaction();
        QSqlQuery q(db);
        q.prepare("INSERT INTO Log (\"Index\", Codigo, Banco, V_CH, Favor, Local, Data, NRCH, "
                  "Comentario, Comentario1, Comentario2, StCancel) "
                  "VALUES (?,?,?,?,?,?,?,?,?,?,?,?)");
        const QDate dia = hoje();
        for (int i = 1; i <= LinhasLog; ++i) {
            const QString index = QStringLiteral("%1").arg(i, 10, 10, QLatin1Char('0'));
            const QDate data = i % 2 ? dia.addDays(-90 - i % 300) : dia.addDays(-(i % 25));
            for (const QString &v :
                 {index, index.right(5), QString("001"), QString("1234,5"),
                  QString("Favorecido de teste"), QString("Santos"), data.toString("dd/MM/yy"),
                  QString("000123"), QString(" "), QString(" "), QString(" "), QString(" ")})
                q.addBindValue(v);
            q.exec();
        }
        db.commit();
        db.close();
    }
    QSqlDatabase::removeDatabase("bench-enche");
    return 0;
}

// The purge alone in a process of its own, so that the peak memory is the purge's.
int expurgo_filho(const QString &pasta) {
    Sessao s(pasta);
    DesktopRoteiro d;
    d.Respostas = {Resposta::Yes};
    QElapsedTimer relogio;
    relogio.start();
    ExpurgaCheques(s, d);
    const double ms = relogio.nsecsElapsed() / 1e6;
    const long kib = pico_proprio();
    qint64 restantes = -1;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "bench-conta");
        db.setDatabaseName(s.CaminhoApp + "/VEXA.db");
        QSqlQuery q(db);
        if (db.open() && q.exec("SELECT count(*) FROM Log") && q.next())
            restantes = q.value(0).toLongLong();
    }
    QSqlDatabase::removeDatabase("bench-conta");
    std::printf("%.1f %ld %lld\n", ms, kib, restantes);
    return 0;
}

void mede_partida_nua() {
    QTemporaryDir casaVexa, casaNua;
    // The first start makes the data folder; it also warms the disk cache.
    const Partida primeira = mede_partida(VEXA_PROGRAMA, casaVexa.path());
    mede_partida(JANELA_NUA, casaNua.path());
    const Partida nua = mediana(JANELA_NUA, casaNua.path(), 7);
    const Partida comTexto = mediana(JANELA_NUA, casaNua.path(), 7, {"--texto"});
    const Partida vexa = mediana(VEXA_PROGRAMA, casaVexa.path(), 7);
    std::printf("Partida até a tela principal pronta e ociosa (mediana de 7):\n");
    std::printf("  janela Qt vazia   %8.1f ms   pico de memória %7ld KiB\n", nua.ms, nua.kib);
    std::printf("  janela com texto  %8.1f ms   pico de memória %7ld KiB\n", comTexto.ms,
                comTexto.kib);
    std::printf("  Vexa Plus         %8.1f ms   pico de memória %7ld KiB\n", vexa.ms, vexa.kib);
    std::printf("  razão             %8.2f      (meta: até 1,30; contra a janela vazia)\n",
                vexa.ms / nua.ms);
    std::printf("  razão             %8.2f      (contra a janela com uma linha de texto)\n",
                vexa.ms / comTexto.ms);
    std::printf("  primeira partida  %8.1f ms   (cria a pasta de dados)\n\n", primeira.ms);
}

void mede_expurgo() {
    QTemporaryDir pasta;
    roda_filho("enche", {pasta.path()});
    const QList<QByteArray> saida = roda_filho("expurgo", {pasta.path()}).trimmed().split(' ');
    std::printf("Expurgo de cheques: Log com %d linhas, %d vencidas:\n", LinhasLog, LinhasLog / 2);
    std::printf("  tempo             %8s ms   (meta: abaixo de 2000)\n",
                saida.value(0).constData());
    std::printf("  pico de memória   %8s KiB (processo só do expurgo)\n",
                saida.value(1).constData());
    std::printf("  linhas restantes  %8s\n\n", saida.value(2).constData());
}

const bool registrado =
    registra_medida("1 partida", mede_partida_nua) && registra_medida("2 expurgo", mede_expurgo) &&
    registra_filho("enche", [](const QStringList &a) { return enche_filho(a.value(0)); }) &&
    registra_filho("expurgo", [](const QStringList &a) { return expurgo_filho(a.value(0)); });

} // namespace

int main(int argc, char *argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args[1] == "--filho") {
        const auto filho = filhos().find(args[2]);
        return filho == filhos().end() ? 2 : filho->second(args.mid(3));
    }
    // "vexa_bench nome..." runs only the measures whose names begin so.
    const QStringList escolhidas = args.mid(1);
    std::printf("Vexa Plus — medidas\n\n");
    for (const auto &[nome, medida] : medidas()) {
        const bool escolhida = escolhidas.isEmpty() ||
                               std::any_of(escolhidas.begin(), escolhidas.end(),
                                           [&](const QString &e) { return nome.startsWith(e); });
        if (escolhida) medida();
        std::fflush(stdout);
    }
    return 0;
}
