#include "catalogo/telas.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "settings/copias.h"
#include "store/copia_seguranca.h"
#include "store/pasta_dados.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace vexa;

namespace {

// A mark in the database, kept in a table of its own, so that a test can tell which state of
// the data a file holds.
void marca_base(const QString &base, const QString &valor) {
    sqlite3 *db = nullptr;
    sqlite3_open(QFile::encodeName(base), &db);
    const QByteArray sql = "CREATE TABLE IF NOT EXISTS marca(v TEXT); DELETE FROM marca; "
                           "INSERT INTO marca VALUES('" +
                           valor.toUtf8() + "')";
    sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
    sqlite3_close(db);
}
QString marca_de(const QString &base) {
    sqlite3 *db = nullptr;
    sqlite3_stmt *st = nullptr;
    QString v = "<sem marca>";
    sqlite3_open_v2(QFile::encodeName(base), &db, SQLITE_OPEN_READONLY, nullptr);
    if (sqlite3_prepare_v2(db, "SELECT v FROM marca", -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
        v = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    sqlite3_close(db);
    return v;
}

// Every file under a folder with a hash of its bytes.
QMap<QString, QByteArray> conteudo(const QString &pasta) {
    QMap<QString, QByteArray> m;
    QDirIterator it(pasta, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile f(it.next());
        f.open(QIODevice::ReadOnly);
        m[QDir(pasta).relativeFilePath(f.fileName())] =
            QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha1);
    }
    return m;
}

class CopiaSegurancaTeste : public ::testing::Test {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2024, 3, 1));
        prepara_pasta_dados(s);
        s.Banco.reset();
        QDir().mkpath(s.CaminhoApp + "/impressora/papel");
        muda_dados("1");
    }
    void TearDown() override { fixa_hoje(QDate()); }

    // One state of the whole data: the database, the settings and the printer's memory.
    void muda_dados(const QString &estado) {
        marca_base(s.CaminhoApp + "/VEXA.db", estado);
        LeGravaIni(s.CaminhoIni, "Teste", "Estado", estado);
        QFile f(s.CaminhoApp + "/impressora/memoria.json");
        f.open(QIODevice::WriteOnly);
        f.write(estado.toUtf8());
        f.close();
        QFile papel(s.CaminhoApp + "/impressora/papel/" + estado + ".txt");
        papel.open(QIODevice::WriteOnly);
    }
    QString estado_em(const QString &pasta) const {
        QFile f(pasta + "/impressora/memoria.json");
        f.open(QIODevice::ReadOnly);
        return marca_de(pasta + "/VEXA.db") + "|" +
               LeGravaIni(pasta + "/VEXA.INI", "Teste", "Estado", "") + "|" + f.readAll();
    }
    QStringList parciais() const {
        return QDir(pasta_copias(s)).entryList({".parcial-*"}, QDir::Dirs | QDir::Hidden);
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

// A backup on the first start of each day only, of the database, the settings and the
// printer's memory, without the printed sheets; the last 30 stay.
TEST_F(CopiaSegurancaTeste, UmaPorDiaAsUltimas30) {
    for (int dia = 0; dia < 32; ++dia) {
        fixa_hoje(QDate(2024, 3, 1).addDays(dia));
        muda_dados(QString::number(dia));
        copia_do_dia(s, d);
        copia_do_dia(s, d);
    }
    EXPECT_TRUE(d.Mensagens.isEmpty());
    const QList<CopiaSeguranca> copias = lista_copias(s);
    ASSERT_EQ(copias.size(), CopiasGuardadas);
    EXPECT_EQ(copias.first().Quando.date(), QDate(2024, 4, 1));
    EXPECT_EQ(copias.last().Quando.date(), QDate(2024, 3, 3));
    EXPECT_EQ(estado_em(copias.first().Pasta), "31|31|31");
    EXPECT_EQ(QDir(copias.first().Pasta + "/impressora")
                  .entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"memoria.json"});
}

// Killed in the middle of the database's copy: the half-made backup never passes for one, and
// the last whole one is restored, the data of the moment kept aside first.
TEST_F(CopiaSegurancaTeste, MortaNoMeioRestauraAUltimaInteira) {
    copia_do_dia(s, d);
    fixa_hoje(QDate(2024, 3, 2));
    muda_dados("2");
    ModoCopia morre;
    morre.PaginasPorPasso = 1;
    morre.AposPasso = [] { std::raise(SIGKILL); };
    EXPECT_EXIT(faz_copia(s, morre), ::testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(parciais().size(), 1);
    ASSERT_EQ(lista_copias(s).size(), 1);

    auto *tela = static_cast<Copias *>(abre_tela(s, d, telas::Copias));
    ASSERT_TRUE(tela);
    EXPECT_EQ(tela->List1.Itens,
              QStringList{"01/03/2024 " + lista_copias(s)[0].Quando.toString("HH:mm:ss")});
    tela->Clica("Command1", 0); // Enter on the question: No
    EXPECT_EQ(d.Mensagens.last().Padrao, Resposta::No);
    EXPECT_EQ(estado_em(s.CaminhoApp), "2|2|2");
    EXPECT_FALSE(d.Encerrado);

    d.Respostas = {Resposta::Yes};
    tela->Clica("Command1", 0);
    EXPECT_EQ(estado_em(s.CaminhoApp), "1|1|1");
    EXPECT_TRUE(QFile::exists(s.CaminhoApp + "/impressora/papel/2.txt"));
    EXPECT_TRUE(d.Encerrado);
    EXPECT_TRUE(d.Mensagens.last().Texto.startsWith("A cópia de segurança de 01/03/2024"));
    const QList<CopiaSeguranca> copias = lista_copias(s);
    ASSERT_EQ(copias.size(), 2);
    EXPECT_TRUE(copias[0].AntesDeRestaurar);
    EXPECT_EQ(estado_em(copias[0].Pasta), "2|2|2");
    EXPECT_TRUE(parciais().isEmpty());
}

// The disk fills up during a backup: the operator is told, and the older backups stay byte for
// byte, with nothing half-made beside them. A process whose files may not grow past a few
// kilobytes stands for the full disk.
TEST_F(CopiaSegurancaTeste, DiscoCheioDeixaAsAnterioresIntactas) {
    copia_do_dia(s, d);
    fixa_hoje(QDate(2024, 3, 2));
    copia_do_dia(s, d);
    const auto antes = conteudo(pasta_copias(s));
    fixa_hoje(QDate(2024, 3, 3));
    const auto copia_com_disco_cheio = [this] {
        rlimit limite{};
        limite.rlim_cur = limite.rlim_max = 8192;
        setrlimit(RLIMIT_FSIZE, &limite);
        std::signal(SIGXFSZ, SIG_IGN);
        copia_do_dia(s, d);
        std::fputs(d.Textos().join('\n').toUtf8().constData(), stderr);
        _exit(d.Mensagens.size() == 1 ? 0 : 1);
    };
    EXPECT_EXIT(copia_com_disco_cheio(), ::testing::ExitedWithCode(0), "dos dados em");
    EXPECT_EQ(conteudo(pasta_copias(s)), antes);
    EXPECT_EQ(lista_copias(s).size(), 2);
}

TEST_F(CopiaSegurancaTeste, SemCopiasATelaAvisaEFecha) {
    EXPECT_EQ(abre_tela(s, d, telas::Copias), nullptr);
    EXPECT_EQ(d.Textos(),
              QStringList{"Não há cópias de segurança em \"" + pasta_copias(s) + "\"."});
}

} // namespace
