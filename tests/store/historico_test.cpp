#include "core/desktop_roteiro.h"
#include "core/relogio.h"
#include "store/historico.h"
#include "store/motores_teste.h"
#include "store/tabelas.h"
#include "store/talao.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <QVariant>
#include <functional>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class HistoricoBase : public teste::ComMotor {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2024, 6, 1));
        prepara(pasta.path());
        if (IsSkipped()) return;
        cria_base_dados(s);
        ASSERT_EQ(AbreTabelas(s, d, 0, 0, 0, 1), 1);
        for (const auto &[index, data, numero] :
             {std::tuple{"0000000001", "01/01/20", "000123"}, {"0000000002", "", "000124"}}) {
            RecordSet &rs = Conjunto(s, TabLog);
            rs.AddNew();
            for (const auto &[campo, valor] : {std::pair<QString, QString>{"Index", index},
                                               {"Codigo", QString(index).right(5)},
                                               {"Banco", "001"},
                                               {"V_CH", "10,5"},
                                               {"Favor", "Ana"},
                                               {"Data", data},
                                               {"NRCH", numero},
                                               {"StCancel", " "}})
                rs.Define(campo, valor);
            ASSERT_TRUE(rs.Update());
        }
    }
    void TearDown() override { fixa_hoje(QDate()); }

    // Runs SQL on a connection of its own, as another program would.
    bool sql_direto(const QStringList &comandos) {
        const QString nome = QUuid::createUuid().toString();
        bool ok = true;
        {
            QSqlDatabase db = QSqlDatabase::cloneDatabase(base_dados(s).db(), nome);
            ok = db.open();
            QSqlQuery q(db);
            for (const QString &c : comandos)
                ok = q.exec(c) && ok;
        }
        QSqlDatabase::removeDatabase(nome);
        return ok;
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

class Historico : public teste::PorMotor<HistoricoBase> {};
INSTANTIATE_TEST_SUITE_P(Motores, Historico, teste::Motores, teste::NomeDoMotor());

struct Mudanca {
    const char *nome;
    std::function<void(Sessao &, Desktop &)> faz;
    QString acao;
};
class EntradaDoHistorico : public teste::PorMotorECaso<HistoricoBase, Mudanca> {};

TEST_P(EntradaDoHistorico, GuardaQuemQuandoOQueEALinhaDeAntes) {
    caso().faz(s, d);
    const auto entradas = historico_cheque(s, "0000000001");
    ASSERT_EQ(entradas.size(), 1);
    const EntradaHistorico &e = entradas[0];
    EXPECT_EQ(e.Acao, caso().acao);
    EXPECT_TRUE(e.Quando.startsWith(agora().toString("dd/MM/yyyy"))) << e.Quando.toStdString();
    EXPECT_FALSE(e.Maquina.isEmpty());
    EXPECT_EQ((QStringList{e.Linha["NRCH"], e.Linha["Favor"], e.Linha["StCancel"]}),
              (QStringList{"000123", "Ana", " "}));
    EXPECT_EQ(historico_completo(s).keys(), QStringList{"0000000001"});
}
INSTANTIATE_TEST_SUITE_P(
    Acoes, EntradaDoHistorico,
    ::testing::Combine(teste::Motores, ::testing::Values(Mudanca{"Cancela",
                                                                 [](Sessao &s, Desktop &d) {
                                                                     MarcaCheque(s, d, "0000000001",
                                                                                 "C");
                                                                 },
                                                                 "Cancelamento"},
                                                         Mudanca{"Exclui",
                                                                 [](Sessao &s, Desktop &d) {
                                                                     MarcaCheque(s, d, "0000000001",
                                                                                 "E");
                                                                 },
                                                                 "Exclusão"},
                                                         Mudanca{"ExcluiPeloConjunto",
                                                                 [](Sessao &s, Desktop &) {
                                                                     ExisteCodigo(s, "0000000001",
                                                                                  TabLog);
                                                                     Conjunto(s, TabLog).Delete();
                                                                 },
                                                                 "Exclusão"},
                                                         Mudanca{"Reimprime",
                                                                 [](Sessao &s, Desktop &) {
                                                                     grava_historico(s,
                                                                                     "0000000001",
                                                                                     "Reimpressão");
                                                                 },
                                                                 "Reimpressão"},
                                                         Mudanca{"Inutiliza",
                                                                 [](Sessao &s, Desktop &) {
                                                                     inutiliza_folha(s,
                                                                                     "0000000001");
                                                                 },
                                                                 "Folha inutilizada"},
                                                         Mudanca{"Expurga",
                                                                 [](Sessao &s, Desktop &d) {
                                                                     s.PeriodoRel = 30;
                                                                     static_cast<DesktopRoteiro &>(
                                                                         d)
                                                                         .Respostas = {
                                                                         Resposta::Yes};
                                                                     ExpurgaCheques(s, d);
                                                                 },
                                                                 "Expurgo"})),
    [](const auto &info) {
        return teste::nome_motor(std::get<0>(info.param)) + std::get<1>(info.param).nome;
    });

TEST_P(Historico, NaoSeAlteraNemSeApagaEOExpurgoOLevaJunto) {
    grava_historico(s, "0000000001", "Reimpressão");
    s.PeriodoRel = 30;
    d.Respostas = {Resposta::Yes};
    ExpurgaCheques(s, d);
    EXPECT_FALSE(sql_direto({"UPDATE Historico SET Acao = 'x'"}));
    EXPECT_FALSE(sql_direto({"DELETE FROM Historico"}));
    EXPECT_EQ(historico_cheque(s, "0000000001").size(), 2);
    QSqlQuery q(base_dados(s).db());
    if (!no_servidor()) {
        ASSERT_TRUE(q.exec("ATTACH DATABASE '" + pasta.filePath("VEXA-expurgo.db") + "' AS e"));
    }
    ASSERT_TRUE(q.exec(no_servidor() ? "SELECT Acao FROM ExpurgoHistorico ORDER BY Id"
                                     : "SELECT Acao FROM e.Historico ORDER BY Id"));
    QStringList acoes;
    while (q.next())
        acoes << q.value(0).toString();
    EXPECT_EQ(acoes, (QStringList{"Reimpressão", "Expurgo"})) << acoes.join('|').toStdString();
}

// A database of the previous version gains the book, the history and the index, and keeps its
// rows.
class HistoricoArquivo : public HistoricoBase {
    teste::MotorTeste motor() const override { return teste::MotorTeste::SQLite; }
};

TEST_F(HistoricoArquivo, BaseDaVersaoAnteriorGanhaTalaoEHistorico) {
    ASSERT_TRUE(sql_direto({"DROP TABLE Historico", "DROP TABLE Talao", "DROP INDEX LogNumero",
                            "PRAGMA user_version = 2"}));
    s.Banco.reset();
    ASSERT_EQ(AbreTabelas(s, d, 0, 0, 0, 1), 1);
    EXPECT_EQ(Conjunto(s, TabLog).RecordCount(), 2);
    EXPECT_TRUE(grava_proximo_cheque(s, "001", "000125"));
    EXPECT_EQ(proximo_cheque(s, "001"), "000125");
    EXPECT_EQ(cheque_registrado(s, "001", "000124").value_or(ChequeRegistrado{}).Index,
              "0000000002");
    MarcaCheque(s, d, "0000000002", "C");
    EXPECT_EQ(historico_cheque(s, "0000000002").value(0).Acao, "Cancelamento");
    QSqlQuery q(base_dados(s).db());
    ASSERT_TRUE(q.exec("EXPLAIN QUERY PLAN SELECT 1 FROM Log WHERE Banco = '001' AND NRCH = 'x'"));
    ASSERT_TRUE(q.next());
    EXPECT_TRUE(q.value(3).toString().contains("LogNumero")) << q.value(3).toString().toStdString();
}

} // namespace
