#include "cheque/pedidos.h"

#include <gtest/gtest.h>

using namespace vexa;

namespace {

struct Linha {
    QString linha;
    QStringList campos; // indexed as the entry screen's Text1
};
class LeLinhaComandoTeste : public ::testing::TestWithParam<Linha> {};

TEST_P(LeLinhaComandoTeste, SeteTextosIndexadosComoOsCampos) {
    EXPECT_EQ(LeLinhaComando(GetParam().linha), GetParam().campos);
}

INSTANTIATE_TEST_SUITE_P(
    Linhas, LeLinhaComandoTeste,
    ::testing::Values(
        Linha{"/B001/V1234,50/FMaria/LSantos/D050399/C000123",
              {"001", "1234,50", "Maria", "Santos", "050399", "", "000123"}},
        Linha{"", {"", "", "", "", "", "", ""}},
        // the letter in either case, the value trimmed, text ahead of the first slash ignored
        Linha{"lixo /b 001 /f João da Silva", {"001", "", "João da Silva", "", "", "", ""}},
        // a slash ends a value: D gets 05, then "0" and "9" are letters that are dropped
        Linha{"/D05/03/99", {"", "", "", "", "05", "", ""}},
        // an option without a value stores nothing, and unknown letters are dropped
        Linha{"/B237/V", {"237", "", "", "", "", "", ""}},
        Linha{"/X1/Z/C12", {"", "", "", "", "", "", "12"}},
        Linha{"/B1/B2", {"2", "", "", "", "", "", ""}}));

} // namespace
