// The transfer layouts' register: the section ChequeTransf read back by position, the list
// file's bytes, the table that follows them, and the commands with their messages.
#include "cheque/transf.h"
#include "core/ini.h"
#include "registers/banctrans.h"
#include "registers/registros_apoio.h"
#include "registers/saida.h"

#include <QDir>
#include <QFile>
#include <QSqlQuery>

using namespace vexa;

namespace {

const QStringList Layout = {"001", "004", "006", "010", "010", "013", "013",
                            "118", "008", "100", "020", "040", "020", "045"};

class BancTransTeste : public teste::Registros {
  protected:
    // The screen with a bank typed on it.
    BancTrans &digitado(const QString &codigo, const QString &nome,
                        const QStringList &posicoes = Layout) {
        if (!t) t = &abre<BancTrans>();
        t->Text1[0].Text = codigo;
        t->Text1[1].Text = nome;
        for (int i = 0; i < 14; ++i)
            t->Text1[i + 2].Text = posicoes.value(i);
        return *t;
    }
    void inclui(const QString &codigo, const QString &nome) {
        digitado(codigo, nome).Clica("Command3D1", 0);
    }
    void seleciona(const QString &codigo) {
        for (int i = 0; i < t->List1.ListCount(); ++i)
            if (t->List1.List(i).startsWith(codigo)) {
                t->List1.ListIndex = i;
                t->Clica("List1");
                return;
            }
        FAIL() << "sem a linha " << codigo.toStdString();
    }
    QByteArray arquivo() {
        QFile f(s.CaminhoApp + "/ChequeTransf.txt");
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(ausente)");
    }
    QString secao(const QString &codigo) {
        return LeGravaIni(s.CaminhoIni, "ChequeTransf", codigo, "");
    }
    QStringList tabela() {
        return linhas(TabTransferencia, {"Codigo", "Nome", "L1", "C1", "L7", "C7"});
    }
    BancTrans *t = nullptr;
};

TEST_F(BancTransTeste, IncluirGravaSecaoArquivoETabela) {
    inclui("001", "Banco do Brasil");
    inclui("341", QString("Itaú Unibanco Holding S.A. Filial 0001"));
    EXPECT_TRUE(d.Mensagens.isEmpty());
    // Every value three wide, so that the transfer cheque reads the line by position; the
    // name keeps 30 characters.
    EXPECT_EQ(secao("001"), "001,004,006,010,010,013,013,118,008,100,020,040,020,045    ; "
                            "Banco do Brasil");
    EXPECT_EQ(secao("341"), "001,004,006,010,010,013,013,118,008,100,020,040,020,045    ; "
                            "Itaú Unibanco Holding S.A. Fil");
    EXPECT_EQ(arquivo(), QByteArray("001 - Banco do Brasil\r\n341 - Ita\xfa Unibanco Holding S.A. "
                                    "Filial 0001\r\n"));
    EXPECT_EQ(tabela(),
              QStringList({"001|Banco do Brasil|001|118|013|045",
                           "341|Itaú Unibanco Holding S.A. Filial 0001|001|118|013|045"}));
    EXPECT_EQ(t->List1.Itens, QStringList({"001 - Banco do Brasil",
                                           "341 - Itaú Unibanco Holding S.A. Filial 0001"}));
    EXPECT_EQ(t->Text1[0].Text, "");
}

TEST_F(BancTransTeste, AlterarRegravaALinhaDoArquivoComONovoNome) {
    inclui("001", "Banco do Brasil");
    inclui("237", "Bradesco");
    seleciona("001");
    QStringList campos;
    for (const auto &[i, c] : t->Text1)
        campos << c.Text;
    EXPECT_EQ(campos, QStringList({"001", "Banco do Brasil"}) + Layout);
    EXPECT_FALSE(t->Text1[0].Enabled);
    t->Text1[1].Text = "BB";
    t->Text1[8].Text = "014";
    t->Clica("Command3D1", 1);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_TRUE(secao("001").endsWith("013,014,118,008,100,020,040,020,045    ; BB"));
    EXPECT_EQ(arquivo(), QByteArray("001 - BB\r\n237 - Bradesco\r\n"));
    EXPECT_EQ(tabela().first(), "001|BB|001|118|014|045");
    EXPECT_FALSE(t->Command3D1[1].Enabled);
}

TEST_F(BancTransTeste, ExcluirTiraOLayoutDeTodosOsLugares) {
    inclui("001", "Banco do Brasil");
    inclui("237", "Bradesco");
    seleciona("001");
    t->Clica("Command3D1", 2);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(t->ExisteBancoTransf("001"), 0);
    EXPECT_EQ(arquivo(), QByteArray("237 - Bradesco\r\n"));
    EXPECT_EQ(tabela().size(), 1);
    EXPECT_EQ(t->List1.Itens, QStringList({"237 - Bradesco"}));
    // It can be included again.
    inclui("001", "Banco do Brasil");
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(t->List1.ListCount(), 2);
}

struct CasoRecusa {
    const char *nome;
    int comando;
    bool existe; // the bank is registered beforehand
    int vazio;   // a field left empty, -1 for none
    QString mensagem, titulo;
    bool selecionado = false; // the bank chosen in the list
    bool iniRecusa = false;   // VEXA.INI refuses the write
};

class BancTransRecusa : public BancTransTeste, public ::testing::WithParamInterface<CasoRecusa> {};

TEST_P(BancTransRecusa, MensagemENadaGravado) {
    const CasoRecusa &c = GetParam();
    if (c.existe) inclui("001", "Banco do Brasil");
    if (c.selecionado) seleciona("001");
    const QByteArray antes = arquivo();
    const QString linhaAntes = secao("001");
    const QStringList tabelaAntes = tabela();
    digitado("001", "Outro Nome");
    if (c.vazio >= 0) t->Text1[c.vazio].Text.clear();
    // A folder where the settings file should be: its writes fail.
    const QString ini = s.CaminhoIni;
    if (c.iniRecusa) {
        s.CaminhoIni = s.CaminhoApp + "/pasta.ini";
        QDir().mkpath(s.CaminhoIni);
    }
    // The handler itself: without a selection the buttons that need one are disabled.
    t->Command3D1_Click(c.comando);
    s.CaminhoIni = ini;
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, c.titulo);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    if (c.vazio >= 0) {
        EXPECT_EQ(t->Foco(), t->ref(t->Text1[c.vazio]));
    }
    EXPECT_EQ(arquivo(), antes);
    EXPECT_EQ(secao("001"), linhaAntes);
    EXPECT_EQ(tabela(), tabelaAntes);
}

INSTANTIATE_TEST_SUITE_P(
    Comandos, BancTransRecusa,
    ::testing::Values(
        CasoRecusa{"IncluirRepetido", 0, true, -1, "Banco já cadastrado.", "Inclusão de Bancos"},
        CasoRecusa{"IncluirSemNome", 0, false, 1, "Nenhum campo pode ser vazio.",
                   "Inclusão de Bancos"},
        CasoRecusa{"AlterarSemSelecao", 1, true, -1, "Selecione um banco...",
                   "Alteração de Bancos"},
        CasoRecusa{"ExcluirSemSelecao", 2, true, -1, "Selecione um banco...", "Exclusão de Bancos"},
        CasoRecusa{"ExcluirDesconhecido", 2, false, -1, "Banco não encontrado.",
                   "Alteração de Bancos"},
        CasoRecusa{"IncluirIniRecusado", 0, false, -1,
                   "Problemas na inclusão do banco no arquivo VEXA.INI", "Inclusão de Bancos",
                   false, true},
        CasoRecusa{"AlterarIniRecusado", 1, true, -1, "Problemas na alteracao do arquivo VEXA.INI",
                   "Alteração de Bancos", true, true},
        CasoRecusa{"ExcluirIniRecusado", 2, true, -1,
                   "Problemas na exclusão do banco no arquivo VEXA.INI", "Exclusão de Bancos", true,
                   true}),
    [](const auto &info) { return std::string(info.param.nome); });

// The section is written first; the table that follows it may refuse, and says so once.
TEST_F(BancTransTeste, TabelaQueRecusaAGravacaoAvisaUmaVez) {
    inclui("001", "Banco do Brasil");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "recusa");
        db.setDatabaseName(s.CaminhoApp + "/VEXA.db");
        ASSERT_TRUE(db.open());
        for (const char *op : {"INSERT", "DELETE"})
            ASSERT_TRUE(QSqlQuery(db).exec(QString("CREATE TRIGGER recusa_%1 BEFORE %1 ON "
                                                   "Transferencia BEGIN SELECT RAISE(ABORT, "
                                                   "'recusada'); END")
                                               .arg(op)));
        db.close();
    }
    QSqlDatabase::removeDatabase("recusa");
    inclui("237", "Bradesco");
    seleciona("001");
    t->Clica("Command3D1", 2);
    EXPECT_EQ(
        d.Textos(),
        QStringList({"O registro não foi gravado: o banco de dados não aceitou a gravação.",
                     "O registro não foi excluído: o banco de dados não aceitou a exclusão."}));
    // The layouts in force are in the section and the list all the same.
    EXPECT_EQ(t->ExisteBancoTransf("001"), 0);
    EXPECT_EQ(arquivo(), QByteArray("237 - Bradesco\r\n"));
    EXPECT_EQ(tabela(), QStringList({"001|Banco do Brasil|001|118|013|045"}));
}

// The list file refusing its write: the layout is in force, and the operator is told.
class BancTransListaRecusada : public BancTransTeste,
                               public ::testing::WithParamInterface<std::pair<int, QString>> {};

TEST_P(BancTransListaRecusada, AvisaEGuardaOLayout) {
    const auto &[comando, titulo] = GetParam();
    if (comando != 0) {
        inclui("001", "Banco do Brasil");
        seleciona("001");
    }
    digitado("001", "Outro Nome");
    // A folder where the list file should be: neither appending nor replacing reaches it.
    QFile::remove(s.CaminhoApp + "/ChequeTransf.txt");
    QDir().mkpath(s.CaminhoApp + "/ChequeTransf.txt");
    t->Command3D1_Click(comando);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto,
              "A lista de bancos não foi gravada no arquivo ChequeTransf.txt.");
    EXPECT_EQ(d.Mensagens[0].Titulo, titulo);
    EXPECT_EQ(t->ExisteBancoTransf("001"), comando == 2 ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Comandos, BancTransListaRecusada,
                         ::testing::Values(std::pair{0, QString("Inclusão de Bancos")},
                                           std::pair{1, QString("Alteração de Bancos")},
                                           std::pair{2, QString("Exclusão de Bancos")}));

struct CasoProcura {
    QString filtro;
    QStringList itens;
};

class BancTransProcura : public BancTransTeste,
                         public ::testing::WithParamInterface<CasoProcura> {};

TEST_P(BancTransProcura, ListaEstreitaPeloCodigoOuPeloNome) {
    inclui("001", "Banco do Brasil");
    inclui("104", "Caixa Econômica");
    inclui("237", "Bradesco");
    t->Digita("Text2", -1, GetParam().filtro);
    EXPECT_EQ(t->List1.Itens, GetParam().itens);
}

INSTANTIATE_TEST_SUITE_P(
    Filtros, BancTransProcura,
    ::testing::Values(
        CasoProcura{"", {"001 - Banco do Brasil", "104 - Caixa Econômica", "237 - Bradesco"}},
        CasoProcura{"1", {"104 - Caixa Econômica"}},
        CasoProcura{"b", {"001 - Banco do Brasil", "237 - Bradesco"}},
        CasoProcura{"CAIXA ECONOMICA", {"104 - Caixa Econômica"}}));

TEST_F(BancTransTeste, SemArquivoListaVaziaENadaAImprimir) {
    BancTrans &b = abre<BancTrans>();
    EXPECT_EQ(b.List1.ListCount(), 0);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    b.Clica("SSCommand1");
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Não existe banco cadastrado para ser impresso.");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão");
}

// An old list: a line whose layout is gone, a code listed twice from earlier renames, blanks
// ahead, a layout missing (the program stopped between its two writes); an old table with a
// row whose layout is gone. Opening brings both into step.
TEST_F(BancTransTeste, AberturaAcertaArquivoETabelaPelaSecao) {
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "756",
               "002,005,007,012,012,015,015,091,023,008,060,093,060,093    ; Sicoob");
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "341", linha_transf(Layout, "Itaú"));
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "237", linha_transf(Layout, "Bradesco"));
    Registros::inclui(TabTransferencia, {{"104", "Caixa"}});
    QFile f(s.CaminhoApp + "/ChequeTransf.txt");
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("  756 - Sicoob Antigo\r\n104 - Caixa\r\n341 - Itau\r\n756 - Sicoob\r\n");
    f.close();
    BancTrans &b = abre<BancTrans>();
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(arquivo(), QByteArray("756 - Sicoob\r\n341 - Ita\xfa\r\n237 - Bradesco\r\n"));
    EXPECT_EQ(b.List1.Itens, QStringList({"756 - Sicoob", "341 - Itaú", "237 - Bradesco"}));
    EXPECT_EQ(tabela(), QStringList({"237|Bradesco|001|118|013|045", "341|Itaú|001|118|013|045",
                                     "756|Sicoob|002|091|015|093"}));
    b.Clica("SSCommand1");
    ASSERT_EQ(d.Abertas.last(), "Saida");
    EXPECT_EQ(s.TabelaBancos, 0);
}

// Out of the box every preset bank has its transfer layout, listed and in the table, and the
// transfer cheque takes it.
class BancTransDeFabrica : public BancTransTeste {
  protected:
    BancTransDeFabrica() { layouts_de_fabrica = true; }
};

TEST_F(BancTransDeFabrica, CadaBancoDeFabricaTemSeuLayout) {
    BancTrans &b = abre<BancTrans>();
    EXPECT_EQ(b.List1.ListCount(), bancos_padrao().size());
    EXPECT_EQ(b.List1.List(0), "001 - Banco do Brasil");
    EXPECT_EQ(secao("237"), linha_transf(posicoes_padrao_transf(), "Bradesco"));
    EXPECT_EQ(tabela().value(0), "001|Banco do Brasil|002|091|015|093");
    EXPECT_EQ(tabela().size(), bancos_padrao().size());
    b.Unload();
    ChequeTransf &t = abre<ChequeTransf>();
    digita(t, "txtBanco", -1, "237");
    EXPECT_EQ(t.txtBanco.Text, "237");
    EXPECT_TRUE(d.Mensagens.isEmpty());
}

} // namespace
