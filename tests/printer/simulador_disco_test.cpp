// The simulated printer on a small file system that fills up: each test runs again in a child
// of its own, in a fresh mount namespace with a tmpfs of 64 KiB mounted over a new folder (as
// root, or as the root of a user namespace).
#include "printer/impressao.h"
#include "printer/simulador.h"
#include "printer/simulador_apoio.h"

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

class SimuladorDiscoCheio : public ::testing::TestWithParam<teste::OperacaoMemoria> {};

QList<teste::OperacaoMemoria> operacoes_no_disco() {
    using S = Simulador;
    return teste::operacoes_memoria() +
           QList<teste::OperacaoMemoria>{
               // A change larger than the one free block is half written, then cut back.
               {"FavorecidoMaiorQueOBlocoLivre",
                [](S &s) { return s.IncluiFavorecido("07", QString(6000, u'B')); }, 1},
               // The text of the face fits, its PDF doesn't: no sheet is left of that cheque.
               {"ChequeCujoPdfNaoCabe",
                [](S &s) {
                    return s.ImprimeCheque("001", "10,00", "Ana", "Santos", "01/02/24", "");
                },
                1},
               {"FolhaDeTextoFormatada",
                [](S &s) { return s.FormataTX("Lista\r\n", 1, 0, 0, 0, 0); }},
               {"MontaValor",
                [](S &s) {
                    QString valor = "10,00";
                    return s.MontaValor(valor, "real", "reais");
                },
                0, Simulador::ArquivoFalhou, Simulador::ValorFeito}};
}

INSTANTIATE_TEST_SUITE_P(Operacoes, SimuladorDiscoCheio, ::testing::ValuesIn(operacoes_no_disco()),
                         [](const auto &info) { return std::string(info.param.nome); });

TEST_P(SimuladorDiscoCheio, FalhaDeixaAMemoriaComoEstavaEDepoisFaz) {
    NO_TMPFS();
    const teste::OperacaoMemoria &caso = GetParam();
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
        EXPECT_EQ(caso.faz(imp), caso.falha);
        EXPECT_EQ(arquivos(pasta), antes);
        EXPECT_EQ(resumo(imp), lembrado);
        EXPECT_EQ(resumo(Simulador(pasta)), lembrado);
    }
    EXPECT_EQ(caso.faz(imp), caso.feito);
    EXPECT_NE(arquivos(pasta), antes);
}

} // namespace
