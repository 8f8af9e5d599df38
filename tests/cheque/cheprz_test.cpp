// The post-dated cheques' screen: its schedule typed as the operator types it, its keys and
// checks, and the run that prints one cheque per instalment and registers each.
#include "apoio/registro_log.h"
#include "cheque/cheprz.h"
#include "cheque/main.h"
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "core/relogio.h"
#include "core/teclas.h"
#include "printer/simulador.h"
#include "registers/pesquisa.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"
#include "store/talao.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

using tecla::Enter, tecla::F3, tecla::F4, tecla::F8;
const QString Titulo = "Impressão de Cheques a Prazo";

// The simulator with one call refused: the vez-th call (from 1) of the operation answers
// codigo, the others go as usual.
class SimuladorQueRecusa : public Simulador {
  public:
    using Simulador::Simulador;
    void Recusa(const QString &operacao, int vez, qint16 codigo) {
        operacao_ = operacao;
        vez_ = vez;
        codigo_ = codigo;
    }
    qint16 IniciaPorta(const QString &Porta) override {
        conta("IniciaPorta");
        return Simulador::IniciaPorta(Porta);
    }
    qint16 ImprimeCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                         const QString &Cidade, const QString &Data,
                         const QString &Extra) override {
        conta("ImprimeCheque");
        return Simulador::ImprimeCheque(Banco, Valor, Favorecido, Cidade, Data, Extra);
    }

  private:
    void conta(const QString &operacao) {
        if (operacao != operacao_) return;
        LimpaFalhas();
        if (++vezes_ == vez_) Falha(operacao, codigo_);
    }
    QString operacao_;
    int vez_ = 0, vezes_ = 0;
    qint16 codigo_ = 0;
};

class TelaPrazo : public ::testing::Test {
  protected:
    void SetUp() override {
        fixa_hoje(QDate(2026, 11, 23));
        prepara_pasta_dados(s);
        s.Impressora = std::make_unique<SimuladorQueRecusa>(s.CaminhoApp);
        // The entry screen is always open under this one: its report box decides the rows.
        principal = static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
        principal->CheckBox.Value = 1;
    }
    void TearDown() override { fixa_hoje(QDate()); }

    ChePrz &abre() {
        p = static_cast<ChePrz *>(d.Abre(std::make_unique<ChePrz>(s, d)));
        imp().LimpaChamadas();
        d.Mensagens.clear();
        return *p;
    }
    SimuladorQueRecusa &imp() { return static_cast<SimuladorQueRecusa &>(*s.Impressora); }
    QString ini(const QString &chave) { return LeGravaIni(s.CaminhoIni, "FrentePrazo", chave, ""); }

    // Types into a field and presses Enter, as the operator does.
    void digita(const QString &campo, int i, const QString &texto) {
        p->SetFocus(campo, i);
        p->Digita(campo, i, texto);
        p->Tecla(Enter);
    }
    // Total, start date, days between instalments and their number, each closed with Enter.
    void agenda(const QString &total, const QString &inicio, const QString &dias, int n) {
        digita("Text1", 0, total);
        digita("DataPre", -1, inicio);
        digita("prazo", -1, dias);
        digita("parcelas", -1, QString::number(n));
    }
    // The bank, city and payee of every cheque.
    void cheque(const QString &banco = "001", const QString &cidade = "Curitiba",
                const QString &favorecido = "Construtora Boa Vista") {
        p->Text3[0].Text = banco;
        p->Text3[1].Text = cidade;
        p->Text3[2].Text = favorecido;
    }
    QStringList textos(Matriz<Texto> &m, int de, int n) {
        QStringList r;
        for (int i = de; i < de + n; ++i)
            r << m[i].Text;
        return r;
    }
    QStringList datas(int n = 12) { return textos(p->Text1, 13, n); }
    QStringList valores(int n = 12) { return textos(p->Text2, 0, n); }
    QStringList periodos() { return textos(p->Text1, 1, 12); }
    QList<QMap<QString, QString>> linhas_log() { return teste::linhas_do_log(s, d); }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    Main *principal = nullptr;
    ChePrz *p = nullptr;
};

const QStringList Vazias(12, QString());
QStringList completa(QStringList inicio) {
    while (inicio.size() < 12)
        inicio << QString();
    return inicio;
}

// --- loading and clearing

struct Padrao {
    const char *nome;
    QList<QPair<QString, QString>> prazos; // section Prazos
    QList<QPair<QString, QString>> frente; // section FrentePrazo
    QStringList periodos;
};

class Carga : public TelaPrazo, public ::testing::WithParamInterface<Padrao> {};

TEST_P(Carga, PeriodosDosPadroes) {
    for (const auto &[chave, valor] : GetParam().prazos)
        LeGravaIni(s.CaminhoIni, "Prazos", chave, valor);
    for (const auto &[chave, valor] : GetParam().frente)
        LeGravaIni(s.CaminhoIni, "FrentePrazo", chave, valor);
    abre();
    EXPECT_EQ(periodos(), completa(GetParam().periodos));
    EXPECT_EQ(p->Foco().texto(), "Text1(0)");
}

INSTANTIATE_TEST_SUITE_P(
    Secoes, Carga,
    ::testing::Values(
        // Only the standard periods above 0; a missing one leaves its field empty.
        Padrao{"padroes", {{"P1", "30"}, {"P2", "60"}, {"P3", "0"}}, {}, {"30", "60", "", ""}},
        // The stored periods come over them, an empty one included, up to the first missing key.
        Padrao{"guardados",
               {{"P1", "30"}, {"P2", "60"}, {"P3", "90"}, {"P4", "120"}},
               {{"prazo1", "00"}, {"prazo2", " "}, {"prazo3", "45"}, {"prazo5", "99"}},
               {"00", "", "45", "120"}}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(TelaPrazo, CargaDoChequeELimpar) {
    for (const auto &[chave, valor] : {std::pair{"Codigo", "237"},
                                       {"Banco", "Bradesco"},
                                       {"Cidade", "Londrina"},
                                       {"Favorecido", "Ana"}})
        LeGravaIni(s.CaminhoIni, "FrentePrazo", chave, valor);
    LeGravaIni(s.CaminhoIni, "Prazos", "P1", "30");
    abre();
    EXPECT_EQ(textos(p->Text3, 0, 3), QStringList({"237", "Londrina", "Ana"}));
    EXPECT_EQ(p->Label2.Caption, "Bradesco");

    agenda("300", "010127", "30", 3);
    p->Text4[0].Text = "12";
    p->Clica("Command3D1", 2);
    EXPECT_EQ(periodos(), completa({"30"}));
    EXPECT_EQ(valores(), Vazias);
    EXPECT_EQ(textos(p->Text4, 0, 12), Vazias);
    EXPECT_EQ(textos(p->Text3, 0, 3), QStringList({"", "", ""}));
    EXPECT_EQ(p->Label2.Caption, "");
    for (const Texto *t : {&p->Text1[0], &p->DataPre, &p->prazo, &p->parcelas, &p->Text5})
        EXPECT_EQ(t->Text, "");
    EXPECT_EQ(p->Foco().texto(), "Text1(0)");
}

// Limpar and Fechar don't stop at a bad field: its text is going anyway.
TEST_F(TelaPrazo, LimparEFecharNaoConferemOCampo) {
    abre();
    p->SetFocus("Text1", 0);
    p->Digita("Text1", 0, "12x");
    p->Clica("Command3D1", 2);
    EXPECT_EQ(p->Text1[0].Text, "");
    EXPECT_EQ(p->Foco().texto(), "Text1(0)");
    p->SetFocus("Text3", 0);
    p->Digita("Text3", 0, "998");
    p->Clica("Command3D1", 1);
    EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
    EXPECT_TRUE(p->Descarregada());
}

// --- the schedule

// Twelve instalments: the last days that fit the field, the focus past the twelfth.
TEST_F(TelaPrazo, DozeParcelas) {
    abre();
    agenda("1200", "", "90", 12);
    EXPECT_EQ(periodos(), QStringList({"00", "90", "180", "270", "360", "450", "540", "630", "720",
                                       "810", "900", "990"}));
    EXPECT_EQ(p->Foco().texto(), "Text1(13)");
    EXPECT_EQ(datas().last(), "09/08/29"); // 990 days from today
    EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
}

// The periods, dates and amounts of each row, joined by "|".
struct Agenda {
    const char *nome;
    QString total, inicio, periodos, datas, valores;
};

class Calculo : public TelaPrazo, public ::testing::WithParamInterface<Agenda> {};

TEST_P(Calculo, DatasEValoresDeCadaLinha) {
    const Agenda &c = GetParam();
    abre();
    p->Text1[0].Text = c.total;
    p->DataPre.Text = c.inicio;
    for (int i = 0; i < 12; ++i)
        p->Text1[i + 1].Text = c.periodos.split('|').value(i);
    p->SetFocus("Text1", 13);
    EXPECT_EQ(datas(), completa(c.datas.split('|')));
    EXPECT_EQ(valores(), completa(c.valores.split('|')));
}

INSTANTIATE_TEST_SUITE_P(
    Agendas, Calculo,
    ::testing::Values(
        // Each row's date follows its own days, whatever their order.
        Agenda{"PrazosForaDeOrdem", "90,00", "01/03/27", "60|00|30", "30/04/27|01/03/27|31/03/27",
               "30,00|30,00|30,00"},
        // Without a start date the days count from today, and the year still has two digits.
        Agenda{"SemDataInicial", "100,00", "", "00|45", "23/11/26|07/01/27", "50,00|50,00"},
        // Counted wherever they stand: three filled, the three first rows take them.
        Agenda{"VazioNoMeio", "300,00", "01/03/27", "00||60|90", "01/03/27|01/03/27|30/04/27",
               "100,00|100,00|100,00"},
        // A start date the rules can't read leaves the dates for the check before printing.
        Agenda{"InicioIlegivel", "100,00", "31/02/27", "00|30", "", "50,00|50,00"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(TelaPrazo, ValoresQueSomamOTotalNaoSaoRecalculados) {
    abre();
    agenda("100", "100127", "30", 3);
    // An amount adjusted by hand: the two later ones share the rest.
    digita("Text2", 0, "40");
    EXPECT_EQ(valores(3), QStringList({"40,00", "30,00", "30,00"}));
    p->Muda(p->Text1[14], "15/02/27");
    p->SetFocus("Text1", 13);
    EXPECT_EQ(valores(3), QStringList({"40,00", "30,00", "30,00"}));
    EXPECT_EQ(datas(3), QStringList({"10/01/27", "15/02/27", "11/03/27"}));

    // Amounts that no longer add up are spread again, and the dates with them.
    p->Muda(p->Text1[0], "120,00");
    p->SetFocus("Text1", 15);
    EXPECT_EQ(valores(3), QStringList({"40,00", "40,00", "40,00"}));
    EXPECT_EQ(datas(3), QStringList({"10/01/27", "09/02/27", "11/03/27"}));
}

// The amounts before and after, joined by "|"; as many instalments as amounts.
struct Ajuste {
    const char *nome;
    QString total;
    int campo;
    QString digitado, antes, depois;
};

class AjusteManual : public TelaPrazo, public ::testing::WithParamInterface<Ajuste> {};

TEST_P(AjusteManual, AsSeguintesDividemOResto) {
    const Ajuste &c = GetParam();
    abre();
    p->Text1[0].Text = c.total;
    const QStringList antes = c.antes.split('|');
    for (int i = 0; i < antes.size(); ++i) {
        p->Text1[i + 1].Text = "00";
        p->Text2[i].Text = antes[i];
    }
    p->SetFocus("Text2", c.campo);
    p->Digita("Text2", c.campo, c.digitado);
    p->SetFocus("Text3", 2);
    EXPECT_EQ(valores(int(antes.size())).join('|'), c.depois);
    EXPECT_EQ(p->Text1[0].Text, c.total.isEmpty() ? "0,00" : c.total);
    EXPECT_TRUE(d.Mensagens.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Casos, AjusteManual,
    ::testing::Values(
        Ajuste{"DoMeio", "100,00", 1, "10", "25,00|25,00|25,00|25,00", "25,00|10,00|32,50|32,50"},
        // No correction of the rounding: the sum passes the total by a cent.
        Ajuste{"SemCorrecao", "100,00", 0, "0,02", "25,00|25,00|25,00|25,00",
               "0,02|33,33|33,33|33,33"},
        // The last one touches nothing else.
        Ajuste{"Ultima", "100,00", 2, "1000", "33,34|33,33|33,33", "33,34|33,33|1.000,00"},
        // Without a total the rest is what the typed amounts leave of zero.
        Ajuste{"SemTotal", "", 0, "10", "||", "10,00|-5,00|-5,00"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(TelaPrazo, DiaFixoTrocaODiaDasDatasSemTocarOsValores) {
    abre();
    digita("Text5", -1, "10");
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto,
              "Primeiro calcule as datas normalmente, preenchendo os campos;\r\ndepois "
              "coloque o dia fixo desejado para que as datas sejam alteradas.");
    EXPECT_EQ(p->Foco().texto(), "Text5");

    agenda("100", "150127", "30", 2);
    d.Mensagens.clear();
    digita("Text5", -1, "32");
    EXPECT_EQ(d.Textos(), QStringList({"Dia inválido."}));
    EXPECT_EQ(p->Text5.Text, "");
    EXPECT_EQ(datas(2), QStringList({"15/01/27", "14/02/27"}));

    d.Mensagens.clear();
    digita("Text5", -1, "5");
    EXPECT_EQ(datas(), completa({"05/01/27", "05/02/27"}));
    EXPECT_EQ(valores(), completa({"50,00", "50,00"}));
    EXPECT_EQ(p->Foco().texto(), "Text5");
    EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
}

// --- Enter, field by field

struct Tecla {
    const char *nome;
    QString campo;
    QString digitado;
    QString fica; // the field's text after Enter
    QString foco; // where the focus is
    QString mensagem = {};
    Icone icone = Icone::Exclamacao;
    QString dias = {}; // Qtde Dias, typed beforehand
    // With all twelve amounts filled beforehand, how many of the first stay; -1: not looked at.
    int valoresFicam = -1;
};

class EnterNoCampo : public TelaPrazo, public ::testing::WithParamInterface<Tecla> {};

TEST_P(EnterNoCampo, AvancaOuRecusa) {
    const Tecla &c = GetParam();
    abre();
    p->prazo.Text = c.dias;
    if (c.valoresFicam >= 0)
        for (auto &[i, t] : p->Text2)
            t.Text = "1,00";
    const RefControle campo = RefControle::de(c.campo);
    digita(campo.Nome, campo.Index, c.digitado);
    EXPECT_EQ(p->controle(campo)->Text, c.fica);
    if (c.valoresFicam >= 0) {
        EXPECT_EQ(valores(), completa(QStringList(c.valoresFicam, "1,00")));
    }
    EXPECT_EQ(p->Foco().texto(), c.foco);
    if (c.mensagem.isEmpty()) {
        EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
        return;
    }
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, Titulo);
    EXPECT_EQ(d.Mensagens[0].Icone_, c.icone);
}

INSTANTIATE_TEST_SUITE_P(
    Campos, EnterNoCampo,
    ::testing::Values(
        Tecla{"TotalComMascara", "Text1(0)", "1234,5", "1.234,50", "DataPre"},
        Tecla{"TotalInvalido", "Text1(0)", "12x", "", "Text1(0)", "Valor inválido."},
        Tecla{"TotalNegativo", "Text1(0)", "-5", "", "Text1(0)", "Valor inválido."},
        Tecla{"InicioVazioEHoje", "DataPre", "", "23/11/26", "prazo"},
        Tecla{"InicioSeisDigitos", "DataPre", "050327", "05/03/27", "prazo"},
        Tecla{"InicioComBarras", "DataPre", "5/3/27", "05/03/27", "prazo"},
        Tecla{"InicioOitoDigitos", "DataPre", "05032027", "05/03/27", "prazo"},
        Tecla{"InicioTamanhoErrado", "DataPre", "5327", "", "DataPre",
              "Por favor, digite a data no formato 'DD/MM/AA'"},
        Tecla{"InicioQueNaoEData", "DataPre", "310427", "31/04/27", "DataPre",
              "Data inválida. Verifique se a data foi digitada no formato 'DD/MM/AA'"},
        Tecla{"Dias", "prazo", "30", "30", "parcelas"},
        Tecla{"DiasInvalidos", "prazo", "3x", "", "prazo",
              "Valor inválido para a quantidade de dias."},
        Tecla{"ParcelasInvalidas", "parcelas", "x", "", "parcelas",
              "Valor inválido para o número de parcelas"},
        Tecla{"ZeroParcelas", "parcelas", "0", "", "parcelas",
              "Valor inválido para o número de parcelas"},
        Tecla{"TrezeParcelas", "parcelas", "13", "", "parcelas",
              "O Programa Calcula Somente até 12 Parcelas", Icone::Nenhum},
        // 10 x 100 days would not fit the three digits of a period.
        Tecla{"UltimoPrazoPassaDe999Dias", "parcelas", "11", "", "parcelas",
              "O prazo da última parcela passaria de 999 dias", Icone::Exclamacao, "100"},
        Tecla{"PeriodoSegue", "Text1(2)", "45", "45", "Text1(3)", {}, {}, {}, 12},
        Tecla{"PeriodoVazioEsvaziaOsValores", "Text1(5)", "", "", "Text1(13)", {}, {}, {}, 5},
        // From the twelfth period on there is no amount left to empty.
        Tecla{"UltimoPeriodoVaiAsDatas", "Text1(12)", "5", "05", "Text1(13)", {}, {}, {}, 12},
        Tecla{"DataSegue", "Text1(14)", "", "", "Text1(15)"},
        Tecla{"UltimaDataVaiAoBanco", "Text1(24)", "", "", "Text3(0)"},
        Tecla{"ValorSegue", "Text2(1)", "", "", "Text2(2)"},
        Tecla{"QuartoValorVaiAoBanco", "Text2(3)", "", "", "Text3(0)"},
        Tecla{"NumeroVazio", "Text4(2)", "", "", "Text4(2)", "Digite o número do cheque"},
        Tecla{"BancoSegue", "Text3(0)", "1", "001", "Text3(1)"},
        Tecla{"CidadeSegue", "Text3(1)", "Curitiba", "Curitiba", "Text3(2)"},
        Tecla{"FavorecidoVaiAImprimir", "Text3(2)", "Ana", "Ana", "Command3D1(0)"}),
    [](const auto &info) { return std::string(info.param.nome); });

// Past the number of instalments typed, Enter refuses the row and goes to the bank.
struct Limite {
    RefControle campo;
    QString mensagem;
};

class AlemDasParcelas : public TelaPrazo, public ::testing::WithParamInterface<Limite> {};

TEST_P(AlemDasParcelas, AvisaEsvaziaEVaiAoBanco) {
    abre();
    agenda("300", "010327", "30", 3);
    d.Mensagens.clear();
    digita(GetParam().campo.Nome, GetParam().campo.Index, "123");
    EXPECT_EQ(d.Textos(), QStringList({GetParam().mensagem}));
    EXPECT_EQ(p->controle(GetParam().campo)->Text, "");
    EXPECT_EQ(p->Foco().texto(), "Text3(0)");
}

INSTANTIATE_TEST_SUITE_P(
    Campos, AlemDasParcelas,
    ::testing::Values(Limite{{"Text1", 16}, "Ultrapassou o limite de 3 parcela(s)"},
                      Limite{{"Text2", 3}, "Ultrapassou o limite de 3 parcela"},
                      Limite{{"Text4", 5}, "Ultrapassou o limite de 3 parcela"}));

TEST_F(TelaPrazo, NumeroDoChequeNumeraOsSeguintes) {
    abre();
    agenda("400", "010327", "30", 4);
    digita("Text4", 1, "000099");
    EXPECT_EQ(textos(p->Text4, 0, 5), QStringList({"", "000099", "000100", "000101", ""}));
    EXPECT_EQ(p->Foco().texto(), "Text3(0)");
    digita("Text4", 0, "AB-9");
    EXPECT_EQ(textos(p->Text4, 0, 4), QStringList({"AB-9", "AB-10", "AB-11", "AB-12"}));
    // Letters alone give no sequence: the later numbers stay.
    digita("Text4", 2, "X");
    EXPECT_EQ(textos(p->Text4, 0, 4), QStringList({"AB-9", "AB-10", "X", "AB-12"}));

    // Days typed by hand, without a number of instalments: the count of the days.
    p->Clica("Command3D1", 2);
    for (int i : {1, 2, 4})
        p->Text1[i].Text = "30";
    digita("Text4", 0, "7");
    EXPECT_EQ(textos(p->Text4, 0, 4), QStringList({"7", "8", "9", ""}));
}

// --- leaving a field

struct Saida {
    const char *nome;
    QString campo, digitado, fica, foco;
    QStringList mensagens = {};
};

class SaidaNoPrazo : public TelaPrazo, public ::testing::WithParamInterface<Saida> {};

TEST_P(SaidaNoPrazo, NormalizaOuSegura) {
    const Saida &c = GetParam();
    const RefControle campo = RefControle::de(c.campo);
    abre();
    p->SetFocus(campo);
    p->Digita(campo.Nome, campo.Index, c.digitado);
    p->SetFocus("Text3", 2);
    EXPECT_EQ(p->controle(campo)->Text, c.fica);
    EXPECT_EQ(p->Foco().texto(), c.foco);
    EXPECT_EQ(d.Textos(), c.mensagens);
}

const QStringList MuitoLongo = {"Tamanho Máximo deste campo..."};
INSTANTIATE_TEST_SUITE_P(
    Campos, SaidaNoPrazo,
    ::testing::Values(
        Saida{"Total", "Text1(0)", "1000", "1.000,00", "Text3(2)"},
        Saida{"TotalInvalidoSemAviso", "Text1(0)", "12x", "", "Text1(0)"},
        Saida{"TotalGrandeDemais", "Text1(0)", "1000000,01", "", "Text1(0)", MuitoLongo},
        Saida{"Dias", "Text1(3)", "7", "07", "Text3(2)"},
        Saida{"DiasInvalidos", "Text1(3)", "1,5", "", "Text1(3)"},
        Saida{"DiasVaziosParaForaDosPrazos", "Text1(3)", "", "", "Text3(2)"},
        Saida{"DataDeUmDia", "Text1(14)", "5", "05/11/26", "Text3(2)"},
        Saida{"DataQueNaoEDataFicaComoEsta", "Text1(14)", "29/02/27", "29/02/27", "Text3(2)"},
        Saida{"ValorInvalidoSemAviso", "Text2(0)", "abc", "", "Text2(0)"},
        Saida{"BancoComTresDigitos", "Text3(0)", "1", "001", "Text3(2)"},
        Saida{"BancoInexistente", "Text3(0)", "998", "", "Text3(0)", {"Banco Inexistente..."}}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(TelaPrazo, DiasVaziosNoCaminhoDosPrazosLevamAsDatas) {
    abre();
    p->SetFocus("Text1", 5);
    p->SetFocus("Text1", 6);
    EXPECT_EQ(p->Foco().texto(), "Text1(13)");
}

// Each field's limit, and a longer text cut to it with the message.
TEST_F(TelaPrazo, TamanhoMaximoCortaComAMensagem) {
    abre();
    for (const auto &[campo, maximo] : {std::pair{RefControle{"Text1", 7}, 3},
                                        {{"Text1", 20}, 8},
                                        {{"Text4", 11}, 12},
                                        {{"Text3", 2}, 74}}) {
        SCOPED_TRACE(campo.texto().toStdString());
        Controle &c = *p->controle(campo);
        EXPECT_EQ(c.MaxLength, maximo);
        d.Mensagens.clear();
        p->Muda(c, QString(maximo, u'1'));
        EXPECT_TRUE(d.Mensagens.isEmpty());
        p->Muda(c, QString(maximo + 5, u'1'));
        EXPECT_EQ(c.Text, QString(maximo, u'1'));
        EXPECT_EQ(d.Textos(), QStringList{"Tamanho Máximo deste campo..."});
        EXPECT_EQ(d.Mensagens.value(0).Titulo, "Erro");
    }
}

// --- keys

TEST_F(TelaPrazo, F4GuardaPrazosEChequeF8Limpa) {
    abre();
    for (int i = 1; i <= 12; ++i)
        p->Text1[i].Text = i == 2 ? QString() : QString::number(i * 10);
    p->SetFocus("Text1", 3);
    p->Tecla(F4);
    EXPECT_EQ(ini("prazo1"), "10");
    EXPECT_EQ(ini("prazo2"), ""); // one blank, read back trimmed
    EXPECT_EQ(ini("prazo12"), "120");

    const QString cheque[] = {"237", "Londrina", "Ana"};
    for (int i = 0; i < 3; ++i) {
        p->SetFocus("Text3", i);
        p->Digita("Text3", i, cheque[i]);
    }
    // The code once left, with its bank's name beside it.
    for (int i = 0; i < 3; ++i) {
        p->SetFocus("Text3", i);
        p->Tecla(F4);
    }
    EXPECT_EQ(ini("Codigo"), "237");
    EXPECT_EQ(ini("banco"), NomeBanco(s, "237"));
    EXPECT_EQ(ini("Cidade"), "Londrina");
    EXPECT_EQ(ini("Favorecido"), "Ana");

    // F4 elsewhere stores nothing; F8 empties.
    p->SetFocus("Text1", 0);
    p->Digita("Text1", 0, "5");
    p->Tecla(F4);
    EXPECT_EQ(ini("Valor"), "-2");
    for (const RefControle &r : {RefControle{"Text1", 0}, RefControle{"Text1", 5},
                                 RefControle{"Text2", 0}, RefControle{"Text3", 1}}) {
        p->SetFocus(r);
        p->controle(r)->Text = "9";
        p->Tecla(F8);
        EXPECT_EQ(p->controle(r)->Text, "") << r.texto().toStdString();
    }
    EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
}

TEST_F(TelaPrazo, F3DizOsPrazosOuPesquisa) {
    abre();
    const QString prazos = "Prazos para pagamento ex: Cheque p/ 30 dias / 60 dias / 90 dias / "
                           "120 dias (até 4x)";
    const QString somente = "Pesquisa somente para Banco, Cidade e Favorecido!";
    // Filled, so that walking them doesn't end at the dates.
    for (int i = 1; i <= 5; ++i)
        p->Text1[i].Text = "30";
    const std::pair<RefControle, QString> casos[] = {
        {{"Text1", 1}, prazos},  {{"Text1", 4}, prazos},   {{"Text1", 0}, somente},
        {{"Text1", 5}, somente}, {{"Text1", 20}, somente}, {{"Text2", 2}, somente}};
    for (const auto &[campo, mensagem] : casos) {
        d.Mensagens.clear();
        p->SetFocus(campo);
        p->Tecla(F3);
        ASSERT_EQ(d.Mensagens.size(), 1) << campo.texto().toStdString();
        EXPECT_EQ(d.Mensagens[0].Texto, mensagem);
        EXPECT_EQ(d.Mensagens[0].Icone_,
                  mensagem == prazos ? Icone::Informacao : Icone::Exclamacao);
    }

    // Banks, cities and payees: the search window on each, the pick entering the field.
    const int tipos[] = {2, 1, 0};
    for (int i = 0; i < 3; ++i) {
        s.TipoPesquisa = 9;
        p->SetFocus("Text3", i);
        d.Respostas = {Resposta::Cancel}; // an empty register offers to fill it
        p->Tecla(F3);
        EXPECT_EQ(s.TipoPesquisa, tipos[i]);
        if (Tela *t = d.Aberta("Pesquisa")) t->Unload();
    }
    EXPECT_EQ(d.Abertas.count("Pesquisa"), 3);

    p->SetFocus("Text3", 0);
    p->Tecla(F3);
    auto *pesquisa = d.Tela_<Pesquisa>("Pesquisa");
    ASSERT_NE(pesquisa, nullptr);
    pesquisa->Digita("Text1", 0, "Brades");
    pesquisa->List1.ListIndex = 0;
    pesquisa->Clica("Command3D1", 0);
    p->Form_Activate();
    EXPECT_EQ(p->Text3[0].Text, "237");
}

// --- the check before printing

struct Verificacao {
    const char *nome;
    QString banco, data, valor;
    int periodos;
    QString mensagem; // empty: it passes
};

class VerificaCampos : public TelaPrazo, public ::testing::WithParamInterface<Verificacao> {};

TEST_P(VerificaCampos, ParaNaPrimeiraFalta) {
    const Verificacao &c = GetParam();
    abre();
    for (int i = 1; i <= 12; ++i)
        p->Text1[i].Text = i <= c.periodos ? "30" : "";
    p->Text3[0].Text = c.banco;
    p->Text1[13].Text = c.data;
    p->Text2[0].Text = c.valor;
    EXPECT_EQ(p->VerificaCampos(), c.mensagem.isEmpty() ? 0 : 1);
    if (c.mensagem.isEmpty()) {
        EXPECT_TRUE(d.Mensagens.isEmpty());
        // The printer takes no empty city or payee.
        EXPECT_EQ(p->Text3[1].Text, " ");
        EXPECT_EQ(p->Text3[2].Text, " ");
        return;
    }
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
    EXPECT_EQ(d.Mensagens[0].Titulo, "Erro");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    EXPECT_EQ(p->Text3[1].Text, "");
}

INSTANTIATE_TEST_SUITE_P(
    Casos, VerificaCampos,
    ::testing::Values(Verificacao{"SemParcelas", "", "", "", 0, "Valores inválidos..."},
                      Verificacao{"SemBanco", "", "01/03/27", "10,00", 2,
                                  "Código do banco inválido..."},
                      Verificacao{"SemData", "001", "", "10,00", 2, "Valores inválidos..."},
                      Verificacao{"SemValor", "001", "01/03/27", "", 2, "Valores inválidos..."},
                      Verificacao{"Passa", "001", "01/03/27", "10,00", 1, ""}),
    [](const auto &info) { return std::string(info.param.nome); });

// --- printing and registering

class ImpressaoPrazo : public TelaPrazo {
  protected:
    // Three instalments of 100,00 from 10/01/27, on bank 001, ready to print; the second has
    // its cheque's number.
    void tres_parcelas() {
        abre();
        agenda("100", "100127", "30", 3);
        cheque();
        p->Text4[1].Text = "000456";
        d.Mensagens.clear();
    }
};

// The calls of one instalment of tres_parcelas on the port (0 to 2).
QStringList na_porta(int parcela) {
    const char *valor = parcela == 0 ? "33,34" : "33,33";
    const char *data[] = {"10/01/27", "09/02/27", "11/03/27"};
    return {"IniciaPorta(COM2)",
            QStringLiteral("ImprimeCheque(001|%1|Construtora Boa Vista|Curitiba|%2|%1)")
                .arg(valor, data[parcela]),
            "FechaPorta()"};
}
const QStringList TresNaPorta = na_porta(0) + na_porta(1) + na_porta(2);
// The question before instalment k of tres_parcelas names it.
QString insira(int k) {
    return QStringLiteral("(i) Impressão do Cheque: Insira o Documento.\n\nParcela %1 de 3 — "
                          "cheque %2 — R$ %3")
        .arg(k)
        .arg(k == 2 ? "000456" : "sem número", k == 1 ? "33,34" : "33,33");
}
const QStringList Insira = {insira(1), insira(2), insira(3)};
const QString Primeira = "0000000001|00001|33,34|10/01/27|SEQ:00001";

// The answers to "Insira o Documento." and the printer's one refusal in; the messages, the
// calls on the port and the new rows of Log out.
struct Execucao {
    const char *nome;
    QList<Resposta> respostas = {};
    struct {
        QString operacao; // the call refused at its vez-th time (from 1), with the code
        int vez = 0;
        qint16 codigo = 0;
    } recusa = {};
    bool relatorio = true; // the entry screen's report box
    QString banco = "001";
    QStringList registro = {};  // rows of Log before the run: Index|Codigo
    QStringList mensagens = {}; // (icon) title: text
    QStringList chamadas = {};
    QStringList linhas = {}; // Index|Codigo|V_CH|Data|NRCH
};

class ExecucaoPrazo : public ImpressaoPrazo, public ::testing::WithParamInterface<Execucao> {};

TEST_P(ExecucaoPrazo, ImprimeERegistraCadaParcela) {
    const Execucao &c = GetParam();
    ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 1), -2);
    for (const QString &linha : c.registro) {
        RecordSet &log = Conjunto(s, TabLog);
        log.AddNew();
        log.Define("Index", linha.section('|', 0, 0));
        log.Define("Codigo", linha.section('|', 1, 1));
        ASSERT_TRUE(log.Update());
    }
    FechaTabelas(s, 0, 0, 0, 1);
    tres_parcelas();
    p->Text3[0].Text = c.banco;
    principal->CheckBox.Value = c.relatorio;
    imp().Recusa(c.recusa.operacao, c.recusa.vez, c.recusa.codigo);
    d.Respostas = c.respostas;
    p->Clica("Command3D1", 0);

    QStringList mensagens;
    for (const auto &m : d.Mensagens) {
        const char *icone = m.Icone_ == Icone::Informacao   ? "(i) "
                            : m.Icone_ == Icone::Critico    ? "(x) "
                            : m.Icone_ == Icone::Exclamacao ? "(!) "
                                                            : "";
        mensagens << icone + m.Titulo + ": " + m.Texto;
    }
    EXPECT_EQ(mensagens, c.mensagens);
    EXPECT_EQ(imp().Chamadas(), c.chamadas);
    EXPECT_EQ(principal->Gauge1.Value, 0); // the entry screen's, at rest after the run
    QStringList novas;
    for (const auto &l : linhas_log()) {
        if (c.registro.contains(l["Index"] + "|" + l["Codigo"])) continue;
        novas << QStringList{l["Index"], l["Codigo"], l["V_CH"], l["Data"], l["NRCH"]}.join('|');
        EXPECT_EQ((QStringList{l["Banco"], l["Favor"], l["Local"], l["StCancel"], l["Comentario"]}),
                  (QStringList{"001", "Construtora Boa Vista", "Curitiba", " ", ""}));
    }
    EXPECT_EQ(novas, c.linhas);
    // The schedule stands for another run.
    EXPECT_EQ(valores(3), QStringList({"33,34", "33,33", "33,33"}));
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ExecucaoPrazo,
    ::testing::Values(
        Execucao{.nome = "TresImpressasERegistradas",
                 .mensagens = Insira,
                 .chamadas = TresNaPorta,
                 .linhas = {Primeira, "0000000002|00002|33,33|09/02/27|000456",
                            "0000000003|00003|33,33|11/03/27|SEQ:00003"}},
        // A refused cheque, even with the code -1, is told and the run goes on; it uses up no
        // index.
        Execucao{.nome = "RecusadoNoMeioSegueSemGastarIndex",
                 .recusa = {"ImprimeCheque", 2, -1},
                 .mensagens = {Insira[0], Insira[1],
                               "(!) Impressão do Cheque (-001): Problemas com a impressão do "
                               "cheque.\n\nA impressora devolveu o código -001. Verifique a "
                               "impressora e o cabo e tente de novo.",
                               Insira[2]},
                 .chamadas = TresNaPorta,
                 .linhas = {Primeira, "0000000002|00002|33,33|11/03/27|SEQ:00002"}},
        Execucao{.nome = "CancelarNoPrimeiroNaoImprime",
                 .respostas = {Resposta::Cancel},
                 .mensagens = {Insira[0]}},
        Execucao{.nome = "CaixaDesmarcadaNaoRegistra",
                 .relatorio = false,
                 .mensagens = Insira,
                 .chamadas = TresNaPorta},
        Execucao{.nome = "PortaQueNaoAbreEncerra",
                 .recusa = {"IniciaPorta", 2},
                 .mensagens = {Insira[0], Insira[1],
                               "(x) Impressão do Cheque: Problemas ao se comunicar com a "
                               "impressora!\rA impressora não respondeu na porta COM2. Verifique "
                               "o cabo e a porta em Arquivo > Configurações e tente de novo."},
                 .chamadas = na_porta(0) + QStringList{"IniciaPorta(COM2)"},
                 .linhas = {Primeira}},
        Execucao{.nome = "VerificacaoRecusadaNaoPedeDocumento",
                 .banco = "",
                 .mensagens = {"(!) Erro: Código do banco inválido..."}},
        // The numbering goes on from the last row, whatever the first row's Codigo.
        Execucao{.nome = "ContinuaDaUltimaLinhaDoRegistro",
                 .respostas = {Resposta::OK, Resposta::Cancel},
                 .registro = {"0000000007|", "0000000041|00041"},
                 .mensagens = {Insira[0], Insira[1]},
                 .chamadas = na_porta(0),
                 .linhas = {"0000000042|00042|33,34|10/01/27|SEQ:00042"}}),
    [](const auto &info) { return std::string(info.param.nome); });

// Another connection holds the database's write lock: the instalment can't be registered, so
// it isn't printed; the operator is told why, and the run ends.
TEST_F(ImpressaoPrazo, RegistroTravadoNaoImprimeEDizPorque) {
    tres_parcelas();
    const QString conexao = "trava-" + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", conexao);
        db.setDatabaseName(s.CaminhoApp + "/VEXA.db");
        ASSERT_TRUE(db.open());
        ASSERT_TRUE(QSqlQuery(db).exec("BEGIN IMMEDIATE"));
    }
    p->Clica("Command3D1", 0);
    QSqlDatabase::database(conexao, false).close();
    QSqlDatabase::removeDatabase(conexao);
    ASSERT_EQ(d.Mensagens.size(), 2) << d.Textos().join('|').toStdString();
    EXPECT_EQ(d.Mensagens[1].Texto,
              "O cheque não foi impresso, porque não pode ser registrado no relatório.\n\n"
              "O banco de dados \"VEXA.db\" está sendo usado por outro programa. Feche esse "
              "programa e tente de novo.\n\nPara imprimir sem registrar, desmarque \"Incluir no "
              "relatório\".");
    EXPECT_EQ(d.Mensagens[1].Icone_, Icone::Exclamacao);
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    EXPECT_EQ(principal->Situacao.Caption,
              "Parcela 1 de 3: Cheque sem número de R$ 33,34 não foi impresso.");
}

TEST_F(ImpressaoPrazo, NumeroJaRegistradoParaASerieAntesDaPrimeiraFolha) {
    registra_cheque(s, {"001", "10,00", "Ana", "Rio", "01/03/99", "000456"});
    tres_parcelas();
    p->Clica("Command3D1", 0);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("Parcela 2 de 3: O cheque nº 000456 deste banco"));
    EXPECT_EQ(d.Mensagens[0].Padrao, Resposta::No);
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    EXPECT_EQ(p->Foco().texto(), "Text4(1)");
}

TEST_F(ImpressaoPrazo, AsParcelasSeguemOTalaoDoBanco) {
    grava_proximo_cheque(s, "001", "000200");
    tres_parcelas();
    p->Text4[1].Text.clear();
    p->Digita("Text3", 0, "001");
    p->SetFocus("Text3", 1);
    EXPECT_EQ((QStringList{p->Text4[0].Text, p->Text4[1].Text, p->Text4[2].Text}),
              (QStringList{"000200", "000201", "000202"}));
    principal->CheckBox.Value = 1;
    p->Clica("Command3D1", 0);
    EXPECT_EQ(proximo_cheque(s, "001"), "000203");
}

} // namespace
