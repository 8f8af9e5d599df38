#include "printer/extenso.h"

#include <gtest/gtest.h>

using namespace vexa;

namespace {

struct Caso {
    qint64 centavos;
    const char *palavras;
};

class Extenso : public ::testing::TestWithParam<Caso> {};

// Each line was spelled out by hand.
INSTANTIATE_TEST_SUITE_P(
    Tabela, Extenso,
    ::testing::Values(
        Caso{1, "Um Centavo"}, Caso{14, "Quatorze Centavos"}, Caso{99, "Noventa e Nove Centavos"},
        Caso{100, "Um Real"}, Caso{101, "Um Real e Um Centavo"}, Caso{1600, "Dezesseis Reais"},
        Caso{2100, "Vinte e Um Reais"}, Caso{10000, "Cem Reais"}, Caso{10100, "Cento e Um Reais"},
        Caso{99900, "Novecentos e Noventa e Nove Reais"}, Caso{100000, "Mil Reais"},
        Caso{100100, "Mil e Um Reais"}, Caso{100001, "Mil Reais e Um Centavo"},
        Caso{110100, "Mil, Cento e Um Reais"}, Caso{150000, "Mil e Quinhentos Reais"},
        Caso{1010000, "Dez Mil e Cem Reais"}, Caso{200100, "Dois Mil e Um Reais"},
        Caso{10000000, "Cem Mil Reais"}, Caso{100000000, "Um Milhão de Reais"},
        Caso{100000005, "Um Milhão de Reais e Cinco Centavos"},
        Caso{100000100, "Um Milhão e Um Reais"}, Caso{100100000, "Um Milhão e Mil Reais"},
        Caso{150000000, "Um Milhão e Quinhentos Mil Reais"},
        Caso{125000000, "Um Milhão, Duzentos e Cinquenta Mil Reais"},
        Caso{100100100, "Um Milhão, Mil e Um Reais"}, Caso{200000000, "Dois Milhões de Reais"},
        Caso{100000000000, "Um Bilhão de Reais"}, Caso{100000000100, "Um Bilhão e Um Reais"},
        Caso{200000000005, "Dois Bilhões de Reais e Cinco Centavos"},
        Caso{999999999999, "Nove Bilhões, Novecentos e Noventa e Nove Milhões, Novecentos e "
                           "Noventa e Nove Mil, Novecentos e Noventa e Nove Reais e Noventa e "
                           "Nove Centavos"},
        // Outside the range there are no words.
        Caso{0, ""}, Caso{-100, ""}, Caso{1000000000000, ""}));

TEST_P(Extenso, PalavrasDoValor) {
    EXPECT_EQ(extenso(GetParam().centavos), QString::fromUtf8(GetParam().palavras));
}

TEST(ExtensoMoeda, NomesDaMoedaComInicialMaiusculaEUmSoParaUmaUnidade) {
    EXPECT_EQ(extenso(100, "dólar", "dólares"), "Um Dólar");
    EXPECT_EQ(extenso(250, "dólar", "dólares"), "Dois Dólares e Cinquenta Centavos");
    EXPECT_EQ(extenso(100, "real", "REAIS"), "Um Real");
    EXPECT_EQ(extenso(300000000, "peso chileno", "pesos chilenos"),
              "Três Milhões de Pesos Chilenos");
    EXPECT_EQ(extenso(100000000, " peso  de ouro", "pesos de ouro e prata"),
              "Um Milhão de Pesos de Ouro e Prata");
}

} // namespace
