#include "apoio/registro_log.h"
#include "cheque/cheprz.h"
#include "cheque/extra.h"
#include "cheque/main.h"
#include "cheque/pedidos.h"
#include "core/conversoes.h"
#include "core/desktop_roteiro.h"
#include "core/entrada.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/relogio.h"
#include "core/teclas.h"
#include "printer/impressao.h"
#include "printer/simulador.h"
#include "registers/pesquisa.h"
#include "reports/relato.h"
#include "store/historico.h"
#include "store/pasta_dados.h"
#include "store/registro_cheques.h"
#include "store/tabelas.h"
#include "store/talao.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

using tecla::Enter, tecla::F3, tecla::F4, tecla::F8;
const QString Titulo = "Vexa PLUS - Document Printer";

// A scripted desktop on which something can happen while a message box is open, as another
// program's request arrives in the box's own event loop. It keeps how deep boxes were opened
// inside one another.
class DesktopComPedidos : public DesktopRoteiro {
  public:
    std::function<void(const QString &texto)> enquantoAberta;
    int abertas = 0, maisFundo = 0;

    Resposta MsgBox(const QString &texto, Botoes botoes, const QString &titulo, Icone icone,
                    std::optional<Resposta> padrao) override {
        const Resposta r = DesktopRoteiro::MsgBox(texto, botoes, titulo, icone, padrao);
        maisFundo = std::max(maisFundo, ++abertas);
        if (enquantoAberta) enquantoAberta(texto);
        --abertas;
        return r;
    }
};

class TelaMain : public ::testing::Test {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2026, 11, 23));
        prepara_pasta_dados(s);
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
    }
    void TearDown() override { fixa_hoje(QDate()); }

    Main &abre(const QString &linha = {}) {
        m = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, linha)));
        imp().LimpaChamadas();
        d.Mensagens.clear();
        return *m;
    }
    Simulador &imp() { return static_cast<Simulador &>(*s.Impressora); }
    QString ini(const QString &secao, const QString &chave) {
        return LeGravaIni(s.CaminhoIni, secao, chave, "");
    }
    // Types into a field and leaves it for the report box, which checks nothing.
    void digita_e_sai(int i, const QString &texto) {
        m->Digita("Text1", i, texto);
        m->SetFocus("CheckBox");
    }
    void preenche(const QString &banco, const QString &valor, const QString &favorecido,
                  const QString &cidade, const QString &data, const QString &numero) {
        const QStringList textos{banco, valor, favorecido, cidade, data, "", numero};
        for (int i = 0; i < 7; ++i)
            if (i != 5) m->Text1[i].Text = textos[i];
        m->SetFocus("CheckBox");
    }
    // F3 in the bank field and, in the search, the pick of the one bank named "Brades..." (237).
    // The search window, closed by the pick.
    Pesquisa *escolhe_banco_na_pesquisa() {
        m->SetFocus("Text1", 0);
        m->Tecla(F3);
        auto *p = d.Tela_<Pesquisa>("Pesquisa");
        if (!p) return nullptr;
        p->Digita("Text1", 0, "Brades");
        EXPECT_EQ(p->List1.ListCount(), 1);
        p->List1.ListIndex = 0;
        p->Clica("Command3D1", 0);
        return p;
    }
    QList<QMap<QString, QString>> linhas_log() { return teste::linhas_do_log(s, d); }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopComPedidos d;
    Main *m = nullptr;
};

// --- leaving a field

struct Saida {
    int campo;
    QString digitado, resultado;
    RefControle foco; // where the focus ends
    QString mensagem = {}, titulo = {};
};

class SaidaDeCampo : public TelaMain, public ::testing::WithParamInterface<Saida> {};

TEST_P(SaidaDeCampo, NormalizaOuRecusa) {
    const Saida &c = GetParam();
    abre();
    digita_e_sai(c.campo, c.digitado);
    EXPECT_EQ(m->Text1[c.campo].Text, c.resultado);
    EXPECT_EQ(m->Foco().texto(), c.foco.texto());
    if (c.mensagem.isEmpty()) {
        EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
    } else {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
        EXPECT_EQ(d.Mensagens[0].Titulo, c.titulo);
    }
}

const RefControle Caixa_{"CheckBox", -1};
INSTANTIATE_TEST_SUITE_P(
    Campos, SaidaDeCampo,
    ::testing::Values(
        Saida{0, "1", "001", Caixa_},
        Saida{0, "abc", "", Caixa_}, // numeric value 0: emptied, no word
        Saida{0, "998", "", {"Text1", 0}, "Banco Inexistente...", "Erro"},
        Saida{1, "1000", "1.000,00", Caixa_}, Saida{1, "1.234,567", "1.234,57", Caixa_},
        Saida{1, "12x", "", {"Text1", 1}}, Saida{1, "", "", Caixa_},
        // the largest amount a cheque holds, and above it a refusal that keeps
        // the text rather than the field's cut into another number
        Saida{1, "9999999999,99", "9.999.999.999,99", Caixa_},
        Saida{1, "99999999999", "99999999999", {"Text1", 1}, MensagemValorMaximo, Titulo},
        Saida{1, "9999999999,995", "9999999999,995", {"Text1", 1}, MensagemValorMaximo, Titulo},
        // the common forms here; the edges are with the typed date's own tests
        Saida{4, "1/2/03", "01/02/03", Caixa_}, Saida{4, "29/2/00", "29/02/00", Caixa_},
        // an empty date is today's, and the number is next
        Saida{4, "", "23/11/26", {"Text1", 6}},
        Saida{4, "31/04/99", "", {"Text1", 4}, "Data Inválida.", Titulo},
        Saida{4, "29/02/01", "", {"Text1", 4}, "Data Inválida.", Titulo},
        // a day alone is of the month of the run (November 2026)
        Saida{4, "5", "05/11/26", Caixa_},
        // a day and a month without a year are no date, not "  /01/02"
        Saida{4, "1/2/", "", {"Text1", 4}, "Data Inválida.", Titulo},
        // the payee, the city and the number are taken as typed
        Saida{2, "D'Ávila", "D'Ávila", Caixa_}, Saida{6, "A12", "A12", Caixa_}));

// The name beside the bank is the name of the code in the field: whatever empties the field,
// or keeps the code from being looked up (without a database it passes without a word), leaves
// no other bank's name beside it.
struct NomeBanco_ {
    QString segundo; // typed over the shown bank 237
    bool semBase, limpaVerso;
    QString campo, mensagem;
};
class NomeAoLado : public TelaMain, public ::testing::WithParamInterface<NomeBanco_> {};

TEST_P(NomeAoLado, NuncaDeOutroBanco) {
    const NomeBanco_ &c = GetParam();
    abre();
    digita_e_sai(0, "237");
    ASSERT_EQ(m->Label1[6].Caption, NomeBanco(s, "237"));
    ASSERT_NE(m->Label1[6].Caption, "Inexistente");
    if (c.semBase) {
        s.Banco.reset();
        QFile::remove(s.CaminhoApp + "/VEXA.db");
    }
    m->Digita("Text1", 0, c.segundo);
    if (c.limpaVerso)
        m->Clica("Opcoes", 4);
    else
        m->SetFocus("CheckBox");
    EXPECT_EQ(m->Text1[0].Text, c.campo);
    EXPECT_EQ(m->Label1[6].Caption, "");
    EXPECT_EQ(d.Textos(), c.mensagem.isEmpty() ? QStringList() : QStringList{c.mensagem});
}

INSTANTIATE_TEST_SUITE_P(Bancos, NomeAoLado,
                         ::testing::Values(NomeBanco_{"998", false, false, "",
                                                      "Banco Inexistente..."},
                                           NomeBanco_{"abc", false, false, "", ""},
                                           NomeBanco_{"5", true, false, "005", ""},
                                           NomeBanco_{"237", false, true, "", ""}));

// --- size limits of text that arrives otherwise than typed

struct Limite {
    QString controle;
    int indice, tamanho, fica;
};
class LimiteDeTamanho : public TelaMain, public ::testing::WithParamInterface<Limite> {};

TEST_P(LimiteDeTamanho, CortaComAMensagem) {
    const Limite &c = GetParam();
    abre();
    Controle &campo = *m->controle(c.controle, c.indice);
    m->Muda(campo, QString(c.tamanho, u'7'));
    EXPECT_EQ(campo.Text.size(), c.fica);
    if (c.tamanho == c.fica) {
        EXPECT_TRUE(d.Mensagens.isEmpty());
    } else {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, "Tamanho Máximo deste campo...");
        EXPECT_EQ(d.Mensagens[0].Titulo, "Erro");
    }
}

INSTANTIATE_TEST_SUITE_P(Campos, LimiteDeTamanho,
                         ::testing::Values(Limite{"Text1", 0, 3, 3}, Limite{"Text1", 0, 4, 3},
                                           Limite{"Text1", 1, 16, 16}, Limite{"Text1", 1, 17, 16},
                                           Limite{"Text1", 2, 48, 47}, Limite{"Text1", 3, 20, 20},
                                           Limite{"Text1", 3, 30, 15}, // not 20
                                           Limite{"Text1", 6, 13, 12}, Limite{"Text1", 4, 40, 40},
                                           Limite{"Text2", 9, 80, 80}, Limite{"Text2", 0, 81, 80}));

// --- keys

struct Passo {
    QString controle;
    int indice;
    QString texto;
    RefControle destino;
};
class EnterAvanca : public TelaMain, public ::testing::WithParamInterface<Passo> {};

TEST_P(EnterAvanca, ParaOProximoCampo) {
    const Passo &c = GetParam();
    abre();
    m->SetFocus(c.controle, c.indice);
    m->controle(c.controle, c.indice)->Text = c.texto;
    m->Tecla(Enter);
    EXPECT_EQ(m->Foco().texto(), c.destino.texto());
}

INSTANTIATE_TEST_SUITE_P(
    Ordem, EnterAvanca,
    ::testing::Values(Passo{"Text1", 0, "001", {"Text1", 1}}, Passo{"Text1", 1, "10", {"Text1", 2}},
                      Passo{"Text1", 2, "", {"Text1", 3}},
                      Passo{"Text1", 3, "", {"Text1", 3}}, // an empty city keeps the focus
                      Passo{"Text1", 3, "Santos", {"Text1", 4}},
                      Passo{"Text1", 4, "010203", {"Text1", 6}},
                      Passo{"Text1", 6, "", {"Opcoes", 0}}, Passo{"Text2", 0, "", {"Text2", 1}},
                      Passo{"Text2", 9, "", {"Opcoes", 0}}, Passo{"TxtCpo", 0, "", {"TxtCpo", 1}},
                      Passo{"TxtCpo", 2, "", {"Text1", 6}}));

TEST_F(TelaMain, F4GuardaOCampoEUmVazioComoUmBranco) {
    abre();
    m->SetFocus("Text1", 2);
    m->Tecla(F4);
    EXPECT_NE(ini("FrenteInfo", "Favorecido"), "-2");
    EXPECT_EQ(m->Text1[2].Text, "");
    m->Digita("Text1", 3, "Santos");
    m->Tecla(F4);
    m->Digita("Text1", 4, "010203");
    m->Tecla(F4);
    m->Digita("Text2", 4, "Nominal");
    m->Tecla(F4);
    m->Digita("TxtCpo", 1, "Obra 12");
    m->Tecla(F4);
    EXPECT_EQ(ini("FrenteInfo", "Cidade"), "Santos");
    EXPECT_EQ(ini("Verso", "Linha04"), "Nominal");
    EXPECT_EQ(ini("FrenteInfo", "Campo01"), "Obra 12");
    EXPECT_EQ(ini("FrenteInfo", "Data"), "-2"); // the date isn't stored

    // Clearing the front brings the stored line back, the blank payee too.
    m->Digita("Text1", 3, "Outra");
    m->Clica("Opcoes", 3);
    EXPECT_EQ(m->Text1[2].Text, " ");
    EXPECT_EQ(m->Text1[3].Text, "Santos");
    EXPECT_EQ(m->Text1[4].Text, "");
    EXPECT_EQ(m->TxtCpo[1].Text, "Obra 12");
    EXPECT_EQ(m->Foco().texto(), "Text1(0)");
}

TEST_F(TelaMain, F3PedeAPesquisaSoNoBancoFavorecidoECidade) {
    abre();
    // Payees and cities have no rows yet: the search offers to register some.
    d.Respostas = {Resposta::Cancel, Resposta::Cancel};
    const std::map<int, int> tipos = {{0, 2}, {2, 0}, {3, 1}};
    for (int i : {0, 1, 2, 3, 4, 6}) {
        s.TipoPesquisa = 9;
        m->SetFocus("Text1", i);
        m->Tecla(F3);
        EXPECT_EQ(s.TipoPesquisa, tipos.count(i) ? tipos.at(i) : 9) << i;
        if (Tela *p = d.Aberta("Pesquisa")) p->Unload();
    }
    EXPECT_EQ(d.Abertas.count("Pesquisa"), 3);
    ASSERT_EQ(d.Mensagens.size(), 2);
    for (const auto &msg : d.Mensagens)
        EXPECT_TRUE(msg.Texto.startsWith("Nao existe registro para pesquisar!!!"));
}

TEST_F(TelaMain, F3NumCampoExtraAbreSuaPosicao) {
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01Lin", "12");
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo01Col", "40");
    abre();
    m->SetFocus("TxtCpo", 1);
    EXPECT_EQ(m->Panel3D2.Caption, "F3 - Programa Campo  |  F8 - Limpa Campo  |  F4 - Grava Linha");
    m->Tecla(F3);
    auto *extra = d.Tela_<CmpExtra>("CmpExtra");
    ASSERT_NE(extra, nullptr);
    EXPECT_EQ(extra->Escolhido, 1);
    EXPECT_EQ(extra->CmdNumCampo[1].Value, 1);
    EXPECT_EQ(extra->PosText[0].Text, "12");
    EXPECT_EQ(extra->PosText[1].Text, "40");
    EXPECT_EQ(extra->Foco().texto(), "PosText(0)");
    m->SetFocus("Text1", 6);
    EXPECT_EQ(m->Panel3D2.Caption, "F3 - Pesquisa  |  F8 - Limpa Campo  |  F4 - Grava Linha");
}

TEST_F(TelaMain, ResultadoDaPesquisaEntraNoCampoQueRecebeOFoco) {
    abre();
    s.ResultadoPesquisa = "Maria";
    m->SetFocus("Text1", 2);
    EXPECT_EQ(m->Text1[2].Text, "Maria");
    EXPECT_TRUE(s.ResultadoPesquisa.isEmpty());

    // The search was asked from the field that keeps the focus: it takes the pick when the
    // window is in front again.
    s.ResultadoPesquisa = "Santos";
    m->Form_Activate();
    EXPECT_EQ(m->Text1[2].Text, "Santos");
}

// The clearing commands take the focus before the field is left: a bad field is emptied
// without a word, also by the back's command, which otherwise leaves the front alone.
TEST_F(TelaMain, LimparNaoParaNumCampoRuim) {
    LeGravaIni(s.CaminhoIni, "Verso", "Linha00", "Guardada");
    abre();
    m->Text1[3].Text = "Santos";
    m->Digita("Text1", 1, "12x");
    m->Clica("Opcoes", 4);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(m->Text1[1].Text, "");
    EXPECT_EQ(m->Text1[3].Text, "Santos");
    EXPECT_EQ(m->Text2[0].Text, "Guardada");
    EXPECT_EQ(m->Foco().texto(), "Text2(0)");

    m->Digita("Text1", 0, "998");
    m->Clica("Opcoes", 3);
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(m->Text1[0].Text, "");
    EXPECT_EQ(m->Foco().texto(), "Text1(0)");
}

// --- the check before printing

struct Falha {
    QStringList campos; // bank, amount, payee, city, date, number
    QString mensagem;
    int foco;
};
class ValidaChequeFalha : public TelaMain, public ::testing::WithParamInterface<Falha> {};

TEST_P(ValidaChequeFalha, ParaNoPrimeiroCampoRuim) {
    const Falha &c = GetParam();
    abre();
    preenche(c.campos[0], c.campos[1], c.campos[2], c.campos[3], c.campos[4], c.campos[5]);
    m->Clica("Opcoes", 0);
    if (c.mensagem.isEmpty()) {
        EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
    } else {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
        EXPECT_EQ(d.Mensagens[0].Titulo, Titulo);
        EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    }
    EXPECT_EQ(m->Foco().texto(), QStringLiteral("Text1(%1)").arg(c.foco));
    EXPECT_TRUE(imp().Chamadas().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Ordem, ValidaChequeFalha,
    ::testing::Values(
        Falha{{"", "", "", "", "", ""}, "O número do banco não pode ser vazio", 0},
        Falha{{"001", "0,00", "", "", "", ""}, "O valor não pode ser igual a zero (0,00).", 1},
        Falha{{"001", "", "", "", "", ""}, "O valor não pode ser vazio", 1},
        Falha{{"001", "-5,00", "", "", "", ""}, "Valor inválido", 1},
        Falha{{"001", "abc", "", "", "", ""}, "Valor inválido", 1},
        Falha{{"001", "1,00", "", "", "", ""}, "A data não pode ser vazia", 4},
        Falha{{"001", "1,00", "", "", "31/04/99", ""}, "", 4},
        Falha{{"001", "1,00", "", "", "05/03/99", ""}, "", 6}));

TEST_F(TelaMain, NumeroDoChequeOpcionalDeixaImprimir) {
    LeGravaIni(s.CaminhoIni, "Opcoes", "NumCObrig", "0");
    abre();
    preenche("001", "1,00", "Ana", "Rio", "05/03/99", "");
    d.Respostas = {Resposta::Cancel};
    m->Clica("Opcoes", 0);
    EXPECT_EQ(d.Textos(), QStringList{"Insira o Documento.\n\nCheque sem número — R$ 1,00 — Ana"});
}

// --- printing and registering

TEST_F(TelaMain, ChequeDaEstradaImprimeERegistra) {
    abre();
    m->Text2[0].Text = "Aluguel";
    preenche("001", "1.234,50", "Maria", "Santos", "05/03/99", "000123");
    m->CheckBox.Value = 1;
    m->Clica("Opcoes", 0);

    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Insira o Documento.\n\nCheque 000123 — R$ 1.234,50 — Maria");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão do Cheque");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::OKCancel);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Informacao);
    EXPECT_EQ(imp().Chamadas(),
              (QStringList{"IniciaPorta(COM2)",
                           "ImprimeCheque(001|1.234,50|Maria|Santos|05/03/99|)", "FechaPorta()"}));
    EXPECT_EQ(s.UltimoComentario, (QStringList{"Aluguel", "", ""}));
    EXPECT_EQ(m->Foco().texto(), "Text1(0)");
    EXPECT_EQ(m->Text1[1].Text, "1.234,50"); // the fields stay for the next cheque
    EXPECT_EQ(m->Gauge1.Value, 0);           // the gauge back at rest
    EXPECT_EQ(m->Situacao.Caption, "Cheque 000123 de R$ 1.234,50 impresso e registrado.");

    const auto linhas = linhas_log();
    ASSERT_EQ(linhas.size(), 1);
    const QMap<QString, QString> esperada = {
        {"Index", "0000000001"},   {"Codigo", "00001"}, {"Banco", "001"},
        {"V_CH", "1234,5"},        {"Favor", "Maria"},  {"Local", "Santos"},
        {"Data", "05/03/99"},      {"NRCH", "000123"},  {"StCancel", " "},
        {"Comentario", "Aluguel"}, {"Comentario1", ""}, {"Comentario2", ""}};
    for (auto it = esperada.begin(); it != esperada.end(); ++it)
        EXPECT_EQ(linhas[0].value(it.key()), it.value()) << it.key().toStdString();

    // The next cheque takes the next Index.
    m->Clica("Opcoes", 0);
    EXPECT_EQ(linhas_log().value(1).value("Index"), "0000000002");
}

struct Registro {
    QString valor, favorecido, numero;
    QString chamada, V_CH, Favor, NRCH;
    QString cidade = "São Paulo";
};
class LinhaDoLog : public TelaMain, public ::testing::WithParamInterface<Registro> {};

TEST_P(LinhaDoLog, GuardaOsCamposComoEstaoNaTela) {
    const Registro &c = GetParam();
    LeGravaIni(s.CaminhoIni, "Opcoes", "NumCObrig", "0");
    abre();
    preenche("001", c.valor, c.favorecido, c.cidade, "05/03/99", c.numero);
    m->CheckBox.Value = 1;
    m->Clica("Opcoes", 0);
    EXPECT_EQ(imp().Chamadas().value(1), c.chamada);
    const auto linhas = linhas_log();
    ASSERT_EQ(linhas.size(), 1);
    EXPECT_EQ(linhas[0].value("V_CH"), c.V_CH);
    EXPECT_EQ(linhas[0].value("Favor"), c.Favor);
    EXPECT_EQ(linhas[0].value("Local"), c.cidade); // unconverted in the register
    EXPECT_EQ(linhas[0].value("NRCH"), c.NRCH);
    EXPECT_EQ(m->Text1[2].Text, c.Favor);
}

const QString SaoPaulo = ConverteTexto("São Paulo");
INSTANTIATE_TEST_SUITE_P(
    Campos, LinhaDoLog,
    ::testing::Values(
        Registro{"1.234,00", "Ana", "1",
                 "ImprimeCheque(001|1.234,00|Ana|" + SaoPaulo + "|05/03/99|)", "1234,", "Ana", "1"},
        // an empty payee prints one blank, and the blank stays on the screen and in Log
        Registro{"0,01", "", "", "ImprimeCheque(001|0,01| |" + SaoPaulo + "|05/03/99|)", ",01", " ",
                 " "},
        Registro{"9.999.999.999,99", "João", "X9",
                 "ImprimeCheque(001|9.999.999.999,99|" + ConverteTexto("João") + "|" + SaoPaulo +
                     "|05/03/99|)",
                 "9999999999,99", "João", "X9"},
        // an empty city prints one blank, and stays empty on the screen and in Log
        Registro{"10,00", "Ana", "2", "ImprimeCheque(001|10,00|Ana| |05/03/99|)", "10,", "Ana", "2",
                 ""}));

// A reprint from the report unticks the box for that one cheque: printed or abandoned, the box
// is ticked again, and the next new cheque is registered. A box the operator unticked stays so.
enum class FimReimpressao { Impressa, Cancelada, LimpaCheque, CaixaDoOperador };
class Reimpressao : public TelaMain, public ::testing::WithParamInterface<FimReimpressao> {};

TEST_P(Reimpressao, SoAReimpressaoFicaSemRegistro) {
    const FimReimpressao fim = GetParam();
    abre();
    preenche("001", "10,00", "Ana", "Rio", "05/03/99", "7");
    m->Clica("Opcoes", 0);
    ASSERT_EQ(linhas_log().size(), 1);
    if (fim == FimReimpressao::CaixaDoOperador) {
        m->Clica("CheckBox");
    } else {
        auto *r = static_cast<Relato *>(d.Abre(std::make_unique<Relato>(s, d)));
        r->List1.ListIndex = 0;
        r->List1_Click();
        d.Respostas = {Resposta::Yes}; // "Confirma reimpressão?"
        r->Clica("SSCommand3");
        ASSERT_EQ(m->CheckBox.Value, 0);
    }
    d.Respostas = {fim == FimReimpressao::Cancelada ? Resposta::Cancel : Resposta::OK};
    if (fim == FimReimpressao::LimpaCheque)
        m->Clica("Opcoes", 3);
    else
        m->Clica("Opcoes", 0);
    EXPECT_EQ(linhas_log().size(), 1);
    // The reprint brings its number back; the operator's next cheque has the book's next one.
    if (fim == FimReimpressao::Impressa || fim == FimReimpressao::CaixaDoOperador)
        EXPECT_EQ(m->Situacao.Caption, QString("Cheque %1 de R$ 10,00 impresso e NÃO registrado.")
                                           .arg(fim == FimReimpressao::Impressa ? 7 : 8));
    const bool marcada = fim != FimReimpressao::CaixaDoOperador;
    EXPECT_EQ(m->CheckBox.Value, marcada ? 1 : 0);

    preenche("001", "20,00", "Bia", "Rio", "05/03/99", "8");
    m->Clica("Opcoes", 0);
    EXPECT_EQ(linhas_log().size(), marcada ? 2 : 1);
    m->Clica("Sair");
    EXPECT_EQ(ini("Sistema", "InRel"), marcada ? "1" : "0");
}

INSTANTIATE_TEST_SUITE_P(Fins, Reimpressao,
                         ::testing::Values(FimReimpressao::Impressa, FimReimpressao::Cancelada,
                                           FimReimpressao::LimpaCheque,
                                           FimReimpressao::CaixaDoOperador));

// A cheque left pending by a run cut short between its print and its register is asked about
// at the next start: Sim registers it, Não drops it; either way it isn't asked again.
class Pendente : public TelaMain, public ::testing::WithParamInterface<Resposta> {};

TEST_P(Pendente, PerguntadoNaPartida) {
    ChequeImpresso cheque{"001", "1.234,50", "Maria", "Santos", "20/11/26", "000123"};
    cheque.Comentarios = {"Aluguel", "", ""};
    qint64 id = 0;
    ASSERT_EQ(grava_pendente(s, cheque, id), EstadoRegistro::Gravado);
    s.Banco.reset();
    d.Respostas = {GetParam()};
    d.Abre(std::make_unique<Main>(s, d, QString()));
    ASSERT_FALSE(d.Mensagens.isEmpty());
    const auto &pergunta = d.Mensagens[0];
    EXPECT_EQ(pergunta.Texto, "O cheque nº 000123 de R$ 1.234,50 para Maria pode ter sido "
                              "impresso e não foi registrado.\n\nSim: registrá-lo no "
                              "relatório.\nNão: descartá-lo, porque não foi impresso.");
    EXPECT_EQ(pergunta.Botoes_, Botoes::YesNo);
    EXPECT_EQ(pergunta.Padrao, Resposta::Yes);
    const auto linhas = linhas_log();
    if (GetParam() == Resposta::Yes) {
        ASSERT_EQ(linhas.size(), 1);
        EXPECT_EQ(linhas[0].value("Index"), "0000000001");
        EXPECT_EQ(linhas[0].value("V_CH"), "1234,5");
        EXPECT_EQ(linhas[0].value("NRCH"), "000123");
        EXPECT_EQ(linhas[0].value("Comentario"), "Aluguel");
    } else {
        EXPECT_TRUE(linhas.isEmpty());
    }
    EXPECT_TRUE(cheques_pendentes(s).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Respostas, Pendente, ::testing::Values(Resposta::Yes, Resposta::No));

TEST_F(TelaMain, CancelarOuFalharNaoRegistra) {
    abre();
    preenche("001", "10,00", "Ana", "Rio", "05/03/99", "7");
    m->CheckBox.Value = 1;
    d.Respostas = {Resposta::Cancel};
    m->Clica("Opcoes", 0);
    EXPECT_TRUE(imp().Chamadas().isEmpty());

    imp().Falha("ImprimeCheque", Simulador::SemPapel);
    m->Clica("Opcoes", 0);
    ASSERT_EQ(d.Mensagens.size(), 3);
    EXPECT_TRUE(d.Mensagens[2].Texto.startsWith("Problemas com a impressão do cheque.\n\n"));
    EXPECT_EQ(d.Mensagens[2].Titulo, "Impressão do Cheque (004)");
    EXPECT_EQ(d.Mensagens[2].Icone_, Icone::Exclamacao);
    EXPECT_TRUE(linhas_log().isEmpty());
    EXPECT_TRUE(cheques_pendentes(s).isEmpty()); // the refused cheque's pending row is dropped
    EXPECT_EQ(m->Situacao.Caption, "Cheque 7 de R$ 10,00 não foi impresso.");
}

// The next Index follows the last row's, unless the first row has no Codigo. A number given
// again doesn't cost the printed cheque its row.
struct Indice {
    QString primeiroIndex, primeiroCodigo, ultimoIndex, novoIndex, novoCodigo;
};
class IndexDoLog : public TelaMain, public ::testing::WithParamInterface<Indice> {};

TEST_P(IndexDoLog, ContinuaDoUltimoEOCodigoSaoOsCincoFinais) {
    const Indice &c = GetParam();
    ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 1), -2);
    RecordSet &log = Conjunto(s, TabLog);
    for (const auto &[index, codigo] :
         {std::pair{c.primeiroIndex, c.primeiroCodigo}, {c.ultimoIndex, c.ultimoIndex.right(5)}}) {
        log.AddNew();
        log.Define("Index", index);
        log.Define("Codigo", codigo);
        log.Update();
    }
    FechaTabelas(s, 0, 0, 0, 1);
    abre();
    preenche("001", "10,00", "Ana", "Rio", "05/03/99", "7");
    m->CheckBox.Value = 1;
    m->Clica("Opcoes", 0);
    const auto linhas = linhas_log();
    ASSERT_EQ(linhas.size(), 3);
    QMap<QString, QString> nova;
    for (const auto &l : linhas)
        if (l.value("Banco") == "001") nova = l;
    EXPECT_EQ(nova.value("Index"), c.novoIndex);
    EXPECT_EQ(nova.value("Codigo"), c.novoCodigo);
}

INSTANTIATE_TEST_SUITE_P(
    Linhas, IndexDoLog,
    ::testing::Values(Indice{"0000000003", "00003", "0000099999", "0000100000", "00000"},
                      Indice{"0000000003", "00003", "0000000041", "0000000042", "00042"},
                      Indice{"0000000003", "", "0000000041", "0000000001", "00001"},
                      Indice{"0000000000", "", "0000000001", "0000000001", "00001"}));

TEST_F(TelaMain, CampoExtraSemPosicaoParaAntesDoDocumento) {
    abre();
    preenche("001", "10,00", "Ana", "Rio", "05/03/99", "7");
    m->TxtCpo[0].Text = "Obra";
    m->Clica("Opcoes", 0);
    EXPECT_EQ(d.Textos(),
              QStringList{"Valores de posição não cadastrados na impressão do campo 1!\n"});
    EXPECT_NE(d.Aberta("CmpExtra"), nullptr);
    EXPECT_TRUE(imp().Chamadas().isEmpty());

    // With a position the field goes ahead of the cheque, unconverted, with the port closed.
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo00Lin", "3");
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Campo00Col", "100");
    m->TxtCpo[0].Text = "Obra nº 12";
    m->Clica("Opcoes", 0);
    EXPECT_EQ(imp().Chamadas().value(0), "ImprimeCampoX(1|3|100|Obra nº 12)");
    EXPECT_EQ(imp().Chamadas().value(1), "IniciaPorta(COM2)");
}

TEST_F(TelaMain, CampoExtraGuardadoVazioNaoPedePosicao) {
    abre();
    m->SetFocus("TxtCpo", 0);
    m->Tecla(F4); // stored as one blank, which comes back with the front
    m->Clica("Opcoes", 3);
    ASSERT_EQ(m->TxtCpo[0].Text, " ");
    preenche("001", "10,00", "Ana", "Rio", "05/03/99", "7");
    m->Clica("Opcoes", 0);
    EXPECT_EQ(d.Textos().value(0).left(19), "Insira o Documento.");
    EXPECT_EQ(imp().Chamadas().value(0), "IniciaPorta(COM2)");
    EXPECT_EQ(d.Aberta("CmpExtra"), nullptr);
}

// --- the back

struct Verso {
    QMap<int, QString> linhas;
    QString texto; // empty: nothing goes to the printer
    int modo;
    Resposta documento = Resposta::OK;
};
class ImprimeVersoTeste : public TelaMain, public ::testing::WithParamInterface<Verso> {};

TEST_P(ImprimeVersoTeste, MargemEModo) {
    const Verso &c = GetParam();
    abre();
    for (auto it = c.linhas.begin(); it != c.linhas.end(); ++it)
        m->Text2[it.key()].Text = it.value();
    d.Respostas = {c.documento};
    m->Clica("Opcoes", 1);
    ASSERT_FALSE(d.Mensagens.isEmpty());
    EXPECT_EQ(d.Mensagens[0].Texto, "Insira o Documento.");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão do Verso");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Informacao);
    if (c.texto.isEmpty()) {
        EXPECT_TRUE(imp().Chamadas().isEmpty());
    } else {
        EXPECT_EQ(imp().Chamadas(),
                  (QStringList{"IniciaPorta(COM2)", "TravaDoc(1)",
                               QStringLiteral("FormataTX(%1|%2|0|0|0|0)").arg(c.texto).arg(c.modo),
                               "TravaDoc(0)", "FechaPorta()"}));
    }
    EXPECT_EQ(m->Foco().texto(), "Text2(0)");
    for (int i = 7; i <= 16; ++i)
        EXPECT_NE(m->Label1[i].ForeColor, 255);
}

const QString M15(15, u' ');
INSTANTIATE_TEST_SUITE_P(
    Linhas, ImprimeVersoTeste,
    ::testing::Values(
        Verso{{}, "", 3},
        // lines ahead of a line keep their place, trailing ones are dropped
        Verso{{{5, "Nominal"}}, "\n\n\n\n\n" + M15 + "Nominal\n", 3},
        Verso{{{0, "A"}, {2, "B"}}, M15 + "A\n\n" + M15 + "B\n", 3},
        Verso{{{0, QString(65, u'x')}}, M15 + QString(65, u'x') + "\n", 3},
        Verso{{{0, QString(66, u'x')}, {1, "y"}}, M15 + QString(66, u'x') + "\n" + M15 + "y\n", 2},
        Verso{{{0, "linha"}}, "", 3, Resposta::Cancel}));

// --- start and stop

TEST_F(TelaMain, PartidaLeConfiguracoesEPedido) {
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "NumBanco", "237");
    LeGravaIni(s.CaminhoIni, "FrenteInfo", "Valor", "50,00");
    LeGravaIni(s.CaminhoIni, "Verso", "Linha01", "Cmd guardado");
    LeGravaIni(s.CaminhoIni, "Sistema", "InRel", "0");
    LeGravaIni(s.CaminhoIni, "Opcoes", "ConfiguraData", "2");
    d.Abre(std::make_unique<Main>(s, d, "lixo/b 001 /V1234,50/FMaria/D050399/X9/C"));
    m = d.Tela_<Main>("Main");
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->Caption, "Vexa - Plus Document Printer");
    // The request wins over the stored line, taken as if typed and left; a field it doesn't
    // name keeps the stored one.
    EXPECT_EQ(m->Text1[0].Text, "001");
    EXPECT_EQ(m->Label1[6].Caption, NomeBanco(s, "001"));
    EXPECT_EQ(m->Text1[1].Text, "1.234,50");
    EXPECT_EQ(m->Text1[2].Text, "Maria");
    EXPECT_EQ(m->Text1[4].Text, "05/03/99");
    EXPECT_EQ(m->Text1[6].Text, "");
    EXPECT_EQ(m->Text2[1].Text, "Cmd guardado");
    EXPECT_EQ(m->CheckBox.Value, 0);
    EXPECT_EQ(ini("Sistema", "InRel"), "0");
    EXPECT_EQ(m->Option2.Value, 1);
    EXPECT_EQ(imp().Chamadas(),
              (QStringList{"IniciaPorta(COM2)", "ComandoTX(" + comando_formato_data(2) + "|5)",
                           "FechaPorta()"}));
    EXPECT_TRUE(d.Mostradas.contains("Main"));
    EXPECT_EQ(m->Foco().texto(), "Text1(0)");
    EXPECT_TRUE(m->RotuloImpressora.Caption.contains(s.Impressora->Descricao()));
    EXPECT_TRUE(m->ParametrosCheque.join("").isEmpty());
}

// Without a stored date format the start leaves the printer alone and no option is chosen;
// an option chosen sends its command and is stored.
TEST_F(TelaMain, OpcaoDeDataMandaOComandoEGuarda) {
    LeGravaIni(s.CaminhoIni, "Sistema", "InRel", "7");
    abre();
    EXPECT_EQ(m->CheckBox.Value, 1);
    EXPECT_EQ(ini("Sistema", "InRel"), "1");
    for (const Opcao *o : {&m->Option1, &m->Option2, &m->Option3})
        EXPECT_EQ(o->Value, 0);
    m->Clica("Option3");
    EXPECT_EQ(imp().Chamadas(),
              (QStringList{"IniciaPorta(COM2)", "ComandoTX(" + comando_formato_data(4) + "|5)",
                           "FechaPorta()"}));
    EXPECT_EQ(ini("Opcoes", "ConfiguraData"), "4");
    EXPECT_EQ(m->Option3.Value, 1);
}

TEST_F(TelaMain, PrimeiraVezSoNoSegundoTique) {
    abre();
    m->Timer1_Timer();
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(s.FaseInicio, 2);
    d.Respostas = {Resposta::Cancel};
    m->Timer1_Timer();
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("Bem-vindo ao Vexa Plus!"));
    EXPECT_EQ(s.FaseInicio, 0);
    EXPECT_EQ(m->Timer1.Interval, 10000);
    EXPECT_EQ(ini("Config", "FirstTime"), "1"); // Cancel: it comes again at the next start
    m->Timer1_Timer();
    EXPECT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(m->Image1.Visible);
}

TEST_F(TelaMain, AsFigurasSeAlternamACadaTique) {
    for (const char *f : {"/Qorna.bmp", "/tolg01.bmp"}) {
        QFile arquivo(s.CaminhoApp + f);
        ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly));
    }
    abre();
    QStringList vistas;
    for (int i = 0; i < 3; ++i) {
        m->Timer1_Timer();
        vistas << QFileInfo(m->Image1.Picture).fileName();
    }
    EXPECT_EQ(vistas, (QStringList{"Qorna.bmp", "tolg01.bmp", "Qorna.bmp"}));
    EXPECT_TRUE(m->Image1.Visible);
}

TEST_F(TelaMain, SairEFecharGravamACaixaDoRelatorio) {
    abre();
    m->Clica("CheckBox"); // ticked at start: now off
    m->Clica("Sair");
    EXPECT_EQ(ini("Sistema", "InRel"), "0");
    EXPECT_TRUE(d.Encerrado);

    m->Clica("CheckBox");
    m->Unload();
    EXPECT_EQ(ini("Sistema", "InRel"), "1");
}

// --- requests from other programs

QMap<int, QString> pedido_da_linha(const QString &linha) {
    const QStringList campos = LeLinhaComando(linha);
    QMap<int, QString> pedido;
    for (int i = 0; i < campos.size(); ++i)
        if (!campos[i].isEmpty()) pedido.insert(i, campos[i]);
    return pedido;
}

// A cheque filled by another program prints and registers exactly as the same cheque typed.
TEST_F(TelaMain, ChequeDoPedidoImprimeERegistraComoODigitado) {
    abre();
    m->CheckBox.Value = 1;
    const QStringList digitados{"1", "1234,5", "Maria", "Santos", "050399", "", "000123"};
    for (int i : {0, 1, 2, 3, 4, 6})
        digita_e_sai(i, digitados[i]);
    m->Clica("Opcoes", 0);
    const QStringList chamadasDigitado = imp().Chamadas();
    ASSERT_EQ(chamadasDigitado.value(1), "ImprimeCheque(001|1.234,50|Maria|Santos|05/03/99|)");

    m->Clica("Opcoes", 3);
    imp().LimpaChamadas();
    // The same number again: told at the request, printed after "Sim".
    d.Respostas = {Resposta::OK, Resposta::Yes};
    m->RecebePedido(pedido_da_linha("/B001/V1234,50/FMaria/LSantos/D050399/C000123"));
    m->Clica("Opcoes", 0);
    EXPECT_EQ(imp().Chamadas(), chamadasDigitado);

    const auto linhas = linhas_log();
    ASSERT_EQ(linhas.size(), 2);
    for (const char *campo : {"Banco", "V_CH", "Favor", "Local", "Data", "NRCH"})
        EXPECT_EQ(linhas[1].value(campo), linhas[0].value(campo)) << campo;
}

// The bank's name beside the code is never another code's, whichever road brought the code.
class NomeDoCodigoQueChega : public TelaMain, public ::testing::WithParamInterface<bool> {};

TEST_P(NomeDoCodigoQueChega, NuncaODoCodigoAnterior) {
    const bool pelaPesquisa = GetParam();
    abre();
    digita_e_sai(0, "1");
    ASSERT_EQ(m->Label1[6].Caption, NomeBanco(s, "001"));
    if (pelaPesquisa) {
        Pesquisa *p = escolhe_banco_na_pesquisa();
        ASSERT_NE(p, nullptr);
        EXPECT_TRUE(p->Descarregada()); // the pick closes the search
        m->Form_Activate();
    } else {
        m->RecebePedido({{0, "237"}});
    }
    ASSERT_EQ(m->Text1[0].Text, "237");
    EXPECT_TRUE(m->Label1[6].Caption.isEmpty() || m->Label1[6].Caption == NomeBanco(s, "237"))
        << m->Label1[6].Caption.toStdString();
    EXPECT_NE(m->Label1[6].Caption, NomeBanco(s, "001"));
}

INSTANTIATE_TEST_SUITE_P(Caminhos, NomeDoCodigoQueChega, ::testing::Bool());

// Requests that come while the operator is asked for the document wait for the print: the
// validated cheque is the one printed and registered. They are served once after, the fields of
// the later ones replacing the earlier ones'.
TEST_F(TelaMain, PedidosDuranteOPedidoDoDocumentoEsperamAImpressaoESeFundem) {
    abre();
    preenche("001", "1.234,50", "Maria", "Santos", "05/03/99", "000123");
    m->CheckBox.Value = 1;
    d.enquantoAberta = [&](const QString &texto) {
        if (!texto.startsWith("Insira o Documento.")) return;
        m->RecebePedido({{1, "10"}, {2, "Outro"}, {4, "311299"}});
        m->RecebePedido({{1, "99"}});
        m->RecebePedido({{3, "Rio"}});
    };
    d.Mostradas.clear();
    m->Clica("Opcoes", 0);
    EXPECT_EQ(imp().Chamadas().value(1), "ImprimeCheque(001|1.234,50|Maria|Santos|05/03/99|)");
    const auto linhas = linhas_log();
    ASSERT_EQ(linhas.size(), 1);
    EXPECT_EQ(linhas[0].value("Favor"), "Maria");
    EXPECT_EQ(linhas[0].value("V_CH"), "1234,5");
    EXPECT_EQ(linhas[0].value("Data"), "05/03/99");

    EXPECT_EQ(m->Text1[1].Text, "99,00");
    EXPECT_EQ(m->Text1[2].Text, "Outro");
    EXPECT_EQ(m->Text1[3].Text, "Rio");
    EXPECT_EQ(m->Text1[4].Text, "31/12/99");
    EXPECT_EQ(d.Mostradas, QStringList{"Main"});
}

// A flood of requests, each of which raises a message, is served one after the other: no box
// opens inside another, and the last request's fields stand.
TEST_F(TelaMain, EnxurradaDePedidosUmDeCadaVez) {
    abre();
    constexpr int Total = 5000;
    int enviados = 0;
    d.enquantoAberta = [&](const QString &) {
        if (enviados == Total) return;
        ++enviados;
        m->RecebePedido({{2, QString(50, u'x')}, {6, QString::number(enviados)}});
    };
    m->RecebePedido({{2, QString(60, u'a')}});
    EXPECT_EQ(enviados, Total);
    EXPECT_EQ(d.maisFundo, 1);
    EXPECT_EQ(d.Mensagens.size(), Total + 1);
    EXPECT_EQ(m->Text1[2].Text, QString(47, u'x'));
    EXPECT_EQ(m->Text1[6].Text, QString::number(Total));
}

// A request's fields enter as if typed and left. A value longer than the link carries is cut
// by its field, with the field's message; the rest of the request still arrives. The window
// comes to the front, and nothing prints.
TEST_F(TelaMain, ValorLongoDoPedidoCortadoPeloCampo) {
    abre();
    d.Mostradas.clear();
    QMap<int, QString> lidos;
    ASSERT_TRUE(Instancia::Decodifica(
        Instancia::Codifica({{0, "237"}, {2, QString(5000, u'p')}, {3, "Santos"}}), lidos));
    m->RecebePedido(lidos);
    EXPECT_EQ(m->Text1[0].Text, "237");
    EXPECT_EQ(m->Label1[6].Caption, NomeBanco(s, "237"));
    EXPECT_EQ(d.Mostradas, QStringList{"Main"});
    EXPECT_TRUE(imp().Registro().isEmpty());
    EXPECT_EQ(m->Text1[2].Text, QString(47, u'p'));
    EXPECT_EQ(m->Text1[3].Text, "Santos");
    EXPECT_EQ(d.Textos(), QStringList{"Tamanho Máximo deste campo..."});
}

// --- the cheque book

TEST_F(TelaMain, OTalaoPropoeONumeroEAvancaACadaImpressao) {
    grava_proximo_cheque(s, "001", "000123");
    abre();
    preenche("", "1,00", "Ana", "Rio", "05/03/99", "");
    digita_e_sai(0, "1");
    EXPECT_EQ(m->Text1[6].Text, "000123");
    m->CheckBox.Value = 1;
    m->Clica("Opcoes", 0);
    EXPECT_EQ(linhas_log().value(0).value("NRCH"), "000123");
    EXPECT_EQ(m->Text1[6].Text, "000124");
    // A number typed over the proposal is printed, and the book follows it.
    m->Text1[6].Text = "000500";
    m->Clica("Opcoes", 0);
    EXPECT_EQ(proximo_cheque(s, "001"), "000501");
    // Another bank without a book takes the proposal away; a typed number would stay.
    digita_e_sai(0, "237");
    EXPECT_EQ(m->Text1[6].Text, "");
    m->Text1[6].Text = "777";
    digita_e_sai(0, "1");
    EXPECT_EQ(m->Text1[6].Text, "777");
}

struct Duplicado {
    bool cancelado;
    Resposta resposta;
};
class NumeroDuplicado : public TelaMain, public ::testing::WithParamInterface<Duplicado> {};

TEST_P(NumeroDuplicado, ParaAntesDeImprimirENomeiaOAnterior) {
    const Duplicado &c = GetParam();
    ASSERT_EQ(registra_cheque(s, {"001", "10,00", "Ana", "Rio", "20/11/26", "000123"}),
              EstadoRegistro::Gravado);
    if (c.cancelado) MarcaCheque(s, d, "0000000001", "C");
    abre();
    preenche("001", "1,00", "Bia", "Rio", "05/03/99", "000123");
    d.Respostas = {c.resposta, Resposta::Cancel};
    m->Clica("Opcoes", 0);
    ASSERT_GE(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto,
              QString("O cheque nº 000123 deste banco já está no relatório") +
                  (c.cancelado ? " (cancelado)" : "") +
                  ":\n\nData: 20/11/26\nFavorecido: Ana\nValor: R$ 10,00\n\nImprimir assim mesmo?");
    EXPECT_EQ(d.Mensagens[0].Padrao, Resposta::No);
    // "Sim" goes on to the document; "Não" ends there, on the number.
    EXPECT_EQ(d.Mensagens.size(), c.resposta == Resposta::Yes ? 2 : 1);
    if (c.resposta == Resposta::No) EXPECT_EQ(m->Foco().texto(), "Text1(6)");
}
INSTANTIATE_TEST_SUITE_P(Talao, NumeroDuplicado,
                         ::testing::Values(Duplicado{false, Resposta::No},
                                           Duplicado{true, Resposta::No},
                                           Duplicado{false, Resposta::Yes}));

TEST_F(TelaMain, PedidoComNumeroJaRegistradoAvisaNaTela) {
    registra_cheque(s, {"001", "10,00", "Ana", "Rio", "20/11/26", "000123"});
    abre();
    m->RecebePedido({{0, "001"}, {6, "000123"}});
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.endsWith("O pedido de outro programa trouxe este número: "
                                              "confira-o antes de imprimir."));
    EXPECT_EQ(m->Foco().texto(), "Text1(6)");
    EXPECT_TRUE(imp().Chamadas().isEmpty());
}

TEST_F(TelaMain, FolhaInutilizadaFicaCanceladaEOChequeVaiNaProxima) {
    grava_proximo_cheque(s, "001", "000123");
    abre();
    EXPECT_FALSE(m->Opcoes[8].Enabled);
    m->Text2[0].Text = "Aluguel";
    preenche("001", "1,00", "Ana", "Rio", "05/03/99", "000123");
    m->CheckBox.Value = 1;
    m->Clica("Opcoes", 0);
    m->Text1[2].Text = "outro"; // the fields come back as the spoiled cheque had them
    d.Mensagens.clear();
    m->Clica("Opcoes", 8);
    EXPECT_EQ(d.Mensagens.value(0).Padrao, Resposta::Yes);
    const auto linha = linhas_log().value(0);
    EXPECT_EQ(linha.value("StCancel"), "C");
    EXPECT_EQ((QStringList{linha["Comentario"], linha["Comentario1"]}),
              (QStringList{"Aluguel", "folha inutilizada"}));
    const auto historico = historico_cheque(s, "0000000001");
    ASSERT_EQ(historico.size(), 1);
    EXPECT_EQ(historico[0].Acao, "Folha inutilizada");
    EXPECT_EQ(historico[0].Linha.value("StCancel"), " ");
    EXPECT_FALSE(m->Opcoes[8].Enabled);
    EXPECT_EQ(m->Foco().texto(), "Opcoes(0)");
    EXPECT_EQ(m->Text1[2].Text, "Ana");
    m->Clica("Opcoes", 0);
    EXPECT_EQ(linhas_log().value(1).value("NRCH"), "000124");
    EXPECT_EQ(proximo_cheque(s, "001"), "000125");
}

} // namespace
