#include "apoio/referencia.h"
#include "core/conversoes.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/tela.h"
#include "printer/impressao.h"
#include "printer/nativo.h"
#include "printer/simulador.h"
#include "printer/sistema.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <tuple>

using namespace vexa;

namespace {

class Impressao : public ::testing::Test {
  protected:
    void SetUp() override {
        s.PortaImpressora = "COM2";
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        imp().LimpaChamadas();
    }
    Simulador &imp() { return static_cast<Simulador &>(*s.Impressora); }
    void campo(int i, const QString &linha, const QString &coluna) {
        LeGravaIni(s.CaminhoIni, "FrenteInfo", QString("Campo0%1Lin").arg(i), linha);
        LeGravaIni(s.CaminhoIni, "FrenteInfo", QString("Campo0%1Col").arg(i), coluna);
    }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

TEST_F(Impressao, ComandoImpressoraAbreAgeEFecha) {
    int chamadasNaVerificacao = -1;
    bool aprova = true;
    PedidoImpressora banco{"341", "001,005,007,010,013,092,017,009,011,050,031,040,065", [&] {
                               chamadasNaVerificacao = int(imp().Registro().size());
                               return aprova;
                           }};
    EXPECT_EQ(ComandoImpressora(s, d, 0, banco), 1);
    EXPECT_EQ(chamadasNaVerificacao, 1); // the check runs with the port open
    aprova = false;
    EXPECT_EQ(ComandoImpressora(s, d, 0, banco), 0);
    EXPECT_EQ(ComandoImpressora(s, d, 1, {"07", ConverteTexto("José"), {}}), 1);
    EXPECT_EQ(ComandoImpressora(s, d, 2, {"07", "", {}}), 1);
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)",
                           "IncluiBanco(341|001,005,007,010,013,092,017,009,011,050,031,040,065)",
                           "FechaPorta()", "IniciaPorta(COM2)", "FechaPorta()", "IniciaPorta(COM2)",
                           "IncluiFavorecido(07|" + ConverteTexto("José") + ")", "FechaPorta()",
                           "IniciaPorta(COM2)", "ExcluiFavorecido(07)", "FechaPorta()"}));
    EXPECT_TRUE(d.Mensagens.isEmpty());
}

TEST_F(Impressao, GaugeVarreAteOVermelhoEVoltaAoRepouso) {
    ComandoImpressora(s, d, 2, {"07", "", {}}); // no entry screen: nothing to sweep
    Medidor gauge;
    AnimaGauge(gauge, 1);
    EXPECT_EQ(gauge.Value, 100);
    EXPECT_EQ(gauge.ForeColor, 255);
    s.Gauge1 = &gauge;
    ComandoImpressora(s, d, 2, {"07", "", {}});
    EXPECT_EQ(gauge.Value, 0);
    EXPECT_EQ(gauge.ForeColor, SemCor);
}

// One cheque: the port, what fails, whether the port is tested, the six texts; then the result,
// the calls after IniciaPorta and the message with its title.
struct CasoCheque {
    QString porta, falha;
    bool testaPorta;
    TextosCheque textos;
    std::optional<qint16> resultado; // none: the port didn't open
    QStringList chamadas;
    QString mensagem = {}, titulo = {};
};
class UmCheque : public Impressao, public ::testing::WithParamInterface<CasoCheque> {};

TEST_P(UmCheque, EntreAberturaEFechamentoDaPorta) {
    const CasoCheque &c = GetParam();
    s.PortaImpressora = c.porta;
    if (!c.falha.isEmpty()) imp().Falha(c.falha, Simulador::SemPapel);
    Medidor gauge;
    EXPECT_EQ(imprime_um_cheque(s, d, &gauge, c.textos, c.testaPorta), c.resultado);
    EXPECT_EQ(imp().Chamadas(), QStringList{"IniciaPorta(" + c.porta + ")"} + c.chamadas);
    EXPECT_EQ(gauge.Value, 0); // back at rest after the print
    if (c.mensagem.isEmpty()) {
        EXPECT_TRUE(d.Mensagens.isEmpty());
        return;
    }
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, c.titulo);
}

const TextosCheque Cheque{"001", "1.234,50", "João", "São Paulo", "05/03/99", ""};
const QString Impresso = "ImprimeCheque(001|1.234,50|" + ConverteTexto("João") + "|" +
                         ConverteTexto("São Paulo") + "|05/03/99|";
INSTANTIATE_TEST_SUITE_P(
    Casos, UmCheque,
    ::testing::Values(
        CasoCheque{"COM2", "", false, Cheque, 1, {Impresso + ")", "FechaPorta()"}},
        // an instalment repeats its amount; empty payee and city go as one blank each
        CasoCheque{"COM2",
                   "",
                   true,
                   {"001", "10,00", "", "", "05/03/99", "10,00"},
                   1,
                   {"ImprimeCheque(001|10,00| | |05/03/99|10,00)", "FechaPorta()"}},
        CasoCheque{"COM2", "ImprimeCheque", false, Cheque, Simulador::SemPapel,
                   QStringList{Impresso + ")", "FechaPorta()"},
                   "Problemas com a impressão do cheque.\n\nA impressora está sem papel ou "
                   "desligada. Coloque o cheque, verifique se ela está ligada e tente de novo.",
                   "Impressão do Cheque (004)"},
        // the single cheque doesn't look at the port: the cheque's own code tells
        CasoCheque{"COM1", "", false, Cheque, Simulador::PortaFechada,
                   QStringList{Impresso + ")", "FechaPorta()"},
                   "Problemas com a impressão do cheque.\n\nA impressora não respondeu na porta "
                   "COM1. Verifique o cabo e a porta em Arquivo > Configurações e tente de novo.",
                   "Impressão do Cheque (002)"},
        CasoCheque{"COM1", "", true, Cheque, std::nullopt, QStringList{},
                   "Problemas ao se comunicar com a impressora!\rA impressora não respondeu na "
                   "porta COM1. Verifique o cabo e a porta em Arquivo > Configurações e tente "
                   "de novo.",
                   "Impressão do Cheque"}));

// Operation, the operation told to fail ("" none) and its code, the calls, the message.
using CasoQorn = std::tuple<int, const char *, int, const char *, const char *>;

class QornCmd : public Impressao, public ::testing::WithParamInterface<CasoQorn> {};

INSTANTIATE_TEST_SUITE_P(
    Casos, QornCmd,
    ::testing::Values(
        CasoQorn(1, "", 0, "IniciaPorta(COM2) IncluiFavorecido(07|Ana) FechaPorta()",
                 "Os dados foram enviados para a impressora."),
        CasoQorn(1, "IncluiFavorecido", 5,
                 "IniciaPorta(COM2) IncluiFavorecido(07|Ana) FechaPorta()",
                 "Erro no cadastro do favorecido."),
        CasoQorn(2, "ExcluiFavorecido", 0, "IniciaPorta(COM2) ExcluiFavorecido(07) FechaPorta()",
                 "Erro na exclusão do favorecido."),
        CasoQorn(3, "IniciaPorta", 0, "IniciaPorta(COM2)", "Erro de comunicação com a impressora."),
        CasoQorn(3, "AlteraMoeda", 2, "IniciaPorta(COM2) AlteraMoeda(07|Ana) FechaPorta()",
                 "Erro na alteração da moeda.")));

TEST_P(QornCmd, PassosEMensagem) {
    const auto [operacao, falha, codigo, chamadas, mensagem] = GetParam();
    if (*falha) imp().Falha(falha, qint16(codigo));
    Qorn_CMD(s, d, qint16(operacao), {"07", "Ana", {}});
    EXPECT_EQ(imp().Chamadas().join(' '), chamadas);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, QString::fromUtf8(mensagem));
    const QStringList titulos{"Cadastro de Favorecido", "Exclusão de Favorecido",
                              "Alteração da Moeda"};
    EXPECT_EQ(d.Mensagens[0].Titulo, titulos[operacao - 1]);
    EXPECT_EQ(d.Mensagens[0].Icone_, *falha ? Icone::Critico : Icone::Informacao);
}

TEST_F(Impressao, QornCmdMoedaGravaOsNomesEEnviaConvertidos) {
    Qorn_CMD(s, d, 3, {"Dólar", "Dólares", {}});
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Sistema", "m_sg", ""), "Dólar");
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Sistema", "m_pl", ""), "Dólares");
    EXPECT_EQ(imp().Registro()[1].Argumentos,
              QStringList({ConverteTexto("Dólar"), ConverteTexto("Dólares")}));
    EXPECT_EQ(imp().MoedaPlural(), "Dólares");
}

TEST_F(Impressao, FormatoDaDataEnviaOComandoEGuardaAEscolha) {
    envia_formato_data(s, 3); // not a choice: nothing happens
    envia_formato_data(s, 2);
    EXPECT_EQ(imp().Chamadas(), QStringList({"IniciaPorta(COM2)",
                                             "ComandoTX(\x1B\u00AF"
                                             "D2\r|5)",
                                             "FechaPorta()"}));
    EXPECT_EQ(para_ansi(comando_formato_data(4)), QByteArray("\x1B\xAF"
                                                             "D4\r"));
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Opcoes", "ConfiguraData", ""), "2");
    EXPECT_EQ(imp().DigitosAno(), 2);
}

TEST_F(Impressao, EnviaTextoImpressoraNaOrdemEComAsFalhas) {
    EXPECT_TRUE(EnviaTextoImpressora(s, d, "Página 1", 1));
    const QString convertido = ConverteTexto("Página 1");
    EXPECT_EQ(imp().Chamadas(), QStringList({"IniciaPorta(COM2)", "TravaDoc(1)",
                                             "FormataTX(" + convertido + "|1|0|0|0|0)",
                                             "TravaDoc(0)", "FechaPorta()"}));
    // Converted once: the printer reads the accent back.
    EXPECT_EQ(teste::le_utf8(imp().ArquivoPapel(1)), "Página 1");

    imp().LimpaChamadas();
    imp().Falha("FormataTX", 9);
    EXPECT_FALSE(EnviaTextoImpressora(s, d, "Página 2", 3));
    // A refused text leaves the document held and the port open.
    EXPECT_EQ(imp().Chamadas(),
              QStringList({"IniciaPorta(COM2)", "TravaDoc(1)",
                           "FormataTX(" + ConverteTexto("Página 2") + "|3|0|0|0|0)"}));

    imp().LimpaChamadas();
    s.PortaImpressora = "COM1";
    EXPECT_FALSE(EnviaTextoImpressora(s, d, "x", 1));
    EXPECT_EQ(imp().Chamadas(), QStringList({"IniciaPorta(COM1)"}));
    EXPECT_EQ(d.Textos(), QStringList({"Erro ao enviar as informações para a impressora.",
                                       "Erro de comunicação com a impressora."}));
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Critico);
    EXPECT_EQ(d.Mensagens[1].Icone_, Icone::Critico);
}

// Line and column of the fields 0 to 2 ("-" leaves a field unregistered), their texts,
// the result, the calls and the message.
using CasoCampos = std::tuple<QStringList, QStringList, int, const char *, const char *>;

class CamposExtras : public Impressao, public ::testing::WithParamInterface<CasoCampos> {};

INSTANTIATE_TEST_SUITE_P(
    Casos, CamposExtras,
    ::testing::Values(CasoCampos({"20", "109"}, {"0123456789", "", ""}, 1,
                                 "ImprimeCampoX(1|20|109|0123456789)", ""),
                      CasoCampos({"21", "1"}, {"x", "", ""}, -4, "",
                                 "Valores de posição incorretos na impressão do campo 1!\n"
                                 "Linha = 21 e Coluna =  1 + texto de tamanho  1!"),
                      CasoCampos({"20", "110"}, {"0123456789", "", ""}, -4, "",
                                 "Valores de posição incorretos na impressão do campo 1!\n"
                                 "Linha = 20 e Coluna =  110 + texto de tamanho  10!"),
                      CasoCampos({"5", "5", "-", "-"}, {"a", "b", ""}, -4, "",
                                 "Valores de posição não cadastrados na impressão do campo 2!\n"),
                      // The check stops at the first bad field, before anything is sent.
                      CasoCampos({"5", "5", "5", "5", "30", "5"}, {"a", "b", "c"}, -4, "",
                                 "Valores de posição incorretos na impressão do campo 3!\n"
                                 "Linha = 30 e Coluna =  5 + texto de tamanho  1!"),
                      // Texts go unconverted; a stray last character below "0" is dropped.
                      CasoCampos({"3 ", "-2", "4\t", "7-", "-1", "8"}, {"", "São", "c"}, 1,
                                 "ImprimeCampoX(2|4|7|São) ImprimeCampoX(3|-1|8|c)", ""),
                      CasoCampos({}, {"", "", ""}, 1, "", "")));

TEST_P(CamposExtras, ConfereAsPosicoesEEntregaComAPortaFechada) {
    const auto [posicoes, textos, resultado, chamadas, mensagem] = GetParam();
    for (int i = 0; i + 1 < posicoes.size(); i += 2)
        if (posicoes[i] != "-") campo(i / 2, posicoes[i], posicoes[i + 1]);
    EXPECT_EQ(ImprimeCamposExtras(s, d, textos), resultado);
    EXPECT_EQ(imp().Chamadas().join(' '), chamadas);
    ASSERT_EQ(d.Mensagens.size(), *mensagem ? 1 : 0);
    if (*mensagem) {
        EXPECT_EQ(d.Mensagens[0].Texto, QString::fromUtf8(mensagem));
        EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão do Cheque");
        EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Nenhum);
    }
}

TEST_F(Impressao, MontaExtensoLeAsPalavrasDoArquivo) {
    MontaExtenso(s, d, " 1.234,5 ");
    EXPECT_EQ(imp().Chamadas(), QStringList({"MontaValor(1234,50|real|reais)"}));
    // The zero byte that ends the words stays, so that every reader gets them whole: the
    // transfer cheque trims them and drops their last character, the split stops at the zero.
    const QString palavras = "Mil, Duzentos e Trinta e Quatro Reais e Cinquenta Centavos";
    EXPECT_EQ(s.ValorExtenso, palavras + QChar(0));
    EXPECT_EQ(s.ValorExtenso.trimmed().chopped(1), palavras);
    EXPECT_EQ(QuebraExtenso(s.ValorExtenso), qMakePair(palavras, QString()));
    EXPECT_TRUE(d.Mensagens.isEmpty());

    // Words of 79 characters stay on one line: their zero doesn't count.
    MontaExtenso(s, d, "77.777,77");
    ASSERT_EQ(s.ValorExtenso.size(), 79 + 1);
    EXPECT_EQ(QuebraExtenso(s.ValorExtenso).second, "");

    for (const auto &[codigo, mensagem] :
         {std::pair{qint16(1), QString("ERRO NOS VALORES PASSADOS")},
          {qint16(2), QString("Não foi possível abrir o arquivo")}}) {
        d.Mensagens.clear();
        imp().Falha("MontaValor", codigo);
        MontaExtenso(s, d, "7");
        EXPECT_EQ(s.ValorExtenso, "7,00");
        EXPECT_EQ(d.Textos(), QStringList{mensagem});
        EXPECT_EQ(d.Mensagens[0].Titulo, "");
    }
}

TEST_F(Impressao, CriaImpressoraPelaConfiguracao) {
    auto primeira = cria_impressora(s);
    EXPECT_EQ(primeira->Descricao(), "Impressora simulada (COM2)");
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Sistema", "Impressora", ""), "Simulador");
    LeGravaIni(s.CaminhoIni, "Sistema", "Impressora", "Outra");
    EXPECT_NE(dynamic_cast<Simulador *>(cria_impressora(s).get()), nullptr);

    // The real library answers in the current folder: the data folder.
    const QString antes = QDir::currentPath();
    LeGravaIni(s.CaminhoIni, "Sistema", "Impressora", "nativo");
    auto nativa = cria_impressora(s);
    EXPECT_NE(dynamic_cast<Nativo *>(nativa.get()), nullptr);
    EXPECT_EQ(QDir::currentPath(), s.CaminhoApp);
    QDir::setCurrent(antes);
}

TEST(ImpressoraSistema, PaginasDeTextoViramLinhas) {
    const DocumentoImpressao doc =
        documento_impressao("Lista", {"a\r\nb\r\n", "\r\nc\r\n\r\nd", "e\nf\n"}, 12);
    EXPECT_EQ(doc.Paginas, QList<QStringList>({{"a", "b"}, {"", "c", "", "d"}, {"e", "f"}}));
    EXPECT_EQ(doc.Titulo, "Lista");
    EXPECT_EQ(doc.TamanhoFonte, 12);
}

TEST(ErroImpressao, TabelaDeErros) {
    EXPECT_EQ(texto_erro_impressao(0), "");
    EXPECT_EQ(texto_erro_impressao(482), "Ocorreu erro 482! Possiveis Causas:\n"
                                         "- A impressora não foi encontrada!\n"
                                         "- A impressora está desligada!\n"
                                         "- Fim de papel ou papel enroscado!");
    EXPECT_EQ(texto_erro_impressao(32755), "");
    EXPECT_EQ(texto_erro_impressao(32755, true), "Ocorreu erro 32755!");
    EXPECT_EQ(texto_erro_impressao(57), "Ocorreu erro 57!");
    DesktopRoteiro d;
    mostra_erro_impressao(d, 32755);
    mostra_erro_impressao(d, 57);
    EXPECT_EQ(d.Textos(), QStringList{"Ocorreu erro 57!"});
    EXPECT_EQ(d.Mensagens[0].Titulo, "");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Nenhum);
}

} // namespace
