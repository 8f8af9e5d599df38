#include "core/desktop_roteiro.h"
#include "core/sessao.h"
#include "store/motores_teste.h"
#include "store/tabelas.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// A register larger than a few blocks, written by a connection of its own as another program
// would, and read back through the shared record set.
class BlocosBase : public teste::ComMotor {
  protected:
    void SetUp() override {
        prepara(pasta.path());
        if (IsSkipped()) return;
        s = std::make_unique<Sessao>(pasta.path());
        cria_base_dados(*s);
        ASSERT_EQ(AbreTabelas(*s, d, 0, 0, 1, 0), 1);
        QSqlDatabase db = s->Banco->db();
        db.transaction();
        QSqlQuery q(db);
        q.prepare("INSERT INTO Cidade (Codigo, Nome) VALUES (?, ?)");
        for (int i = Linhas; i >= 1; --i) {
            q.addBindValue(QStringLiteral("%1").arg(i, 5, 10, QLatin1Char('0')));
            q.addBindValue(QStringLiteral("Cidade %1").arg(i));
            ASSERT_TRUE(q.exec());
        }
        db.commit();
        ASSERT_EQ(ExisteCodigo(*s, "", TabCidade), 1);
    }

    static QString codigo(int i) { return QStringLiteral("%1").arg(i, 5, 10, QLatin1Char('0')); }

    static constexpr int Linhas = 700;
    QTemporaryDir pasta;
    std::unique_ptr<Sessao> s;
    DesktopRoteiro d;
};

class RecordSetBlocos : public teste::PorMotor<BlocosBase> {};
INSTANTIATE_TEST_SUITE_P(Motores, RecordSetBlocos, teste::Motores, teste::NomeDoMotor());

TEST_P(RecordSetBlocos, CaminhadaELinhaPorPosicaoVeemAsMesmasLinhasNaOrdemDoSelect) {
    RecordSet &rs = Conjunto(*s, TabCidade);
    ASSERT_EQ(rs.RecordCount(), Linhas);
    int i = 0;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext(), ++i) {
        ASSERT_EQ(rs.Campo("Codigo"), codigo(i + 1));
        ASSERT_EQ(rs.Campo("Nome"), QStringLiteral("Cidade %1").arg(i + 1));
    }
    EXPECT_EQ(i, Linhas);
    // Positions read out of order, across blocks, leave the cursor where it was.
    rs.MoveFirst();
    rs.MoveNext();
    for (int p : {699, 0, 256, 255, 511, 512, 3}) {
        const QStringList l = rs.Linha(p);
        ASSERT_EQ(l.value(rs.Coluna("codigo")), codigo(p + 1)) << p;
        ASSERT_EQ(l.value(rs.Coluna("NOME")), QStringLiteral("Cidade %1").arg(p + 1));
    }
    EXPECT_EQ(rs.Campo("Codigo"), codigo(2));
    EXPECT_TRUE(rs.Linha(Linhas).isEmpty());
    EXPECT_TRUE(rs.Linha(-1).isEmpty());
    EXPECT_EQ(rs.Campos(), (QStringList{"Codigo", "Nome"})); // the folded key is not shown
}

TEST_P(RecordSetBlocos, ApagadasSaemDasPosicoesEOutrasEscritasAparecemNoRequery) {
    RecordSet &rs = Conjunto(*s, TabCidade);
    rs.MoveFirst();
    for (int i = 0; i < 300; ++i)
        rs.MoveNext();
    ASSERT_TRUE(rs.Delete()); // 00301
    rs.MoveFirst();
    ASSERT_TRUE(rs.Delete()); // 00001
    EXPECT_EQ(rs.RecordCount(), Linhas - 2);
    EXPECT_EQ(rs.Linha(0).value(0), codigo(2));
    EXPECT_EQ(rs.Linha(299).value(0), codigo(302));
    EXPECT_EQ(rs.Linha(Linhas - 3).value(0), codigo(Linhas));

    QSqlQuery outro(s->Banco->db());
    ASSERT_TRUE(outro.exec("UPDATE Cidade SET Nome = 'Outra' WHERE Codigo = '00500'"));
    ASSERT_TRUE(outro.exec("INSERT INTO Cidade (Codigo, Nome) VALUES ('99999', 'Nova')"));
    ASSERT_TRUE(rs.Requery());
    EXPECT_EQ(rs.RecordCount(), Linhas - 1);
    EXPECT_EQ(rs.Linha(497).value(1), "Outra");
    rs.MoveLast();
    EXPECT_EQ(rs.Campo("Nome"), "Nova");
}

// A list's copy shares the rows its set read only while nothing was written since: a write
// through the set, through plain SQL on the same connection or by another process shows in
// the copy, in the select's order.
enum class Escrita { Nenhuma, PeloConjunto, PorSql, PorOutraConexao };

class CopiaDoConjunto : public teste::PorMotorECaso<BlocosBase, Escrita> {};

TEST_P(CopiaDoConjunto, VeAsLinhasComoEstaoAgora) {
    RecordSet &rs = Conjunto(*s, TabCidade);
    const QString sql = "INSERT INTO Cidade (Codigo, Nome) VALUES ('00000', 'Primeira')";
    switch (caso()) {
    case Escrita::Nenhuma:
        break;
    case Escrita::PeloConjunto:
        rs.AddNew();
        rs.Define("Codigo", "00000");
        rs.Define("Nome", "Primeira");
        ASSERT_TRUE(rs.Update());
        break;
    case Escrita::PorSql:
        ASSERT_TRUE(QSqlQuery(s->Banco->db()).exec(sql));
        break;
    case Escrita::PorOutraConexao: {
        const QString nome = "outra-conexao";
        {
            QSqlDatabase outra = QSqlDatabase::cloneDatabase(s->Banco->db(), nome);
            ASSERT_TRUE(outra.open());
            ASSERT_TRUE(QSqlQuery(outra).exec(sql));
            outra.close();
        }
        QSqlDatabase::removeDatabase(nome);
        break;
    }
    }
    const RecordSet copia = rs.Copia();
    const bool nova = caso() != Escrita::Nenhuma;
    ASSERT_EQ(copia.RecordCount(), Linhas + (nova ? 1 : 0));
    EXPECT_EQ(copia.Linha(0).value(1), nova ? "Primeira" : "Cidade 1");
    EXPECT_EQ(copia.Linha(copia.RecordCount() - 1).value(1),
              QStringLiteral("Cidade %1").arg(Linhas));
}

INSTANTIATE_TEST_SUITE_P(
    Escritas, CopiaDoConjunto,
    ::testing::Combine(teste::Motores,
                       ::testing::Values(Escrita::Nenhuma, Escrita::PeloConjunto, Escrita::PorSql,
                                         Escrita::PorOutraConexao)),
    teste::NomeDoMotor());

} // namespace
