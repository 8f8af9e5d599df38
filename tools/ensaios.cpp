// make ensaios: short trials of the program under faults, each bounded in count and time.
//   vexa_ensaios mortes [n]          children killed at random points while writing VEXA.INI
//   vexa_ensaios arquivos [n]        random settings files read and written
//   vexa_ensaios pedidos [n]         malformed requests on the running copy's socket
//   vexa_ensaios partidas programa [n]  starts of the program at once on one new data folder
// Each prints its figures and ends with 0 when nothing went wrong.
#include "core/ini.h"
#include "core/instancia.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <atomic>
#include <cstdio>
#include <memory>
#include <vector>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace vexa;

namespace {

QByteArray le_bytes(const QString &caminho) {
    QFile f(caminho);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void grava_bytes(const QString &caminho, const QByteArray &bytes) {
    QFile f(caminho);
    if (f.open(QIODevice::WriteOnly)) f.write(bytes);
}

// Children write one key over and over, switching between two values; each is killed at a
// random moment. The file must then be one of the two whole states, never anything else.
int mortes(int n) {
    QTemporaryDir pasta;
    const QString ini = pasta.filePath("VEXA.INI");
    QByteArray base = "[Sistema]\r\nport=COM1\r\n";
    for (int i = 0; i < 60; ++i)
        base += "[Secao" + QByteArray::number(i) + "]\r\nChave=" + QByteArray(80, 'a' + i % 26) +
                "\r\n";
    grava_bytes(ini, base);
    LeGravaIni(ini, "Verso", "Linha00", "um");
    const QByteArray estadoUm = le_bytes(ini);
    LeGravaIni(ini, "Verso", "Linha00", "dois");
    const QByteArray estadoDois = le_bytes(ini);

    int quebrados = 0;
    for (int i = 0; i < n; ++i) {
        const pid_t filho = ::fork();
        if (filho == 0) {
            for (int j = 0;; ++j)
                LeGravaIni(ini, "Verso", "Linha00", j % 2 ? "um" : "dois");
        }
        ::usleep(useconds_t(QRandomGenerator::global()->bounded(1000, 30000)));
        ::kill(filho, SIGKILL);
        ::waitpid(filho, nullptr, 0);
        const QByteArray agora = le_bytes(ini);
        if (agora != estadoUm && agora != estadoDois) ++quebrados;
    }
    const qsizetype restos = QDir(pasta.path()).entryList(QDir::Files | QDir::Hidden).size() - 1;
    std::printf("mortes: %d filhos mortos no meio da gravação, %d arquivos quebrados, %lld "
                "temporários deixados\n",
                n, quebrados, qlonglong(restos));
    return quebrados == 0 ? 0 : 1;
}

// Bytes that mean something in a settings file, mixed with any byte at all.
QByteArray arquivo_aleatorio(QRandomGenerator &g) {
    static const QList<QByteArray> pedacos = {"[",
                                              "]",
                                              "=",
                                              "\r",
                                              "\n",
                                              "\r\n",
                                              ";",
                                              "\"",
                                              "'",
                                              " ",
                                              "\xEF\xBB\xBF",
                                              "Sistema",
                                              "port",
                                              "COM1",
                                              "-2",
                                              "Verso",
                                              "Linha00",
                                              "\xe3",
                                              "\xC3\xA7",
                                              QByteArray(1, '\0')};
    QByteArray b;
    const int partes = int(g.bounded(0, 200));
    for (int i = 0; i < partes; ++i)
        b += g.bounded(3) == 0 ? QByteArray(1, char(g.bounded(256)))
                               : pedacos[g.bounded(int(pedacos.size()))];
    return b;
}

// Random files are read and written; a value written must read back as written (cut at the
// read's 159 characters), and a write must leave every other key that read before as it was.
int arquivos(int n) {
    // In memory where there is such a folder: the trial is of the reading and the writing, not
    // of the disk's flushes.
    QTemporaryDir pasta(QDir("/dev/shm").exists() ? "/dev/shm/vexa-ensaio-XXXXXX" : QString());
    const QString ini = pasta.filePath("VEXA.INI");
    QRandomGenerator g(20261123);
    const QStringList secoes = {"Sistema", "Verso", "Nova"};
    const QStringList chaves = {"port", "Linha00", "Outra"};
    int erradas = 0, mudadas = 0;
    for (int i = 0; i < n; ++i) {
        grava_bytes(ini, arquivo_aleatorio(g));
        QMap<QString, QString> antes;
        for (const QString &s : secoes)
            for (const QString &c : chaves)
                antes[s + '/' + c] = LeGravaIni(ini, s, c, "");
        const QString secao = secoes[g.bounded(int(secoes.size()))];
        const QString chave = chaves[g.bounded(int(chaves.size()))];
        const QString valor = "v" + QString::number(i);
        if (LeGravaIni(ini, secao, chave, valor) != "1" ||
            LeGravaIni(ini, secao, chave, "") != valor)
            ++erradas;
        for (auto it = antes.begin(); it != antes.end(); ++it) {
            if (it.key() == secao + '/' + chave) continue;
            const QStringList sc = it.key().split('/');
            if (LeGravaIni(ini, sc[0], sc[1], "") != it.value()) {
                ++mudadas;
                break;
            }
        }
    }
    std::printf("arquivos: %d arquivos aleatórios lidos e gravados sem queda, %d valores que não "
                "voltaram como gravados, %d gravações que mudaram outra chave\n",
                n, erradas, mudadas);
    return erradas == 0 && mudadas == 0 ? 0 : 1;
}

// Malformed requests on the running copy's socket: none reaches the fields, and a good one
// sent after them still does.
int pedidos(int argc, char **argv, int n) {
    QCoreApplication app(argc, argv);
    QTemporaryDir pasta;
    Instancia primeira(pasta.path());
    if (!primeira.Escuta()) return 2;
    int recebidos = 0;
    QMap<int, QString> ultimo;
    primeira.aoReceber = [&](const QMap<int, QString> &c) {
        ++recebidos;
        ultimo = c;
    };
    const QString link = Instancia::NomeLink(pasta.path());
    std::atomic<bool> fim{false};
    std::unique_ptr<QThread> cliente(QThread::create([&] {
        QRandomGenerator g(7);
        const QByteArray bom = Instancia::Codifica({{0, "237"}});
        for (int i = 0; i < n; ++i) {
            QByteArray lixo;
            switch (i % 4) {
            case 0: // any bytes
                for (int j = int(g.bounded(1, 300)); j > 0; --j)
                    lixo += char(g.bounded(256));
                lixo += "FIM\n";
                break;
            case 1: // a good request cut short, or with one byte spoilt
                lixo = g.bounded(2)
                           ? bom.left(int(g.bounded(int(bom.size()) - 1)))
                           : QByteArray(bom).replace(int(g.bounded(int(bom.size()))), 1, "\x01");
                break;
            case 2: // too long
                lixo = "VEXA-PLUS/1\n" + QByteArray(9000 + int(g.bounded(5000)), 'A') + "\nFIM\n";
                break;
            default: // well framed, wrong fields
                lixo = "VEXA-PLUS/1\nText1(" +
                       QByteArray::number(i % 8 == 3 ? 5 : g.bounded(7, 99)) + ")=MDAx\nFIM\n";
            }
            QLocalSocket s;
            s.connectToServer(link);
            if (!s.waitForConnected(2000)) continue;
            s.write(lixo);
            s.waitForBytesWritten(2000);
            // Gone at once: what it wrote is in the socket, and a cut request stays cut.
            s.abort();
        }
        QLocalSocket s;
        s.connectToServer(link);
        if (s.waitForConnected(2000)) {
            s.write(bom);
            s.waitForBytesWritten(2000);
            s.waitForDisconnected(2000);
        }
        fim = true;
    }));
    cliente->start();
    QElapsedTimer relogio;
    relogio.start();
    while (!fim && relogio.elapsed() < 120000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    cliente->wait();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
    const bool bomChegou = recebidos >= 1 && ultimo == QMap<int, QString>{{0, "237"}};
    std::printf("pedidos: %d pedidos malformados, %d aceitos; o pedido bom depois deles %s "
                "(%lld ms)\n",
                n, recebidos - (bomChegou ? 1 : 0), bomChegou ? "chegou" : "não chegou",
                relogio.elapsed());
    return recebidos == 1 && bomChegou ? 0 : 1;
}

// Starts at once on one new data folder: exactly one copy stays running.
int partidas(const QString &programa, int n) {
    QTemporaryDir casa;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("HOME", casa.path());
    env.insert("XDG_DATA_HOME", casa.path() + "/dados");
    std::vector<std::unique_ptr<QProcess>> copias;
    QElapsedTimer relogio;
    relogio.start();
    for (int i = 0; i < n; ++i) {
        copias.push_back(std::make_unique<QProcess>());
        copias.back()->setProcessEnvironment(env);
        copias.back()->start(programa, {QStringLiteral("/C%1").arg(i)});
    }
    const auto rodando = [&] {
        int r = 0;
        for (const auto &p : copias)
            if (p->state() != QProcess::NotRunning) ++r;
        return r;
    };
    while (rodando() > 1 && relogio.elapsed() < 120000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    const qint64 ms = relogio.elapsed();
    // The one left must stay: it is the running copy, not one still on its way out.
    QElapsedTimer espera;
    espera.start();
    while (espera.elapsed() < 2000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    const int vivas = rodando();
    for (const auto &p : copias) {
        p->kill();
        p->waitForFinished(5000);
    }
    std::printf("partidas: %d partidas ao mesmo tempo, %d copia(s) rodando ao fim (%lld ms)\n", n,
                vivas, ms);
    return vivas == 1 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    const QString ensaio = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const auto numero = [&](int i, int padrao) { return argc > i ? std::atoi(argv[i]) : padrao; };
    if (ensaio == "mortes") return mortes(numero(2, 100));
    if (ensaio == "arquivos") return arquivos(numero(2, 10000));
    if (ensaio == "pedidos") return pedidos(argc, argv, numero(2, 1000));
    if (ensaio == "partidas" && argc > 2) {
        QCoreApplication app(argc, argv);
        return partidas(QString::fromLocal8Bit(argv[2]), numero(3, 50));
    }
    std::fprintf(stderr, "uso: vexa_ensaios mortes|arquivos|pedidos [n] | partidas programa [n]\n");
    return 2;
}
