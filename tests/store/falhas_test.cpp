// Writes the database refuses: the row of a printed cheque, a register's record.
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

TEST_P(EscritaRecusada, ChequeImpressoSemLinhaAvisaComOsDadosDoCheque) {
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    const QStringList textos{"001", "1234,5", "Maria", "Santos", "05/03/99", "", "000123"};
    for (int i = 0; i < 7; ++i)
        if (i != 5) m->Text1[i].Text = textos[i];
    m->SetFocus("CheckBox");
    m->CheckBox.Value = 1;
    d.Mensagens.clear();
    m->Clica("Opcoes", 0);
    ASSERT_EQ(d.Mensagens.size(), 2) << d.Textos().join('|').toStdString();
    EXPECT_EQ(d.Mensagens[0].Texto, "Insira o Documento.");
    const auto &aviso = d.Mensagens[1];
    EXPECT_EQ(aviso.Texto, "O cheque foi impresso, mas não foi registrado no relatório.\n\n"
                           "Banco: 001\nValor: 1.234,50\nFavorecido: Maria\nNúmero: 000123");
    EXPECT_EQ(aviso.Titulo, "Impressão do Cheque");
    EXPECT_EQ(aviso.Icone_, Icone::Critico);
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

TEST(BancoAusente, ChequeImpressoSemBancoNaoDizNada) {
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
    EXPECT_EQ(d.Textos(), QStringList{"Insira o Documento."});
}

} // namespace
