#include "core/conversoes.h"
#include "core/ini.h"
#include "registers/ajusta.h"
#include "registers/bancos.h"
#include "registers/registros_apoio.h"
#include "registers/regras.h"
#include "store/bancos_padrao.h"

#include <QDir>
#include <QFile>

using namespace vexa;

namespace {

const QString MsgPosicoes = "Algum erro relacionado a posição dos campos foi detectado.\r"
                            "Verifique se os mesmos estão corretos.";

// The default layout with some positions changed (index 0 is L1, 5 is C1...).
QStringList layout(std::initializer_list<std::pair<int, QString>> mudancas = {}) {
    QStringList p = posicoes_padrao();
    for (const auto &[i, v] : mudancas)
        p[i] = v;
    return p;
}

struct CasoRegra {
    const char *nome;
    QString codigo;
    QStringList posicoes;
    bool passa;
};

class RegrasPosicoes : public ::testing::TestWithParam<CasoRegra> {};

TEST_P(RegrasPosicoes, ConjuntoA) {
    EXPECT_EQ(VerificaPosicoes(GetParam().codigo, GetParam().posicoes), GetParam().passa);
}

// Each rule at its limit and one step past it, with the other positions kept valid, so that
// a rule that fails alone shows up alone.
INSTANTIATE_TEST_SUITE_P(
    Casos, RegrasPosicoes,
    ::testing::Values(
        CasoRegra{"Padrao", "001", layout(), true},
        // 1 to 4: the five lines run strictly downwards.
        CasoRegra{"L1DepoisDeL2", "001", layout({{0, "005"}, {1, "004"}}), false},
        CasoRegra{"L1IgualL2", "001", layout({{0, "005"}, {1, "005"}}), false},
        CasoRegra{"L2IgualL3", "001", layout({{1, "007"}}), false},
        CasoRegra{"L3IgualL4", "001", layout({{2, "010"}}), false},
        CasoRegra{"L4IgualL5", "001", layout({{3, "013"}}), false},
        // 5 and 6: day, month and year strictly to the right.
        CasoRegra{"DiaIgualMes", "001", layout({{10, "040"}}), false},
        CasoRegra{"DiaDepoisDoMes", "001", layout({{10, "041"}}), false},
        CasoRegra{"MesIgualAno", "001", layout({{11, "065"}}), false},
        // 7, 9, 11, 13, 15: the range of each line.
        CasoRegra{"L1Em0", "001", layout({{0, "000"}}), false},
        CasoRegra{"L1Em5", "001", layout({{0, "005"}, {1, "006"}}), true},
        CasoRegra{"L1Em6", "001", layout({{0, "006"}, {1, "007"}, {2, "008"}}), false},
        CasoRegra{"L2Em3", "001", layout({{1, "003"}}), false},
        CasoRegra{"L2Em9", "001", layout({{1, "009"}, {2, "011"}, {3, "012"}}), true},
        CasoRegra{"L2Em10", "001", layout({{1, "010"}, {2, "011"}, {3, "012"}}), false},
        CasoRegra{"L3Em5", "001", layout({{1, "004"}, {2, "005"}}), false},
        CasoRegra{"L3Em12", "001", layout({{2, "012"}, {3, "014"}, {4, "015"}}), true},
        CasoRegra{"L3Em13", "001", layout({{2, "013"}, {3, "014"}, {4, "015"}}), false},
        CasoRegra{"L4Em7", "001", layout({{2, "006"}, {3, "007"}}), false},
        CasoRegra{"L4Em15", "001", layout({{3, "015"}, {4, "016"}}), true},
        CasoRegra{"L4Em16", "001", layout({{3, "016"}, {4, "017"}}), false},
        CasoRegra{"L5Em9", "001", layout({{3, "008"}, {4, "009"}}), false},
        CasoRegra{"L5Em17", "001", layout({{4, "017"}}), true},
        CasoRegra{"L5Em18", "001", layout({{4, "018"}}), false},
        // 8, 10, 12, 14: the columns end at 118.
        CasoRegra{"C1Em118", "001", layout({{5, "118"}}), true},
        CasoRegra{"C1Em119", "001", layout({{5, "119"}}), false},
        CasoRegra{"C2Em118", "001", layout({{6, "118"}}), true},
        CasoRegra{"C2Em119", "001", layout({{6, "119"}}), false},
        CasoRegra{"C3Em118", "001", layout({{7, "118"}}), true},
        CasoRegra{"C3Em119", "001", layout({{7, "119"}}), false},
        CasoRegra{"C4Em118", "001", layout({{8, "118"}}), true},
        CasoRegra{"C4Em119", "001", layout({{8, "119"}}), false},
        CasoRegra{"C5Em119", "001", layout({{9, "119"}, {10, "000"}, {11, "001"}, {12, "002"}}),
                  false},
        // 17 to 19: day, month and year from the city's column, at 114, 116 and 118.
        CasoRegra{"DataNosLimites", "001", layout({{10, "064"}, {11, "066"}, {12, "068"}}), true},
        CasoRegra{"DiaEm115", "001", layout({{10, "065"}, {11, "066"}, {12, "067"}}), false},
        CasoRegra{"MesEm117", "001", layout({{10, "060"}, {11, "067"}, {12, "068"}}), false},
        CasoRegra{"C5MaisC8Em118", "001",
                  layout({{9, "096"}, {10, "010"}, {11, "020"}, {12, "022"}}), true},
        CasoRegra{"C5MaisC8Em119", "001",
                  layout({{9, "096"}, {10, "010"}, {11, "020"}, {12, "023"}}), false},
        // The order compares texts: "9" comes after "010" although 9 is below 10.
        CasoRegra{"TextoNaoNumero", "001", layout({{1, "9"}, {2, "010"}, {3, "011"}}), false},
        CasoRegra{"DiaSemTresDigitos", "001", layout({{10, "9"}}), false},
        CasoRegra{"Codigo995Livre", "995", layout({{0, "020"}, {5, "300"}}), true},
        CasoRegra{"Codigo994Verificado", "994", layout({{5, "119"}}), false}),
    [](const auto &info) { return std::string(info.param.nome); });

class BancosTeste : public teste::Registros {
  protected:
    // A new layout typed on the screen: code, name and the thirteen positions.
    void preenche(Bancos &b, const QString &codigo, const QString &nome, const QStringList &p) {
        digita(b, "Text1", 0, codigo);
        digita(b, "Text1", 1, nome);
        for (int i = 0; i < 13; ++i)
            digita(b, "Text1", i + 2, p[i]);
    }
    QString formato(const QString &codigo) {
        return LeGravaIni(s.CaminhoIni, "Formato", codigo, "");
    }
    // The line as it stands in the file: a read trims the value.
    QString linha_ini(const QString &codigo) {
        QFile f(s.CaminhoIni);
        if (!f.open(QIODevice::ReadOnly)) return {};
        for (const QString &l : de_ansi(f.readAll()).split("\r\n"))
            if (l.startsWith(codigo + "=")) return l;
        return {};
    }
    QStringList campos_bancos() {
        return {"Codigo", "Nome", "L1", "L2", "L3", "L4", "L5", "C1",
                "C2",     "C3",   "C4", "C5", "C6", "C7", "C8"};
    }
    QString linha_tabela(const QString &codigo) {
        for (const QString &l : linhas(TabBancos, campos_bancos()))
            if (l.startsWith(codigo + "|")) return l;
        return {};
    }
    int seleciona(Bancos &b, const QString &codigo) {
        for (int i = 0; i < b.List1.ListCount(); ++i)
            if (b.List1.List(i).startsWith(codigo)) {
                b.List1.ListIndex = i;
                b.Dispara({"List1", -1}, Evento::Click);
                return i;
            }
        return -1;
    }
};

TEST_F(BancosTeste, IncluirComImpressoraGravaNosTresLugares) {
    auto &b = abre<Bancos>();
    preenche(b, "500", "Banco Quinhentos de Teste Long", layout({{5, "118"}, {10, "7"}}));
    EXPECT_EQ(b.Text1[12].Text, "007");
    b.Clica("Command3D1", 0);

    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Deseja Atualizar na Impressora?");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Comando Vexa");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::YesNo);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Nenhum);
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)",
                           "IncluiBanco(500|001,005,007,010,013,118,017,009,011,050,007,040,065)",
                           "FechaPorta()"}));
    EXPECT_EQ(linha_tabela("500"), "500|Banco Quinhentos de Teste Long|001|005|007|010|013|118|"
                                   "017|009|011|050|007|040|065");
    EXPECT_EQ(linha_ini("500"),
              "500=01,05,07,10,13,118,17,09,11,50,07,40,65    ; Banco Quinhentos de ");
    EXPECT_TRUE(b.List1.Itens.contains("500 - Banco Quinhentos de Teste Long"));
    EXPECT_EQ(b.Text1[0].Text, "");
}

TEST_F(BancosTeste, PosicaoRecusadaNaoGravaNada) {
    auto &b = abre<Bancos>();
    preenche(b, "500", "Teste", layout({{5, "119"}}));
    b.Clica("Command3D1", 0);
    ASSERT_EQ(d.Textos(), QStringList({"Deseja Atualizar na Impressora?", MsgPosicoes}));
    EXPECT_EQ(d.Mensagens[1].Titulo, "Vexa Printer Error");
    EXPECT_EQ(d.Mensagens[1].Icone_, Icone::Nenhum);
    // The port was opened for the check and closed again; nothing else went.
    EXPECT_EQ(imp().Chamadas(), QStringList({"IniciaPorta(COM2)", "FechaPorta()"}));
    EXPECT_EQ(linha_tabela("500"), "");
    EXPECT_EQ(formato("500"), "-2");
    EXPECT_EQ(b.Text1[7].Text, "119");
}

TEST_F(BancosTeste, Codigo995VaiAImpressoraComQualquerPosicao) {
    auto &b = abre<Bancos>();
    preenche(b, "995", "Teste", layout({{0, "009"}, {5, "119"}}));
    b.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos(), QStringList({"Deseja Atualizar na Impressora?"}));
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)",
                           "IncluiBanco(995|009,005,007,010,013,119,017,009,011,050,031,040,065)",
                           "FechaPorta()"}));
    EXPECT_TRUE(linha_tabela("995").startsWith("995|Teste|009|"));
}

TEST_F(BancosTeste, SemImpressoraGravaSemVerificar) {
    auto &b = abre<Bancos>();
    preenche(b, "500", "Teste", layout({{5, "119"}}));
    d.Respostas = {Resposta::No};
    b.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos(), QStringList({"Deseja Atualizar na Impressora?"}));
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    EXPECT_TRUE(linha_tabela("500").startsWith("500|Teste|001|005|007|010|013|119|"));
    EXPECT_EQ(formato("500"), "01,05,07,10,13,119,17,09,11,50,31,40,65    ; Teste");
}

TEST_F(BancosTeste, CampoVazioECodigoRepetido) {
    auto &b = abre<Bancos>();
    preenche(b, "500", "Teste", layout({{6, ""}}));
    b.Clica("Command3D1", 0);
    // With a field empty the printer isn't offered.
    ASSERT_EQ(d.Textos(), QStringList({"Campo Inválido..."}));
    EXPECT_EQ(d.Mensagens[0].Titulo, "Erro");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    EXPECT_EQ(b.Foco(), (RefControle{"Text1", 8}));

    d.Mensagens.clear();
    preenche(b, "001", "Outro", layout());
    d.Respostas = {Resposta::No};
    b.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos(),
              QStringList({"Deseja Atualizar na Impressora?", "Codigo ja cadastrado..."}));
    EXPECT_EQ(d.Mensagens[1].Titulo, "Erro");
    EXPECT_EQ(d.Mensagens[1].Icone_, Icone::Exclamacao);
    EXPECT_EQ(linha_tabela("001").section('|', 1, 1), "Banco do Brasil");
}

TEST_F(BancosTeste, AlterarEExcluirUmLayoutCarregado) {
    auto &b = abre<Bancos>();
    ASSERT_GE(seleciona(b, "237"), 0);
    EXPECT_EQ(b.Text1[1].Text, "Bradesco");
    EXPECT_FALSE(b.Text1[0].Enabled);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(b.Command3D1[i].Enabled);

    digita(b, "Text1", 6, "14");
    d.Respostas = {Resposta::No};
    b.Clica("Command3D1", 1);
    EXPECT_EQ(linha_tabela("237").section('|', 6, 6), "014");
    EXPECT_EQ(formato("237"), "01,05,07,10,14,92,17,09,11,50,31,40,65    ; Bradesco");
    EXPECT_FALSE(b.Command3D1[1].Enabled);
    EXPECT_TRUE(b.Text1[0].Enabled);

    // Excluir asks nothing and leaves the printer and the settings alone.
    d.Mensagens.clear();
    ASSERT_GE(seleciona(b, "237"), 0);
    b.Clica("Command3D1", 2);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    EXPECT_EQ(linha_tabela("237"), "");
    EXPECT_NE(formato("237"), "-2");
    EXPECT_FALSE(b.List1.Itens.contains("237 - Bradesco"));
}

// Alterar and Excluir on a loaded layout that is no longer there, or whose line the search
// took away: a message, nothing stored, the settings and the printer untouched.
struct CasoSemLayout {
    const char *nome;
    int botao;
    bool apagado; // the row deleted behind the screen; otherwise the list refreshed
    QString mensagem;
};

class BancosSemLayout : public BancosTeste, public ::testing::WithParamInterface<CasoSemLayout> {};

TEST_P(BancosSemLayout, AvisaENaoGrava) {
    const CasoSemLayout &c = GetParam();
    auto &b = abre<Bancos>();
    ASSERT_GE(seleciona(b, "237"), 0);
    digita(b, "Text1", 6, "14");
    if (c.apagado) {
        ExisteCodigo(s, "237", TabBancos);
        ASSERT_TRUE(Conjunto(s, TabBancos).Delete());
    } else {
        b.Digita("Text2", -1, "2");
        ASSERT_EQ(b.List1.ListIndex, -1);
    }
    const QString antes = c.apagado ? QString() : linha_tabela("237");
    const QString iniAntes = formato("237");
    d.Mensagens.clear();
    d.Respostas = {Resposta::No};
    b.Clica("Command3D1", c.botao);

    const QStringList esperadas = c.botao == 1
                                      ? QStringList({"Deseja Atualizar na Impressora?", c.mensagem})
                                      : QStringList({c.mensagem});
    ASSERT_EQ(d.Textos(), esperadas);
    EXPECT_EQ(d.Mensagens.last().Titulo, "Erro");
    EXPECT_EQ(d.Mensagens.last().Icone_, Icone::Exclamacao);
    EXPECT_EQ(linha_tabela("237"), antes);
    EXPECT_EQ(formato("237"), iniAntes);
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    if (c.apagado) {
        // A failed check leaves the screen as it was.
        EXPECT_EQ(b.Text1[6].Text, "014");
        EXPECT_TRUE(b.Command3D1[1].Enabled);
    } else {
        // Without a selection the command still ends: first state, all layouts listed.
        EXPECT_FALSE(b.Command3D1[1].Enabled);
        EXPECT_TRUE(b.Text1[0].Enabled);
        EXPECT_EQ(b.Text1[1].Text, "");
        EXPECT_EQ(b.Text2.Text, "");
        EXPECT_EQ(b.List1.ListCount(), bancos_padrao().size());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Casos, BancosSemLayout,
    ::testing::Values(CasoSemLayout{"AlterarApagado", 1, true, "Codigo nao encontrado..."},
                      CasoSemLayout{"ExcluirApagado", 2, true, "Codigo nao encontrado..."},
                      CasoSemLayout{"AlterarSemSelecao", 1, false, "Selecione um banco..."},
                      CasoSemLayout{"ExcluirSemSelecao", 2, false, "Selecione um banco..."}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(BancosTeste, FecharFechaOConjuntoDaTabela) {
    auto &b = abre<Bancos>();
    ASSERT_TRUE(Conjunto(s, TabBancos).Aberto());
    b.Clica("Command3D1", 3);
    EXPECT_TRUE(b.Descarregada());
    EXPECT_FALSE(Conjunto(s, TabBancos).Aberto());
    EXPECT_TRUE(d.Mensagens.isEmpty());
}

TEST_F(BancosTeste, IncluirComLayoutCarregadoSoLimpaATela) {
    auto &b = abre<Bancos>();
    seleciona(b, "001");
    b.Clica("Command3D1", 0);
    // The question comes first, and Yes sends the loaded layout.
    EXPECT_EQ(d.Textos(), QStringList({"Deseja Atualizar na Impressora?"}));
    EXPECT_TRUE(imp().Chamadas().contains(
        "IncluiBanco(001|001,005,007,010,013,092,017,009,011,050,031,040,065)"));
    EXPECT_EQ(b.Text1[1].Text, "");
    EXPECT_FALSE(b.Command3D1[1].Enabled);
    EXPECT_EQ(b.Foco(), (RefControle{"Text1", 0}));
}

TEST_F(BancosTeste, FalhaAoGravarOIniAvisaEMantemARegistro) {
    auto &b = abre<Bancos>();
    // A folder where the settings file should be: the write fails.
    s.CaminhoIni = s.CaminhoApp + "/pasta.ini";
    QDir().mkpath(s.CaminhoIni);
    preenche(b, "500", "Teste", layout());
    d.Respostas = {Resposta::No};
    b.Clica("Command3D1", 0);
    EXPECT_EQ(d.Textos().last(), "Problemas na alteracao do arquivo VEXA.INI");
    EXPECT_EQ(d.Mensagens.last().Titulo, "Erro");
    EXPECT_EQ(d.Mensagens.last().Icone_, Icone::Exclamacao);
    EXPECT_NE(linha_tabela("500"), "");
}

TEST_F(BancosTeste, CamposMascaraEnterEPesquisa) {
    auto &b = abre<Bancos>();
    digita(b, "Text1", 2, "5");
    EXPECT_EQ(b.Text1[2].Text, "005");
    digita(b, "Text1", 3, "x");
    EXPECT_EQ(b.Text1[3].Text, "000");
    b.Digita("Text1", 1, QString(40, 'N'));
    EXPECT_EQ(b.Text1[1].Text.size(), 30);
    b.SetFocus("Text1", 14);
    b.Tecla(13);
    EXPECT_EQ(b.Foco(), (RefControle{"Command3D1", 0}));

    b.Digita("Text2", -1, "23");
    EXPECT_EQ(b.List1.Itens, QStringList({"237 - Bradesco"}));
    b.Digita("Text2", -1, "Banco d");
    EXPECT_EQ(b.List1.Itens.first(), "003 - Banco da Amazônia");
    EXPECT_TRUE(b.List1.Itens.contains("001 - Banco do Brasil"));
    b.Digita("Text2", -1, "");
    EXPECT_EQ(b.List1.ListCount(), bancos_padrao().size());
}

TEST_F(BancosTeste, PreparaAjustePreencheLacunasOuOPadrao) {
    auto &b = abre<Bancos>();
    digita(b, "Text1", 0, "500");
    digita(b, "Text1", 1, "Teste");
    digita(b, "Text1", 2, "3");
    b.Clica("Command3D2");
    // Each missing position gets twice its field's index.
    EXPECT_EQ(b.Text1[2].Text, "003");
    EXPECT_EQ(b.Text1[3].Text, "006");
    EXPECT_EQ(b.Text1[14].Text, "028");
    EXPECT_EQ(s.AjusteL[1], "003");
    EXPECT_EQ(s.AjusteC[8], "028");
    EXPECT_EQ(d.Abertas.last(), "Ajusta");

    for (int i = 2; i <= 14; ++i)
        b.Text1[i].Text = "0";
    b.PreparaAjuste();
    EXPECT_EQ(b.Posicoes(), posicoes_padrao());
}

TEST_F(BancosTeste, SemBaseDeDadosAvisaEFecha) {
    QTemporaryDir outra;
    Sessao vazia(outra.path());
    DesktopRoteiro d2;
    EXPECT_EQ(abre_tela(vazia, d2, std::make_unique<Bancos>(vazia, d2)), nullptr);
    EXPECT_EQ(d2.Textos(), QStringList({"O Banco de dados \"" + vazia.CaminhoApp +
                                        "/VEXA.db\" nao foi encontrado!"}));
    EXPECT_EQ(vazia.FechaTela, 0);
    EXPECT_EQ(d2.Aberta("Bancos"), nullptr);
}

} // namespace
