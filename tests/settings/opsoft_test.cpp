#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/teclas.h"
#include "printer/simulador.h"
#include "settings/configura.h"
#include "settings/opsoft.h"
#include "store/pasta_dados.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class TelaOpSoft : public ::testing::Test {
  protected:
    void SetUp() override {
        s.PeriodoRel = 30;
        s.PeriodoCop = 15;
        s.ChequesPorPagina = 55;
        s.UsaInvertida = 1;
        s.NumeroObrigatorio = 0;
    }
    OpSoft &abre() { return *static_cast<OpSoft *>(d.Abre(std::make_unique<OpSoft>(s, d))); }
    QString ini(const QString &chave) { return LeGravaIni(s.CaminhoIni, "Opcoes", chave, ""); }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

TEST_F(TelaOpSoft, CarregaCamposBarrasECaixasDaSessao) {
    s.ChequesPorPagina = 9999; // from a file written by hand: the bar stops at its end
    OpSoft &o = abre();
    EXPECT_EQ(o.Text01[0].Text, "30");
    EXPECT_EQ(o.Text01[1].Text, "15");
    EXPECT_EQ(o.Text01[2].Text, "9999");
    EXPECT_EQ(o.VScroll01[0].Value, 30);
    EXPECT_EQ(o.VScroll01[1].Value, 15);
    EXPECT_EQ(o.VScroll01[2].Value, 3650);
    for (const auto &[i, barra] : o.VScroll01) {
        EXPECT_EQ(barra.Min, 1) << i;
        EXPECT_EQ(barra.Max, 3650) << i;
    }
    EXPECT_EQ(o.CheckImpInv.Value, 1);
    EXPECT_EQ(o.CheckUsarNum.Value, 0);
    EXPECT_EQ(o.Foco(), (RefControle{"Text01", 0}));
}

// What the operator types, what the field shows at once, and what it shows after leaving it
// (with the bar at the same value).
struct Digitado {
    const char *digitado, *mostrado, *aoSair;
};
class DigitacaoOpSoft : public TelaOpSoft, public ::testing::WithParamInterface<Digitado> {};

TEST_P(DigitacaoOpSoft, SoAlgarismosEDentroDe1A3650AoSair) {
    const Digitado c = GetParam();
    for (int i : {0, 1, 2}) {
        OpSoft &o = abre();
        o.Digita("Text01", i, QString::fromUtf8(c.digitado));
        EXPECT_EQ(o.Text01[i].Text, c.mostrado) << i;
        o.SetFocus("CheckImpInv");
        EXPECT_EQ(o.Text01[i].Text, c.aoSair) << i;
        EXPECT_EQ(o.VScroll01[i].Value, QString(c.aoSair).toInt()) << i;
        o.Clica("BtnCmd", 1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Textos, DigitacaoOpSoft,
    ::testing::Values(Digitado{"30x", "30", "30"}, Digitado{"a1b2", "12", "12"},
                      Digitado{"-5", "5", "5"}, Digitado{"1.000", "1000", "1000"},
                      Digitado{"2,5", "25", "25"}, Digitado{"0", "0", "1"}, Digitado{"", "", "1"},
                      Digitado{"dias", "", "1"}, Digitado{"9999", "9999", "3650"},
                      Digitado{"3650", "3650", "3650"}, Digitado{"3651", "3651", "3650"},
                      Digitado{"1", "1", "1"}, Digitado{"00045", "00045", "45"},
                      Digitado{"99999999999999999999", "99999999999999999999", "3650"},
                      Digitado{"٣٠", "", "1"}, Digitado{" 7 ", "7", "7"}));

TEST_F(TelaOpSoft, BarraMovidaComOFocoEscreveNoCampo) {
    OpSoft &o = abre();
    o.Digita("Text01", 1, "0");
    // Taking the focus to the bar leaves the field first: it is corrected and the bar follows.
    o.Rola("VScroll01", 1, 200);
    EXPECT_EQ(o.Foco(), (RefControle{"VScroll01", 1}));
    EXPECT_EQ(o.Text01[1].Text, "200");
    o.Rola("VScroll01", 1, 5000);
    EXPECT_EQ(o.VScroll01[1].Value, 3650);
    EXPECT_EQ(o.Text01[1].Text, "3650");
    o.Rola("VScroll01", 1, -3);
    EXPECT_EQ(o.Text01[1].Text, "1");
    // The other fields stay as they were.
    EXPECT_EQ(o.Text01[0].Text, "30");
    EXPECT_EQ(o.Text01[2].Text, "55");
}

TEST_F(TelaOpSoft, BarraMudadaSemOFocoNaoEscreveNoCampo) {
    OpSoft &o = abre();
    o.SetFocus("Text01", 2);
    o.VScroll01[2].Value = 70;
    o.Dispara({"VScroll01", 2}, Evento::Change);
    EXPECT_EQ(o.Text01[2].Text, "55");
}

TEST_F(TelaOpSoft, EnterPassaAoProximoCampo) {
    OpSoft &o = abre();
    EXPECT_EQ(o.Tecla(tecla::Enter), 0);
    EXPECT_EQ(o.Foco(), (RefControle{"Text01", 1}));
    o.Tecla(tecla::Enter);
    o.Tecla(tecla::Enter);
    EXPECT_EQ(o.Foco(), (RefControle{"CheckImpInv"}));
}

// Which fields the operator changes, and which keys of Opcoes are written then: the numbers
// only when they changed, the two boxes always.
struct Confirmacao {
    QStringList textos; // the three fields as typed
    QStringList gravadas;
};
class ConfirmaOpSoft : public TelaOpSoft, public ::testing::WithParamInterface<Confirmacao> {};

TEST_P(ConfirmaOpSoft, GravaSoOQueMudouEAsDuasCaixas) {
    const Confirmacao c = GetParam();
    OpSoft &o = abre();
    for (int i = 0; i < 3; ++i)
        o.Digita("Text01", i, c.textos[i]);
    o.Clica("CheckImpInv");
    o.Clica("CheckUsarNum");
    o.Clica("BtnCmd", 0);

    const QStringList numeros{"PeriodoRelExc", "PeriodoCopExc", "NumChkPgRel"};
    QStringList gravadas;
    for (const QString &chave : numeros + QStringList{"UsarImpInv", "NumCObrig"})
        if (ini(chave) != "-2") gravadas << chave + "=" + ini(chave);
    EXPECT_EQ(gravadas, c.gravadas);
    EXPECT_EQ(s.UsaInvertida, 0);
    EXPECT_EQ(s.NumeroObrigatorio, 1);
    EXPECT_TRUE(o.Descarregada());
}

INSTANTIATE_TEST_SUITE_P(
    Campos, ConfirmaOpSoft,
    ::testing::Values(
        Confirmacao{{"30", "15", "55"}, {"UsarImpInv=0", "NumCObrig=1"}},
        Confirmacao{{"30", "60", "55"}, {"PeriodoCopExc=60", "UsarImpInv=0", "NumCObrig=1"}},
        Confirmacao{{"0", "15", "9999"},
                    {"PeriodoRelExc=1", "NumChkPgRel=3650", "UsarImpInv=0", "NumCObrig=1"}},
        Confirmacao{{"030", "15x", "55"}, {"UsarImpInv=0", "NumCObrig=1"}},
        Confirmacao{{"90", "20", "40"},
                    {"PeriodoRelExc=90", "PeriodoCopExc=20", "NumChkPgRel=40", "UsarImpInv=0",
                     "NumCObrig=1"}}));

TEST_F(TelaOpSoft, ConfirmaLevaOsNumerosASessao) {
    OpSoft &o = abre();
    o.Digita("Text01", 1, "60");
    o.Digita("Text01", 2, "40");
    o.Clica("BtnCmd", 0);
    EXPECT_EQ(s.PeriodoRel, 30);
    EXPECT_EQ(s.PeriodoCop, 60);
    EXPECT_EQ(s.ChequesPorPagina, 40);
    EXPECT_EQ(s.UsaInvertida, 1);
    EXPECT_EQ(s.NumeroObrigatorio, 0);
    EXPECT_EQ(ini("UsarImpInv"), "1");
    EXPECT_EQ(ini("NumCObrig"), "0");
    // The next start reads what was written.
    Sessao outra{pasta.path()};
    inicia_configuracoes(outra);
    le_opcoes_numericas(outra);
    EXPECT_EQ(outra.PeriodoCop, 60);
    EXPECT_EQ(outra.ChequesPorPagina, 40);
    EXPECT_EQ(outra.NumeroObrigatorio, 0);
}

TEST_F(TelaOpSoft, CancelarFechaSemGuardarNada) {
    OpSoft &o = abre();
    o.Digita("Text01", 0, "90");
    o.Rola("VScroll01", 2, 10);
    o.Clica("CheckImpInv");
    o.Clica("BtnCmd", 1);
    EXPECT_TRUE(o.Descarregada());
    for (const char *chave :
         {"PeriodoRelExc", "PeriodoCopExc", "NumChkPgRel", "UsarImpInv", "NumCObrig"})
        EXPECT_EQ(ini(chave), "-2") << chave;
    EXPECT_EQ(s.PeriodoRel, 30);
    EXPECT_EQ(s.ChequesPorPagina, 55);
    EXPECT_EQ(s.UsaInvertida, 1);
}

// The first start: the entry screen's second tick welcomes the operator, and OK opens the
// configuration screen.
TEST(PrimeiraPartida, BoasVindasNoSegundoToqueAbreConfiguracoes) {
    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    prepara_pasta_dados(s);
    s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    auto *m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    d.Mensagens.clear();
    m->Timer1_Timer();
    EXPECT_TRUE(d.Mensagens.isEmpty());
    m->Timer1_Timer();
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Titulo, "Bem-vindo ao Vexa Plus");
    auto *cfg = d.Tela_<Configura>(telas::Configura);
    ASSERT_NE(cfg, nullptr);
    EXPECT_EQ(cfg->Caption, "Configurações");
}

TEST(MenuMain, ConfiguracoesOpcoesAjudaESobreHabilitados) {
    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    Main m(s, d, QString());
    for (const char *item : {"Conf_Vexa", "MOpSoft", "Topicos", "Sobre_T"})
        EXPECT_TRUE(m.controle(item)->Enabled) << item;
    m.Clica("Topicos");
    EXPECT_EQ(d.Ajudas, QStringList{"Conteudo"});
    m.Clica("MOpSoft");
    EXPECT_NE(d.Aberta(telas::OpSoft), nullptr);
}

} // namespace
