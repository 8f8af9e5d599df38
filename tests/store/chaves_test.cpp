// The keys the database keeps with its rows (the folded name, the sortable date), the upgrade
// of a database of the earlier version, and the purge that reads them.
#include "core/conversoes.h"
#include "core/desktop_roteiro.h"
#include "core/relogio.h"
#include "core/sessao.h"
#include "store/basedados.h"
#include "store/tabelas.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// The tables as the earlier version made them, without keys, triggers or version.
const char *const esquema_anterior[] = {
    "CREATE TABLE Bancos (Codigo TEXT PRIMARY KEY, Nome TEXT, L1 TEXT, L2 TEXT, L3 TEXT, "
    "L4 TEXT, L5 TEXT, C1 TEXT, C2 TEXT, C3 TEXT, C4 TEXT, C5 TEXT, C6 TEXT, C7 TEXT, C8 TEXT)",
    "CREATE TABLE Transferencia (Codigo TEXT PRIMARY KEY, Nome TEXT, L1 TEXT, C1 TEXT, L2 TEXT, "
    "C2 TEXT, L3 TEXT, C3 TEXT, L4 TEXT, C4 TEXT, L5 TEXT, C5 TEXT, L6 TEXT, C6 TEXT, L7 TEXT, "
    "C7 TEXT)",
    "CREATE TABLE Script (Codigo TEXT PRIMARY KEY, Nome TEXT, l1 TEXT, l2 TEXT, l3 TEXT, "
    "l4 TEXT, l5 TEXT, l6 TEXT, l7 TEXT, l8 TEXT, c1 TEXT, c2 TEXT, c3 TEXT, c4 TEXT, c5 TEXT, "
    "c6 TEXT, c7 TEXT, c8 TEXT, c9 TEXT, c10 TEXT, c11 TEXT)",
    "CREATE TABLE Favorecido (Codigo TEXT PRIMARY KEY, Nome TEXT)",
    "CREATE TABLE Cidade (Codigo TEXT PRIMARY KEY, Nome TEXT)",
    "CREATE TABLE Log (\"Index\" TEXT, Codigo TEXT, Banco TEXT, V_CH TEXT, Favor TEXT, "
    "Local TEXT, Data TEXT, NRCH TEXT, Comentario TEXT, Comentario1 TEXT, Comentario2 TEXT, "
    "StCancel TEXT)",
    "CREATE INDEX LogIndex ON Log (\"Index\")",
};

// A connection of its own, as another program on the same file: none of our SQL functions.
class Conexao {
  public:
    explicit Conexao(const QString &arquivo)
        : nome_("outra-" + QUuid::createUuid().toString(QUuid::WithoutBraces)) {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", nome_);
        db.setDatabaseName(arquivo);
        db.open();
    }
    ~Conexao() {
        QSqlDatabase::database(nome_, false).close();
        QSqlDatabase::removeDatabase(nome_);
    }
    bool exec(const QString &sql, const QVariantList &valores = {}) {
        QSqlQuery q(db());
        q.prepare(sql);
        for (const QVariant &v : valores)
            q.addBindValue(v);
        const bool ok = q.exec();
        EXPECT_TRUE(ok) << sql.toStdString();
        return ok;
    }
    QStringList coluna(const QString &sql) {
        QStringList r;
        QSqlQuery q(db());
        EXPECT_TRUE(q.exec(sql)) << sql.toStdString();
        while (q.next())
            r << q.value(0).toString();
        return r;
    }
    QSqlDatabase db() const { return QSqlDatabase::database(nome_, false); }

  private:
    QString nome_;
};

class Chaves : public ::testing::Test {
  protected:
    void SetUp() override { fixa_hoje(QDate(2024, 6, 1)); }
    void TearDown() override { fixa_hoje(QDate()); }
    QString arquivo() const { return pasta.path() + "/VEXA.db"; }
    QStringList nomes(int tabela) {
        QStringList r;
        RecordSet &rs = Conjunto(*s, tabela);
        for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
            r << rs.Campo("Nome");
        return r;
    }
    void log(Conexao &c, const QString &index, const QString &data) {
        c.exec("INSERT INTO Log (\"Index\", Codigo, Data, StCancel) VALUES (?, ?, ?, ' ')",
               {index, index.right(5), data});
    }

    QTemporaryDir pasta;
    std::unique_ptr<Sessao> s = std::make_unique<Sessao>(pasta.path());
    DesktopRoteiro d;
};

TEST_F(Chaves, BancoDaVersaoAnteriorSobeSemPerderLinhaEPesquisaSemAcento) {
    {
        Conexao velho(arquivo());
        for (const char *sql : esquema_anterior)
            velho.exec(sql);
        velho.exec("INSERT INTO Favorecido VALUES ('00001', 'Zélia'), ('00002', 'álvaro'), "
                   "('00003', 'ANA'), ('00004', 'Ângela'), ('00005', NULL)");
        velho.exec("INSERT INTO Cidade VALUES ('00001', 'São Paulo')");
        for (int i = 1; i <= 3; ++i)
            log(velho, QStringLiteral("000000000%1").arg(i), "0" + QString::number(i) + "/05/24");
    }
    ASSERT_EQ(AbreTabelas(*s, d, 0, 1, 1, 1), 1);
    EXPECT_EQ(Conjunto(*s, TabFavorecido).RecordCount(), 5);
    EXPECT_EQ(Conjunto(*s, TabLog).RecordCount(), 3);
    FiltraTabela(*s, "A", TabFavorecido);
    EXPECT_EQ(nomes(TabFavorecido), (QStringList{"álvaro", "ANA", "Ângela"}));
    PesquisaLista(*s, "sao p", TabCidade);
    EXPECT_EQ(nomes(TabCidade), QStringList{"São Paulo"});
    EXPECT_EQ(proximo_index(*s), "0000000004");
    s.reset(); // the program ends; a second start finds the database up to date

    Conexao outro(arquivo());
    // Another program that writes names keeps the key all the same.
    outro.exec("INSERT INTO Favorecido (Codigo, Nome) VALUES ('00006', 'ÁBACO')");
    outro.exec("UPDATE Favorecido SET Nome = 'Élcio' WHERE Codigo = '00001'");
    EXPECT_EQ(outro.coluna("SELECT NomeChave FROM Favorecido ORDER BY Codigo"),
              (QStringList{"elcio", "alvaro", "ana", "angela", "", "abaco"}));
    EXPECT_EQ(outro.coluna("SELECT DataChave FROM Log"),
              (QStringList{"240501", "240502", "240503"}));
    s = std::make_unique<Sessao>(pasta.path());
    PesquisaLista(*s, "a", TabFavorecido);
    EXPECT_EQ(nomes(TabFavorecido), (QStringList{"ÁBACO", "álvaro", "ANA", "Ângela"}));
}

// A database that already keeps its keys, without the register's index by bank: the second
// step alone runs, and the filter by bank reads through the index.
TEST_F(Chaves, BancoComChavesSemIndiceDoBancoSobeSoOQueFalta) {
    cria_base_dados(*s);
    {
        Conexao velho(arquivo());
        velho.exec("DROP INDEX LogBanco");
        velho.exec("PRAGMA user_version = 1");
        log(velho, "0000000001", "01/05/24");
    }
    s = std::make_unique<Sessao>(pasta.path());
    ASSERT_EQ(AbreTabelas(*s, d, 0, 0, 0, 0), 1);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    s.reset();
    Conexao outro(arquivo());
    EXPECT_EQ(outro.coluna("PRAGMA user_version"), QStringList{"3"});
    EXPECT_EQ(outro.coluna("SELECT DataChave FROM Log"), QStringList{"240501"});
    QSqlQuery q(outro.db());
    ASSERT_TRUE(q.exec("EXPLAIN QUERY PLAN SELECT rowid FROM Log WHERE Banco = '237' ORDER BY "
                       "\"Index\""));
    ASSERT_TRUE(q.next());
    EXPECT_TRUE(q.value(3).toString().contains("LogBanco")) << q.value(3).toString().toStdString();
}

TEST_F(Chaves, ChaveDoBancoEDoProgramaSaoAMesma) {
    cria_base_dados(*s);
    Conexao c(arquivo());
    QStringList textos{"Ação Ltda", "JOÃO D'ÁVILA", "Straße", "Œuvre",
                       "İstanbul",  "Ĳssel",        "Łódź",   "ÿ",
                       "Ωmega",     "𝄞 Música",     "Çà"};
    for (char32_t u = 0x20; u <= 0x24F; ++u)
        if (u != '\'') textos << QString::fromUcs4(&u, 1);
    c.exec("BEGIN");
    for (int i = 0; i < textos.size(); ++i)
        c.exec("INSERT INTO Cidade (Codigo, Nome) VALUES (?, ?)", {i, textos[i]});
    c.exec("COMMIT");
    const QStringList chaves = c.coluna("SELECT NomeChave FROM Cidade ORDER BY rowid");
    ASSERT_EQ(chaves.size(), textos.size());
    for (int i = 0; i < textos.size(); ++i) {
        ASSERT_EQ(chaves[i], chave_texto(textos[i])) << textos[i].toStdString();
        ASSERT_EQ(chave_texto(chaves[i]), chaves[i]) << "folding twice changes it";
    }
    EXPECT_EQ(chave_texto("JOÃO D'ÁVILA"), "joao d'avila");
}

struct CasoPrefixo {
    QString nome, busca;
    bool acha;
};

class Prefixo : public Chaves, public ::testing::WithParamInterface<CasoPrefixo> {};

TEST_P(Prefixo, PesquisaEFiltroAchamPeloComecoDoNome) {
    cria_base_dados(*s);
    {
        Conexao c(arquivo());
        c.exec("INSERT INTO Favorecido (Codigo, Nome) VALUES ('00001', ?), ('00002', 'Zz')",
               {GetParam().nome});
    }
    const QStringList esperado = GetParam().acha ? QStringList{GetParam().nome} : QStringList{};
    PesquisaLista(*s, GetParam().busca, TabFavorecido);
    EXPECT_EQ(nomes(TabFavorecido), esperado);
    FiltraTabela(*s, GetParam().busca, TabFavorecido);
    EXPECT_EQ(nomes(TabFavorecido), esperado);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, Prefixo,
    ::testing::Values(CasoPrefixo{"Música 𝄞 Ltda", "música 𝄞", true},
                      CasoPrefixo{"Música 𝄞 Ltda", "MUSICA 𝄞 L", true},
                      CasoPrefixo{"𝄞𝄞", "𝄞", true},
                      CasoPrefixo{"Casa\U0010FFFF", "casa\U0010FFFF", true},
                      CasoPrefixo{"Ana", "anab", false}, CasoPrefixo{"Ana", "Ana", true},
                      CasoPrefixo{"Ana", "b", false}, CasoPrefixo{"Eva", "É", true},
                      CasoPrefixo{"Ana", "an%", false}, CasoPrefixo{"A_b", "a_", true}));

// The purge deletes exactly what the program's own reading of the dates says is past the
// period, whatever form the date takes and whichever century its two digits fall in.
TEST_F(Chaves, ExpurgoApagaOQueALeituraDasDatasDizQuePassouEGuardaNoArquivo) {
    cria_base_dados(*s);
    const QStringList datas{"01/05/24", "02/05/24", "03/05/24", "31/12/45", "01/01/46",
                            "01/01/44", "15/07/99", "29/02/00", "1/5/24",   "01/05/2024",
                            "",         "  ",       "31/02/24", "ab/cd/ef", "01.05.20",
                            "010520",   "31/12/23x"};
    {
        Conexao c(arquivo());
        for (int i = 0; i < datas.size(); ++i)
            log(c, QStringLiteral("%1").arg(i + 1, 10, 10, QLatin1Char('0')), datas[i]);
    }
    for (const int periodo : {30, 0, 365 * 30, -10000, 32000}) {
        QStringList ficam, saem;
        for (int i = 0; i < datas.size(); ++i) {
            const auto dia = le_data(datas[i].left(8));
            (dia && dia->daysTo(hoje()) > periodo ? saem : ficam)
                << QStringLiteral("%1").arg(i + 1, 10, 10, QLatin1Char('0'));
        }
        QTemporaryDir copia;
        QFile::copy(arquivo(), copia.path() + "/VEXA.db");
        Sessao outra(copia.path());
        outra.PeriodoRel = qint16(periodo);
        DesktopRoteiro d2;
        d2.Respostas = {Resposta::Yes};
        ExpurgaCheques(outra, d2);
        EXPECT_EQ(d2.Mensagens.size(), saem.isEmpty() ? 0 : 1) << periodo;
        outra.Banco.reset();
        Conexao c(copia.path() + "/VEXA.db");
        EXPECT_EQ(c.coluna("SELECT \"Index\" FROM Log ORDER BY \"Index\"").join(' ').toStdString(),
                  ficam.join(' ').toStdString())
            << periodo;
        if (saem.isEmpty()) continue;
        Conexao arquivo_(copia.path() + "/VEXA-expurgo.db");
        EXPECT_EQ(arquivo_.coluna("SELECT \"Index\" FROM Log ORDER BY \"Index\""), saem);
        EXPECT_EQ(arquivo_.coluna("SELECT DISTINCT Expurgo FROM Log"), QStringList{"01/06/2024"});
    }
}

TEST_F(Chaves, ExpurgoQueNaoPodeGuardarNaoApagaNada) {
    cria_base_dados(*s);
    {
        Conexao c(arquivo());
        log(c, "0000000001", "01/01/20");
    }
    QDir(pasta.path()).mkdir("VEXA-expurgo.db"); // where the archive should go, a folder
    s->PeriodoRel = 30;
    d.Respostas = {Resposta::Yes};
    ExpurgaCheques(*s, d);
    ASSERT_EQ(d.Mensagens.size(), 2);
    EXPECT_EQ(d.Mensagens[1].Texto, "Os cheques antigos não foram excluídos: não foi possível "
                                    "guardá-los em \"VEXA-expurgo.db\".");
    s->Banco.reset();
    Conexao c(arquivo());
    EXPECT_EQ(c.coluna("SELECT count(*) FROM Log"), QStringList{"1"});
}

TEST_F(Chaves, BancoTravadoPorOutraConexaoEDitoComoTravado) {
    cria_base_dados(*s);
    Conexao outro(arquivo());
    outro.exec("BEGIN EXCLUSIVE");
    outro.exec("INSERT INTO Cidade (Codigo, Nome) VALUES ('00001', 'Santos')");
    EXPECT_EQ(AbreTabelas(*s, d, 0, 0, 1, 0), -2);
    EXPECT_EQ(d.Textos(), (QStringList{"", "Instale uma linha semelhante a \n\"SHARE.EXE /L:500\" "
                                           "no seu arquivo autoexec.bat!"}));
    EXPECT_EQ(d.Mensagens[1].Titulo, "Programa \"share.exe\" nao instalado!");
    // The purge of the start-up doesn't then call it missing.
    d.Mensagens.clear();
    ExpurgaCheques(*s, d);
    EXPECT_EQ(d.Mensagens.size(), 2);
    outro.exec("COMMIT");
}

// The next Index after rows 0000000007 and 0000000041 with these Codigos: a single cheque
// looks at the first row's Codigo, an instalment at the last's.
struct Proximo {
    QStringList codigos;
    QString primeira, ultima;
};

class ProximoIndex : public Chaves, public ::testing::WithParamInterface<Proximo> {};

TEST_P(ProximoIndex, PrimeiraOuUltimaLinhaDecide) {
    cria_base_dados(*s);
    {
        Conexao c(arquivo());
        for (int i = 0; i < GetParam().codigos.size(); ++i)
            c.exec("INSERT INTO Log (\"Index\", Codigo, StCancel) VALUES (?, ?, ' ')",
                   {i == 0 ? "0000000007" : "0000000041", GetParam().codigos[i]});
    }
    ASSERT_EQ(AbreTabelas(*s, d, 0, 0, 0, 0), 1);
    EXPECT_EQ(proximo_index(*s, LinhaConferida::Primeira), GetParam().primeira);
    EXPECT_EQ(proximo_index(*s, LinhaConferida::Ultima), GetParam().ultima);
}

INSTANTIATE_TEST_SUITE_P(Registros, ProximoIndex,
                         ::testing::Values(Proximo{{}, "0000000001", "0000000001"},
                                           Proximo{{"", "00041"}, "0000000001", "0000000042"},
                                           Proximo{{"00007", ""}, "0000000042", "0000000001"}));

} // namespace
