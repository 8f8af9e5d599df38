#include "core/conversoes.h"
#include "printer/impressao.h"
#include "printer/nativo.h"

#include <QLibrary>
#include <functional>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// The test library's own controls, reached through the same loaded library.
struct Controle {
    Controle() : lib(QStringLiteral(VEXA32_TESTE_DIR "/vexa32")) {
        lib.load();
        chamadas = reinterpret_cast<const char *(*)()>(lib.resolve("TesteChamadas"));
        limpa = reinterpret_cast<void (*)()>(lib.resolve("TesteLimpa"));
        resultado =
            reinterpret_cast<void (*)(const char *, short)>(lib.resolve("TesteDefineResultado"));
        monta = reinterpret_cast<void (*)(const char *)>(lib.resolve("TesteDefineMontaValor"));
    }
    QLibrary lib;
    const char *(*chamadas)() = nullptr;
    void (*limpa)() = nullptr;
    void (*resultado)(const char *, short) = nullptr;
    void (*monta)(const char *) = nullptr;
};

class NativoTeste : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(imp.Carregada()) << imp.Erro().toStdString();
        ASSERT_TRUE(c.chamadas && c.limpa && c.resultado && c.monta);
        c.limpa();
    }
    Nativo imp{QStringLiteral(VEXA32_TESTE_DIR)};
    Controle c;
};

struct Fronteira {
    const char *nome;
    std::function<void(Nativo &)> chamada;
    const char *registro;
};

class NativoFronteira : public NativoTeste, public ::testing::WithParamInterface<Fronteira> {};

INSTANTIATE_TEST_SUITE_P(
    Bytes, NativoFronteira,
    ::testing::Values(
        Fronteira{"Porta", [](Nativo &n) { n.IniciaPorta("COM2"); }, "IniciaPorta [434F4D32]"},
        Fronteira{"ChequeConvertido",
                  [](Nativo &n) {
                      n.ImprimeCheque("001", "1.234,50", ConverteTexto("São"),
                                      ConverteTexto("Conceição"), "05/03/99", "");
                  },
                  "ImprimeCheque [303031] [312E3233342C3530] [53C66F] [436F6E63656987C66F] "
                  "[30352F30332F3939] []"},
        Fronteira{"CampoExtraSemConversao", [](Nativo &n) { n.ImprimeCampoX(1, 20, 109, "São"); },
                  "ImprimeCampoX 1 20 109 [53E36F]"},
        Fronteira{"FormatoDeData", [](Nativo &n) { n.ComandoTX(comando_formato_data(4), 5); },
                  "ComandoTX [1BAF44340D] 5"},
        Fronteira{"TextoComModoEInteiros", [](Nativo &n) { n.FormataTX("A\r\n", 2, 0, 0, 1, -1); },
                  "FormataTX [410D0A] 2 0 0 1 -1"},
        Fronteira{"Layout",
                  [](Nativo &n) {
                      n.IncluiBanco("1", "1,2");
                      n.TravaDoc(0);
                      n.FechaPorta();
                  },
                  "IncluiBanco [31] [312C32]\nTravaDoc 0\nFechaPorta"},
        Fronteira{"TextosVazios",
                  [](Nativo &n) {
                      n.ExcluiFavorecido("");
                      n.CancelaRel("u");
                      n.AlteraMoeda("€", "x");
                      n.IncluiFavorecido("07", "Ana");
                      n.TolvaneTX("\x1BI");
                  },
                  "ExcluiFavorecido []\nCancelaRel [75]\nAlteraMoeda [80] [78]\n"
                  "IncluiFavorecido [3037] [416E61]\nTolvaneTX [1B49]"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_P(NativoFronteira, BytesEInteirosQueCruzamABiblioteca) {
    GetParam().chamada(imp);
    EXPECT_STREQ(c.chamadas(), GetParam().registro);
}

TEST_F(NativoTeste, ResultadoDe16BitsComSinal) {
    for (const short r : {short(-1), short(32767), short(-32768), short(0), short(3)}) {
        c.resultado("ImprimeCheque", r);
        EXPECT_EQ(imp.ImprimeCheque("001", "1,00", " ", " ", "01/01/24", ""), r);
    }
    c.resultado("IniciaPorta", 0);
    EXPECT_EQ(imp.IniciaPorta("COM9"), 0);
}

TEST_F(NativoTeste, MontaValorVoltaParaAVariavelSemCrescer) {
    c.resultado("MontaValor", 3);
    c.monta("Cem");
    QString valor = "100,00";
    EXPECT_EQ(imp.MontaValor(valor, "real", "reais"), 3);
    EXPECT_STREQ(c.chamadas(), "MontaValor [3130302C3030] [7265616C] [7265616973]");
    // What the library wrote, its zero byte and the old bytes behind it: the same length.
    EXPECT_EQ(valor, QString("Cem") + QChar(0) + "00");

    c.monta("Cinquenta Reais e mais");
    valor = "50,00";
    imp.MontaValor(valor, "real", "reais");
    EXPECT_EQ(valor, "Cinqu");

    c.monta("Duzentos \xE9");
    valor = "200,00,0000";
    imp.MontaValor(valor, "real", "reais");
    EXPECT_EQ(valor, QString("Duzentos é") + QChar(0));
}

TEST(NativoSemBiblioteca, TodaOperacaoRespondeZero) {
    Nativo imp("/caminho/que/nao/existe");
    EXPECT_FALSE(imp.Carregada());
    EXPECT_EQ(imp.Descricao(), "Impressora Vexa Plus (biblioteca vexa32 não encontrada)");
    QString valor = "1,00";
    EXPECT_EQ(imp.IniciaPorta("COM2"), 0);
    EXPECT_EQ(imp.ImprimeCheque("001", "1,00", " ", " ", "01/01/24", ""), 0);
    EXPECT_EQ(imp.MontaValor(valor, "real", "reais"), 0);
    EXPECT_EQ(valor, "1,00");
}

} // namespace
