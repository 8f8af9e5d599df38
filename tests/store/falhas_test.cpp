// Writes the database refuses: the row of a printed cheque, a register's record.
#include "cheque/cheprz.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/inicio.h"
#include "core/relogio.h"
#include "printer/simulador.h"
#include "registers/favorec.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// How the database is kept from taking a write: a file that can't be written (for a user
// that writes anyway, the file made immutable), or another connection holding the write lock.
enum class Bloqueio { SoLeitura, Travado };

class EscritaRecusada : public ::testing::TestWithParam<Bloqueio> {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2026, 11, 23));
        prepara_pasta_dados(s);
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        arquivo = s.CaminhoApp + "/VEXA.db";
        if (GetParam() == Bloqueio::SoLeitura) {
            QFile::setPermissions(arquivo, QFile::ReadOwner | QFile::ReadGroup);
            QFile teste(arquivo);
            if (teste.open(QIODevice::ReadWrite)) {
                teste.close();
                imutavel = QProcess::execute("chattr", {"+i", arquivo}) == 0;
                if (!imutavel) GTEST_SKIP() << "this user writes in read-only files";
            }
        } else {
            conexao = "trava-" + QUuid::createUuid().toString(QUuid::WithoutBraces);
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", conexao);
            db.setDatabaseName(arquivo);
            ASSERT_TRUE(db.open());
            ASSERT_TRUE(QSqlQuery(db).exec("BEGIN IMMEDIATE"));
        }
    }
    void TearDown() override {
        if (imutavel) QProcess::execute("chattr", {"-i", arquivo});
        QFile::setPermissions(arquivo, QFile::ReadOwner | QFile::WriteOwner);
        if (!conexao.isEmpty()) {
            QSqlDatabase::database(conexao, false).close();
            QSqlDatabase::removeDatabase(conexao);
        }
        fixa_hoje(QDate());
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    QString arquivo, conexao;
    bool imutavel = false;
};

QString nao_impresso(const QString &causa) {
    return "O cheque não foi impresso, porque não pode ser registrado no relatório.\n\nO banco "
           "de dados \"VEXA.db\" " +
           causa + "\n\nPara imprimir sem registrar, desmarque \"Incluir no relatório\".";
}

// A register that can't take the cheque stops it before the printer, and the operator is told
// why: a printed cheque never goes without its row.
TEST_P(EscritaRecusada, ChequeQueNaoPodeSerRegistradoNaoImprime) {
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList textos{"001", "1234,5", "Maria", "Santos", "05/03/99", "", "000123"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = textos[i];
    m->SetFocus("CheckBox");
    m->CheckBox.Value = 1;
    d.Mensagens.clear();
    static_cast<Simulador &>(*s.Impressora).LimpaChamadas();
    m->Clica("Opcoes", 0);
    ASSERT_EQ(d.Mensagens.size(), 2) << d.Textos().join('|').toStdString();
    const auto &aviso = d.Mensagens[1];
    EXPECT_EQ(aviso.Texto,
              nao_impresso(GetParam() == Bloqueio::Travado
                               ? "está sendo usado por outro programa. Feche esse programa e "
                                 "tente de novo."
                               : "não aceita gravação: o disco está cheio ou o arquivo está "
                                 "protegido."));
    EXPECT_EQ(aviso.Titulo, "Impressão do Cheque");
    EXPECT_EQ(aviso.Icone_, Icone::Exclamacao);
    EXPECT_TRUE(static_cast<Simulador &>(*s.Impressora).Chamadas().isEmpty());
}

TEST_P(EscritaRecusada, CadastroDizQueORegistroNaoFoiGravado) {
    auto *f = static_cast<Favorec *>(d.Abre(std::make_unique<Favorec>(s, d)));
    d.Respostas = {Resposta::No}; // not to the printer
    f->Text1[0].Text = "00012";
    f->Text1[1].Text = "Maria";
    d.Mensagens.clear();
    f->Clica("Command3D1", 0);
    ASSERT_EQ(d.Mensagens.size(), 2) << d.Textos().join('|').toStdString();
    EXPECT_EQ(d.Mensagens[1].Texto,
              "O registro não foi gravado: o banco de dados não aceitou a gravação.");
    EXPECT_EQ(d.Mensagens[1].Titulo, "Erro");
    EXPECT_TRUE(f->List1.Itens.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Casos, EscritaRecusada,
                         ::testing::Values(Bloqueio::SoLeitura, Bloqueio::Travado));

TEST(BancoAusente, ChequeNaoImprimeSemORegistro) {
    QTemporaryDir pasta;
    Sessao s(pasta.path());
    prepara_pasta_dados(s);
    s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    QFile::remove(s.CaminhoApp + "/VEXA.db");
    DesktopRoteiro d;
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList textos{"001", "10", "Ana", "Rio", "05/03/99", "", "7"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = textos[i];
    m->CheckBox.Value = 1;
    d.Mensagens.clear();
    m->Clica("Opcoes", 0);
    EXPECT_EQ(d.Textos().value(1), nao_impresso("não foi encontrado."));
    EXPECT_TRUE(static_cast<Simulador &>(*s.Impressora).Registro().isEmpty());
}

// Another program locks the database after the screen opened it: the bank's code can't be
// checked, and the operator hears that instead of hearing that the bank doesn't exist.
class BancoIlegivel : public ::testing::TestWithParam<bool> {};

TEST_P(BancoIlegivel, DizQueOCadastroNaoPodeSerLido) {
    const bool prazo = GetParam();
    QTemporaryDir pasta;
    Sessao s(pasta.path());
    prepara_pasta_dados(s);
    s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    DesktopRoteiro d;
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
    Tela *tela = prazo ? d.Abre(std::make_unique<ChePrz>(s, d)) : m;
    const QString campo = prazo ? "Text3" : "Text1";
    const QString conexao = "trava-" + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", conexao);
        db.setDatabaseName(s.CaminhoApp + "/VEXA.db");
        ASSERT_TRUE(db.open());
        ASSERT_TRUE(QSqlQuery(db).exec("BEGIN EXCLUSIVE"));
    }
    d.Mensagens.clear();
    tela->Digita(campo, 0, "1");
    tela->SetFocus(campo, 1);
    QSqlDatabase::database(conexao, false).close();
    QSqlDatabase::removeDatabase(conexao);
    EXPECT_EQ(d.Textos(), QStringList{"O cadastro não pode ser lido agora: o banco de dados "
                                      "\"VEXA.db\" está sendo usado por outro programa ou está "
                                      "danificado. Tente de novo em seguida."});
    EXPECT_EQ(tela->controle(campo, 0)->Text, "001");
}

INSTANTIATE_TEST_SUITE_P(Telas, BancoIlegivel, ::testing::Bool());

} // namespace
