// The simulated printer on a small file system that fills up, and in a folder it can't
// write: each test runs again in a child of its own, in a fresh mount namespace with a tmpfs
// of 64 KiB mounted over a new folder (as root, or as the root of a user namespace).
#include "printer/impressao.h"
#include "printer/simulador.h"
#include "printer/simulador_apoio.h"
#include "store/bancos_padrao.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace vexa;
using teste::resumo;

namespace {

constexpr qint64 Bloco = 4096; // tmpfs hands out whole pages

// The folder of the tmpfs when this process is the child; empty in the parent.
QString pasta_filho() {
    return qEnvironmentVariable("VEXA_TMPFS");
}

// Runs the current test again in a child on a tmpfs. False (and the reason) when the machine
// can't give a mount namespace; otherwise the child's exit code and output.
struct Filho {
    bool rodou = false;
    int codigo = -1;
    QString saida;
};

Filho roda_em_tmpfs() {
    const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
    const QString filtro = QString(info->test_suite_name()) + "." + info->name();
    QTemporaryDir ponto;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("VEXA_TMPFS", ponto.path());
    QProcess p;
    p.setProcessEnvironment(env);
    p.setProcessChannelMode(QProcess::MergedChannels);
    const QString roteiro = "mount -t tmpfs -o size=64k tmpfs \"$2\" || exit 77; "
                            "exec \"$1\" --gtest_filter=\"$3\"";
    p.start("unshare", {geteuid() == 0 ? "-m" : "-rm", "sh", "-c", roteiro, "sh",
                        QCoreApplication::applicationFilePath(), ponto.path(), filtro});
    if (!p.waitForStarted() || !p.waitForFinished(120000)) return {};
    Filho f{true, p.exitCode(), QString::fromUtf8(p.readAll())};
    if (f.codigo == 77 || f.saida.startsWith("unshare:")) f.rodou = false;
    return f;
}

#define NO_TMPFS()                                                                                 \
    if (pasta_filho().isEmpty()) {                                                                 \
        const Filho f = roda_em_tmpfs();                                                           \
        if (!f.rodou)                                                                              \
            GTEST_SKIP() << "this machine gives no mount namespace with a tmpfs: "                 \
                         << f.saida.toStdString();                                                 \
        EXPECT_EQ(f.codigo, 0) << f.saida.toStdString();                                           \
        return;                                                                                    \
    }

// Fills the file system but for livres blocks; the filler is removed with its object.
class Enchimento {
  public:
    Enchimento(const QString &pasta, int livres) : caminho_(pasta + "/enchimento") {
        const int fd = ::open(caminho_.toLocal8Bit().constData(), O_WRONLY | O_CREAT, 0600);
        const QByteArray bloco(Bloco, 'x');
        qint64 tamanho = 0;
        ssize_t n = 0;
        while (fd >= 0 && (n = ::write(fd, bloco.constData(), bloco.size())) > 0)
            tamanho += n;
        cheio_ = fd >= 0 && n < 0 && errno == ENOSPC &&
                 ::ftruncate(fd, tamanho / Bloco * Bloco - livres * Bloco) == 0;
        if (fd >= 0) ::close(fd);
    }
    ~Enchimento() { QFile::remove(caminho_); }
    // The disk filled up, and the blocks asked for are free again.
    bool cheio() const { return cheio_; }

  private:
    QString caminho_;
    bool cheio_ = false;
};

// Every file of the data folder but the filler, with its size and a digest of its bytes: what
// a failed operation must leave as it was.
QStringList arquivos(const QString &pasta) {
    QStringList todos;
    QDirIterator i(pasta, QDir::Files, QDirIterator::Subdirectories);
    while (i.hasNext()) {
        const QString caminho = i.next();
        QFile f(caminho);
        if (caminho.endsWith("/enchimento") || !f.open(QIODevice::ReadOnly)) continue;
        const QByteArray bytes = f.readAll();
        // A journal that was never written and one that is there but empty hold the same.
        if (caminho.endsWith(".diario") && bytes.isEmpty()) continue;
        todos << caminho.mid(pasta.size()) + " " + QString::number(bytes.size()) + " " +
                     QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    }
    todos.sort();
    return todos;
}

// Pads the journal with a payee whose line ends it on a block's edge, so that the next change
// needs a block of its own.
void alinha_diario(Simulador &imp, const QString &diario) {
    const qint64 antes = QFileInfo(diario).size();
    ASSERT_EQ(imp.IncluiFavorecido("99", "A"), Simulador::Feito);
    const qint64 linha = QFileInfo(diario).size() - antes;
    qint64 nome = 1 + Bloco - QFileInfo(diario).size() % Bloco - linha;
    if (nome < 1) nome += Bloco;
    ASSERT_EQ(imp.IncluiFavorecido("99", QString(nome, u'A')), Simulador::Feito);
    ASSERT_EQ(QFileInfo(diario).size() % Bloco, 0);
}

struct CasoDisco {
    const char *nome;
    int livres; // blocks left free
    std::function<qint16(Simulador &)> operacao;
    qint16 falha, feito;
};

class SimuladorDiscoCheio : public ::testing::TestWithParam<CasoDisco> {};

const QString Layout = "001,002,003,004,005,006,007,008,009,010,011,012,013";

INSTANTIATE_TEST_SUITE_P(
    Operacoes, SimuladorDiscoCheio,
    ::testing::Values(
        CasoDisco{"IncluiBanco", 0, [](Simulador &s) { return s.IncluiBanco("999", Layout); }, 6,
                  1},
        CasoDisco{"IncluiFavorecido", 0,
                  [](Simulador &s) { return s.IncluiFavorecido("07", "Ana"); }, 6, 1},
        // A change larger than the one free block is half written, then cut back.
        CasoDisco{"FavorecidoMaiorQueOBlocoLivre", 1,
                  [](Simulador &s) { return s.IncluiFavorecido("07", QString(6000, u'B')); }, 6, 1},
        CasoDisco{"ExcluiFavorecido", 0, [](Simulador &s) { return s.ExcluiFavorecido("*"); }, 6,
                  1},
        CasoDisco{"AlteraMoeda", 0, [](Simulador &s) { return s.AlteraMoeda("Peso", "Pesos"); }, 6,
                  1},
        CasoDisco{"FormatoDaData", 0,
                  [](Simulador &s) { return s.ComandoTX(comando_formato_data(2), 5); }, 6, 1},
        CasoDisco{"CancelaRel", 0, [](Simulador &s) { return s.CancelaRel("u"); }, 6, 1},
        CasoDisco{"ImprimeCheque", 0,
                  [](Simulador &s) {
                      return s.ImprimeCheque("001", "10,00", "Ana", "Santos", "01/02/24", "");
                  },
                  6, 1},
        // The text of the face fits, its PDF doesn't: no sheet is left of that cheque.
        CasoDisco{"ChequeCujoPdfNaoCabe", 1,
                  [](Simulador &s) {
                      return s.ImprimeCheque("001", "10,00", "Ana", "Santos", "01/02/24", "");
                  },
                  6, 1},
        CasoDisco{"FolhaDeTexto", 0,
                  [](Simulador &s) { return s.FormataTX("Lista\r\n", 1, 0, 0, 0, 0); }, 6, 1},
        CasoDisco{"MontaValor", 0,
                  [](Simulador &s) {
                      QString valor = "10,00";
                      return s.MontaValor(valor, "real", "reais");
                  },
                  Simulador::ArquivoFalhou, Simulador::ValorFeito}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_P(SimuladorDiscoCheio, FalhaDeixaAMemoriaComoEstavaEDepoisFaz) {
    NO_TMPFS();
    const CasoDisco &caso = GetParam();
    const QString pasta = pasta_filho();
    Simulador imp(pasta);
    ASSERT_EQ(imp.IniciaPorta("COM2"), Simulador::Feito);
    ASSERT_EQ(imp.ImprimeCheque("001", "1,00", "Maria", "Santos", "01/01/24", ""), 1);
    ASSERT_EQ(imp.IncluiFavorecido("01", "Maria"), Simulador::Feito);
    alinha_diario(imp, imp.Memoria().ArquivoDiario());
    ASSERT_EQ(imp.TravaDoc(1), Simulador::Feito);

    const QStringList antes = arquivos(pasta);
    const QString lembrado = resumo(imp);
    {
        Enchimento enchimento(pasta, caso.livres);
        ASSERT_TRUE(enchimento.cheio());
        EXPECT_EQ(caso.operacao(imp), caso.falha);
        EXPECT_EQ(arquivos(pasta), antes);
        EXPECT_EQ(resumo(imp), lembrado);
        EXPECT_EQ(resumo(Simulador(pasta)), lembrado);
    }
    EXPECT_EQ(caso.operacao(imp), caso.feito);
    EXPECT_NE(arquivos(pasta), antes);
}

// An unreadable memory in a folder that can't be written: it can be neither read nor set
// aside, so the printer starts from the factory, touches nothing and keeps nothing.
TEST(SimuladorSomenteLeitura, MemoriaIlegivelNumaPastaSemEscrita) {
    NO_TMPFS();
    const QString pasta = pasta_filho();
    ASSERT_TRUE(QDir().mkpath(pasta + "/impressora"));
    {
        QFile memoria(pasta + "/impressora/memoria.json");
        ASSERT_TRUE(memoria.open(QIODevice::WriteOnly));
        memoria.write("{ bancos: quebrado");
    }
    ASSERT_EQ(QProcess::execute("mount", {"-o", "remount,ro", pasta}), 0);
    const QStringList antes = arquivos(pasta);

    Simulador imp(pasta);
    EXPECT_EQ(imp.Bancos().size(), bancos_padrao().size());
    EXPECT_EQ(imp.IniciaPorta("COM2"), Simulador::Feito);
    EXPECT_EQ(imp.ImprimeCheque("001", "1,00", "Maria", "Santos", "01/01/24", ""),
              Simulador::MemoriaFalhou);
    EXPECT_EQ(imp.IncluiBanco("999", Layout), Simulador::MemoriaFalhou);
    EXPECT_EQ(imp.FormataTX("Lista\r\n", 1, 0, 0, 0, 0), Simulador::MemoriaFalhou);
    EXPECT_EQ(arquivos(pasta), antes);
}

} // namespace
