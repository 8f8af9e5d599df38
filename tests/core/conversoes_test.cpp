#include "core/conversoes.h"
#include "core/relogio.h"

#include <gtest/gtest.h>
#include <limits>

using namespace vexa;

namespace {

struct CasoMascara {
    const char *valor;
    const char *mascara;
    const char *esperado;
};

void PrintTo(const CasoMascara &c, std::ostream *os) {
    *os << '"' << c.valor << "\" through \"" << c.mascara << '"';
}

class Mascaras : public ::testing::TestWithParam<CasoMascara> {
  protected:
    void SetUp() override { fixa_hoje(QDate(2026, 11, 22)); }
    void TearDown() override { fixa_hoje(QDate()); }
};

TEST_P(Mascaras, FormataComSeparadoresBrasileiros) {
    const CasoMascara c = GetParam();
    EXPECT_EQ(Format(QString::fromUtf8(c.valor), c.mascara).toStdString(), c.esperado);
}

INSTANTIATE_TEST_SUITE_P(
    Numeros, Mascaras,
    ::testing::Values(
        CasoMascara{"1234.5", "###,##0.00", "1.234,50"}, CasoMascara{"0.125", "###,##0.00", "0,13"},
        CasoMascara{"2.675", "###,##0.00", "2,68"}, CasoMascara{"1.005", "###,##0.00", "1,01"},
        CasoMascara{"-1234.5", "###,##0.00", "-1.234,50"},
        CasoMascara{"-0.001", "###,##0.00", "0,00"},
        CasoMascara{"999.995", "###,##0.00", "1.000,00"},
        CasoMascara{"33.335", "#,###,##0.00", "33,34"},
        CasoMascara{"1234567.5", "#,###0.00", "1.234.567,50"},
        CasoMascara{"12345678901.2", "##,###,###,##0.00", "12.345.678.901,20"},
        CasoMascara{"123456789012345.67", "###,###,###,###,##0.00", "123.456.789.012.345,67"},
        CasoMascara{"99999.995", "####0.00", "100000,00"},
        CasoMascara{"1234.5", "###########.##", "1234,5"},
        CasoMascara{"1234", "###########.##", "1234,"},
        CasoMascara{"1234.001", "###########.##", "1234,"},
        CasoMascara{"0.5", "###########.##", ",5"}, CasoMascara{"1234", ".00", "1234,00"},
        CasoMascara{"0.5", ".00", ",50"}, CasoMascara{"7", "000", "007"},
        CasoMascara{"1234", "000", "1234"}, CasoMascara{"-1", "000", "-001"},
        CasoMascara{"42", "00000", "00042"}, CasoMascara{"5", "#00", "05"},
        CasoMascara{"42", "0000000000", "0000000042"}, CasoMascara{"1999", "0000", "1999"},
        CasoMascara{"99", "0000", "0099"},
        CasoMascara{"1234567890.125", "#,###,###,##0.00", "1.234.567.890,13"},
        CasoMascara{"0.5", "#,###,###,##0.00", "0,50"}, CasoMascara{"-2.5", "####0.00", "-2,50"},
        CasoMascara{"3", "00", "03"}, CasoMascara{"1e3", "000", "1000"},
        CasoMascara{"abc", "000", "abc"}, CasoMascara{"", "###,##0.00", ""},
        CasoMascara{"1,5", "###,##0.00", "1,5"}));

INSTANTIATE_TEST_SUITE_P(Textos, Mascaras,
                         ::testing::Values(CasoMascara{"10203", "@@/@@/@@", " 1/02/03"},
                                           CasoMascara{"1234567", "@@/@@/@@", "123/45/67"},
                                           CasoMascara{"", "@@/@@/@@", "  /  /  "},
                                           CasoMascara{"05/03/99", "!@@@@@@@@", "05/03/99"},
                                           CasoMascara{"0503", "!@@@@@@@@", "0503    "},
                                           CasoMascara{"123", "@@@@@@@@@@@@", "         123"},
                                           CasoMascara{"Maria da Silva", "!@@@@@@@@@@",
                                                       "Maria da S"},
                                           CasoMascara{"12", "&&&", "12"}));

INSTANTIATE_TEST_SUITE_P(Datas, Mascaras,
                         ::testing::Values(CasoMascara{"05/03/99", "DD/MM/YY", "05/03/99"},
                                           CasoMascara{"2026-11-22", "DD/MM/YY", "22/11/26"},
                                           CasoMascara{"2026-11-22", "DD/MM/YYY", "22/11/26"},
                                           CasoMascara{"05/03/99", "DD/MM/YYYY", "05/03/1999"},
                                           CasoMascara{"050346", "dd/mm/yyyy", "05/03/2046"},
                                           CasoMascara{"050347", "dd/mm/yyyy", "05/03/1947"},
                                           CasoMascara{"31/02/26", "DD/MM/YY", "31/02/26"},
                                           CasoMascara{"", "DD/MM/YYYY", ""}));

TEST(Valores, CentavosEDoublesPassamPelaMesmaMascara) {
    EXPECT_EQ(formata_centavos(123456, "###,##0.00").toStdString(), "1.234,56");
    EXPECT_EQ(formata_centavos(-5, "###,##0.00").toStdString(), "-0,05");
    EXPECT_EQ(formata_centavos(100, "###########.##").toStdString(), "1,");
    EXPECT_EQ(formata_centavos(std::numeric_limits<qint64>::min(), "0.00").toStdString(),
              "-92233720368547758,08");
    EXPECT_EQ(formata_numero(0.1 + 0.2, "0.00").toStdString(), "0,30");
    EXPECT_EQ(formata_numero(2.675, "0.00").toStdString(), "2,68");
    EXPECT_EQ(formata_numero(100.0 / 3, "#,###,##0.00").toStdString(), "33,33");
}

struct CasoData {
    const char *data;
    bool valida;
};

void PrintTo(const CasoData &c, std::ostream *os) {
    *os << '"' << c.data << '"';
}

class Datas : public ::testing::TestWithParam<CasoData> {};

TEST_P(Datas, DataValida) {
    EXPECT_EQ(DataValida(GetParam().data), GetParam().valida);
}

INSTANTIATE_TEST_SUITE_P(Casos, Datas,
                         ::testing::Values(CasoData{"290200", true}, CasoData{"29022000", true},
                                           CasoData{"29022100", true}, CasoData{"290201", false},
                                           CasoData{"280201", true}, CasoData{"310426", false},
                                           CasoData{"320126", false}, CasoData{"000126", false},
                                           CasoData{"011326", false}, CasoData{"010026", false},
                                           CasoData{"01/02/03", false}, CasoData{"2902", true},
                                           CasoData{"", false}));

TEST(Conversoes, MesExtenso) {
    const std::pair<const char *, const char *> casos[] = {
        {"1", "Janeiro"}, {"3", "Março"}, {"12", "Dezembro"}, {"01", "ERRO"},
        {"13", "ERRO"},   {"0", "ERRO"},  {"", "ERRO"},       {" 1", "ERRO"}};
    for (const auto &[mes, nome] : casos)
        EXPECT_EQ(MesExtenso(mes).toStdString(), nome) << mes;
}

struct CasoQuebra {
    QString texto;
    QString primeira;
    QString segunda;
};

void PrintTo(const CasoQuebra &c, std::ostream *os) {
    *os << '"' << c.texto.toStdString() << '"';
}

class Quebra : public ::testing::TestWithParam<CasoQuebra> {};

TEST_P(Quebra, PrimeiraLinhaTemAte80CaracteresEQuebraNumBranco) {
    const auto [primeira, segunda] = QuebraExtenso(GetParam().texto);
    EXPECT_EQ(primeira.toStdString(), GetParam().primeira.toStdString());
    EXPECT_EQ(segunda.toStdString(), GetParam().segunda.toStdString());
}

const QString A74(74, u'a'), A75(75, u'a'), A80(80, u'a');

INSTANTIATE_TEST_SUITE_P(
    Casos, Quebra,
    ::testing::Values(
        // 79 characters stay whole; 80 are already split at their last blank.
        CasoQuebra{A74 + " bbbb", A74 + " bbbb", ""}, CasoQuebra{A75 + " bbbb", A75, "bbbb"},
        CasoQuebra{"  " + A74 + " bbbb  ", A74 + " bbbb", ""},
        // The zero that ends the printer's words is not counted, nor kept.
        CasoQuebra{A74 + " bbbb" + QChar(0), A74 + " bbbb", ""},
        CasoQuebra{A75 + " bbbb " + QChar(0) + "x", A75, "bbbb"},
        CasoQuebra{A80 + " resto", A80, "resto"},
        CasoQuebra{QString(60, u'a') + "   " + QString(30, u'b'), QString(60, u'a'),
                   QString(30, u'b')},
        CasoQuebra{QString(90, u'a'), A80, QString(10, u'a')},
        CasoQuebra{"um milhão, duzentos e trinta e quatro mil, quinhentos e sessenta e sete "
                   "reais e oitenta e nove centavos",
                   "um milhão, duzentos e trinta e quatro mil, quinhentos e sessenta e sete "
                   "reais e",
                   "oitenta e nove centavos"}));

// Every character the printer's code page places elsewhere, with its printer code.
const QString Convertidos = "ÀÁÂÃÄÇÈÉÊËÌÍÎÏÑÒÓÔÕÖ°ÙÚÛÜÝàáâãäçèéêëìí£¬ªîïñòóôõöùúûüýÿ¹²³¢§º";
const int CodigosConvertidos[] = {183, 181, 182, 199, 142, 128, 212, 144, 210, 211, 222, 214, 215,
                                  216, 165, 227, 224, 226, 229, 153, 248, 235, 233, 234, 154, 237,
                                  133, 160, 131, 198, 132, 135, 138, 130, 136, 137, 141, 161, 156,
                                  170, 166, 140, 139, 164, 149, 162, 147, 228, 148, 151, 163, 150,
                                  129, 236, 152, 251, 253, 252, 189, 245, 167};

TEST(Impressora, CodigoImpressoraConverteOs61EDeixaOResto) {
    ASSERT_EQ(Convertidos.size(), 61);
    QByteArray bytesEsperados;
    for (int i = 0; i < 61; ++i) {
        EXPECT_EQ(CodigoImpressora(Convertidos[i].unicode()), CodigosConvertidos[i])
            << QString(Convertidos[i]).toStdString();
        bytesEsperados += char(CodigosConvertidos[i]);
    }
    for (int codigo = 0; codigo < 256; ++codigo) {
        if (!Convertidos.contains(QChar(codigo))) {
            EXPECT_EQ(CodigoImpressora(codigo), 65535) << codigo;
        }
    }
    // What reaches the printer after the ANSI conversion is the printer's byte.
    const QString convertido = ConverteTexto(Convertidos);
    EXPECT_EQ(convertido.size(), 61);
    EXPECT_EQ(para_ansi(convertido).toHex().toStdString(), bytesEsperados.toHex().toStdString());
}

TEST(Impressora, ConverteTextoGuardaOComprimento) {
    EXPECT_EQ(ConverteTexto("São"), QString("S") + QChar(0xC6) + "o");
    EXPECT_EQ(para_ansi(ConverteTexto("São")).toStdString(), "S\xC6o");
    EXPECT_EQ(ConverteTexto("A1 z!"), "A1 z!");
    EXPECT_EQ(ConverteTexto("€日"), "€日");
    EXPECT_EQ(para_ansi(ConverteTexto("Çü")).toStdString(), "\x80\x81");
}

TEST(Ansi, Windows1252IdaEVolta) {
    QByteArray todos;
    for (int b = 0; b < 256; ++b)
        todos += char(b);
    EXPECT_EQ(para_ansi(de_ansi(todos)), todos);
    EXPECT_EQ(de_ansi("\x80\x93\xe7"), "€“ç");
    EXPECT_EQ(para_ansi("Ação € 日 😀").toStdString(), "A\xe7\xe3o \x80 ? ?");
}

struct CasoVal {
    const char *texto;
    double valor;
};

void PrintTo(const CasoVal &c, std::ostream *os) {
    *os << '"' << c.texto << '"';
}

class ValTexto : public ::testing::TestWithParam<CasoVal> {};

TEST_P(ValTexto, LeONumeroDoComeco) {
    EXPECT_DOUBLE_EQ(Val(GetParam().texto), GetParam().valor) << GetParam().texto;
}

INSTANTIATE_TEST_SUITE_P(Casos, ValTexto,
                         ::testing::Values(CasoVal{"12abc", 12}, CasoVal{"abc", 0},
                                           CasoVal{" 1 2", 12}, CasoVal{"-2", -2},
                                           CasoVal{"- 3", -3}, CasoVal{"12,5", 12},
                                           CasoVal{"1.5.3", 1.5}, CasoVal{"", 0},
                                           CasoVal{"1e3", 1000}, CasoVal{"1e", 1}, CasoVal{"/0", 0},
                                           CasoVal{"1e999", 0}));

struct CasoNumerico {
    const char *texto;
    std::optional<qint64> centavos;
};

void PrintTo(const CasoNumerico &c, std::ostream *os) {
    *os << '"' << c.texto << '"';
}

class Numerico : public ::testing::TestWithParam<CasoNumerico> {};

TEST_P(Numerico, TestaEConverteOValorDigitado) {
    const CasoNumerico c = GetParam();
    EXPECT_EQ(eh_numerico(c.texto), c.centavos.has_value()) << c.texto;
    EXPECT_EQ(centavos(c.texto), c.centavos) << c.texto;
}

INSTANTIATE_TEST_SUITE_P(
    Casos, Numerico,
    ::testing::Values(CasoNumerico{"1.234,56", 123456}, CasoNumerico{"1234", 123400},
                      CasoNumerico{" 12 ", 1200}, CasoNumerico{",5", 50}, CasoNumerico{"12,", 1200},
                      CasoNumerico{"0,125", 13}, CasoNumerico{"-0,125", -13},
                      CasoNumerico{"R$ 1.234,56", 123456}, CasoNumerico{"", std::nullopt},
                      CasoNumerico{"12x", std::nullopt}, CasoNumerico{"1,2,3", std::nullopt},
                      CasoNumerico{"1 234", std::nullopt}, CasoNumerico{"1,234.56", std::nullopt},
                      // A point before one or two final digits, with no comma, is the decimal
                      // separator; every other point groups thousands.
                      CasoNumerico{"1234.56", 123456}, CasoNumerico{"0.5", 50},
                      CasoNumerico{"1.2", 120}, CasoNumerico{".5", 50}, CasoNumerico{"-0.5", -50},
                      CasoNumerico{"1.234.56", 123456}, CasoNumerico{"1.234", 123400},
                      CasoNumerico{"1.234.567", 123456700}, CasoNumerico{"12.", std::nullopt},
                      CasoNumerico{"1.5x", std::nullopt}));

TEST(Numerico, ValorNumerico) {
    EXPECT_DOUBLE_EQ(valor_numerico("1.234,56"), 1234.56);
    EXPECT_DOUBLE_EQ(valor_numerico("-0,5"), -0.5);
    EXPECT_DOUBLE_EQ(valor_numerico("12x"), 0);
    // A number too large for centavos is still a number, but not an amount.
    EXPECT_TRUE(eh_numerico("99999999999999999999"));
    EXPECT_EQ(centavos("99999999999999999999"), std::nullopt);
}

class DatasDigitadas : public ::testing::Test {
  protected:
    void SetUp() override { fixa_hoje(QDate(2026, 11, 22)); }
    void TearDown() override { fixa_hoje(QDate()); }
};

TEST_F(DatasDigitadas, FormasCurtas) {
    const std::pair<const char *, const char *> casos[] = {
        {"5", "051126"},        {"12", "121126"},         {"x", "001126"},
        {"05/03/99", "050399"}, {"5/3/99x", "5//9x"},     {"0503", "0503"},
        {"050399", "050399"},   {"05/03/1999", "050319"}, {"", ""}};
    for (const auto &[texto, esperado] : casos)
        EXPECT_EQ(data_curta(texto, "1126").toStdString(), esperado) << texto;
}

TEST_F(DatasDigitadas, LeDataNasFormasAceitas) {
    const std::pair<const char *, QDate> casos[] = {{"05/03/99", QDate(1999, 3, 5)},
                                                    {" 5/3/2026 ", QDate(2026, 3, 5)},
                                                    {"05.03-46", QDate(2046, 3, 5)},
                                                    {"050347", QDate(1947, 3, 5)},
                                                    {"05032026", QDate(2026, 3, 5)},
                                                    {"2026-3-5", QDate(2026, 3, 5)},
                                                    {"29/02/00", QDate(2000, 2, 29)},
                                                    {"5/3/9", QDate(2009, 3, 5)},
                                                    {"31/04/26", QDate()},
                                                    {"2026/03/05", QDate()},
                                                    {"05/03/199", QDate()},
                                                    {"05//03/99", QDate()},
                                                    {"05/03/99/", QDate()},
                                                    {"0503992", QDate()},
                                                    {"05 03 99", QDate()},
                                                    {"2026-03-05-", QDate()},
                                                    {"", QDate()},
                                                    {"a5/03/99", QDate()}};
    for (const auto &[texto, data] : casos)
        EXPECT_EQ(le_data(texto).value_or(QDate()), data) << texto;
}

TEST_F(DatasDigitadas, DiasEntreDatas) {
    EXPECT_EQ(dias_entre("01/01/26", "22/11/26"), 325);
    EXPECT_EQ(dias_entre("221126", "01/01/2026"), -325);
    EXPECT_EQ(dias_entre("29/02/00", "01/03/00"), 1);
    EXPECT_EQ(dias_entre("31/12/46", "01/01/47"), -36524) << "47 is 1947, 46 is 2046";
    EXPECT_EQ(dias_entre("31/02/26", "01/03/26"), std::nullopt);
    EXPECT_EQ(dias_entre("abc", "01/03/26"), std::nullopt);
}

} // namespace
