// The graphic adjust of a transfer layout and the order and distance rules its OK applies.
#include "core/conversoes.h"
#include "registers/ajustatransf.h"
#include "registers/banctrans.h"
#include "registers/registros_apoio.h"
#include "registers/regras.h"

using namespace vexa;

namespace {

const QString MsgTransf = "Há problemas com relação ao posicionamento dos campos.\r"
                          "O valor mínimo entre os campos que estão na mesma linha é de 15 "
                          "colunas.\r"
                          "Por favor, verifique se esses valores estão sendo respeitados.";

QString tres(int n) {
    return Format(QString::number(n), "000");
}

class AjusteTransfTeste : public teste::Registros {
  protected:
    // The transfer register with a layout on it, and its graphic adjust open.
    // Nothing typed: the adjust starts from the default layout.
    AjustaChequeTransferencia &abre_ajuste(const QString &codigo,
                                           const QStringList &posicoes = QStringList(14)) {
        b = &abre<BancTrans>();
        b->Text1[0].Text = codigo;
        b->Text1[1].Text = "Banco de Teste";
        for (int i = 0; i < 14; ++i)
            b->Text1[i + 2].Text = posicoes[i];
        b->Clica("Command3D2");
        auto *a = d.Tela_<AjustaChequeTransferencia>("AjustaChequeTransferencia");
        EXPECT_NE(a, nullptr);
        return *a;
    }
    QStringList campos_banco() const {
        QStringList r;
        for (int i = 2; i <= 15; ++i)
            r << b->Text1[i].Text;
        return r;
    }
    BancTrans *b = nullptr;
};

// OK copies the moved boxes back to the register; Cancelar copies nothing.
class AjusteTransfBotoes : public AjusteTransfTeste, public ::testing::WithParamInterface<int> {};

TEST_P(AjusteTransfBotoes, AbreComOLayoutMoveEOkCopia) {
    const bool ok = GetParam() == 0;
    AjustaChequeTransferencia &a = abre_ajuste("001");
    EXPECT_EQ(a.Panel3D3.Caption, "001 - Banco de Teste");
    EXPECT_EQ(rotulos(a), posicoes_padrao_transf());
    tecla(a, 0, Abaixo);
    // Up and down leave the date on the city's line.
    tecla(a, 4, Abaixo, 3);
    tecla(a, 6, Direita, 5);
    a.Clica("Command3D1", GetParam());
    EXPECT_TRUE(a.Descarregada());
    EXPECT_TRUE(d.Mensagens.isEmpty());
    QStringList esperado = posicoes_padrao_transf();
    if (ok) {
        esperado[0] = "003";
        esperado[13] = "098";
    }
    EXPECT_EQ(campos_banco(), esperado);
}

INSTANTIATE_TEST_SUITE_P(OkECancelar, AjusteTransfBotoes, ::testing::Values(0, 1));

// A layout partly typed: each number takes three digits, an empty one stands in at twice its
// field's index, and the adjust opens on them.
TEST_F(AjusteTransfTeste, LayoutIncompletoPreencheOsVazios) {
    QStringList posicoes = {"2",  "5",  "7", "12", "12", "15", "15",
                            "91", "23", "8", "60", "93", "60", ""};
    AjustaChequeTransferencia &a = abre_ajuste("001", posicoes);
    QStringList esperado = posicoes_padrao_transf();
    esperado[13] = "030";
    EXPECT_EQ(campos_banco(), esperado);
    EXPECT_EQ(s.AjusteC[7], "030");
    EXPECT_EQ(a.Label2[13].Caption, "030");
}

struct CasoLinha {
    int caixa;
    int menor, maior; // the lines the arrows reach
};

class AjusteTransfLinhas : public AjusteTransfTeste,
                           public ::testing::WithParamInterface<CasoLinha> {};

TEST_P(AjusteTransfLinhas, SetasParamNosLimitesDeCadaCampo) {
    const auto [caixa, menor, maior] = GetParam();
    AjustaChequeTransferencia &a = abre_ajuste("001");
    tecla(a, caixa, Acima, 25);
    EXPECT_EQ(a.Label2[caixa].Caption, tres(menor));
    tecla(a, caixa, Abaixo, 25);
    EXPECT_EQ(a.Label2[caixa].Caption, tres(maior));
    // The date keeps to the city's line and the account to the branch's.
    EXPECT_EQ(a.Label2[4].Caption, a.Label2[3].Caption);
    EXPECT_EQ(a.Label2[6].Caption, a.Label2[5].Caption);
}

INSTANTIATE_TEST_SUITE_P(Caixas, AjusteTransfLinhas,
                         ::testing::Values(CasoLinha{0, 1, 5}, CasoLinha{1, 4, 9},
                                           CasoLinha{2, 6, 12}, CasoLinha{3, 11, 19},
                                           CasoLinha{5, 11, 19}));

struct CasoLimiar {
    QString codigo;
    bool verifica;
};

class AjusteTransfLimiar : public AjusteTransfTeste,
                           public ::testing::WithParamInterface<CasoLimiar> {};

TEST_P(AjusteTransfLimiar, ContaDaAgenciaDezoitoColunasAdiante) {
    AjustaChequeTransferencia &a = abre_ajuste(GetParam().codigo);
    // The account at 78, 18 columns past the branch at 60.
    tecla(a, 6, Esquerda, 15);
    a.Clica("Command3D1", 0);
    // The numbers reach the register whether or not the rules pass.
    EXPECT_EQ(b->Text1[15].Text, "078");
    EXPECT_EQ(a.Descarregada(), !GetParam().verifica);
    if (GetParam().verifica) {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, MsgTransf);
        EXPECT_EQ(d.Mensagens[0].Titulo, "Ajuste Gráfico Incorreto");
        EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    } else {
        EXPECT_TRUE(d.Mensagens.isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Codigos, AjusteTransfLimiar,
                         ::testing::Values(CasoLimiar{"994", true}, CasoLimiar{"995", false}));

// --- the rules alone, on lines and columns

struct Posicao {
    int linha, coluna;
};

struct CasoRegra {
    const char *nome;
    // amount, words 1, words 2, city, date, branch, account
    std::array<Posicao, 7> caixas;
    bool passa;
};

class RegrasTransf : public ::testing::TestWithParam<CasoRegra> {};

TEST_P(RegrasTransf, OrdemEDistancias) {
    QList<int> T, X, linhas, colunas;
    for (const Posicao &p : GetParam().caixas) {
        T << (p.linha - 1) * 188 + 119;
        X << (p.coluna - 1) * 68 + 119;
        linhas << p.linha;
        colunas << p.coluna;
    }
    EXPECT_EQ(verifica_ordem_transf(T, X, linhas, colunas), GetParam().passa);
}

constexpr Posicao V{2, 91}, E1{5, 23}, E2{7, 8};

INSTANTIATE_TEST_SUITE_P(
    Limites, RegrasTransf,
    ::testing::Values(
        CasoRegra{"Valido", {{V, E1, E2, {12, 10}, {12, 25}, {15, 50}, {15, 70}}}, true},
        // Amount, words 1, words 2 and city one line apart each.
        CasoRegra{"UmaLinhaEntreCada",
                  {{{4, 91}, {5, 23}, {6, 8}, {7, 10}, {7, 25}, {15, 50}, {15, 70}}},
                  true},
        CasoRegra{"ValorNaLinhaDoExtenso",
                  {{{5, 91}, E1, E2, {12, 10}, {12, 25}, {15, 50}, {15, 70}}},
                  false},
        CasoRegra{"ExtensosNaMesmaLinha",
                  {{V, E1, {5, 8}, {12, 10}, {12, 25}, {15, 50}, {15, 70}}},
                  false},
        CasoRegra{"Extenso2NaLinhaDaCidade",
                  {{V, E1, {12, 8}, {12, 10}, {12, 25}, {15, 50}, {15, 70}}},
                  false},
        // Date and branch in one column on different lines.
        CasoRegra{
            "DataNaColunaDaAgencia", {{V, E1, E2, {12, 10}, {12, 50}, {15, 50}, {15, 70}}}, false},
        CasoRegra{
            "AgenciaNaColunaDaConta", {{V, E1, E2, {12, 10}, {12, 25}, {15, 70}, {15, 70}}}, false},
        // On one line the branch must stand 13 columns past the date.
        CasoRegra{
            "AgenciaTrezeAposAData", {{V, E1, E2, {12, 10}, {12, 25}, {12, 38}, {12, 57}}}, true},
        CasoRegra{
            "AgenciaDozeAposAData", {{V, E1, E2, {12, 10}, {12, 25}, {12, 37}, {12, 56}}}, false},
        // On different lines the date may stand past the branch.
        CasoRegra{"DataAposAgenciaEmOutraLinha",
                  {{V, E1, E2, {12, 40}, {12, 60}, {15, 10}, {15, 30}}},
                  true},
        CasoRegra{"ContaDezenoveAposAAgencia",
                  {{V, E1, E2, {12, 10}, {12, 25}, {15, 50}, {15, 69}}},
                  true},
        CasoRegra{"ContaDezoitoAposAAgencia",
                  {{V, E1, E2, {12, 10}, {12, 25}, {15, 50}, {15, 68}}},
                  false},
        CasoRegra{"DataQuatorzeAposACidade",
                  {{V, E1, E2, {12, 10}, {12, 24}, {15, 50}, {15, 70}}},
                  false}),
    [](const auto &info) { return std::string(info.param.nome); });

} // namespace
