// What only a shared register has: desks writing at once, a connection lost, a register
// moved between a file and the server.
#include "core/desktop_roteiro.h"
#include "core/sessao.h"
#include "store/copia_registro.h"
#include "store/motores_teste.h"
#include "store/registro_cheques.h"
#include "store/tabelas.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;
using teste::MotorTeste;

namespace {

constexpr int Mesas = 5, ChequesPorMesa = 1000;

ChequeImpresso cheque(const QString &favorecido, int numero) {
    return ChequeImpresso{"001",    "10,00",    favorecido,
                          "Santos", "01/06/24", QString::number(numero)};
}

qint64 valor(Sessao &s, const QString &sql) {
    QSqlQuery q(base_dados(s).db());
    return q.exec(sql) && q.next() ? q.value(0).toLongLong() : -1;
}

// One desk: its own data folder, the office's server.
TEST(CincoMesas, Mesa) {
    const QString pasta = qEnvironmentVariable("VEXA_MESA");
    if (pasta.isEmpty()) GTEST_SKIP() << "only as a desk of CincoMesas";
    Sessao s(pasta);
    for (int i = 1; i <= ChequesPorMesa; ++i)
        ASSERT_EQ(registra_cheque(s, cheque(pasta, i)), EstadoRegistro::Gravado) << i;
}

TEST(CincoMesas, MilChequesCadaAoMesmoTempoSemIndexRepetidoNemPerdido) {
    QTemporaryDir pastas[Mesas];
    const QString erro = teste::prepara_motor(pastas[0].path(), MotorTeste::PostgreSQL);
    if (!erro.isEmpty()) GTEST_SKIP() << erro.toStdString();
    Sessao s(pastas[0].path());
    cria_base_dados(s);
    QProcess mesas[Mesas];
    for (int m = 0; m < Mesas; ++m) {
        if (m > 0) QFile::copy(pastas[0].filePath("VEXA.INI"), pastas[m].filePath("VEXA.INI"));
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("VEXA_MESA", pastas[m].path());
        mesas[m].setProcessEnvironment(env);
        mesas[m].start(QCoreApplication::applicationFilePath(), {"--gtest_filter=CincoMesas.Mesa"});
    }
    for (QProcess &mesa : mesas) {
        ASSERT_TRUE(mesa.waitForFinished(300000));
        EXPECT_EQ(mesa.exitCode(), 0) << mesa.readAllStandardOutput().toStdString();
    }
    EXPECT_EQ(valor(s, "SELECT count(*) FROM log"), Mesas * ChequesPorMesa);
    EXPECT_EQ(valor(s, "SELECT count(DISTINCT \"index\") FROM log"), Mesas * ChequesPorMesa);
    EXPECT_EQ(valor(s, "SELECT max(\"index\")::bigint FROM log"), Mesas * ChequesPorMesa);
}

class Servidor : public ::testing::Test {
  protected:
    void SetUp() override {
        const QString erro = teste::prepara_motor(pasta.path(), MotorTeste::PostgreSQL);
        if (!erro.isEmpty()) GTEST_SKIP() << erro.toStdString();
        s = std::make_unique<Sessao>(pasta.path());
        cria_base_dados(*s);
    }
    QTemporaryDir pasta;
    std::unique_ptr<Sessao> s;
};

// A cheque printed while the connection was lost is told as not registered; the next write
// connects again and registers it.
TEST_F(Servidor, ConexaoPerdidaFalhaUmaVezEReconecta) {
    qint64 id = 0;
    ASSERT_EQ(grava_pendente(*s, cheque("Ana", 1), id), EstadoRegistro::Gravado);
    QSqlDatabase outra = QSqlDatabase::cloneDatabase(base_dados(*s).db(), "derruba");
    ASSERT_TRUE(outra.open());
    const qint64 pid = valor(*s, "SELECT pg_backend_pid()");
    ASSERT_TRUE(QSqlQuery(outra).exec("SELECT pg_terminate_backend(" + QString::number(pid) + ")"));
    outra.close();
    QSqlDatabase::removeDatabase("derruba");
    EXPECT_FALSE(registra_pendente(*s, id));
    // A desk starting meanwhile doesn't see the cheque this one is printing.
    QTemporaryDir outraPasta;
    QFile::copy(pasta.filePath("VEXA.INI"), outraPasta.filePath("VEXA.INI"));
    Sessao outraMesa(outraPasta.path());
    EXPECT_TRUE(cheques_pendentes(outraMesa).isEmpty());
    EXPECT_TRUE(registra_pendente(*s, id));
    EXPECT_EQ(valor(*s, "SELECT count(*) FROM log"), 1);
}

// The desk's file goes to the server and back whole; a target that holds data is refused.
TEST_F(Servidor, RegistroVaiAoServidorEVoltaComAsContagensIguais) {
    QTemporaryDir mesa;
    Sessao local(mesa.path());
    cria_base_dados(local);
    for (int i = 1; i <= 250; ++i)
        ASSERT_EQ(registra_cheque(local, cheque("Zé", i)), EstadoRegistro::Gravado);
    DesktopRoteiro d;
    MarcaCheque(local, d, "0000000007", "C");
    local.Banco.reset();
    ConfigBase arquivo;
    arquivo.Arquivo = mesa.filePath("VEXA.db");
    const ConfigBase servidor = base_dados(*s).Config();
    s->Banco.reset();

    const CopiaRegistro ida = copia_registro(arquivo, servidor);
    ASSERT_TRUE(ida.Copiado) << ida.Relatorio().toStdString();
    const auto contagem = [](const CopiaRegistro &c, const QString &t) {
        for (const ContagemTabela &x : c.Contagens)
            if (x.Tabela == t) return std::pair{x.Origem, x.Destino};
        return std::pair<qint64, qint64>{-1, -1};
    };
    EXPECT_EQ(contagem(ida, "Log"), (std::pair<qint64, qint64>{250, 250}));
    EXPECT_EQ(contagem(ida, "Historico"), (std::pair<qint64, qint64>{1, 1}));
    EXPECT_EQ(NomeBanco(*s, "001"), "Banco do Brasil");
    EXPECT_EQ(proximo_index(*s), "0000000251");

    const CopiaRegistro recusada = copia_registro(arquivo, servidor);
    EXPECT_FALSE(recusada.Copiado);
    EXPECT_TRUE(recusada.Erro.contains("já tem dados")) << recusada.Erro.toStdString();
    EXPECT_EQ(valor(*s, "SELECT count(*) FROM log"), 250);

    ConfigBase volta;
    volta.Arquivo = mesa.filePath("volta.db");
    const CopiaRegistro retorno = copia_registro(servidor, volta);
    ASSERT_TRUE(retorno.Copiado) << retorno.Relatorio().toStdString();
    EXPECT_EQ(contagem(retorno, "Log"), (std::pair<qint64, qint64>{250, 250}));
    EXPECT_TRUE(retorno.Relatorio().endsWith("Registro copiado.\n"));
}

} // namespace
