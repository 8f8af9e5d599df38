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

TEST_F(Inicio, PrimeiraVezCanceladaVoltaNaProximaPartida) {
    grava("Config", "FirstTime", "1");
    desktop.Respostas = {Resposta::Cancel};
    PrimeiraVez(sessao, desktop);
    ASSERT_EQ(desktop.Mensagens.size(), 1);
    EXPECT_EQ(desktop.Mensagens[0].Texto,
              "Para o correto funcionamento entre a impressora e o aplicativo,\nverifique o cabo "
              "de conexão e pressione <ok> para acertar a configuração!");
    EXPECT_EQ(desktop.Mensagens[0].Titulo, "");
    EXPECT_EQ(desktop.Mensagens[0].Botoes_, Botoes::OKCancel);
    EXPECT_EQ(le("Config", "FirstTime"), "1");
}

TEST_F(Inicio, PrimeiraVezAceitaAvisaProcuraOConfiguradorELimpaAMarca) {
    grava("Config", "FirstTime", "1");
    PrimeiraVez(sessao, desktop);
    ASSERT_EQ(desktop.Mensagens.size(), 3);
    EXPECT_EQ(desktop.Mensagens[1].Texto,
              "Obs.: Caso altere a porta de comunicação, favor reiniciar aplicativo!");
    EXPECT_EQ(desktop.Mensagens[1].Titulo, "Configuração da Vexa");
    EXPECT_EQ(desktop.Mensagens[2].Texto, "Aplicativo \"VEXACFG.EXE\" não encontrado!\n");
    EXPECT_EQ(desktop.Mensagens[2].Titulo, "Vexa not found!");
    EXPECT_EQ(desktop.Mensagens[2].Icone_, Icone::Informacao);
    // The key stays, empty, and reads as 0: the message does not come back.
    EXPECT_EQ(le("Config", "FirstTime"), "");
    desktop.Mensagens.clear();
    PrimeiraVez(sessao, desktop);
    EXPECT_TRUE(desktop.Mensagens.isEmpty());
}

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
