// The transfer cheque: its fields and keys, its checks, and the block of 21 lines it sends,
// compared whole with the reference files under tests/dados/transferencia/.
#include "catalogo/telas.h"
#include "cheque/main.h"
#include "cheque/transf.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "registers/ajustatransf.h"
#include "registers/banctrans.h"
#include "registers/registros_apoio.h"

using namespace vexa;

namespace {

const QString Titulo = "Impressão de Cheque Transferência";
const QStringList Padrao = posicoes_padrao_transf();

class TransfTeste : public teste::Registros {
  protected:
    void grava_layout(const QString &codigo, const QStringList &posicoes,
                      const QString &nome = "Banco de Teste") {
        LeGravaIni(s.CaminhoIni, "ChequeTransf", codigo, linha_transf(posicoes, nome));
    }
    // The screen filled with a cheque that passes every check.
    ChequeTransf &preenchida(const QString &valor = "1.234,50") {
        ChequeTransf &t = abre<ChequeTransf>();
        t.txtBanco.Text = "001";
        t.txtValor.Text = valor;
        t.txtAgencia.Text = "Centro 0123";
        t.txtConta.Text = "45678-9";
        t.txtCidade.Text = "Curitiba";
        t.txtNumeroCheque.Text = "000123";
        t.txtComentario.Text.clear();
        return t;
    }
    // The calls that reached the port, without the amount in words that comes ahead.
    QStringList chamadas_porta() {
        QStringList r;
        for (const auto &c : imp().Registro())
            if (c.Operacao != "MontaValor") r << c.texto();
        return r;
    }
    QString texto_enviado(int n = 0) {
        int i = 0;
        for (const auto &c : imp().Registro())
            if (c.Operacao == "FormataTX" && i++ == n) return c.Argumentos.value(0);
        return {};
    }
};

// --- the block, whole

struct CasoBloco {
    const char *nome;
    QStringList posicoes;
    QString valor;
};

class TransfBloco : public TransfTeste, public ::testing::WithParamInterface<CasoBloco> {};

TEST_P(TransfBloco, BlocoConfereComAReferenciaEComOAjusteGrafico) {
    const CasoBloco &c = GetParam();
    grava_layout("001", c.posicoes);
    ChequeTransf &t = preenchida(c.valor);
    t.Clica("Opcoes", 0);
    // Without a comment nothing is asked about the back.
    EXPECT_EQ(d.Textos(), QStringList({"Insira o Documento."}));
    const QString bloco = texto_enviado();
    teste::confere_referencia(bloco, QString("transferencia/%1.txt").arg(QLatin1String(c.nome)));

    // Each item starts on the line the adjust screen shows, at 8/10 of the column it shows.
    for (int i = 1; i <= 7; ++i) {
        s.AjusteL[i] = c.posicoes[i - 1];
        s.AjusteC[i] = c.posicoes[i + 6];
    }
    auto &a = abre<AjustaChequeTransferencia>();
    const QStringList linhas = bloco.split('\n');
    const QStringList textos = {"(" + c.valor + ")", "",       "", "CURITIBA", "22/11/2026",
                                "CENTRO 0123",       "45678-9"};
    for (int i = 0; i < 7; ++i) {
        const QString linha = linhas.value(a.Label2[i].Caption.toInt() - 1);
        const int coluna = qRound(a.Label2[7 + i].Caption.toInt() * 0.8);
        EXPECT_TRUE(coluna == 0 || linha[coluna - 1] == u' ') << i << ": " << linha.toStdString();
        EXPECT_NE(linha.mid(coluna, 1), " ") << i << ": " << linha.toStdString();
        if (!textos[i].isEmpty()) {
            EXPECT_EQ(linha.mid(coluna, textos[i].size()), textos[i]) << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, TransfBloco,
    ::testing::Values(
        // The layout a new bank starts from.
        CasoBloco{"padrao", Padrao, "1.234,50"},
        // City and branch on line 12: the four items go in the order of their columns, the
        // branch between the city and the date.
        CasoBloco{"cidade_e_agencia",
                  {"002", "005", "007", "012", "012", "012", "012", "105", "100", "100", "010",
                   "060", "030", "090"},
                  "1.234,50"},
        // Words longer than both lines of 36: no "*", the second line takes the rest.
        CasoBloco{"extenso_longo",
                  {"002", "005", "007", "012", "012", "015", "015", "091", "075", "075", "060",
                   "093", "060", "093"},
                  "987.654,32"},
        // Words short enough to be filled with "*" to the end of the second line.
        CasoBloco{"extenso_curto",
                  {"003", "006", "008", "013", "013", "016", "016", "100", "100", "100", "080",
                   "105", "080", "105"},
                  "1,00"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST(TransfExtenso, LinhasDe86ColunasEPalavrasQueEnchemAsDuas) {
    // Both lines 86 wide, filled with "*".
    EXPECT_EQ(divide_extenso_transf("Um Real", 86, 86),
              qMakePair("Um Real" + QString(79, '*'), QString(86, '*')));
    // Exactly both lines: nothing added, and the break falls inside a word.
    EXPECT_EQ(divide_extenso_transf("abcdefghij", 6, 4),
              qMakePair(QString("abcdef"), QString("ghij")));
}

// --- the road to the printer

struct CasoRoteiro {
    const char *nome;
    QList<Resposta> respostas; // to "Insira o Documento." and to the back's question
    QStringList perguntas, chamadas;
};

const QString Documento = "Insira o Documento.";
const QString Verso = "Posicione o cheque para a impressão do verso.";

class TransfRoteiro : public TransfTeste, public ::testing::WithParamInterface<CasoRoteiro> {};

TEST_P(TransfRoteiro, PerguntasEChamadasDaPorta) {
    const CasoRoteiro &c = GetParam();
    grava_layout("001", Padrao);
    ChequeTransf &t = preenchida();
    t.txtComentario.Text = "Pagamento ref. nota 12";
    d.Respostas = c.respostas;
    t.Clica("Opcoes", 0);
    EXPECT_EQ(d.Textos(), c.perguntas);
    for (const auto &m : d.Mensagens)
        EXPECT_EQ(m.Titulo, Titulo);
    QStringList chamadas = chamadas_porta();
    chamadas.replaceInStrings("FormataTX(" + texto_enviado() + "|2|0|0|0|0)", "FormataTX(face)");
    EXPECT_EQ(chamadas, c.chamadas);
    EXPECT_EQ(t.Foco(), t.ref(t.txtBanco));
}

INSTANTIATE_TEST_SUITE_P(
    Respostas, TransfRoteiro,
    ::testing::Values(CasoRoteiro{"VersoImpresso",
                                  {},
                                  {Documento, Verso},
                                  {"IniciaPorta(COM2)", "TravaDoc(1)", "FormataTX(face)",
                                   "TravaDoc(0)", "TravaDoc(1)",
                                   "FormataTX(Pagamento ref. nota 12\r\n|2|0|0|0|0)", "TravaDoc(0)",
                                   "FechaPorta()"}},
                      CasoRoteiro{"CancelaODocumento", {Resposta::Cancel}, {Documento}, {}},
                      CasoRoteiro{"CancelaOVerso",
                                  {Resposta::OK, Resposta::Cancel},
                                  {Documento, Verso},
                                  {"IniciaPorta(COM2)", "TravaDoc(1)", "FormataTX(face)",
                                   "TravaDoc(0)", "FechaPorta()"}}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(TransfTeste, FalhaDaImpressoraMostraOCodigoENaoPedeOVerso) {
    grava_layout("001", Padrao);
    ChequeTransf &t = preenchida();
    t.txtComentario.Text = "Obs";
    imp().Falha("FormataTX", 4);
    t.Clica("Opcoes", 0);
    ASSERT_EQ(d.Mensagens.size(), 2);
    EXPECT_EQ(d.Mensagens[1].Texto, "Problemas com a impressao do cheque");
    EXPECT_EQ(d.Mensagens[1].Titulo, "Impressão do Cheque (004)");
    EXPECT_EQ(d.Mensagens[1].Icone_, Icone::Exclamacao);
    EXPECT_EQ(chamadas_porta().last(), "FechaPorta()");
}

TEST_F(TransfTeste, CopiaEmFolhaComumComCabecalho) {
    grava_layout("001", Padrao, "Banco do Brasil");
    ChequeTransf &t = preenchida();
    t.txtComentario.Text = "Ref. aluguel";
    t.Clica("Opcoes", 2);
    const auto &r = imp().Registro();
    QList<QStringList> formata;
    for (const auto &c : r)
        if (c.Operacao == "FormataTX") formata << c.Argumentos;
    ASSERT_EQ(formata.size(), 2);
    EXPECT_EQ(formata[0],
              QStringList({ConverteTexto("          CÓPIA DE CHEQUE TRANSFERÊNCIA") + "\r\n", "2",
                           "0", "0", "1", "0"}));
    EXPECT_EQ(formata[1].mid(1), QStringList({"2", "0", "0", "0", "0"}));
    teste::confere_referencia(formata[1][0], "transferencia/copia.txt");
    // A copy asks nothing about the back, and the next command prints the cheque again.
    EXPECT_EQ(d.Textos(), QStringList({"Insira o Documento."}));
    EXPECT_FALSE(t.Copia);
}

// --- the fields

struct CasoValida {
    const char *campo;
    QString texto;
    QString mensagem;
};

class TransfValida : public TransfTeste, public ::testing::WithParamInterface<CasoValida> {};

TEST_P(TransfValida, RecusaComMensagemEFoco) {
    const CasoValida &c = GetParam();
    grava_layout("001", Padrao);
    ChequeTransf &t = preenchida();
    t.controle(c.campo)->Text = c.texto;
    t.Clica("Opcoes", 0);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, Titulo);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    EXPECT_EQ(t.Foco().Nome, c.campo);
    EXPECT_TRUE(imp().Registro().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Campos, TransfValida,
    ::testing::Values(CasoValida{"txtBanco", "", "O campo 'Banco' não pode ser vazio."},
                      CasoValida{"txtValor", "", "O campo 'Valor' não pode ser vazio."},
                      CasoValida{"txtValor", "0,00", "O campo 'Valor' deve ser maior que zero."},
                      CasoValida{"txtAgencia", "", "O campo 'Nº/Nome Agência' não pode ser vazio."},
                      CasoValida{"txtConta", "", "O campo 'Nº Conta' não pode ser vazio."},
                      CasoValida{"txtCidade", "", "O campo 'Cidade' não pode ser vazio."},
                      CasoValida{"txtData", "31/02/2026", "Data inválida."},
                      CasoValida{"txtData", "", "Data inválida."}));

struct CasoSaida {
    const char *campo;
    QString digitado, fica;
    QStringList mensagens;
};

class TransfSaida : public TransfTeste, public ::testing::WithParamInterface<CasoSaida> {};

TEST_P(TransfSaida, AoSairDoCampo) {
    const CasoSaida &c = GetParam();
    grava_layout("001", Padrao);
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "104", "*%*");
    ChequeTransf &t = abre<ChequeTransf>();
    digita(t, c.campo, -1, c.digitado);
    EXPECT_EQ(t.controle(c.campo)->Text, c.fica);
    EXPECT_EQ(d.Textos(), c.mensagens);
}

INSTANTIATE_TEST_SUITE_P(
    Campos, TransfSaida,
    ::testing::Values(CasoSaida{"txtBanco", "1", "001", {}},
                      CasoSaida{"txtBanco", "2", "", {"Banco não cadastrado."}},
                      // A bank whose layout was excluded has none.
                      CasoSaida{"txtBanco", "104", "", {"Banco não cadastrado."}},
                      CasoSaida{"txtValor", "1234,5", "1.234,50", {}},
                      CasoSaida{"txtValor", "1234.56", "1.234,56", {}},
                      CasoSaida{"txtValor", "12x", "", {}}));

// A bank stored with F4 whose layout was excluded later, or excluded while the screen is open:
// no face is composed without a layout.
TEST_F(TransfTeste, BancoSemLayoutNaoChegaAImpressora) {
    LeGravaIni(s.CaminhoIni, "InfoTransf", "Banco", "237");
    ChequeTransf &t = abre<ChequeTransf>();
    EXPECT_EQ(t.txtBanco.Text, "");
    t.Clica("Opcoes", 0);
    EXPECT_EQ(d.Textos(), QStringList({"O campo 'Banco' não pode ser vazio."}));

    grava_layout("001", Padrao);
    preenchida();
    t.SetFocus("txtComentario");
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "001", "*%*");
    d.Mensagens.clear();
    t.Clica("Opcoes", 0);
    ASSERT_EQ(d.Textos(), QStringList({"Banco não cadastrado."}));
    EXPECT_EQ(d.Mensagens[0].Titulo, Titulo);
    EXPECT_EQ(t.txtBanco.Text, "");
    EXPECT_EQ(t.Foco(), t.ref(t.txtBanco));
    EXPECT_TRUE(imp().Registro().isEmpty());
}

TEST_F(TransfTeste, CarregaGuardadosF4GuardaF8LimpaEEnterSegueAOrdem) {
    LeGravaIni(s.CaminhoIni, "InfoTransf", "Agencia", "Centro");
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01", "Obra 7");
    ChequeTransf &t = abre<ChequeTransf>();
    EXPECT_EQ(t.txtAgencia.Text, "Centro");
    EXPECT_EQ(t.TxtCpo[1].Text, "Obra 7");
    EXPECT_EQ(t.txtData.Text, "22/11/2026");
    t.SetFocus("txtConta");
    t.Digita("txtConta", -1, "998-1");
    t.Tecla(115);
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "InfoTransf", "Conta", ""), "998-1");
    t.Tecla(119);
    EXPECT_EQ(t.txtConta.Text, "");
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "InfoTransf", "Conta", ""), "");
    // The date has no key: F4 stores nothing.
    t.SetFocus("txtData");
    t.Tecla(115);
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "InfoTransf", "Data", ""), "-2");

    const QStringList ordem = {"txtBanco",  "txtValor", "txtAgencia",      "txtConta",
                               "txtCidade", "txtData",  "txtNumeroCheque", "txtComentario"};
    t.SetFocus("txtBanco");
    for (int i = 1; i < ordem.size(); ++i) {
        t.Tecla(13);
        EXPECT_EQ(t.Foco().Nome, ordem[i]);
    }
    t.Tecla(13);
    EXPECT_EQ(t.Foco().Nome, "txtComentario");
}

TEST_F(TransfTeste, NumeroJaRegistradoPerguntaAntesDaFolha) {
    registra_cheque(s, {"001", "10,00", "Ana", "Rio", "01/03/99", "000123"});
    grava_layout("001", Padrao);
    ChequeTransf &t = preenchida();
    t.Clica("Opcoes", 0);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Titulo, "Cheque já registrado");
    EXPECT_TRUE(chamadas_porta().isEmpty());
    EXPECT_EQ(t.Foco().texto(), "txtNumeroCheque");
}

} // namespace
