#include "core/conversoes.h"
#include "registers/ajusta.h"
#include "registers/bancos.h"
#include "registers/registros_apoio.h"
#include "registers/regras.h"
#include "store/bancos_padrao.h"

using namespace vexa;

namespace {

const QString MsgAjuste = "Algum erro relacionado a posição dos campos foi detectado.\r"
                          "Verifique se os mesmos estão corretos, ou pressione a tecla Cancelar.";

class AjustaTeste : public teste::Registros {
  protected:
    // The bank screen with a layout on it, and its graphic adjust open.
    Ajusta &abre_ajuste(const QString &codigo, const QStringList &posicoes = posicoes_padrao()) {
        b = &abre<Bancos>();
        b->Text1[0].Text = codigo;
        b->Text1[1].Text = "Banco de Teste";
        for (int i = 0; i < 13; ++i)
            b->Text1[i + 2].Text = posicoes[i];
        b->Clica("Command3D2");
        auto *a = d.Tela_<Ajusta>("Ajusta");
        EXPECT_NE(a, nullptr);
        return *a;
    }
    Bancos *b = nullptr;
};

TEST_F(AjustaTeste, AbreComOLayoutNosRotulos) {
    Ajusta &a = abre_ajuste("001");
    EXPECT_EQ(a.Panel3D3.Caption, "001 - Banco de Teste");
    // The date parts show absolute columns: the city's 50 plus 31, 40 and 65.
    EXPECT_EQ(rotulos(a), QStringList({"001", "005", "007", "010", "013", "092", "017", "009",
                                       "011", "050", "081", "090", "115"}));
    EXPECT_EQ(a.Text1[0].Left, 91 * 68 + 119);
    EXPECT_EQ(a.Text1[5].Left, a.Text1[4].Left + 31 * 68 - 69);
    EXPECT_EQ(a.Text1[7].Top, a.Text1[4].Top);
}

struct CasoLinha {
    int caixa;
    int menor, maior; // the lines the arrows reach
};

class AjustaLinhas : public AjustaTeste, public ::testing::WithParamInterface<CasoLinha> {};

TEST_P(AjustaLinhas, SetasParamNosLimitesDeCadaCampo) {
    const auto [caixa, menor, maior] = GetParam();
    Ajusta &a = abre_ajuste("001");
    tecla(a, caixa, Acima, 25);
    EXPECT_EQ(a.Label2[caixa].Caption, Format(QString::number(menor), "000"));
    tecla(a, caixa, Abaixo, 25);
    EXPECT_EQ(a.Label2[caixa].Caption, Format(QString::number(maior), "000"));
}

INSTANTIATE_TEST_SUITE_P(Caixas, AjustaLinhas,
                         ::testing::Values(CasoLinha{0, 1, 5}, CasoLinha{1, 4, 9},
                                           CasoLinha{2, 6, 12}, CasoLinha{3, 8, 15},
                                           CasoLinha{4, 10, 17}));

TEST_F(AjustaTeste, ColunasDeUmAteCentoEVinte) {
    Ajusta &a = abre_ajuste("001");
    tecla(a, 0, Esquerda, 130);
    EXPECT_EQ(a.Label2[5].Caption, "001");
    tecla(a, 0, Direita, 130);
    EXPECT_EQ(a.Label2[5].Caption, "120");
    // The date parts run from 2 to 121, and stay on the city's line.
    tecla(a, 7, Direita, 10);
    EXPECT_EQ(a.Label2[12].Caption, "121");
    tecla(a, 5, Esquerda, 130);
    EXPECT_EQ(a.Label2[10].Caption, "002");
    tecla(a, 4, Acima, 2);
    EXPECT_EQ(a.Text1[5].Top, a.Text1[4].Top);
    tecla(a, 6, Abaixo);
    EXPECT_EQ(a.Text1[6].Top, a.Text1[4].Top);
}

TEST_F(AjustaTeste, LarguraNaoVoltaInteiraPelaBordaDireita) {
    Ajusta &a = abre_ajuste("001");
    a.SetFocus("Text1", 1);
    // Column 17 to 80: the box narrows from column 76 on its way right (x above 74)...
    tecla(a, 1, Direita, 63);
    EXPECT_EQ(a.Label2[6].Caption, "080");
    EXPECT_EQ(a.Text1[1].Width, 4335 - 5 * 70);
    // ...and widens only while it lands on column 77 or beyond on its way back (x above 75):
    // three of the five steps come back.
    tecla(a, 1, Esquerda, 63);
    EXPECT_EQ(a.Text1[1].Width, 4335 - 2 * 70);
    // The payee narrows past column 111.
    tecla(a, 3, Direita, 101);
    EXPECT_EQ(a.Label2[8].Caption, "112");
    EXPECT_EQ(a.Text1[3].Width, 1935 - 70);
}

TEST_F(AjustaTeste, OkDevolveOLayoutComDistanciasDaCidade) {
    Ajusta &a = abre_ajuste("001");
    tecla(a, 4, Direita, 2);
    tecla(a, 0, Abaixo, 1);
    a.Clica("Command3D1", 0);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_TRUE(a.Descarregada());
    // The city moved two columns right; day, month and year kept their places.
    EXPECT_EQ(b->Posicoes(), QStringList({"002", "005", "007", "010", "013", "092", "017", "009",
                                          "011", "052", "029", "038", "063"}));
}

TEST_F(AjustaTeste, OrdemIncorretaAvisaEFicaAberta) {
    Ajusta &a = abre_ajuste("001");
    // The day left of the city: the distance that reaches the bank screen is negative.
    tecla(a, 5, Esquerda, 40);
    a.Clica("Command3D1", 0);
    ASSERT_EQ(d.Textos(), QStringList({MsgAjuste}));
    EXPECT_EQ(d.Mensagens[0].Titulo, "Ajuste Gráfico Incorreto");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::OK);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Nenhum);
    EXPECT_FALSE(a.Descarregada());
    EXPECT_EQ(b->Text1[12].Text, "-009");

    // A code of 995 or above closes with no check.
    b->Text1[0].Text = "995";
    a.Clica("Command3D1", 0);
    EXPECT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(a.Descarregada());
}

// The order check of the adjust: each condition alone, with the two boxes it compares
// brought to the same top or the same left edge.
struct CasoOrdem {
    const char *nome;
    bool topo; // compares tops (lines), else left edges (columns)
    int a, b;  // the boxes made equal
};

class OrdemAjuste : public ::testing::TestWithParam<CasoOrdem> {};

TEST_P(OrdemAjuste, IgualdadeFalha) {
    const QList<int> T0 = {119, 871, 1247, 1811, 2375, 2375, 2375, 2375};
    const QList<int> X0 = {6307, 1207, 663, 799, 3451, 5490, 6102, 7803};
    EXPECT_TRUE(verifica_ordem_ajuste(T0, X0));
    const CasoOrdem &c = GetParam();
    QList<int> T = T0, X = X0;
    if (c.topo)
        T[c.b] = T[c.a];
    else
        X[c.b] = X[c.a];
    EXPECT_FALSE(verifica_ordem_ajuste(T, X));
    // One step past the other box fails as well.
    if (c.topo)
        T[c.b] = T[c.a] - AjusteGrafico::UnidadeLinha;
    else
        X[c.b] = X[c.a] - AjusteGrafico::UnidadeColuna;
    EXPECT_FALSE(verifica_ordem_ajuste(T, X));
}

INSTANTIATE_TEST_SUITE_P(Condicoes, OrdemAjuste,
                         ::testing::Values(CasoOrdem{"ValorExtenso1", true, 0, 1},
                                           CasoOrdem{"Extenso1Extenso2", true, 1, 2},
                                           CasoOrdem{"Extenso2Favorecido", true, 2, 3},
                                           CasoOrdem{"FavorecidoCidade", true, 3, 4},
                                           CasoOrdem{"CidadeDia", false, 4, 5},
                                           CasoOrdem{"DiaMes", false, 5, 6},
                                           CasoOrdem{"MesAno", false, 6, 7}),
                         [](const auto &info) { return std::string(info.param.nome); });

TEST_F(AjustaTeste, CancelarNaoDevolveNada) {
    Ajusta &a = abre_ajuste("001");
    tecla(a, 0, Abaixo, 2);
    a.Clica("Command3D1", 1);
    EXPECT_TRUE(a.Descarregada());
    EXPECT_EQ(b->Posicoes(), posicoes_padrao());
}

} // namespace
