#include "core/conversoes.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "printer/simulador.h"
#include "settings/configura.h"
#include "settings/opsoft.h"
#include "settings/sobre.h"
#include "settings/versao.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class TelaConfigura : public ::testing::Test {
  protected:
    void SetUp() override {
        s.PortaImpressora = "COM2";
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        imp().LimpaChamadas();
    }
    Simulador &imp() { return static_cast<Simulador &>(*s.Impressora); }
    Configura &abre() {
        return *static_cast<Configura *>(d.Abre(std::make_unique<Configura>(s, d)));
    }
    QString ini(const QString &chave) { return LeGravaIni(s.CaminhoIni, "Sistema", chave, ""); }
    QStringList chamadas() { return imp().Chamadas(); }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

TEST_F(TelaConfigura, CarregaPortaEMoedaGravandoOQueFalta) {
    Configura &c = abre();
    EXPECT_EQ(c.cboPorta.ListCount(), 10);
    EXPECT_EQ(c.cboPorta.List(c.cboPorta.ListIndex), "COM2");
    EXPECT_EQ(ini("port"), "COM2");
    EXPECT_EQ(c.Text1[0].Text, "Real");
    EXPECT_EQ(c.Text1[1].Text, "Reais");
    EXPECT_EQ(ini("m_sg"), "Real");
    EXPECT_EQ(ini("m_pl"), "Reais");
}

TEST_F(TelaConfigura, PortaForaDaListaNaoEscolheNenhuma) {
    LeGravaIni(s.CaminhoIni, "Sistema", "port", "LPT1");
    Configura &c = abre();
    EXPECT_EQ(c.cboPorta.ListIndex, -1);
    EXPECT_EQ(s.PortaImpressora, "LPT1");
}

TEST_F(TelaConfigura, AtualizarPortaTestaEGuarda) {
    Configura &c = abre();
    // The simulated printer answers only on its own port: another one fails the test.
    c.cboPorta.ListIndex = 4;
    c.Clica("Command3D7");
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Erro na configuração da porta de comunicação.");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Configurações");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Critico);
    EXPECT_EQ(ini("port"), "COM2");
    EXPECT_EQ(s.PortaImpressora, "COM2");

    imp().DefinePorta("COM5");
    c.Clica("Command3D7");
    ASSERT_EQ(d.Mensagens.size(), 2);
    EXPECT_EQ(d.Mensagens[1].Texto, "Porta configurada com sucesso.");
    EXPECT_EQ(d.Mensagens[1].Titulo, "Configuração da Porta Serial");
    EXPECT_EQ(ini("port"), "COM5");
    EXPECT_EQ(s.PortaImpressora, "COM5");
    EXPECT_EQ(chamadas().last(), "FechaPorta()");
}

// A settings file that refuses the write (here a folder in its place, which refuses root too)
// is told on the spot, and nothing says the setting was kept.
struct IniRecusada {
    const char *nome;
    std::function<void(Sessao &, DesktopRoteiro &)> acao;
};
void PrintTo(const IniRecusada &c, std::ostream *os) {
    *os << c.nome;
}
class GravacaoRecusada : public TelaConfigura, public ::testing::WithParamInterface<IniRecusada> {};

TEST_P(GravacaoRecusada, AvisaENaoDizSucesso) {
    ASSERT_TRUE(QDir(pasta.path()).mkdir("VEXA.INI"));
    imp().DefinePorta("COM5");
    GetParam().acao(s, d);
    const QStringList textos = d.Textos();
    EXPECT_EQ(textos.count("A configuração não foi gravada no arquivo VEXA.INI: o disco está cheio "
                           "ou o arquivo não aceita gravação. O arquivo continua como estava."),
              1)
        << textos.join('|').toStdString();
    EXPECT_FALSE(textos.contains("Porta configurada com sucesso."));
}

INSTANTIATE_TEST_SUITE_P(
    Configuracoes, GravacaoRecusada,
    ::testing::Values(IniRecusada{"porta",
                                  [](Sessao &s, DesktopRoteiro &d) {
                                      auto *c = static_cast<Configura *>(
                                          d.Abre(std::make_unique<Configura>(s, d)));
                                      c->cboPorta.ListIndex = 4;
                                      c->Clica("Command3D7");
                                      // The port answered: this run prints through it.
                                      EXPECT_EQ(s.PortaImpressora, "COM5");
                                  }},
                      IniRecusada{"moeda",
                                  [](Sessao &s, DesktopRoteiro &d) {
                                      Tela *c = d.Abre(std::make_unique<Configura>(s, d));
                                      s.PortaImpressora = "COM5";
                                      c->Clica("Command3D1");
                                  }},
                      IniRecusada{"opcoes",
                                  [](Sessao &s, DesktopRoteiro &d) {
                                      auto *o = static_cast<OpSoft *>(
                                          d.Abre(std::make_unique<OpSoft>(s, d)));
                                      o->Text01[0].Text = "45";
                                      o->Clica("BtnCmd", 0);
                                      EXPECT_EQ(s.PeriodoRel, 45);
                                  }}),
    [](const auto &info) { return std::string(info.param.nome); });

struct Recusa {
    const char *botao;
    QString campo, mensagem, titulo;
};
class RecusaDeConfigura : public TelaConfigura, public ::testing::WithParamInterface<Recusa> {};

TEST_P(RecusaDeConfigura, CampoVazioVoltaOFoco) {
    const Recusa &r = GetParam();
    Configura &c = abre();
    c.Text1[0].Text.clear();
    c.Text1[1].Text.clear();
    c.Text2[1].Text = "Maria";
    c.SetFocus("SSCommand1");
    c.Clica(r.botao);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, r.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, r.titulo);
    EXPECT_EQ(c.Foco(), RefControle::de(r.campo));
    EXPECT_TRUE(chamadas().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Configura, RecusaDeConfigura,
    ::testing::Values(
        Recusa{"Command3D1", "Text1(0)", "O nome da moeda no singular não pode ser vazio.",
               "Alteração da Moeda"},
        Recusa{"Command3D2", "Text2(0)", "O código do favorecido não pode ser vazio.",
               "Cadastro de Favorecido"},
        Recusa{"Command3D4", "Text3",
               "O código do favorecido não pode ser vazio ou a opção 'Todos' deve estar "
               "assinalada.",
               "Exclusão de Favorecidos"}));

TEST_F(TelaConfigura, MoedaEFavorecidosVaoAImpressora) {
    Configura &c = abre();
    c.Text1[0].Text = " Dólar ";
    c.Text1[1].Text = "Dólares";
    c.Clica("Command3D1");
    EXPECT_EQ(ini("m_sg"), "Dólar");
    EXPECT_EQ(imp().MoedaSingular(), "Dólar");

    c.SetFocus("Text2", 0);
    c.Digita("Text2", 0, "7");
    c.SetFocus("Text2", 1);
    EXPECT_EQ(c.Text2[0].Text, "07");
    c.Digita("Text2", 1, " João ");
    c.Clica("Command3D2");
    EXPECT_TRUE(chamadas().contains("IncluiFavorecido(07|" + ConverteTexto("João") + ")"));

    c.Clica("Option3D2");
    EXPECT_EQ(c.Text3.Text, "*");
    c.Clica("Command3D4");
    EXPECT_TRUE(chamadas().contains("ExcluiFavorecido(*)"));
    EXPECT_EQ(d.Textos().count("Os dados foram enviados para a impressora."), 3);
}

TEST_F(TelaConfigura, CodigoCortaNoLimiteERecusaTexto) {
    Configura &c = abre();
    c.SetFocus("Text3");
    c.Digita("Text3", -1, "123");
    EXPECT_EQ(c.Text3.Text, "12");
    EXPECT_EQ(d.Textos(), QStringList{"Tamanho Máximo deste campo..."});
    c.Digita("Text3", -1, "ab");
    c.SetFocus("Text2", 0);
    EXPECT_TRUE(c.Text3.Text.isEmpty());
}

TEST_F(TelaConfigura, EnterVaiAoProximoControle) {
    Configura &c = abre();
    c.SetFocus("Text1", 0);
    c.Tecla(13);
    EXPECT_EQ(c.Foco(), (RefControle{"Text1", 1}));
    c.Tecla(13);
    EXPECT_EQ(c.Foco(), RefControle{"Command3D1"});
}

TEST_F(TelaConfigura, AutoTesteNoPapel) {
    Configura &c = abre();
    d.Respostas = {Resposta::Cancel};
    c.Clica("Command3D9");
    EXPECT_TRUE(chamadas().isEmpty());
    c.Clica("Command3D9");
    EXPECT_EQ(d.Mensagens[0].Texto, "Insira o papel na impressora.");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Auto-teste na impressora");
    const QString pagina = pagina_auto_teste("COM2", "Suporte Técnico: (__) ____-____");
    EXPECT_TRUE(chamadas().contains("FormataTX(" + ConverteTexto(pagina) + "|3|0|0|0|0)"));
    EXPECT_EQ(pagina, QString(35, ' ') + "AUTO - TESTE\n\n" + QString(27, ' ') +
                          "Impressora de Cheques - Vexa Plus\n\n\n" + QString(35, ' ') +
                          "TOLVANE S/A.\n\n" + QString(32, ' ') +
                          "Suporte Técnico: (__) ____-____\n\n\n\n\n" + QString(20, ' ') +
                          "Comunicação OK - Impressora instalada na COM2\n");
    // The office's own number, once written in the settings, replaces the placeholder.
    LeGravaIni(s.CaminhoIni, "Sistema", "TelefoneSuporte", "Suporte: (11) 5555-0100");
    imp().LimpaChamadas();
    c.Clica("Command3D9");
    EXPECT_TRUE(chamadas().join(' ').contains(ConverteTexto("Suporte: (11) 5555-0100")));
}

TEST_F(TelaConfigura, SobreNaPartidaEsperaSemBotao) {
    s.FaseInicio = 1;
    auto *sobre = static_cast<Sobre *>(d.Abre(std::make_unique<Sobre>(s, d)));
    EXPECT_FALSE(sobre->Command3D1.Visible);
    EXPECT_EQ(sobre->Caption, "   Aguarde um instante...");
    EXPECT_EQ(d.Mostradas, QStringList{"Sobre"});
    EXPECT_TRUE(
        sobre->Label1.Caption.endsWith("Versão " + VersaoPrograma() + " - " + DataCompilacao()));
    EXPECT_EQ(sobre->Label5.Caption, "Pasta de dados:\n" + s.CaminhoApp);
    sobre->Unload();
    s.FaseInicio = 0;
    sobre = static_cast<Sobre *>(d.Abre(std::make_unique<Sobre>(s, d)));
    EXPECT_TRUE(sobre->Command3D1.Visible);
    EXPECT_EQ(sobre->Caption, "Sobre o Software Vexa Plus");
    EXPECT_EQ(d.Abre(std::make_unique<Sobre>(s, d)), sobre); // opened twice, one screen
}

} // namespace
