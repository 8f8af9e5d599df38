// The transfer layouts' register: the section ChequeTransf read back by position, the list
// file's bytes, the table that follows them, and the commands with their messages.
#include "core/ini.h"
#include "registers/banctrans.h"
#include "registers/registros_apoio.h"
#include "registers/saida.h"

#include <QFile>

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
};

class BancTransRecusa : public BancTransTeste, public ::testing::WithParamInterface<CasoRecusa> {};

TEST_P(BancTransRecusa, MensagemENadaGravado) {
    const CasoRecusa &c = GetParam();
    if (c.existe) inclui("001", "Banco do Brasil");
    const QByteArray antes = arquivo();
    const QString linhaAntes = secao("001");
    digitado("001", "Outro Nome");
    if (c.vazio >= 0) t->Text1[c.vazio].Text.clear();
    // The handler itself: without a selection the buttons that need one are disabled.
    t->Command3D1_Click(c.comando);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, c.titulo);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    if (c.vazio >= 0) {
        EXPECT_EQ(t->Foco(), t->ref(t->Text1[c.vazio]));
    }
    EXPECT_EQ(arquivo(), antes);
    EXPECT_EQ(secao("001"), linhaAntes);
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
        CasoRecusa{"ExcluirDesconhecido", 2, false, -1, "Banco nao encontrado.",
                   "Alteração de Bancos"}),
    [](const auto &info) { return std::string(info.param.nome); });

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

TEST_F(BancTransTeste, ListaImpressaMostraOsBancosDeUmArquivoAntigo) {
    // A settings file and a list that came without the table.
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "756",
               "002,005,007,012,012,015,015,091,023,008,060,093,060,093    ; Sicoob");
    QFile f(s.CaminhoApp + "/ChequeTransf.txt");
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("  756 - Sicoob\r\n");
    f.close();
    BancTrans &b = abre<BancTrans>();
    EXPECT_EQ(b.List1.Itens, QStringList({"756 - Sicoob"}));
    EXPECT_EQ(tabela(), QStringList({"756|Sicoob|002|091|015|093"}));
    b.Clica("SSCommand1");
    ASSERT_EQ(d.Abertas.last(), "Saida");
    EXPECT_EQ(s.TabelaBancos, 0);
}

} // namespace
