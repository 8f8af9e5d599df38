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
    QStringList p = PosicoesPadrao();
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

INSTANTIATE_TEST_SUITE_P(
    Casos, RegrasPosicoes,
    ::testing::Values(CasoRegra{"Padrao", "001", layout(), true},
                      CasoRegra{"L1DepoisDeL2", "001", layout({{0, "005"}, {1, "004"}}), false},
                      CasoRegra{"L1Acima5", "001", layout({{0, "006"}, {1, "007"}, {2, "008"}}),
                                false},
                      CasoRegra{"C5MaisC8Em118", "001",
                                layout({{9, "096"}, {10, "010"}, {11, "020"}, {12, "022"}}), true},
                      CasoRegra{"C5MaisC8Em119", "001",
                                layout({{9, "096"}, {10, "010"}, {11, "020"}, {12, "023"}}), false},
                      CasoRegra{"C1Em118", "001", layout({{5, "118"}}), true},
                      CasoRegra{"C1Em119", "001", layout({{5, "119"}}), false},
                      CasoRegra{"DiaDepoisDoMes", "001", layout({{10, "041"}}), false},
                      CasoRegra{"L5Em18", "001", layout({{4, "018"}}), false},
                      // Texts compare as texts: "5" comes after "010".
                      CasoRegra{"SemTresDigitos", "001", layout({{0, "5"}}), false},
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
    EXPECT_EQ(b.List1.ListCount(), BancosPadrao().size());
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
    EXPECT_EQ(b.Posicoes(), PosicoesPadrao());
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
