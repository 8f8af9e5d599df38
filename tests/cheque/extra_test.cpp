#include "cheque/extra.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class TelaCmpExtra : public ::testing::Test {
  protected:
    CmpExtra &abre() { return *static_cast<CmpExtra *>(d.Abre(std::make_unique<CmpExtra>(s, d))); }
    QString ini(const QString &chave) { return LeGravaIni(s.CaminhoIni, "FrenteInfo", chave, ""); }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

struct Posicao {
    QString linha, coluna;
    bool aceita;
};
class SalvaPosicao : public TelaCmpExtra, public ::testing::WithParamInterface<Posicao> {};

TEST_P(SalvaPosicao, LimitesDeLinhaEColuna) {
    const Posicao &c = GetParam();
    CmpExtra &t = abre();
    t.Clica("CmdNumCampo", 2);
    t.Digita("PosText", 0, c.linha);
    t.Digita("PosText", 1, c.coluna);
    t.Clica("BtnCmd", 0);
    if (c.aceita) {
        EXPECT_TRUE(d.Mensagens.isEmpty());
        EXPECT_EQ(ini("Campo02Lin"), c.linha);
        EXPECT_EQ(ini("Campo02Col"), c.coluna);
    } else {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, "Campo incorreto");
        EXPECT_EQ(d.Mensagens[0].Titulo, "Erro");
        EXPECT_EQ(ini("Campo02Lin"), "-2");
        EXPECT_EQ(ini("Campo02Col"), "-2");
    }
    EXPECT_FALSE(t.Descarregada()); // the screen stays open after a save
}

INSTANTIATE_TEST_SUITE_P(Limites, SalvaPosicao,
                         ::testing::Values(Posicao{"20", "120", true}, Posicao{"1", "1", true},
                                           Posicao{"21", "10", false}, Posicao{"10", "121", false},
                                           Posicao{"", "10", false}, Posicao{"10", "", false}));

TEST_F(TelaCmpExtra, EscolhaMostraAPosicaoGuardadaSoQuandoCompleta) {
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo00Lin", "5");
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo00Col", "30");
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01Lin", "7");
    CmpExtra &t = abre();
    EXPECT_EQ(t.PosText[0].Text, "5"); // the first field is chosen when none was
    EXPECT_EQ(t.PosText[1].Text, "30");
    t.Clica("CmdNumCampo", 1);
    EXPECT_EQ(t.PosText[0].Text, "");
    EXPECT_EQ(t.PosText[1].Text, "");
    EXPECT_EQ(t.CmdNumCampo[1].Value, 1);
    EXPECT_EQ(t.CmdNumCampo[0].Value, 0);
}

TEST_F(TelaCmpExtra, SoDigitosNaPosicaoEFecharFecha) {
    CmpExtra &t = abre();
    t.Digita("PosText", 0, QStringLiteral("\u0663")); // another script's 3: not a digit here
    EXPECT_EQ(t.PosText[0].Text, "");
    t.Digita("PosText", 0, "1a2-");
    EXPECT_EQ(t.PosText[0].Text, "12");
    t.Digita("PosText", 1, "4 0");
    t.Clica("BtnCmd", 0);
    EXPECT_EQ(ini("Campo00Lin"), "12");
    EXPECT_EQ(ini("Campo00Col"), "40");
    t.Clica("BtnCmd", 2);
    EXPECT_EQ(d.Aberta("CmpExtra"), nullptr);
}

} // namespace
