// make bench: prints the figures of the program's start-up and of the purge of a large
// register. It is a measurement, not a test.
#include "core/desktop_roteiro.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

#include <QCoreApplication>
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
#include <sys/resource.h>
#include <vector>

using namespace vexa;

namespace {

constexpr int LinhasLog = 250000;

// Peak resident memory of a process, in KiB, read before it ends.
long pico_memoria(qint64 pid) {
    QFile f(QStringLiteral("/proc/%1/status").arg(pid));
    if (!f.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray &l : f.readAll().split('\n'))
        if (l.startsWith("VmHWM:")) return l.mid(6).trimmed().split(' ').first().toLong();
    return -1;
}

long pico_proprio() {
    struct rusage uso {};
    getrusage(RUSAGE_SELF, &uso);
    return uso.ru_maxrss;
}

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

struct Partida {
    double ms;
    long kib;
};

// Starts a program offscreen with its home in casa and times it until it answers idle. The
// first start in a home also makes the data folder.
Partida mede_partida(const QString &programa, const QString &casa,
                     const QStringList &argumentos = {}) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("HOME", casa);
    env.insert("XDG_DATA_HOME", casa + "/dados");
    const QString link = Instancia::NomeLink(casa + "/dados/VexaPlus/Vexa Plus");

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

Partida mediana(const QString &programa, const QString &casa, int vezes,
                const QStringList &argumentos = {}) {
    std::vector<Partida> v;
    for (int i = 0; i < vezes; ++i)
        v.push_back(mede_partida(programa, casa, argumentos));
    std::sort(v.begin(), v.end(), [](auto a, auto b) { return a.ms < b.ms; });
    return v[v.size() / 2];
}

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

} // namespace

int main(int argc, char *argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 3 && args[1] == "--enche") return enche_filho(args[2]);
    if (args.size() == 3 && args[1] == "--expurgo") return expurgo_filho(args[2]);

    std::printf("Vexa Plus — medidas\n\n");
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

    QTemporaryDir pasta;
    QProcess enche;
    enche.start(QCoreApplication::applicationFilePath(), {"--enche", pasta.path()});
    enche.waitForFinished(600000);
    QProcess expurgo;
    expurgo.start(QCoreApplication::applicationFilePath(), {"--expurgo", pasta.path()});
    expurgo.waitForFinished(600000);
    const QList<QByteArray> saida = expurgo.readAllStandardOutput().trimmed().split(' ');
    std::printf("Expurgo de cheques: Log com %d linhas, %d vencidas:\n", LinhasLog, LinhasLog / 2);
    std::printf("  tempo             %8s ms   (meta: abaixo de 2000)\n",
                saida.value(0).constData());
    std::printf("  pico de memória   %8s KiB (processo só do expurgo)\n",
                saida.value(1).constData());
    std::printf("  linhas restantes  %8s\n", saida.value(2).constData());
    return 0;
}
