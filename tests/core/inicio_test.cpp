#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/relogio.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class Inicio : public ::testing::Test {
  protected:
    void SetUp() override { fixa_hoje(QDate(2026, 11, 22)); }
    void TearDown() override { fixa_hoje(QDate()); }
    QString le(const QString &secao, const QString &chave) {
        return LeGravaIni(sessao.CaminhoIni, secao, chave, "");
    }
    void grava(const QString &secao, const QString &chave, const QString &valor) {
        LeGravaIni(sessao.CaminhoIni, secao, chave, valor);
    }
    QTemporaryDir pasta;
    Sessao sessao{pasta.path()};
    DesktopRoteiro desktop;
};

struct CasoInRel {
    const char *guardado; // nullptr: key missing
    bool marcado;
    const char *depois;
};

class InRel : public Inicio, public ::testing::WithParamInterface<CasoInRel> {};

TEST_P(InRel, MarcaACaixaEReescreveComo1) {
    const CasoInRel c = GetParam();
    if (c.guardado) grava("Sistema", "InRel", c.guardado);
    EXPECT_EQ(inicia_configuracoes(sessao), c.marcado);
    EXPECT_EQ(le("Sistema", "InRel"), c.depois);
}

// By numeric value: an empty value and "sim" are 0 as much as "0" is, and stay as they are.
INSTANTIATE_TEST_SUITE_P(Valores, InRel,
                         ::testing::Values(CasoInRel{nullptr, true, "1"},
                                           CasoInRel{"0", false, "0"}, CasoInRel{"7", true, "1"},
                                           CasoInRel{"1", true, "1"}, CasoInRel{"*%*", false, ""},
                                           CasoInRel{"sim", false, "sim"},
                                           CasoInRel{"0.0", false, "0.0"},
                                           CasoInRel{"0.5", true, "1"},
                                           CasoInRel{"1abc", true, "1"}));

TEST_F(Inicio, PortaFaltandoGravaCOM2EPortaLongaECortada) {
    inicia_configuracoes(sessao);
    EXPECT_EQ(sessao.PortaImpressora, "COM2");
    EXPECT_EQ(le("Sistema", "port"), "COM2");
    grava("Sistema", "port", "COM10");
    inicia_configuracoes(sessao);
    EXPECT_EQ(sessao.PortaImpressora, "COM1");
}

TEST_F(Inicio, OpcoesNumericasComPadroesEValoresGuardados) {
    grava("Opcoes", "PeriodoRelExc", "45");
    grava("Opcoes", "NumCObrig", "0");
    inicia_configuracoes(sessao);
    le_opcoes_numericas(sessao);
    EXPECT_EQ(sessao.PeriodoRel, 45);
    EXPECT_EQ(sessao.PeriodoCop, 30);
    EXPECT_EQ(sessao.UsaInvertida, 1);
    EXPECT_EQ(sessao.NumeroObrigatorio, 0);
    EXPECT_EQ(sessao.ChequesPorPagina, 55);
    EXPECT_EQ(sessao.Hoje6, "221126");
    EXPECT_EQ(sessao.MesAno, "1126");
}

// The welcome of a new folder: OK opens the configuration and the welcome is done with (the
// key stays, empty, and reads as 0); Cancel leaves it for the next start.
class BoasVindas : public Inicio, public ::testing::WithParamInterface<Resposta> {};

TEST_P(BoasVindas, OKAbreAConfiguracaoECancelVoltaNaProximaPartida) {
    const bool ok = GetParam() == Resposta::OK;
    grava("Config", "FirstTime", "1");
    desktop.Respostas = {GetParam()};
    int abertas = 0;
    PrimeiraVez(sessao, desktop, [&] { ++abertas; });
    ASSERT_EQ(desktop.Mensagens.size(), 1);
    const auto &m = desktop.Mensagens[0];
    EXPECT_EQ(m.Texto, "Bem-vindo ao Vexa Plus!\n\nAntes do primeiro cheque, ligue a impressora de "
                       "cheques ao computador e escolha a porta em que ela está ligada.\n\n"
                       "Pressione OK para abrir a configuração da impressora.");
    EXPECT_EQ(m.Titulo, "Bem-vindo ao Vexa Plus");
    EXPECT_EQ(m.Botoes_, Botoes::OKCancel);
    EXPECT_EQ(m.Icone_, Icone::Informacao);
    EXPECT_EQ(m.Padrao, Resposta::OK);
    EXPECT_EQ(abertas, ok ? 1 : 0);
    EXPECT_EQ(le("Config", "FirstTime"), ok ? "" : "1");
}

INSTANTIATE_TEST_SUITE_P(Respostas, BoasVindas, ::testing::Values(Resposta::OK, Resposta::Cancel));

struct CasoPrimeiraVez {
    const char *guardado; // nullptr: key missing
    bool mensagem;
};

class FirstTime : public Inicio, public ::testing::WithParamInterface<CasoPrimeiraVez> {};

// The message comes when the stored value is numeric 1, whatever its spelling.
TEST_P(FirstTime, MensagemPeloValorNumerico) {
    if (GetParam().guardado) grava("Config", "FirstTime", GetParam().guardado);
    desktop.Respostas = {Resposta::Cancel};
    PrimeiraVez(sessao, desktop);
    EXPECT_EQ(desktop.Mensagens.size(), GetParam().mensagem ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Valores, FirstTime,
    ::testing::Values(CasoPrimeiraVez{"1", true}, CasoPrimeiraVez{"1.0", true},
                      CasoPrimeiraVez{"01", true}, CasoPrimeiraVez{" 1 ", true},
                      CasoPrimeiraVez{"1 vez", true}, CasoPrimeiraVez{"1,5", true},
                      CasoPrimeiraVez{"1.5", false}, CasoPrimeiraVez{"*%*", false},
                      CasoPrimeiraVez{"2", false}, CasoPrimeiraVez{"sim", false},
                      CasoPrimeiraVez{nullptr, false}));

} // namespace
