#include "core/instancia.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QThread>
#include <atomic>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace vexa;

namespace {

TEST(Instancia, PedidoIdaEVoltaGuardaCadaCampo) {
    const QMap<int, QString> campos{{0, "001"}, {2, "D'Ávila & Cia"}, {6, "000123"}};
    QMap<int, QString> lidos;
    ASSERT_TRUE(Instancia::Decodifica(Instancia::Codifica(campos), lidos));
    EXPECT_EQ(lidos, campos);
    ASSERT_TRUE(Instancia::Decodifica(Instancia::Codifica({}), lidos));
    EXPECT_TRUE(lidos.isEmpty());
}

class PedidoMalFormado : public ::testing::TestWithParam<const char *> {};

TEST_P(PedidoMalFormado, EDescartado) {
    QMap<int, QString> lidos;
    EXPECT_FALSE(Instancia::Decodifica(QByteArray(GetParam()), lidos));
}

INSTANTIATE_TEST_SUITE_P(
    Variantes, PedidoMalFormado,
    ::testing::Values("", "FIM\n", "VEXA-PLUS/2\nFIM\n", "VEXA-PLUS/1\n",
                      "VEXA-PLUS/1\nText1(5)=MDAx\nFIM\n", // there is no field 5
                      "VEXA-PLUS/1\nText1(7)=MDAx\nFIM\n", "VEXA-PLUS/1\nText2(0)=MDAx\nFIM\n",
                      "VEXA-PLUS/1\nText1(0)=***\nFIM\n",
                      "VEXA-PLUS/1\nText1(0)=MDAx\nText1(0)=MDAx\nFIM\n",
                      "VEXA-PLUS/1\nText1(0)MDAx\nFIM\n", "lixo qualquer\nFIM\n"));

// Runs trabalho on another thread while this one serves the running copy's events.
void enquanto_serve(const std::function<void()> &trabalho) {
    std::atomic<bool> fim{false};
    std::thread outro([&] {
        trabalho();
        fim = true;
    });
    QElapsedTimer relogio;
    relogio.start();
    while (!fim && relogio.elapsed() < 20000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    outro.join();
}

class CopiaRodando : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(primeira.Escuta());
        primeira.aoReceber = [this](const QMap<int, QString> &c) { recebidos.append(c); };
    }
    QTemporaryDir pasta;
    Instancia primeira{pasta.path()};
    QList<QMap<int, QString>> recebidos;
};

TEST_F(CopiaRodando, SegundaCopiaEntregaOsCamposAPrimeira) {
    int entregues = 0;
    enquanto_serve([&] {
        Instancia cliente(pasta.path());
        if (cliente.EntregaAoPrimeiro({{0, "237"}, {1, "1.234,50"}})) ++entregues;
        // Garbage on the link is dropped and the first copy goes on serving.
        QLocalSocket lixo;
        lixo.connectToServer(Instancia::NomeLink(pasta.path()));
        if (lixo.waitForConnected(2000)) {
            lixo.write("isto nao e um pedido\nFIM\n");
            lixo.waitForBytesWritten(2000);
            lixo.waitForDisconnected(2000);
        }
        if (cliente.EntregaAoPrimeiro({})) ++entregues;
    });
    EXPECT_EQ(entregues, 2);
    ASSERT_EQ(recebidos.size(), 2);
    EXPECT_EQ(recebidos[0], (QMap<int, QString>{{0, "237"}, {1, "1.234,50"}}));
    EXPECT_TRUE(recebidos[1].isEmpty());
}

// A request written in pieces, with pauses, arrives whole: also when a piece ends on a field's
// line that ends in the letters FIM.
TEST_F(CopiaRodando, PedidoEmPedacosChegaInteiro) {
    const QMap<int, QString> campos{{2, QStringLiteral("dR\f")}, {3, "Santos"}};
    const QByteArray pedido = Instancia::Codifica(campos);
    const qsizetype corte = pedido.indexOf("=ZFIM\n") + 6;
    ASSERT_GT(corte, 6);
    enquanto_serve([&] {
        QLocalSocket s;
        s.connectToServer(Instancia::NomeLink(pasta.path()));
        if (!s.waitForConnected(2000)) return;
        for (const QByteArray &pedaco : {pedido.left(corte), pedido.mid(corte)}) {
            s.write(pedaco);
            s.waitForBytesWritten(2000);
            QThread::msleep(300);
        }
        s.waitForDisconnected(2000);
    });
    EXPECT_EQ(recebidos, (QList<QMap<int, QString>>{campos}));
}

// A flood of connections from another process, on a copy with few descriptors left, and later
// the socket's file removed: the link stands, and a request after them arrives.
TEST_F(CopiaRodando, EnxurradaDeConexoesNaoDerrubaOLink) {
    const QByteArray nome = QFile::encodeName(Instancia::NomeLink(pasta.path()));
    rlimit antes{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &antes), 0);
    rlimit poucos = antes;
    poucos.rlim_cur = QDir("/proc/self/fd")
                          .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                          .size() +
                      100;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &poucos), 0);
    const pid_t filho = ::fork();
    if (filho == 0) {
        ::setrlimit(RLIMIT_NOFILE, &antes);
        const int quantas = int(qMin<rlim_t>(1000, antes.rlim_cur - 50));
        sockaddr_un endereco{};
        endereco.sun_family = AF_UNIX;
        std::memcpy(endereco.sun_path, nome.constData(), size_t(nome.size()));
        QElapsedTimer relogio;
        relogio.start();
        for (int feitas = 0; feitas < quantas && relogio.elapsed() < 1500;) {
            const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0);
            if (::connect(fd, reinterpret_cast<sockaddr *>(&endereco), sizeof(endereco)) == 0) {
                ++feitas;
            } else {
                ::close(fd);
                ::usleep(500);
            }
        }
        ::_exit(0);
    }
    int estado = 0;
    while (::waitpid(filho, &estado, WNOHANG) == 0)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    ::setrlimit(RLIMIT_NOFILE, &antes);
    QFile::remove(QFile::decodeName(nome));

    enquanto_serve([&] { Instancia(pasta.path()).EntregaAoPrimeiro({{0, "341"}}, 8000); });
    EXPECT_EQ(recebidos, (QList<QMap<int, QString>>{{{0, "341"}}}));
}

// The lock decides, not the socket: a copy that holds the folder and does not answer still
// keeps a later start out, and its folder is free again once it is gone.
TEST(Instancia, TravaDaPastaDecideQuemRoda) {
    QTemporaryDir pasta;
    auto primeira = std::make_unique<Instancia>(pasta.path());
    EXPECT_FALSE(primeira->EntregaAoPrimeiro({{0, "001"}}, 200)) << "nobody runs: it goes on";
    Instancia segunda(pasta.path());
    EXPECT_TRUE(segunda.EntregaAoPrimeiro({{0, "001"}}, 300)) << "the first holds the folder";
    EXPECT_FALSE(segunda.Escuta());
    primeira.reset();
    EXPECT_FALSE(segunda.EntregaAoPrimeiro({}, 300));
    EXPECT_TRUE(segunda.Escuta());

    // Another data folder is another copy.
    QTemporaryDir outra;
    Instancia terceira(outra.path());
    EXPECT_FALSE(terceira.EntregaAoPrimeiro({}, 300));
}

class Ambiente {
  public:
    Ambiente(const char *nome, const QByteArray &valor) : nome_(nome), antes_(qgetenv(nome)) {
        qputenv(nome, valor);
    }
    ~Ambiente() { qputenv(nome_, antes_); }

  private:
    const char *nome_;
    QByteArray antes_;
};

mode_t modo(const QString &caminho) {
    struct stat st {};
    ::lstat(QFile::encodeName(caminho).constData(), &st);
    return st.st_mode & 07777;
}

struct CasoPastaLink {
    const char *nome;
    mode_t modoRuntime;
    std::function<void(const QString &pastaLink)> prepara;
    bool naRuntime; // true: the socket lies in the runtime folder; false: in the data folder
    bool semLink;
};

void PrintTo(const CasoPastaLink &c, std::ostream *os) {
    *os << c.nome;
}

class PastaDoLink : public ::testing::TestWithParam<CasoPastaLink> {};

// The socket's folder is the user's alone: made 0700, closed when found open, refused when it
// is a link to elsewhere; a runtime folder that others may write is not used.
TEST_P(PastaDoLink, SoOUsuarioAlcanca) {
    const CasoPastaLink c = GetParam();
    QTemporaryDir runtime, dados, alheia;
    ::chmod(QFile::encodeName(runtime.path()).constData(), c.modoRuntime);
    const Ambiente xdg("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    if (c.prepara) c.prepara(runtime.path() + "/vexa-plus");

    const QString nome = Instancia::NomeLink(dados.path());
    if (c.semLink) {
        EXPECT_TRUE(nome.isEmpty()) << nome.toStdString();
        return;
    }
    const QString base = c.naRuntime ? runtime.path() : dados.path();
    ASSERT_TRUE(nome.startsWith(base + "/vexa-plus/")) << nome.toStdString();
    EXPECT_EQ(modo(base + "/vexa-plus"), mode_t(0700));
    Instancia copia(dados.path());
    ASSERT_TRUE(copia.Escuta());
    EXPECT_TRUE(QFileInfo(nome).exists());
}

INSTANTIATE_TEST_SUITE_P(
    Casos, PastaDoLink,
    ::testing::Values(CasoPastaLink{"nova", 0700, nullptr, true, false},
                      CasoPastaLink{"aberta", 0700,
                                    [](const QString &p) {
                                        ::mkdir(QFile::encodeName(p).constData(), 0777);
                                        ::chmod(QFile::encodeName(p).constData(), 0777);
                                    },
                                    true, false},
                      CasoPastaLink{"elo", 0700,
                                    [](const QString &p) {
                                        ::symlink("/tmp", QFile::encodeName(p).constData());
                                    },
                                    true, true},
                      CasoPastaLink{"runtime_de_todos", 0777, nullptr, false, false}),
    [](const auto &info) { return std::string(info.param.nome); });

// Another account can't reach the running copy's socket, and so neither reads nor sends a
// request. Needs root, to be that other account.
TEST(Instancia, OutraContaNaoAlcancaOLink) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs root to act as another user";
    QTemporaryDir pasta;
    Instancia primeira(pasta.path());
    ASSERT_TRUE(primeira.Escuta());
    int recebidos = 0;
    primeira.aoReceber = [&](const QMap<int, QString> &) { ++recebidos; };
    const QByteArray nome = QFile::encodeName(Instancia::NomeLink(pasta.path()));
    const QByteArray pedido = Instancia::Codifica({{0, "999"}});

    const pid_t filho = ::fork();
    if (filho == 0) {
        if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(2);
        const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un endereco{};
        endereco.sun_family = AF_UNIX;
        std::memcpy(endereco.sun_path, nome.constData(), size_t(nome.size()));
        if (::connect(fd, reinterpret_cast<sockaddr *>(&endereco), sizeof(endereco)) != 0)
            ::_exit(0);
        (void)!::write(fd, pedido.constData(), size_t(pedido.size()));
        ::_exit(1);
    }
    int estado = 0;
    ::waitpid(filho, &estado, 0);
    QCoreApplication::processEvents(QEventLoop::AllEvents, 200);
    EXPECT_TRUE(WIFEXITED(estado));
    EXPECT_EQ(WEXITSTATUS(estado), 0) << "the other account connected";
    EXPECT_EQ(recebidos, 0);
}

// A socket put where the running copy's should be, by another account, gets nothing: the
// starting copy checks who answers before it sends the fields.
TEST(Instancia, SegundaCopiaNaoEntregaAOutraConta) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs root to act as another user";
    QTemporaryDir pasta;
    Instancia primeira(pasta.path());
    ASSERT_FALSE(primeira.EntregaAoPrimeiro({}, 100)) << "holds the folder, listens nowhere";
    const QByteArray nome = QFile::encodeName(Instancia::NomeLink(pasta.path()));
    ASSERT_FALSE(nome.isEmpty());

    int pronto[2];
    ASSERT_EQ(::pipe(pronto), 0);
    const pid_t filho = ::fork();
    if (filho == 0) {
        // Bound here by root, listening as the other account: the peer the client sees.
        const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un endereco{};
        endereco.sun_family = AF_UNIX;
        std::memcpy(endereco.sun_path, nome.constData(), size_t(nome.size()));
        if (::bind(fd, reinterpret_cast<sockaddr *>(&endereco), sizeof(endereco)) != 0 ||
            ::setgid(65534) != 0 || ::setuid(65534) != 0 || ::listen(fd, 8) != 0)
            ::_exit(2);
        (void)!::write(pronto[1], "x", 1);
        int lidos = 0;
        for (int i = 0; i < 3; ++i) {
            const int c = ::accept(fd, nullptr, nullptr);
            char buf[256];
            ssize_t n = 0;
            while (c >= 0 && (n = ::read(c, buf, sizeof(buf))) > 0)
                lidos += int(n);
            if (c >= 0) ::close(c);
        }
        ::_exit(lidos == 0 ? 0 : 1);
    }
    char x = 0;
    ASSERT_EQ(::read(pronto[0], &x, 1), 1);
    Instancia segunda(pasta.path());
    EXPECT_TRUE(segunda.EntregaAoPrimeiro({{0, "999"}}, 1500));
    // Three tries reached it; make sure the child's last accept returns.
    for (int i = 0; i < 3; ++i) {
        const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un endereco{};
        endereco.sun_family = AF_UNIX;
        std::memcpy(endereco.sun_path, nome.constData(), size_t(nome.size()));
        ::connect(fd, reinterpret_cast<sockaddr *>(&endereco), sizeof(endereco));
        ::close(fd);
    }
    int estado = 0;
    ::waitpid(filho, &estado, 0);
    ::close(pronto[0]);
    ::close(pronto[1]);
    ASSERT_TRUE(WIFEXITED(estado));
    EXPECT_EQ(WEXITSTATUS(estado), 0) << "the other account read the fields";
}

} // namespace
