#include "core/desktop_roteiro.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "store/bancos_padrao.h"
#include "store/basedados.h"
#include "store/motores_teste.h"
#include "store/tabelas.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class ArmazemBase : public teste::ComMotor {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2024, 6, 1));
        prepara(pasta.path());
        if (IsSkipped()) return;
        s = std::make_unique<Sessao>(pasta.path());
        cria_base_dados(*s);
    }
    void TearDown() override { fixa_hoje(QDate()); }

    // Adds rows to a table straight through the shared record set, as a screen does.
    void inclui(int tabela, const QList<QPair<QString, QString>> &linhas) {
        ASSERT_EQ(ExisteCodigo(*s, "", tabela), tabela == TabBancos ? 1 : 0);
        RecordSet &rs = Conjunto(*s, tabela);
        for (const auto &[codigo, nome] : linhas) {
            rs.AddNew();
            rs.Define("Codigo", codigo);
            rs.Define("Nome", nome);
            ASSERT_TRUE(rs.Update());
        }
    }

    void cheque(const QString &index, const QString &data, const QString &banco = "001") {
        RecordSet &rs = Conjunto(*s, TabLog);
        if (!rs.Aberto()) ASSERT_EQ(AbreTabelas(*s, d, 0, 0, 0, 1), 1);
        rs.AddNew();
        rs.Define("Index", index);
        rs.Define("Codigo", index.right(5));
        rs.Define("Banco", banco);
        rs.Define("V_CH", "10,5");
        rs.Define("Data", data);
        rs.Define("StCancel", " ");
        ASSERT_TRUE(rs.Update());
    }

    QStringList codigos(int tabela, const QString &campo = "Codigo") {
        QStringList r;
        RecordSet &rs = Conjunto(*s, tabela);
        for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
            r << rs.Campo(campo);
        return r;
    }

    QTemporaryDir pasta;
    std::unique_ptr<Sessao> s;
    DesktopRoteiro d;
};

class Armazem : public teste::PorMotor<ArmazemBase> {};
INSTANTIATE_TEST_SUITE_P(Motores, Armazem, teste::Motores, teste::NomeDoMotor());

// What only a database file has: the file itself, gone.
class ArmazemArquivo : public ArmazemBase {
    teste::MotorTeste motor() const override { return teste::MotorTeste::SQLite; }
};

TEST_P(Armazem, PrimeiraPartidaTrazOsBancosPadraoEDepoisNaoRecria) {
    EXPECT_EQ(AbreTabelas(*s, d, 1, 0, 0, 0), 1);
    EXPECT_EQ(Conjunto(*s, TabBancos).RecordCount(), bancos_padrao().size());
    EXPECT_EQ(NomeBanco(*s, "001"), "Banco do Brasil");
    RecordSet &rs = Conjunto(*s, TabBancos);
    rs.MoveFirst();
    QStringList posicoes;
    for (const char *c :
         {"L1", "L2", "L3", "L4", "L5", "C1", "C2", "C3", "C4", "C5", "C6", "C7", "C8"})
        posicoes << rs.Campo(c);
    EXPECT_EQ(posicoes, posicoes_padrao());

    ExisteCodigo(*s, "001", TabBancos);
    Conjunto(*s, TabBancos).Delete();
    cria_base_dados(*s);
    EXPECT_EQ(NomeBanco(*s, "001"), "Inexistente");
}

TEST_F(ArmazemArquivo, SemBancoDeDadosAbreTabelasDaMenosDoisEOExpurgoAvisa) {
    QFile::remove(pasta.path() + "/VEXA.db");
    DesktopRoteiro d2;
    Sessao outra(pasta.path());
    EXPECT_EQ(AbreTabelas(outra, d2, 1, 1, 1, 1), -2);
    EXPECT_FALSE(QFile::exists(pasta.path() + "/VEXA.db"));
    ExpurgaCheques(outra, d2);
    EXPECT_EQ(d2.Textos(), QStringList{"O Banco de dados \"VEXA.db\" nao foi encontrado!"});
}

TEST_P(Armazem, ExisteCodigoComChaveVaziaDeixaTodasAsLinhas) {
    inclui(TabCidade, {{"00001", "Santos"}, {"00002", "São Paulo"}});
    EXPECT_EQ(ExisteCodigo(*s, "", TabCidade), 1);
    EXPECT_EQ(Conjunto(*s, TabCidade).RecordCount(), 2);
    EXPECT_EQ(ExisteCodigo(*s, "00002", TabCidade), 1);
    EXPECT_EQ(codigos(TabCidade, "Nome"), QStringList{"São Paulo"});
    EXPECT_EQ(ExisteCodigo(*s, "00009", TabCidade), 0);
    EXPECT_EQ(NomeCidade(*s, "00001"), "Santos");
    EXPECT_EQ(NomeCidade(*s, "00009"), "");
    EXPECT_EQ(NomeFavorecido(*s, "00001"), "");
}

TEST_P(Armazem, ApostrofoDoOperadorChegaInteiroAoSql) {
    inclui(TabFavorecido, {{"00001", "D'Ávila"}, {"00002", "Dantas"}, {"00003", "50% Ltda"}});
    EXPECT_EQ(ExisteCodigo(*s, "0' OR '1'='1", TabFavorecido), 0);
    FiltraTabela(*s, "D'", TabFavorecido);
    EXPECT_EQ(codigos(TabFavorecido, "Nome"), QStringList{"D'Ávila"});
    PesquisaLista(*s, "D'Á", TabFavorecido);
    EXPECT_EQ(codigos(TabFavorecido, "Nome"), QStringList{"D'Ávila"});
    PesquisaLista(*s, "5", TabFavorecido);
    EXPECT_TRUE(codigos(TabFavorecido).isEmpty()); // numeric: compares the code
    PesquisaLista(*s, "50%", TabFavorecido);
    EXPECT_EQ(codigos(TabFavorecido, "Nome"), QStringList{"50% Ltda"});
}

struct CasoFiltro {
    int tabela;
    QString filtro;
    QStringList esperado; // the codes, in the order of the record set
};

class FiltroTabela : public teste::PorMotorECaso<ArmazemBase, CasoFiltro> {};

TEST_P(FiltroTabela, NumericoComparaOCodigoOutroONome) {
    inclui(TabCidade, {{"00020", "Santos"},
                       {"00003", "Campinas"},
                       {"00010", "Sorocaba"},
                       {"00030", "São Paulo"}});
    inclui(TabFavorecido, {{"00001", "Maria"}, {"00002", "Ana"}, {"00003", "Álvaro"}});
    const auto &c = caso();
    if (c.tabela >= 100)
        PesquisaLista(*s, c.filtro, c.tabela - 100);
    else
        FiltraTabela(*s, c.filtro, c.tabela);
    EXPECT_EQ(codigos(c.tabela % 100), c.esperado);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, FiltroTabela,
    ::testing::Combine(
        teste::Motores,
        ::testing::Values(CasoFiltro{TabCidade, "0001", {"00010"}},
                          // names compare without case or accents, and order so
                          CasoFiltro{TabCidade, "S", {"00020", "00030", "00010"}},
                          CasoFiltro{TabCidade, "So", {"00010"}},
                          CasoFiltro{TabCidade, "sao", {"00030"}},
                          CasoFiltro{TabCidade, "", {"00003", "00010", "00020", "00030"}},
                          CasoFiltro{TabFavorecido, "00", {"00001", "00002", "00003"}},
                          CasoFiltro{TabFavorecido, "a", {"00003", "00002"}},
                          CasoFiltro{TabBancos, "34", {"341"}},
                          CasoFiltro{100 + TabCidade, "00", {"00003", "00010", "00020", "00030"}},
                          CasoFiltro{100 + TabCidade, "s", {"00020", "00030", "00010"}},
                          CasoFiltro{100 + TabBancos, "banco do b", {"001"}},
                          CasoFiltro{100 + TabBancos, "Sicr", {"748"}})),
    teste::NomeDoMotor());

TEST_P(Armazem, FiltroNumericoDoLogComparaOBanco) {
    cheque("0000000001", "01/05/24", "237");
    cheque("0000000002", "01/05/24", "001");
    FiltraTabela(*s, "23", TabLog);
    EXPECT_EQ(codigos(TabLog, "Index"), QStringList{"0000000001"});
}

TEST_P(Armazem, MarcaChequeCancelaApagaOuAvisa) {
    cheque("0000000001", "01/05/24");
    cheque("0000000002", "01/05/24");
    MarcaCheque(*s, d, "0000000001", "c");
    MarcaCheque(*s, d, "0000000002", "x");
    MarcaCheque(*s, d, "0000000003", "C");
    EXPECT_EQ(d.Textos(), QStringList{"Cheque nao registrado!"});
    EXPECT_EQ(ExisteCodigo(*s, "", TabLog), 0); // Log is searched by Index, also when empty
    AbreTabelas(*s, d, 0, 0, 0, 1);
    EXPECT_EQ(codigos(TabLog, "Index"), QStringList{"0000000001"});
    EXPECT_EQ(codigos(TabLog, "StCancel"), QStringList{"C"});
}

TEST_P(Armazem, RecordSetPulaOQueApagouEVeOQueIncluiu) {
    inclui(TabCidade, {{"00001", "A"}, {"00002", "B"}, {"00003", "C"}});
    ExisteCodigo(*s, "", TabCidade);
    RecordSet &rs = Conjunto(*s, TabCidade);
    rs.MoveFirst();
    rs.MoveNext();
    ASSERT_TRUE(rs.Delete());
    rs.MoveNext();
    EXPECT_EQ(rs.Campo("codigo"), "00003");
    rs.MovePrevious();
    EXPECT_EQ(rs.Campo("Codigo"), "00001");
    EXPECT_EQ(rs.RecordCount(), 2);
    rs.Edit();
    rs.Define("NOME", "Atibaia");
    ASSERT_TRUE(rs.Update());
    EXPECT_EQ(NomeCidade(*s, "00001"), "Atibaia");
    rs.MoveLast();
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.Campo("Codigo"), "");
    EXPECT_FALSE(rs.Abre(QSqlDatabase(), "Update Cidade Set Nome = ''"));
}

struct CasoExpurgo {
    qint16 periodo;
    Resposta resposta;
    QStringList ficam; // Index of the rows left
    int perguntas;
};

class Expurgo : public teste::PorMotorECaso<ArmazemBase, CasoExpurgo> {};

TEST_P(Expurgo, ApagaSoOQuePassouDoPrazoDepoisDeUmaPergunta) {
    // Today is 01/06/24: 02/05/24 is 30 days old, 01/05/24 is 31, 10/05/24 is 22.
    cheque("0000000001", "01/05/24");
    cheque("0000000002", "02/05/24");
    cheque("0000000003", "");
    cheque("0000000004", "10/05/24");
    cheque("0000000005", "01/01/20");
    const auto &c = caso();
    s->PeriodoRel = c.periodo;
    d.Respostas = {c.resposta};
    ExpurgaCheques(*s, d);
    ASSERT_EQ(d.Mensagens.size(), c.perguntas);
    if (c.perguntas) {
        EXPECT_EQ(d.Mensagens[0].Texto,
                  "O banco de dados possui cheques cadastrados a mais de " +
                      QString::number(c.periodo) +
                      " dia(s), contando a partir da data de apresentação. Deseja exclui-los?");
        EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::YesNo);
        EXPECT_EQ(d.Mensagens[0].Titulo, "");
    }
    AbreTabelas(*s, d, 0, 0, 0, 1);
    EXPECT_EQ(codigos(TabLog, "Index"), c.ficam);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, Expurgo,
    ::testing::Combine(
        teste::Motores,
        ::testing::Values(
            CasoExpurgo{30, Resposta::Yes, {"0000000002", "0000000003", "0000000004"}, 1},
            CasoExpurgo{30,
                        Resposta::No,
                        {"0000000001", "0000000002", "0000000003", "0000000004", "0000000005"},
                        1},
            CasoExpurgo{5000,
                        Resposta::Yes,
                        {"0000000001", "0000000002", "0000000003", "0000000004", "0000000005"},
                        0},
            CasoExpurgo{0, Resposta::Yes, {"0000000003"}, 1})),
    teste::NomeDoMotor());

TEST_F(ArmazemArquivo, ExpurgoDeCopiasOlhaSoNomesComDataValida) {
    // "cop", day, month, ".", year: 01/05/24 is 31 days old, 02/05/24 30.
    const QStringList nomes = {"cop0105.24", "cop0205.24", "cop3102.24", "cop010.24",
                               "copia.txt",  "cop3005.24", "COP0101.24", "cop0105.240"};
    for (const QString &n : nomes) {
        QFile f(pasta.path() + "/" + n);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    s->PeriodoCop = 30;
    ExpurgaCopias(*s, d);
    ASSERT_EQ(d.Textos(),
              QStringList{"O aplicativo possui arquivos de copia com mais de 30 dias! Deseja "
                          "exclui-los?"});
    QStringList ficam;
    for (const QString &n : nomes)
        if (QFile::exists(pasta.path() + "/" + n)) ficam << n;
    EXPECT_EQ(ficam, (QStringList{"cop0205.24", "cop3102.24", "cop010.24", "copia.txt",
                                  "cop3005.24", "cop0105.240"}));
}

// A child that writes register rows without end, until it is killed.
TEST(EscritaInterrompida, Filho) {
    const QString pasta = qEnvironmentVariable("VEXA_FILHO_ESCREVE");
    if (pasta.isEmpty()) GTEST_SKIP() << "only as the child of EscritaInterrompida";
    Sessao s(pasta);
    DesktopRoteiro d;
    ASSERT_EQ(AbreTabelas(s, d, 0, 0, 0, 1), 1);
    RecordSet &rs = Conjunto(s, TabLog);
    for (int i = 1;; ++i) {
        const QString index = QStringLiteral("%1").arg(i, 10, 10, QLatin1Char('0'));
        rs.AddNew();
        for (const QString &campo : rs.Campos())
            rs.Define(campo, "valor de " + index);
        rs.Define("Index", index);
        rs.Update();
        if (i == 50) {
            QFile sinal(pasta + "/escrevendo");
            sinal.open(QIODevice::WriteOnly);
        }
    }
}

TEST(EscritaInterrompida, ProcessoMortoNoMeioDeixaOBancoInteiro) {
    QTemporaryDir pasta;
    {
        Sessao s(pasta.path());
        cria_base_dados(s);
    }
    QProcess filho;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("VEXA_FILHO_ESCREVE", pasta.path());
    filho.setProcessEnvironment(env);
    filho.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=EscritaInterrompida.Filho"});
    ASSERT_TRUE(filho.waitForStarted());
    while (!QFile::exists(pasta.path() + "/escrevendo"))
        ASSERT_FALSE(filho.waitForFinished(20)) << "the child ended before writing";
    filho.kill();
    filho.waitForFinished();

    Sessao s(pasta.path());
    DesktopRoteiro d;
    ASSERT_EQ(AbreTabelas(s, d, 0, 0, 0, 1), 1);
    QSqlQuery integridade(s.Banco->db());
    ASSERT_TRUE(integridade.exec("PRAGMA integrity_check") && integridade.next());
    EXPECT_EQ(integridade.value(0).toString(), "ok");
    RecordSet &rs = Conjunto(s, TabLog);
    EXPECT_GE(rs.RecordCount(), 50);
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
        const QString index = rs.Campo("Index");
        ASSERT_EQ(rs.Campo("Favor"), "valor de " + index) << "a row was left half written";
        ASSERT_EQ(rs.Campo("Comentario2"), "valor de " + index);
    }
}

} // namespace
