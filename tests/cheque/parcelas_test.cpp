// The arithmetic of a schedule: the total spread with the whole rounding difference on the
// first instalment, the due dates in calendar days, the fixed day over short months.
#include "cheque/parcelas.h"

#include <QDate>
#include <gtest/gtest.h>
#include <numeric>

using namespace vexa;

namespace {

struct Divisao {
    qint64 total;
    int n;
    QList<qint64> esperado;
};

class DivideTotal : public ::testing::TestWithParam<Divisao> {};

TEST_P(DivideTotal, DiferencaInteiraNaPrimeira) {
    const Divisao &c = GetParam();
    const QList<qint64> valores = divide_total(c.total, c.n);
    EXPECT_EQ(valores, c.esperado);
    EXPECT_EQ(std::accumulate(valores.begin(), valores.end(), qint64(0)), c.total);
}

INSTANTIATE_TEST_SUITE_P(
    Totais, DivideTotal,
    ::testing::Values(
        // The share rounds down: the first takes the cent left over.
        Divisao{10000, 3, {3334, 3333, 3333}},
        // The share rounds up: the first gives the cent back.
        Divisao{20000, 3, {6666, 6667, 6667}}, Divisao{10000, 1, {10000}},
        Divisao{10000, 4, {2500, 2500, 2500, 2500}},
        // Half a cent rounds away from zero.
        Divisao{1, 2, {0, 1}}, Divisao{5, 3, {1, 2, 2}},
        // Twelve: 8,33 each and the four cents over on the first.
        Divisao{10000, 12, {837, 833, 833, 833, 833, 833, 833, 833, 833, 833, 833, 833}}));

TEST(DivideCentavos, MeioCentavoSeAfastaDoZero) {
    EXPECT_EQ(divide_centavos(10000, 3), 3333);
    EXPECT_EQ(divide_centavos(20000, 3), 6667);
    EXPECT_EQ(divide_centavos(-20000, 3), -6667);
    EXPECT_EQ(divide_centavos(5, 2), 3);
    EXPECT_EQ(divide_centavos(-5, 2), -3);
    EXPECT_EQ(divide_centavos(100, 0), 0);
    EXPECT_TRUE(divide_total(100, 0).isEmpty());
}

struct Prazo {
    QDate inicio;
    int dias;
    QString vence;
};

class Vencimento : public ::testing::TestWithParam<Prazo> {};

TEST_P(Vencimento, DiasCorridosEmDdMmAa) {
    EXPECT_EQ(vencimento(GetParam().inicio, GetParam().dias), GetParam().vence);
}

INSTANTIATE_TEST_SUITE_P(Datas, Vencimento,
                         ::testing::Values(Prazo{QDate(2027, 1, 10), 0, "10/01/27"},
                                           Prazo{QDate(2027, 1, 10), 30, "09/02/27"},
                                           Prazo{QDate(2027, 1, 10), 60, "11/03/27"},
                                           Prazo{QDate(2028, 1, 30), 30, "29/02/28"},
                                           Prazo{QDate(2026, 11, 23), 45, "07/01/27"},
                                           Prazo{QDate(2099, 12, 31), 1, "01/01/00"},
                                           Prazo{QDate(2026, 11, 23), 999, "18/08/29"}));

struct DiaFixo {
    QString data, dia, resultado;
};

class DiaFixoDoMes : public ::testing::TestWithParam<DiaFixo> {};

TEST_P(DiaFixoDoMes, MesesDe28A31Dias) {
    EXPECT_EQ(dia_fixo(GetParam().data, GetParam().dia), GetParam().resultado);
}

INSTANTIATE_TEST_SUITE_P(
    Meses, DiaFixoDoMes,
    ::testing::Values(DiaFixo{"15/01/27", "31", "31/01/27"}, DiaFixo{"15/04/27", "31", "30/04/27"},
                      DiaFixo{"15/04/27", "30", "30/04/27"}, DiaFixo{"15/06/27", "05", "05/06/27"},
                      // February goes to the 29th, also in a year without one.
                      DiaFixo{"15/02/27", "31", "29/02/27"}, DiaFixo{"15/02/27", "30", "29/02/27"},
                      DiaFixo{"15/02/27", "29", "29/02/27"}, DiaFixo{"15/02/28", "31", "29/02/28"},
                      DiaFixo{"15/02/27", "28", "28/02/27"},
                      DiaFixo{"28/02/27", "01", "01/02/27"}));

} // namespace
